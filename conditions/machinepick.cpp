#include "conditions/machinepick.h"

#include <algorithm>

#include "model/texts.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

InputBox machinePickQuestion() {
  return {u"请输入您需要的注数"_s, u"您需要生成几注号码？(最多5注)"_s, u"5"_s};
}

int machineTicketCount(const QString& answer) {
  const QString typed = answer.trimmed();
  qsizetype zeros = 0;
  while (zeros < typed.size() && typed[zeros] == u'0')
    ++zeros;
  return std::min(inputNumber(typed.sliced(zeros)), mostMachineTickets);
}

std::vector<Draw> machinePick(int count, const std::function<double()>& randomFraction) {
  std::vector<Draw> tickets;
  for (int k = 0; k < count; ++k) {
    Draw ticket{};
    std::array<bool, numberCount + 1> used{};
    for (int& number : ticket) {
      int n = 0;
      do {
        n = std::clamp(static_cast<int>(randomFraction() * numberCount) + 1, 1, numberCount);
      } while (used[static_cast<std::size_t>(n)]);
      used[static_cast<std::size_t>(n)] = true;
      number = n;
    }
    tickets.push_back(ticket);
  }
  return tickets;
}

}  // namespace elevenfive
