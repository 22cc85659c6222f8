#include "conditions/conditionsummary.h"

#include <gtest/gtest.h>

#include "conditions/conditionrows.h"
#include "model/store.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class Summary : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  Store& store = workspace.store();

  QStringList lines() { return buildConditionSummary(store).split(u"\r\n"_s); }

  /// The line that begins with a label, without the label.
  QString line(const QString& label) {
    for (const QString& text : lines())
      if (text.startsWith(label))
        return text.mid(label.size());
    return u"(no such line)"_s;
  }

  void allow(int first, int last, int value) {
    store.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= ? AND ID <= ?", value, first, last);
  }

  void useAll(int value) { store.execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = ?", value); }
};

TEST_F(Summary, FactorySetIsTextByText) {
  EXPECT_EQ(buildConditionSummary(store),
            u" 已选“拖码”： ０１,０２,０３,０４,０５,０６,０７,０８,０９,１０,１１\r\n"
            u" 已选“胆码”： \r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 定位过滤容错条件个数： ０\r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 和值取值范围： [１９-４０]\r\n"
            u" 头数和值范围：  未 使 用\r\n"
            u" 尾数和值范围：  未 使 用\r\n"
            u" 奇数和值取值范围：  未 使 用\r\n"
            u" 偶数和值取值范围：  未 使 用\r\n"
            u" 跨度取值范围： [５-１４]\r\n"
            u" 最大间距取值范围： [２-１０]\r\n"
            u" 温度值５取值范围： [３-１６]\r\n"
            u" 温度值１０取值范围： [９-２５]\r\n"
            u" 连号取值范围：  未 使 用\r\n"
            u" 重叠号取值范围： ０,１,２,３,４\r\n"
            u" 斜位码取值范围： １,２,３,４,５\r\n"
            u" ＡＣ值取值范围： １,２,３,４,５,６\r\n"
            u" 奇数个数取值范围：  未 使 用\r\n"
            u" 偶数个数取值范围：  未 使 用\r\n"
            u" 大数个数取值范围：  未 使 用\r\n"
            u" 小数个数取值范围：  未 使 用\r\n"
            u" 高尾码个数取值范围：  未 使 用\r\n"
            u" 低尾码个数取值范围：  未 使 用\r\n"
            u" 区间1开出号码个数取值范围：  未 使 用\r\n"
            u" 区间2开出号码个数取值范围：  未 使 用\r\n"
            u" 区间3开出号码个数取值范围：  未 使 用\r\n"
            u" 区间4开出号码个数取值范围：  未 使 用\r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 尾数形式：  未 使 用\r\n"
            u" 头数形式：  未 使 用\r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 自定义组1 ——　未 使 用 \r\n 自定义组2 ——　未 使 用 \r\n 自定义组3 ——　未 使 用 \r\n 自定义组4 ——　未 使 "
            u"用 \r\n"
            u" 自定义组5 ——　未 使 用 \r\n 自定义组6 ——　未 使 用 \r\n 自定义组7 ——　未 使 用 \r\n 自定义组8 ——　未 使 "
            u"用 \r\n"
            u" 自定义组9 ——　未 使 用 \r\n 自定义组10 ——　未 使 用 \r\n 自定义组11 ——　未 使 用 \r\n 自定义组12 ——　未 "
            u"使 用 \r\n"
            u" 自定义组13 ——　未 使 用 \r\n 自定义组14 ——　未 使 用 \r\n 自定义组15 ——　未 使 用 \r\n 自定义组16 "
            u"——　未 使 用 \r\n"
            u" 自定义组17 ——　未 使 用 \r\n 自定义组18 ——　未 使 用 \r\n 自定义组19 ——　未 使 用 \r\n 自定义组20 "
            u"——　未 使 用 \r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 历史数据过滤：  过滤掉最近: ５ 期内，匹配值为: ４ 及以上的号码.\r\n"
            u" ----------------------------------------------------------- \r\n"
            u" √ 【排除掉上一期的单双组合形式】\r\n"
            u" ----------------------------------------------------------- \r\n"
            u" 缩 水 类 型： 保五型\r\n"
            u" 缩水智能优化： 未 使 用\r\n"_s);
}

