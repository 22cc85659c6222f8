// The machine pick: random tickets for show. They are stored nowhere and change no pick.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

inline constexpr int mostMachineTickets = 5;

/// The question for the number of tickets.
InputBox machinePickQuestion();

/// The number of tickets that an answer asks for: 0 where it is empty, no number, 0 or negative; at most mostMachineTickets.
int machineTicketCount(const QString& answer);

/// Tickets of five different numbers each, in the order drawn. randomFraction gives values from 0 to below 1 and is asked
/// again where a number is in the ticket already.
std::vector<Draw> machinePick(int count, const std::function<double()>& randomFraction);

}  // namespace elevenfive
