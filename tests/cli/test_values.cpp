#include "cli/values.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

Arguments argument(const QString& word) {
  Arguments arguments;
  arguments.add(u"X"_s, word);
  return arguments;
}

QString listFault(const QString& word) {
  try {
    listOf(argument(word), u"X"_s, 1, 11);
  } catch (const UsageError& fault) {
    return fault.message();
  }
  return {};
}

}  // namespace

TEST(Values, WholeNumbersFillThirtyTwoBits) {
  EXPECT_EQ(wholeNumber(u"2147483647"_s), std::numeric_limits<int>::max());
  EXPECT_EQ(wholeNumber(u"-2147483648"_s), std::numeric_limits<int>::min());
  EXPECT_EQ(wholeNumber(u"007"_s), 7);
  EXPECT_EQ(wholeNumber(u"2147483648"_s), std::nullopt);
  EXPECT_EQ(wholeNumber(u"-2147483649"_s), std::nullopt);
}

TEST(Values, AnythingElseIsNoWholeNumber) {
  for (const QString& word : {QString(), u"-"_s, u"+1"_s, u"1.0"_s, u"1e3"_s, u"0x1"_s, u" 1"_s, u"1 "_s, u"１"_s,
                              u"٣"_s, u"--1"_s, u"1-"_s, QString(100000, u'1')})
    EXPECT_EQ(wholeNumber(word), std::nullopt) << word.left(20).toStdString();
}

TEST(Values, ListsAreSortedAndHoldEachNumberOnce) {
  EXPECT_EQ(listOf(argument(u"5,1,11,05"_s), u"X"_s, 1, 11), (std::vector<int>{1, 5, 11}));
  EXPECT_EQ(listOf(argument(u"-"_s), u"X"_s, 1, 11), std::vector<int>{});
}

TEST(Values, FaultyListsAreTold) {
  EXPECT_EQ(listFault(u"1,,2"_s), u"参数 X 应为整数，而不是“”。"_s);
  EXPECT_EQ(listFault(u"1,12"_s), u"参数 X 应在 1 到 11 之间，而不是“12”。"_s);
  EXPECT_EQ(listFault(u"1,99999999999999"_s), u"参数 X 超出范围：“99999999999999”。"_s);
  EXPECT_EQ(listFault(u"1，2"_s), u"参数 X 应为整数，而不是“1，2”。"_s);
  EXPECT_EQ(listFault(QString()), u"参数 X 应为整数，而不是“”。"_s);
}

TEST(Values, DatesAreExactOrToday) {
  EXPECT_EQ(dateOf(argument(u"2011-03-15"_s), u"X"_s), QDate(2011, 3, 15));
  EXPECT_EQ(dateOf(Arguments(), u"X"_s), QDate::currentDate());
  for (const QString& word : {u"2011-02-29"_s, u"2011-3-15"_s, u"15.03.2011"_s, u"2011-03-15x"_s, QString()})
    EXPECT_THROW(dateOf(argument(word), u"X"_s), UsageError) << word.toStdString();
}

}  // namespace elevenfive
