// Waiting for a page: the event loop runs until a condition holds, a time has passed or the person ends it.
#pragma once

#include <functional>

namespace elevenfive {

/// Runs the event loop and looks at the condition every few milliseconds, until it holds.
void runEventsUntil(const std::function<bool()>& done);

/// Runs the event loop for a while, or until the condition holds.
void runEventsFor(int ms, const std::function<bool()>& done);

}  // namespace elevenfive
