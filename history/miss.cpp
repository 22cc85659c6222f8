#include "history/miss.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "history/drawrows.h"
#include "history/pass.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView sumText = u"  ■■■■■  正在统计各期号码的遗漏值。。。。。。  ";

/// whole / parts, rounded half to even; both are positive or 0, parts is not 0.
int roundedHalfToEven(int whole, int parts) {
  const int quotient = whole / parts;
  const int twice = whole % parts * 2;
  const bool up = twice > parts || (twice == parts && quotient % 2 == 1);
  return quotient + (up ? 1 : 0);
}

/// The gaps of the eleven numbers, gathered draw by draw.
class GapCounter final {
 public:
  /// The next draw; returns its index.
  int add(const Draw& numbers) {
    for (const int n : numbers)
      if (isNumber(n))
        hit(gaps_[static_cast<std::size_t>(n)]);
    return index_++;
  }

  /// The figures as seen from the draw with index zongNow.
  [[nodiscard]] MissLabels figuresAt(int zongNow) const {
    MissLabels labels;
    MissFigures figures;  // keeps what the number before left
    for (std::size_t n = 1; n < gaps_.size(); ++n) {
      const Gaps& gaps = gaps_[n];
      figures.hits = gaps.hits;
      if (gaps.hits > 1) {
        figures.longest = gaps.longest;
        figures.average = roundedHalfToEven(gaps.sum, gaps.hits - 1);
        figures.current = zongNow - gaps.last;
        figures.lastGap = gaps.lastGap;
      }
      labels.numbers[n] = figures;
      labels.longestAll = std::max(labels.longestAll, figures.longest);
    }
    return labels;
  }

 private:
  struct Gaps {
    int hits = 0;
    int last = -1;  ///< index of the last hit
    int sum = 0;
    int longest = 0;
    int lastGap = 0;
  };

  /// A row that holds a number twice hits it once.
  void hit(Gaps& gaps) const {
    if (gaps.last == index_)
      return;
    gaps.lastGap = index_ - gaps.last - 1;
    gaps.longest = std::max(gaps.longest, gaps.lastGap);
    gaps.sum += gaps.lastGap;
    gaps.last = index_;
    ++gaps.hits;
  }

  std::array<Gaps, numberCount + 1> gaps_{};
  int index_ = 0;
};

/// What marking number after number leaves in 遗漏数据: the largest one.
int markOf(const Draw& numbers) {
  int mark = 0;
  for (const int n : numbers)
    if (isNumber(n))
      mark = std::max(mark, n);
  return mark;
}

/// Goes through the draws up to a period and writes 总期号 and 遗漏数据 where they are not yet as they shall be: a second
/// calculation finds most rows as the first one left them.
///
/// Rewriting a row costs more than all else here, so neighbouring rows are rewritten by one statement: where periods follow
/// each other without a gap, 总期号 is the period less one and the same number, and of a sorted draw the largest number
/// is 号码5.
class IndexPass final {
 public:
  IndexPass(Store& store, Qihao to)
      : rows_(store, std::numeric_limits<Qihao>::min(), to, DrawColumns::numbersAndMarks),
        update_(store.query(purpose, "UPDATE 历史记录 SET 总期号 = ?, 遗漏数据 = ? WHERE 期号 = ?")),
        updateRun_(store.query(
            purpose, "UPDATE 历史记录 SET 总期号 = 期号 + ?, 遗漏数据 = 号码5 WHERE 期号 >= ? AND 期号 <= ?")),
        transaction_(store) {}

  std::optional<DrawRow> next() { return rows_.next(); }

  void write(const DrawRow& row, int index, int mark) {
    if (row.zongQihao == index && row.yilouShuju == mark)
      return;
    if (mark != row.numbers.back()) {
      update_.run(index, mark, row.qihao);
      transaction_.rowDone();
      return;
    }
    if (runLength_ == longestRun || row.qihao != runFirst_ + runLength_)
      writeRun();
    if (runLength_ == 0) {
      runFirst_ = row.qihao;
      runOffset_ = index - runFirst_;
    }
    ++runLength_;
  }

