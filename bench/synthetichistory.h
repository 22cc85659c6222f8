// A made-up history of any length, as an export writes it.
#pragma once

#include <QDate>
#include <QFile>
#include <QString>
#include <array>
#include <random>
#include <stdexcept>

#include "model/numbers.h"

namespace elevenfive {

/// Writes random draws, ten a day from 2007 on, the same at every call.
inline void writeHistory(const QString& path, int draws) {
  std::mt19937 random(20070101);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    throw std::runtime_error("cannot write the synthetic history");
  QDate date(2007, 1, 1);
  std::array<int, numberCount> numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  for (int i = 0; i < draws; ++i) {
    if (i % 10 == 0 && i > 0)
      date = date.addDays(1);
    std::shuffle(numbers.begin(), numbers.end(), random);
    QByteArray line =
        date.toString(QStringLiteral("yyMMdd")).toLatin1() + (i % 10 < 9 ? "0" : "") + QByteArray::number(i % 10 + 1);
    for (std::size_t n = 0; n < drawSize; ++n)
      line += (numbers[n] < 10 ? " 0" : " ") + QByteArray::number(numbers[n]);
    file.write(line + "\r\n");
  }
}

}  // namespace elevenfive
