// The rows of a fresh store against lists written down here a second time, from what each condition allows by default.
#include "model/defaultrows.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// A stretch of conditions: base ID, last ID, and the attribute values that are allowed by default.
struct Stretch {
  int first;
  int last;
  std::vector<int> allowed;
};

std::vector<int> range(int low, int high) {
  std::vector<int> values;
  for (int v = low; v <= high; ++v)
    values.push_back(v);
  return values;
}

std::vector<Stretch> stretches() {
  return {
      {1, 40, range(0, 10)},                // picks of 01 to 11
      {101, 116, {1}},                      // second field: 02
      {1000, 1170, range(19, 40)},          // 和值
      {2000, 2170, range(1, 45)},           // 奇数和值
      {3000, 3170, range(0, 44)},           // 偶数和值
      {3300, 3340, range(5, 14)},           // 跨度
      {3400, 3440, range(2, 10)},           // 最大间距
      {3450, 3460, range(0, 5)},            // 连号
      {3470, 3480, range(0, 4)},            // 重叠号
      {3490, 3500, range(1, 5)},            // 斜位码
      {3600, 3630, range(1, 6)},            // AC值
      {3640, 3649, range(0, 5)},            // 奇数个数
      {3650, 3659, range(0, 5)},            // 偶数个数
      {3660, 3669, range(0, 5)},            // 大数个数
      {3670, 3679, range(0, 4)},            // 小数个数
      {3680, 3689, range(0, 5)},            // 高尾码个数
      {3690, 3699, range(0, 4)},            // 低尾码个数
      {3700, 3709, range(0, 4)},            // 区间1
      {3710, 3719, range(0, 4)},            // 区间2
      {3720, 3729, range(0, 4)},            // 区间3
      {3730, 3739, {0}},                    // 区间4
      {3800, 3809, {}},                     // 自定义组1
      {3810, 3819, {2, 4}},                 // 自定义组2
      {3820, 3829, {2, 3}},                 // 自定义组3
      {3830, 3839, {3, 4}},                 // 自定义组4
      {3840, 3869, {}},                     // 自定义组5 to 7
      {3870, 3879, {2, 3}},                 // 自定义组8
      {3880, 3889, {1, 2}},                 // 自定义组9
      {3890, 3899, {1, 2}},                 // 自定义组10
      {3900, 3901, {}},                     // reduction type (5, below) and position tolerance
      {4000, 4009, range(0, 2)},            // 尾数形式
      {4010, 4019, range(0, 3)},            // 间距九
      {4020, 4029, range(0, 4)},            // 间距七
      {4030, 4040, range(0, 2)},            // 间距十一
      {4050, 4069, range(0, 2)},            // 间距十二
      {4070, 4079, {0, 1, 2, 3, 4, 6, 7}},  // 头数形式
      {4080, 4099, range(0, 4)},            // 头数和值
      {4100, 4159, range(8, 33)},           // 尾数和值
      {4160, 4179, range(3, 16)},           // 温度值5
      {4180, 4209, range(9, 25)},           // 温度值10
      {4500, 4589, {}},                     // 自定义组11 to 19
      {4590, 4599, {1}},                    // 自定义组20
      {9999, 9999, {}},
  };
}

/// Pattern slots of the parity conditions: slot 0 to 9 of 5000, 5010, ... 5050.
constexpr const char* parityPatterns[] = {
    "0001012200",  // of the draw before: overwritten before each use
    "0111112200",  // 单单单单单
    "0011122200",  // 双单单单*
    "0000002200",  // 双双双双双
    "0000002200", "0000002200",
};

std::map<int, int> expectedConditions() {
  std::map<int, int> values;
  for (const Stretch& stretch : stretches()) {
    for (int id = stretch.first; id <= stretch.last; ++id)
      values[id] = 0;
    for (const int v : stretch.allowed)
      values[stretch.first + v] = 1;
  }
  values[3900] = 5;
  for (int j = 0; j <= 5; ++j)
    for (int slot = 0; slot <= 9; ++slot)
      values[5000 + 10 * j + slot] = parityPatterns[j][slot] - '0';
  values[5060] = 0;
  return values;
}

