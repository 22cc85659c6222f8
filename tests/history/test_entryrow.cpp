#include "history/entryrow.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QStringList>
#include <set>

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

HistoryEntryCheck check(const QString& qihao, const QString& numbers) {
  HistoryEntry entry{qihao, {}};
  const QStringList typed = numbers.split(u' ');
  for (std::size_t i = 0; i < entry.numbers.size(); ++i)
    entry.numbers[i] = typed.value(static_cast<qsizetype>(i));
  return checkHistoryInput(entry);
}

QString shown(const HistoryEntryCheck& result) {
  QStringList fields;
  for (const QString& field : result.writeBack)
    fields << field;
  return fields.join(u' ');
}

TEST(EntryRow, NumbersInAnyOrderAreSortedIntoTheDrawAndTheFields) {
  const HistoryEntryCheck result = check(u"11031510"_s, u"03 01 02 05 04"_s);
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(result.qihao, 11031510);
  EXPECT_EQ(result.numbers, (Draw{1, 2, 3, 4, 5}));
  EXPECT_EQ(shown(result), u"01 02 03 04 05"_s);
}

TEST(EntryRow, SingleDigitsAreShownWithTwo) {
  EXPECT_EQ(shown(check(u"1"_s, u"11 1 7 10 3"_s)), u"01 03 07 10 11"_s);
}

TEST(EntryRow, WithoutAPeriodItIsRefusedButSortedAllTheSame) {
  const HistoryEntryCheck result = check(u""_s, u"03 01 02 05 04"_s);
  EXPECT_FALSE(result.valid);
  EXPECT_EQ(shown(result), u"01 02 03 04 05"_s);
}

TEST(EntryRow, ANumberOutsideIsRefused) {
  EXPECT_FALSE(check(u"11031510"_s, u"01 02 03 04 12"_s).valid);
  EXPECT_FALSE(check(u"11031510"_s, u"00 02 03 04 05"_s).valid);
}

TEST(EntryRow, AnEmptyFieldIsRefused) {
  EXPECT_FALSE(check(u"11031510"_s, u"01 02 03 04"_s).valid);
}

TEST(EntryRow, ANumberTypedTwiceIsRefusedAndShownOnce) {
  const HistoryEntryCheck result = check(u"11031510"_s, u"07 03 03 01 02"_s);
  EXPECT_FALSE(result.valid);
  EXPECT_EQ(shown(result), u"01 02 03 07 02"_s);  // four different ones; the last field keeps what was typed
}

TEST(EntryRow, APeriodMustBeAWholeNumberAboveZeroThatTheTableHolds) {
  const QString numbers = u"01 02 03 04 05"_s;
  EXPECT_TRUE(check(u"1"_s, numbers).valid);
  EXPECT_TRUE(check(u"2147483647"_s, numbers).valid);
  for (const QString& typed :
       {u"0"_s, u"-5"_s, u"2147483648"_s, u"99999999999999999999"_s, u"abc"_s, u"1103.5"_s, u"11x"_s})
    EXPECT_FALSE(check(typed, numbers).valid) << typed.toStdString();
}

TEST(EntryRow, TheRefusalHasItsText) {
  EXPECT_EQ(historyEntryRefusal(), u"输入有误或不完整,请核对后重新输入!"_s);
}

TEST(EntryRow, AnEntryIsValidExactlyWhenItHasFiveDifferentNumbers) {
  EXPECT_TRUE(rc::check("five numbers from 0 to 13", [] {
    QStringList typed;
    std::set<int> inside;
    for (int i = 0; i < drawSize; ++i) {
      const int n = *rc::gen::inRange(0, 14);
      typed << QString::number(n);
      if (n >= 1 && n <= 11)
        inside.insert(n);
    }
    const HistoryEntryCheck result = check(u"11031510"_s, typed.join(u' '));
    RC_ASSERT(result.valid == (inside.size() == 5));
    std::size_t field = 0;
    for (const int n : inside)
      RC_ASSERT(result.writeBack[field++].toInt() == n);
  }));
}

}  // namespace
}  // namespace elevenfive
