#include "engine/patternfilters.h"

#include <algorithm>

#include "engine/numbersets.h"
#include "engine/standardpass.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Code of a form by the size of its largest class and how many classes it has; each pair has one partition of five numbers.
using FormTable = std::array<std::array<int, drawSize + 1>, drawSize + 1>;

constexpr FormTable tailForms = [] {
  FormTable code{};
  code[1][5] = 0;  // 1,1,1,1,1
  code[2][4] = 1;  // 2,1,1,1
  code[2][3] = 2;  // 2,2,1
  code[3][3] = 3;  // 3,1,1
  code[3][2] = 4;  // 3,2
  code[4][2] = 5;  // 4,1
  code[5][1] = 6;  // 5
  return code;
}();

/// Tens digits have two classes at most, so their forms are fewer and have codes of their own.
constexpr FormTable headForms = [] {
  FormTable code{};
  code[3][2] = 0;  // 3,2
  code[4][2] = 1;  // 4,1
  code[5][1] = 2;  // 5
  return code;
}();

struct PatternStage {
  QStringView label;
  int code;
  int firstId;
  int lastId;
  QStringView classes;  ///< columns of 号码特性: this name, then 0, 1, ...
  int classCount;
  const FormTable* forms = &tailForms;
};

/// The code of a row's form; -1 where the classes of 号码特性 give no form of five numbers.
int formOf(const std::vector<NumberSet>& classes, const FormTable& forms, const Draw& numbers) {
  int largest = 0;
  int occupied = 0;
  for (const NumberSet& members : classes) {
    const int count = countIn(members, numbers);
    largest = std::max(largest, count);
    occupied += count > 0 ? 1 : 0;
  }
  if (largest < 1 || occupied > drawSize)
    return -1;
  return forms[static_cast<std::size_t>(largest)][static_cast<std::size_t>(occupied)];
}

int runPattern(const RunContext& run, Qihao period, const PatternStage& stage) {
  const MakeAttribute form = [&stage](const RunContext& context, Qihao) -> Attribute {
    QStringList columns;
    for (int j = 0; j < stage.classCount; ++j)
      columns << stage.classes.toString() + QString::number(j);
    return [classes = readNumberSets(context.gConn, columns), forms = stage.forms](const Draw& numbers) {
      return formOf(classes, *forms, numbers);
    };
  };
  return runStandardPass(run, period, {stage.label.toString(), stage.code, stage.firstId, stage.lastId, form});
}

constexpr PatternStage weiXingshi{u"[尾数形式]", 37, 4000, 4009, u"尾", 10};
constexpr PatternStage jianju9{u"[间距九]", 38, 4010, 4019, u"九", 10};
constexpr PatternStage jianju7{u"[间距七]", 39, 4020, 4029, u"七", 10};
constexpr PatternStage jianju11{u"[间距十一]", 40, 4030, 4040, u"十一", 11};
constexpr PatternStage jianju12{u"[间距十二]", 41, 4050, 4069, u"十二", 12};
constexpr PatternStage touXingshi{u"[头数形式]", 42, 4070, 4079, u"头", 10, &headForms};

}  // namespace

int filter_WeiXingshi(const RunContext& run, Qihao period) {
  return runPattern(run, period, weiXingshi);
}

int filter_TouXingshi(const RunContext& run, Qihao period) {
  return runPattern(run, period, touXingshi);
}

int filter_Jianju9(const RunContext& run, Qihao period) {
  return runPattern(run, period, jianju9);
}

int filter_Jianju7(const RunContext& run, Qihao period) {
  return runPattern(run, period, jianju7);
}

int filter_Jianju11(const RunContext& run, Qihao period) {
  return runPattern(run, period, jianju11);
}

int filter_Jianju12(const RunContext& run, Qihao period) {
  return runPattern(run, period, jianju12);
}

}  // namespace elevenfive