class DefaultRows : public ::testing::Test {
 protected:
  std::map<int, int> pairs(const char* sql) {
    std::map<int, int> values;
    Statement rows = w.store().query("test", sql);
    while (rows.next())
      values[rows.integer(0)] = rows.integer(1);
    return values;
  }
  int count(const char* sql) { return w.store().value("test", sql).value_or(-1); }

  TestWorkspace w;
};

TEST_F(DefaultRows, ThereAre1280Conditions) {
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件"), 1280);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 默认过滤条件"), 1280);
  EXPECT_EQ(expectedConditions().size(), 1280U);
  EXPECT_EQ(conditionIds().size(), 1280U);
}

TEST_F(DefaultRows, EveryConditionBeginsWithItsDefault) {
  EXPECT_EQ(pairs("SELECT ID, VALUE FROM 过滤条件"), expectedConditions());
}

TEST_F(DefaultRows, AResetRestores1ToId40) {
  EXPECT_EQ(count("SELECT VALUE FROM 过滤条件 WHERE ID = 40"), 0);
  EXPECT_EQ(count("SELECT VALUE FROM 默认过滤条件 WHERE ID = 40"), 1);
  std::map<int, int> expected = expectedConditions();
  expected[40] = 1;
  EXPECT_EQ(pairs("SELECT ID, VALUE FROM 默认过滤条件"), expected);
}

TEST_F(DefaultRows, AllElevenNumbersArePickedAsDrags) {
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40 AND VALUE = 1"), 11);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40 AND VALUE = 2"), 0);
}

TEST_F(DefaultRows, ThereAre63SwitchesWithThese13On) {
  std::map<int, int> expected;
  for (const auto& [low, high] : {std::pair{1, 47}, std::pair{51, 60}, std::pair{70, 75}})
    for (int code = low; code <= high; ++code)
      expected[code] = 0;
  for (const int code : {1, 4, 5, 7, 8, 9, 38, 39, 40, 41, 46, 47, 70})
    expected[code] = 1;
  EXPECT_EQ(expected.size(), 63U);
  EXPECT_EQ(pairs("SELECT 条件, 使用情况 FROM 过滤条件使用情况"), expected);
  EXPECT_EQ(pairs("SELECT 条件, 使用情况 FROM 默认过滤条件使用情况"), expected);
}

TEST_F(DefaultRows, TheSwitchCodes48To50And61To69DoNotExist) {
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件使用情况 WHERE 条件 BETWEEN 48 AND 50 OR 条件 BETWEEN 61 AND 69"), 0);
}

TEST_F(DefaultRows, TheMatchFilterHasOneRow) {
  EXPECT_EQ(w.rows("SELECT * FROM 历史数据过滤"), QStringList{u"1 5 2008266 4"_s});
}

TEST_F(DefaultRows, HistoryCandidatesAndScratchTablesAreEmpty) {
  for (const char* sql :
       {"SELECT COUNT(*) FROM 历史记录", "SELECT COUNT(*) FROM 日志表", "SELECT COUNT(*) FROM 号码分布",
        "SELECT COUNT(*) FROM TBLhmYLTJfenbu", "SELECT COUNT(*) FROM TBLyilouZhuhe"})
    EXPECT_EQ(count(sql), 0) << sql;
}

// The attributes of the eleven numbers.

class Attributes : public DefaultRows {
 protected:
  /// The numbers for which a column is true.
  std::set<int> members(const QString& column) {
    std::set<int> numbers;
    Statement rows = w.store().query("test", u"SELECT 号码, \"%1\" FROM 号码特性"_s.arg(column).toStdString());
    while (rows.next())
      if (rows.integer(1) == 1)
        numbers.insert(rows.integer(0));
    return numbers;
  }

