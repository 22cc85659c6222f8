// Dates in the store: a day count with the time of day as its fraction. Day 0 is 1899-12-30.
#pragma once

#include <QDate>
#include <QDateTime>
#include <cmath>

namespace elevenfive {

/// The day count of a date at midnight.
inline double dayCountOf(const QDate& date) {
  return static_cast<double>(QDate(1899, 12, 30).daysTo(date));
}

/// The date of a day count, without its time of day; no date where the count is absurd (beyond some 27,000 years).
inline QDate dateOfDayCount(double dayCount) {
  if (!(std::abs(dayCount) < 1e7))
    return {};
  return QDate(1899, 12, 30).addDays(static_cast<qint64>(std::floor(dayCount)));
}

/// Date and time of a day count, to the second; the time zone plays no part. Invalid where the date is.
inline QDateTime dateTimeOfDayCount(double dayCount) {
  const QDate date = dateOfDayCount(dayCount);
  if (!date.isValid())
    return {};
  const double day = std::floor(dayCount);
  const auto seconds = static_cast<int>(std::lround((dayCount - day) * 86400.0));
  return QDateTime(date, QTime(0, 0), Qt::UTC).addSecs(seconds);
}

}  // namespace elevenfive