  void commit() {
    writeRun();
    transaction_.commit();
  }

 private:
  static constexpr const char* purpose = "统计遗漏值";
  static constexpr int longestRun = 256;  ///< so that no statement holds up the event loop

  void writeRun() {
    if (runLength_ == 0)
      return;
    updateRun_.run(runOffset_, runFirst_, runFirst_ + runLength_ - 1);
    for (; runLength_ > 0; --runLength_)
      transaction_.rowDone();
  }

  DrawRows rows_;
  Statement update_;
  Statement updateRun_;
  PassTransaction transaction_;
  qint64 runFirst_ = 0;   ///< the first period of the rows that wait to be written together
  qint64 runOffset_ = 0;  ///< 总期号 less 期号 of each of them
  int runLength_ = 0;
};

void keepCurrent(YilouNow& yilouNow, const MissLabels& labels) {
  for (std::size_t n = 1; n < yilouNow.size(); ++n)
    yilouNow[n] = labels.numbers[n].current;
}

void keepLargest(YilouNow& yilouNow) {
  yilouNow[0] = *std::max_element(yilouNow.begin() + 1, yilouNow.end());
}

/// The misses of a draw's numbers. Number 0, which a draw with a missing number holds, stands for the largest.
int missSum(const YilouNow& yilouNow, const DrawRow& row) {
  int sum = 0;
  for (const int x : row.numbers) {
    if (x < 0 || x > numberCount)
      checkNumbers(row);
    sum += yilouNow[static_cast<std::size_t>(x)];
  }
  return sum;
}

}  // namespace

void resetZongQihao(Store& store, Qihao q, Events& events) {
  IndexPass rows(store, q);
  int index = 0;
  while (const std::optional<DrawRow> row = rows.next()) {
    rows.write(*row, index++, 0);
    events.yield();
  }
  rows.commit();
}

MissLabels calcYilou(Store& store, Qihao q, bool showLabels, YilouNow& yilouNow, Progress* progress, Events& events) {
  PassBar bar(showLabels ? progress : nullptr, numberCount, 1);
  IndexPass rows(store, q);
  GapCounter gaps;
  int zongNow = 0;
  while (const std::optional<DrawRow> row = rows.next()) {
    const int index = gaps.add(row->numbers);
    rows.write(*row, index, markOf(row->numbers));
    if (row->qihao == q)
      zongNow = index;
    events.yield();
  }
  rows.commit();
  for (int n = 1; n <= numberCount; ++n) {
    bar.set(n);
    events.yield();
  }
  const MissLabels labels = gaps.figuresAt(zongNow);
  if (!showLabels)
    keepCurrent(yilouNow, labels);
  keepLargest(yilouNow);
  return labels;
}

void calcYilouSum(Store& store, Qihao from, Qihao to, YilouNow& yilouNow, Progress* progress, Events& events,
                  StatusPanels* panels) {
  const Qihao prev = getPrevQihao(store, from, 1);
  const int count = countDraws(store, prev, to);
  PassBar bar(progress, count, 0);
  const PanelEmptied panel(progress != nullptr ? panels : nullptr);
  if (progress != nullptr && panels != nullptr)
    panels->setPanel(StatusPanels::runningPass, sumText.toString());
  if (count < 2)
    return;
  Statement update = store.query("统计遗漏值", "UPDATE 历史记录 SET 遗漏值总和 = ? WHERE 期号 = ?");
  IndexPass rows(store, to);
  GapCounter gaps;
  bool inRange = false;  // the row before was one of the range, so that yilouNow stands for it
  int done = 0;
  while (const std::optional<DrawRow> row = rows.next()) {
    if (inRange)
      update.run(missSum(yilouNow, *row), row->qihao);
    const int index = gaps.add(row->numbers);
    rows.write(*row, index, markOf(row->numbers));
    inRange = row->qihao >= prev;
    if (inRange) {
      keepCurrent(yilouNow, gaps.figuresAt(index));
      keepLargest(yilouNow);
      bar.set(++done);
    }
    events.yield();
  }
  rows.commit();
  bar.fill();
}

}  // namespace elevenfive
