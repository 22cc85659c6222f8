#include "history/drawrows.h"

#include "model/errors.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int blockSize = 1024;

}  // namespace

DrawRows::DrawRows(Store& store, Qihao from, Qihao to)
    : block_(store.query("读取开奖记录",
                         "SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录"
                         " WHERE 期号 > ? AND 期号 <= ? ORDER BY 期号 LIMIT ?")),
      to_(to),
      after_(qint64{from} - 1) {}

std::optional<DrawRow> DrawRows::next() {
  if (position_ == rows_.size())
    fetch();
  if (rows_.empty())
    return std::nullopt;
  return rows_[position_++];
}

void DrawRows::fetch() {
  rows_.clear();
  position_ = 0;
  block_.bind(after_, to_, blockSize);
  while (block_.next()) {
    DrawRow row{block_.integer(0), {}};
    for (int i = 0; i < drawSize; ++i)
      row.numbers[static_cast<std::size_t>(i)] = block_.integer(i + 1);
    rows_.push_back(row);
  }
  block_.reset();
  if (!rows_.empty())
    after_ = rows_.back().qihao;
}

void checkNumbers(const DrawRow& row) {
  for (const int n : row.numbers)
    if (!isNumber(n))
      throw NumberFault(
          u"第 %1 期的号码 %2 不在 01 到 11 之间，统计到此为止。请更正或删除这一期后再统计。"_s.arg(row.qihao).arg(
              twoDigits(n)));
}

int countDraws(Store& store, Qihao from, Qihao to) {
  return store.value("统计开奖记录", "SELECT COUNT(*) FROM 历史记录 WHERE 期号 >= ? AND 期号 <= ?", from, to)
      .value_or(0);
}

}  // namespace elevenfive