  /// Columns name0, name1, ... hold exactly these numbers, and those up to last none.
  void expectFamily(const QString& name, int first, int last, const std::vector<std::set<int>>& expected) {
    for (int k = first; k <= last; ++k) {
      const auto i = static_cast<std::size_t>(k - first);
      EXPECT_EQ(members(name + QString::number(k)), i < expected.size() ? expected[i] : std::set<int>())
          << name.toStdString() << k;
    }
  }
};

TEST_F(Attributes, ElevenRowsWithIndexEqualToNumber) {
  EXPECT_EQ(w.rows("SELECT \"INDEX\", 号码 FROM 号码特性 ORDER BY \"INDEX\" ASC"),
            (QStringList{u"1 1"_s, u"2 2"_s, u"3 3"_s, u"4 4"_s, u"5 5"_s, u"6 6"_s, u"7 7"_s, u"8 8"_s, u"9 9"_s,
                         u"10 10"_s, u"11 11"_s}));
}

TEST_F(Attributes, NoneIsNull) {
  for (const AttributeColumn& column : attributeColumns())
    EXPECT_EQ(
        w.store().value("test", u"SELECT COUNT(*) FROM 号码特性 WHERE \"%1\" IS NULL"_s.arg(column.name).toStdString()),
        0);
}

TEST_F(Attributes, BigAndSmall) {
  EXPECT_EQ(members(u"大数"_s), (std::set{6, 7, 8, 9, 10, 11}));
  EXPECT_EQ(members(u"小数"_s), (std::set{1, 2, 3, 4, 5}));
}

TEST_F(Attributes, LowAndHighTail) {
  EXPECT_EQ(members(u"低尾码"_s), (std::set{1, 2, 3, 4, 10, 11}));
  EXPECT_EQ(members(u"高尾码"_s), (std::set{5, 6, 7, 8, 9}));
}

TEST_F(Attributes, Zones) {
  expectFamily(u"区间"_s, 1, 4, {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10, 11}});
}

TEST_F(Attributes, HeadDigits) {
  expectFamily(u"头"_s, 0, 9, {{1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11}});
}

TEST_F(Attributes, TailDigits) {
  expectFamily(u"尾"_s, 0, 9, {{10}, {1, 11}, {2}, {3}, {4}, {5}, {6}, {7}, {8}, {9}});
}

TEST_F(Attributes, GapNine) {
  expectFamily(u"九"_s, 0, 9, {{1, 10}, {2, 11}, {3}, {4}, {5}, {6}, {7}, {8}, {9}});
}

TEST_F(Attributes, GapSeven) {
  expectFamily(u"七"_s, 0, 9, {{1, 8}, {2, 9}, {3, 10}, {4, 11}, {5}, {6}, {7}});
}

TEST_F(Attributes, GapTwelve) {
  expectFamily(u"十二"_s, 0, 11, {{1}, {2}, {3}, {4}, {5}, {6}, {7}, {8}, {9}, {10}, {11}});
}

TEST_F(Attributes, GapEleven) {
  expectFamily(u"十一"_s, 0, 10, {{1}, {2}, {3}, {4}, {5}, {6}, {7}, {8}, {9}, {10}, {11}});
}

TEST_F(Attributes, GroupsAndPositionsAreEmpty) {
  expectFamily(u"自定义组"_s, 1, 20, {});
  for (int p = 1; p <= 7; ++p)
    EXPECT_EQ(members(u"第%1位"_s.arg(p)), std::set<int>()) << p;
}

// The catalogues.