TEST_F(Summary, PicksAreToldByKind) {
  allow(1, 11, 0);
  allow(3, 3, 1);
  allow(10, 11, 2);
  EXPECT_EQ(line(u" 已选“拖码”： "_s), u"０３"_s);
  EXPECT_EQ(line(u" 已选“胆码”： "_s), u"１０,１１"_s);
}

TEST_F(Summary, PositionsInUseShowTheirNumbers) {
  store.execute("test", "UPDATE 号码特性 SET 第2位 = 1, 第6位 = 1 WHERE 号码 IN (4, 11)");
  setConditionUse(store, 31, 1);
  setConditionUse(store, 35, 1);
  setConditionValue(store, 3901, 2);
  EXPECT_EQ(line(u" 第 ２ 位允许开出的号码： "_s), u"０４,１１"_s);
  EXPECT_EQ(line(u" 第 １ 位"_s), u"(no such line)"_s);
  EXPECT_EQ(line(u" 第 ６ 位"_s), u"(no such line)"_s);
  EXPECT_EQ(line(u" 定位过滤容错条件个数： "_s), u"２"_s);
}

TEST_F(Summary, FormsStandInBrackets) {
  useAll(1);
  allow(4000, 4009, 0);
  allow(4000, 4001, 1);
  EXPECT_EQ(line(u" 连号取值范围： "_s), u"（０）（２）（２+２）（３）（３+２）（４）"_s);
  EXPECT_EQ(line(u" 尾数形式： "_s), u"（１,１,１,１,１）（２,１,１,１）"_s);
  // Rows of the stretch beyond the three forms stand for nothing.
  EXPECT_EQ(line(u" 头数形式： "_s), u"（３,２）（４,１）（５）"_s);
}

TEST_F(Summary, EveryConditionInUseShowsItsValues) {
  useAll(1);
  for (const QString& text : lines())
    EXPECT_FALSE(text.contains(u"： 未 使 用"_s) || text.contains(u"：  未 使 用"_s)) << text.toStdString();
  EXPECT_EQ(line(u" 尾数和值范围： "_s), u"[８-３３]"_s);
  EXPECT_EQ(line(u" 区间4开出号码个数取值范围： "_s), u"０"_s);
}

TEST_F(Summary, ConditionInUseWithoutValuesShowsNone) {
  allow(1000, 1170, 0);
  EXPECT_EQ(line(u" 和值取值范围： "_s), QString());
}

TEST_F(Summary, GroupsInUseShowMembersAndCounts) {
  store.execute("test", "UPDATE 号码特性 SET 自定义组2 = 1 WHERE 号码 IN (1, 11)");
  setConditionUse(store, 21, 1);
  EXPECT_EQ(line(u" 自定义组2 "_s), u"——　号码：（０１,１１） 允许开出个数（２个,４个）"_s);
}

TEST_F(Summary, MatchThatIsOffSaysSo) {
  store.execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0");
  EXPECT_EQ(line(u" 历史数据过滤： "_s), u" 未 使 用"_s);
}

TEST_F(Summary, ParityPatternsInUseAreListed) {
  setConditionUse(store, 70, 0);
  setConditionUse(store, 72, 1);
  EXPECT_EQ(line(u" √ 排除掉单双组合： "_s), u"双单单单*"_s);
  EXPECT_EQ(line(u" √ 【"_s), u"(no such line)"_s);
}

TEST_F(Summary, WithoutParityPatternsThereIsNoEmptyGroup) {
  setConditionUse(store, 70, 0);
  const QStringList text = lines();
  for (qsizetype i = 1; i < text.size(); ++i)
    EXPECT_FALSE(text[i] == summaryRule && text[i - 1] == summaryRule);
  EXPECT_EQ(text.count(summaryRule.toString()), 6);
}

TEST_F(Summary, OptimisationIsTold) {
  setConditionUse(store, 45, 1);
  setConditionValue(store, 3900, 7);
  EXPECT_EQ(line(u" 缩水智能优化： "_s), u"★☆★☆★ 使 用 ★☆★☆★"_s);
  EXPECT_EQ(line(u" 缩 水 类 型： "_s), u"保七型"_s);
}

}  // namespace

}  // namespace elevenfive
