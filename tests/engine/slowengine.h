// A second run engine for the tests: slow, obvious, over plain arrays, without a store and without any code of the engine.
//
// It is written from the rules of a run alone, one step after the other, so that a reader can hold it against them; the
// engine proper is then compared with it row by row and line by line.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "model/numbers.h"
#include "tests/engine/slowattributes.h"
#include "tests/engine/slowscoring.h"

namespace elevenfive::slow {

/// One draw of the history.
struct PastDraw {
  Qihao qihao = 0;
  Draw numbers{};
  int sum = 0;     ///< 和值; an empty one reads as 0, like the two others
  int units = 0;   ///< 尾数和值
  int misses = 0;  ///< 遗漏值总和
};

/// One row of 日志表. Marks that nobody has written yet are empty.
struct Row {
  int id = 0;
  int xuhao = 0;  ///< 序号
  Qihao qihao = 0;
  Draw numbers{};
  std::optional<int> guolv;     ///< 过滤标记
  std::optional<int> suoshui;   ///< 缩水标记
  std::optional<int> jingxuan;  ///< 精选标记
  std::optional<int> linshi;    ///< 临时数据
};

/// The row of 历史数据过滤, as far as a run reads it.
struct MatchSetting {
  int inUse = 1;      ///< 使用状态
  int window = 5;     ///< 最小值
  int threshold = 4;  ///< 匹配值
};

/// Ends a run: a draw that is needed is missing, or a row holds what is no number.
struct Fault {};

class SlowEngine {
 public:
  // What the store would hold.
  std::vector<PastDraw> history;          ///< in any order
  std::vector<Row> rows;                  ///< in any order
  std::map<int, int> values;              ///< 过滤条件, by ID
  std::map<int, int> uses;                ///< 过滤条件使用情况, by 条件
  std::map<QString, Members> attributes;  ///< the boolean columns of 号码特性
  std::map<int, QString> aliases;         ///< 别名, by 序号
  MatchSetting match;

  // What the engine keeps between its steps.
  std::array<int, 200> buffer{};  ///< tiaojianValue
  int tolerance = 0;              ///< rongcuoValue
  bool stop = false;              ///< userStop
  std::array<bool, 4> warned{};   ///< historyWarned

  // What the person sees and does.
  QString status;
  QStringList boxes;          ///< texts of all boxes, in order
  bool deleteOldRows = true;  ///< the answer to the question of the expansion
  int yields = 0;             ///< counted over the life of the engine
  int stopAtYield = 0;        ///< the stop is asked for during this yield; 0: never

  /// The expansion. Returns the number of rows of the period.
  int initXuanhao(Qihao period);

  /// The run. False where a fault ended it; rows and status text are then as they were before that stage.
  bool runGuolvSuoshui(Qihao period);

  int countConditions() const;

  /// 精选号码: leaves so many rows of a period.
  void analyseHaoma(Qihao period, int wanted);

  /// 智能优化 ahead of a reduction of this type.
  void zhinengYouhua(Qihao period, int type);

  /// The row of an ID; throws where it is missing.
  Row& rowOf(int id);

 private:
  using Attribute = std::function<int(const Draw&)>;

  void yield();
  void load(int first, int last);
  int use(int code) const;
  Qihao previous(Qihao period, int n) const;
  Draw drawOf(Qihao period) const;
  std::vector<int> openRows(Qihao period) const;
  void deleteBelowZero(Qihao period);
  int countRows(Qihao period) const;
  Members members(const QString& column) const;
  std::vector<Members> classes(const QString& family, int count) const;

  bool resetMarks(Qihao period);
  void countedStages(Qihao period);
  void guarded(const std::function<void()>& stage);
  void standardPass(Qihao period, int code, int first, int last, const QString& label, const Attribute& attribute);
  void scan(Qihao period, const QString& label, const std::vector<int>& ids, const QString& tip,
            const Attribute& attribute);
  void repeatedNumbers(Qihao period);
  void diagonalNumbers(Qihao period);
  void temperature(Qihao period, int draws);
  void warn(int flag, const QString& name);
  void excludeParity(Qihao period, int pattern);
  QString parityText(int first) const;
  void applyTolerance(Qihao period);
  void positionFilter(Qihao period);
  void matchFilter(Qihao period);
  void reduce(Qihao period, int type);
  std::vector<PastDraw> before(Qihao period) const;
  TenDraws tenDraws(Qihao period) const;
};

}  // namespace elevenfive::slow
