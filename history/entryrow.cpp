#include "history/entryrow.h"

#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView digits = u"0123456789";

/// A period as typed; 0 where it is none.
Qihao periodOf(const QString& typed) {
  const QString text = typed.trimmed();
  return isCharsIn(text, digits) ? leadingNumber(text) : 0;
}

}  // namespace

HistoryEntryCheck checkHistoryInput(const HistoryEntry& entry) {
  HistoryEntryCheck check;
  check.qihao = periodOf(entry.qihao);
  check.valid = check.qihao >= 1;
  check.writeBack = entry.numbers;
  std::array<int, numberCount + 1> counted{};
  for (const QString& typed : entry.numbers) {
    const int n = leadingNumber(typed.trimmed());
    if (!isNumber(n) || ++counted[static_cast<std::size_t>(n)] > 1)
      check.valid = false;
  }
  std::size_t field = 0;
  for (int n = 1; n <= numberCount; ++n) {
    if (counted[static_cast<std::size_t>(n)] == 0)
      continue;
    check.numbers[field] = n;
    check.writeBack[field++] = twoDigits(n);
  }
  return check;
}

QString historyEntryRefusal() {
  return u"输入有误或不完整,请核对后重新输入!"_s;
}

}  // namespace elevenfive