TEST_F(DefaultRows, TheCatalogueHas29GamesInThisOrderWithTheFirstInUse) {
  EXPECT_EQ(w.rows("SELECT 序号, 名称, 使用 FROM 彩票类型 ORDER BY 序号"), (QStringList{u"0 山东11选5(十一运夺金) 1"_s,
                                                                                        u"1 广东11选5 0"_s,
                                                                                        u"2 多乐彩(江西11选5) 0"_s,
                                                                                        u"3 重庆11选5 0"_s,
                                                                                        u"4 江苏11选5 0"_s,
                                                                                        u"5 上海11选5 0"_s,
                                                                                        u"6 黑龙江11选5 0"_s,
                                                                                        u"7 浙江11选5 0"_s,
                                                                                        u"8 辽宁11选5 0"_s,
                                                                                        u"9 吉林11选5 0"_s,
                                                                                        u"10 四川11选5 0"_s,
                                                                                        u"11 湖北11选5 0"_s,
                                                                                        u"12 安徽11选5 0"_s,
                                                                                        u"13 山西11选5 0"_s,
                                                                                        u"14 贵州11选5 0"_s,
                                                                                        u"15 云南11选5 0"_s,
                                                                                        u"16 福建11选5 0"_s,
                                                                                        u"17 天津11选5 0"_s,
                                                                                        u"18 河南11选5 0"_s,
                                                                                        u"19 广西11选5 0"_s,
                                                                                        u"20 陕西11选5 0"_s,
                                                                                        u"21 新疆11选5 0"_s,
                                                                                        u"22 甘肃11选5 0"_s,
                                                                                        u"23 河北11选5 0"_s,
                                                                                        u"24 宁夏11选5 0"_s,
                                                                                        u"25 青海11选5 0"_s,
                                                                                        u"26 内蒙古11选5 0"_s,
                                                                                        u"27 西藏11选5 0"_s,
                                                                                        u"28 北京11选5 0"_s}));
}

TEST_F(DefaultRows, TheFirstThreeGamesHaveDownloadPagesOfTheirOwn) {
  const QStringList pages = w.rows("SELECT 下载地址 FROM 彩票类型 ORDER BY 序号");
  ASSERT_EQ(pages.size(), 29);
  EXPECT_TRUE(pages[0].endsWith(u"/sd11x5/haoma/"_s));
  EXPECT_TRUE(pages[1].endsWith(u"/gd11x5/haoma/"_s));
  EXPECT_TRUE(pages[2].endsWith(u"/jx11x5/haoma/"_s));
  EXPECT_EQ(count("SELECT COUNT(DISTINCT 下载地址) FROM 彩票类型 WHERE 序号 > 2"), 1);
}

TEST_F(DefaultRows, EveryGameHasAResultsPageOnAHostOfItsOwn) {
  const QStringList pages = w.rows("SELECT 实时更新地址 FROM 彩票类型");
  for (const QString& page : pages)
    EXPECT_TRUE(page.endsWith(u"/?op=dcjb&num="_s)) << page.toStdString();
  EXPECT_EQ(QSet<QString>(pages.begin(), pages.end()).size(), 29);
}

TEST_F(DefaultRows, AddressesUseReservedExampleHosts) {
  QStringList addresses = w.rows("SELECT 下载地址 FROM 彩票类型") + w.rows("SELECT 实时更新地址 FROM 彩票类型") +
                          w.rows("SELECT 地址 FROM 数据源 WHERE 地址 <> ''");
  for (const QString& address : addresses)
    EXPECT_EQ(address.section(u'/', 2, 2).section(u'.', -1), u"example"_s) << address.toStdString();
}

TEST_F(DefaultRows, TheVersionNoticeShipsWithoutAnAddress) {
  EXPECT_EQ(w.rows("SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"), QStringList{QString()});
}

TEST_F(DefaultRows, TheProbabilityTableHas15Numbers) {
  EXPECT_EQ(count("SELECT COUNT(*) FROM 概率表"), 15);
  EXPECT_EQ(w.rows("SELECT MIN(号码), MAX(号码) FROM 概率表"), QStringList{u"1 15"_s});
}

