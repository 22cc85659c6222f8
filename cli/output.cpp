#include "cli/output.h"

#include <sqlite3.h>

#include <QLocale>
#include <algorithm>
#include <iterator>
#include <ostream>

#include "model/daycount.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Columns that hold a day count. A result column is one by the column that it comes from or by its own name.
constexpr QStringView dateColumns[] = {u"开奖日期", u"最后登陆时间"};

void write(std::ostream& out, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  out.write(bytes.constData(), bytes.size());
}

bool isDateName(const char* name) {
  return std::find(std::begin(dateColumns), std::end(dateColumns), QString::fromUtf8(name)) != std::end(dateColumns);
}

bool isDateColumn(sqlite3_stmt* statement, int column) {
  return isDateName(sqlite3_column_origin_name(statement, column)) ||
         isDateName(sqlite3_column_name(statement, column));
}

QString dateText(double dayCount) {
  const QDateTime moment = dateTimeOfDayCount(dayCount);
  return moment.toString(moment.time() == QTime(0, 0) ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd HH:mm:ss"_s);
}

/// Day counts that a calendar can show.
bool isCalendarDay(double dayCount) {
  return dayCount > -693594.0 && dayCount < 2958466.0;  // years 1 to 9999
}

QString cellText(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_FLOAT: {
      const double value = sqlite3_column_double(statement, column);
      if (isCalendarDay(value) && isDateColumn(statement, column))
        return dateText(value);
      return QString::number(value, 'g', QLocale::FloatingPointShortest);
    }
    default: {
      const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      return QString::fromUtf8(bytes, sqlite3_column_bytes(statement, column));
    }
  }
}

}  // namespace

void printText(std::ostream& out, const QString& text) {
  if (text.isEmpty())
    return;
  QString lines = text;
  lines.replace(u"\r\n"_s, u"\n"_s);
  if (!lines.endsWith(u'\n'))
    lines += u'\n';
  write(out, lines);
}

void printRow(std::ostream& out, const QStringList& cells) {
  QStringList flat = cells;
  for (QString& cell : flat)
    for (QChar& ch : cell)
      if (ch.category() == QChar::Other_Control)
        ch = u' ';
  write(out, flat.join(u'\t') + u'\n');
}

void printHeader(std::ostream& out, sqlite3_stmt* statement) {
  QStringList names;
  for (int column = 0; column < sqlite3_column_count(statement); ++column)
    names << QString::fromUtf8(sqlite3_column_name(statement, column));
  printRow(out, names);
}

void printCurrentRow(std::ostream& out, sqlite3_stmt* statement) {
  QStringList cells;
  for (int column = 0; column < sqlite3_column_count(statement); ++column)
    cells << cellText(statement, column);
  printRow(out, cells);
}

}  // namespace elevenfive
