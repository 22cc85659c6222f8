#include "model/daycount.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>

namespace elevenfive {
namespace {

TEST(DayCount, Day0Is30December1899) {
  EXPECT_EQ(dayCountOf(QDate(1899, 12, 30)), 0.0);
  EXPECT_EQ(dateOfDayCount(0.0), QDate(1899, 12, 30));
}

TEST(DayCount, KnownDays) {
  EXPECT_EQ(dayCountOf(QDate(1900, 1, 1)), 2.0);
  EXPECT_EQ(dayCountOf(QDate(1970, 1, 1)), 25569.0);
  EXPECT_EQ(dayCountOf(QDate(2007, 10, 22)), 39377.0);
}

TEST(DayCount, DaysBeforeTheFirstAreNegative) {
  EXPECT_EQ(dayCountOf(QDate(1899, 12, 29)), -1.0);
  EXPECT_EQ(dateOfDayCount(-1.0), QDate(1899, 12, 29));
}

TEST(DayCount, ADateDropsTheTimeOfDay) {
  EXPECT_EQ(dateOfDayCount(39377.99), QDate(2007, 10, 22));
  EXPECT_EQ(dateOfDayCount(39378.0), QDate(2007, 10, 23));
}

TEST(DayCount, TheFractionIsTheTimeOfDay) {
  EXPECT_EQ(dateTimeOfDayCount(39377.5), QDateTime(QDate(2007, 10, 22), QTime(12, 0), Qt::UTC));
  EXPECT_EQ(dateTimeOfDayCount(39377.0 + 1.0 / 86400), QDateTime(QDate(2007, 10, 22), QTime(0, 0, 1), Qt::UTC));
}

TEST(DayCount, TheLastHalfSecondOfADayRoundsToTheNextDay) {
  EXPECT_EQ(dateTimeOfDayCount(39377.999999), QDateTime(QDate(2007, 10, 23), QTime(0, 0), Qt::UTC));
}

TEST(DayCount, AbsurdCountsAreNoDates) {
  EXPECT_FALSE(dateOfDayCount(1e300).isValid());
  EXPECT_FALSE(dateOfDayCount(-1e300).isValid());
  EXPECT_FALSE(dateOfDayCount(std::numeric_limits<double>::quiet_NaN()).isValid());
  EXPECT_FALSE(dateOfDayCount(std::numeric_limits<double>::infinity()).isValid());
  EXPECT_FALSE(dateTimeOfDayCount(1e300).isValid());
  EXPECT_FALSE(dateTimeOfDayCount(std::numeric_limits<double>::quiet_NaN()).isValid());
}

TEST(DayCount, EveryDateComesBack) {
  EXPECT_TRUE(rc::check("a date is the date of its day count", [] {
    const QDate date = QDate(1800, 1, 1).addDays(*rc::gen::inRange(0, 200000));
    RC_ASSERT(dateOfDayCount(dayCountOf(date)) == date);
    RC_ASSERT(dateTimeOfDayCount(dayCountOf(date)).date() == date);
  }));
}

}  // namespace
}  // namespace elevenfive