TEST_F(DefaultRows, ThereAre37BallsWithTheseColours) {
  const QStringList basic = w.rows("SELECT 基本号 FROM BallColor ORDER BY 号码");
  EXPECT_EQ(basic.size(), 37);
  // 1 to 5; 6 to 22 in turns; 23 to 30; 31 to 37
  EXPECT_EQ(basic.join(QString()), u"04040"_s + u"12121212121212121"_s + u"22222222"_s + u"4440044"_s);
  const QStringList special = w.rows("SELECT 特别号 FROM BallColor ORDER BY 号码");
  EXPECT_EQ(special.join(QString()), QString(QString(30, u'4') + QString(6, u'3') + u'0'));
}

TEST_F(DefaultRows, TwentyGroupsAreCalledByTheirNumbers) {
  const QStringList rows = w.rows("SELECT 序号, 自定义名称, 别名 FROM 自定义别名 ORDER BY 序号");
  ASSERT_EQ(rows.size(), 20);
  EXPECT_EQ(rows[0], u"1 自定义组1 自定义组1"_s);
  EXPECT_EQ(rows[9], u"10 自定义组10 自定义组10"_s);
  EXPECT_EQ(rows[19], u"20 自定义组20 自定义组20"_s);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 自定义别名 WHERE 自定义名称 = '自定义组' || 序号 AND 别名 = 自定义名称"), 20);
}

TEST_F(DefaultRows, QuickSetupHasThese22Rows) {
  EXPECT_EQ(
      w.rows("SELECT * FROM 快速设置 ORDER BY 编号"),
      (QStringList{
          u"0 2 和值 1 1000 1065"_s,        u"1 3 奇数和值 2 2000 2065"_s,      u"2 4 偶数和值 3 3000 3065"_s,
          u"3 18 头数和值 43 4080 4090"_s,  u"4 19 尾数和值 44 4100 4141"_s,    u"5 10 AC值 9 3600 3610"_s,
          u"6 5 跨度 4 3300 3314"_s,        u"7 6 最大间距 5 3400 3411"_s,      u"8 20 温度值5 46 4160 4180"_s,
          u"9 21 温度值10 47 4180 4210"_s,  u"10 8 重叠号个数 7 3470 3475"_s,   u"11 9 斜位码个数 8 3490 3495"_s,
          u"12 12 大数个数 12 3660 3665"_s, u"13 12 小数个数 13 3670 3675"_s,   u"14 11 奇数个数 10 3640 3645"_s,
          u"15 11 偶数个数 11 3650 3655"_s, u"16 13 高尾码个数 14 3680 3685"_s, u"17 13 低尾码个数 15 3690 3695"_s,
          u"18 14 区间1 16 3700 3705"_s,    u"19 14 区间2 17 3710 3715"_s,      u"20 14 区间3 18 3720 3725"_s,
          u"21 14 区间4 19 3730 3735"_s}));
}

TEST_F(DefaultRows, OneTemporaryUserWithoutAPassword) {
  EXPECT_EQ(w.rows("SELECT 用户名, 密码, CAST(最后登陆时间 AS INTEGER) FROM 用户表"),
            QStringList{u"临时用户  39377"_s});
}

TEST_F(DefaultRows, TheUserModeIsNotAskedYet) {
  EXPECT_EQ(w.rows("SELECT 模式 FROM 用户模式"), QStringList{u"0"_s});
}

// The stretches answer the ranges by which the rest of the program asks for them.

TEST_F(DefaultRows, StretchesAnswerTheirRanges) {
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40"), 39);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID <= 11"), 11);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID > 100 AND ID < 200"), 16);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID > 100 AND ID <= 116"), 16);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID < 200"), 56);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID > 500"), 1224);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件 WHERE ID >= 5000 AND ID <= 5059"), 60);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件使用情况 WHERE 条件 >= 16 AND 条件 <= 19"), 4);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件使用情况 WHERE 条件 >= 30 AND 条件 <= 36"), 7);
  EXPECT_EQ(count("SELECT COUNT(*) FROM 过滤条件使用情况 WHERE 条件 >= 70 AND 条件 <= 75"), 6);
}

}  // namespace
}  // namespace elevenfive
