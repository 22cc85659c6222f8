#include "model/defaultrows.h"

#include <QDate>
#include <algorithm>
#include <functional>
#include <span>

#include "model/daycount.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr IdRange conditionIdRanges[] = {
    {1, 40},      {101, 116},   {1000, 1170}, {2000, 2170}, {3000, 3170}, {3300, 3340},
    {3400, 3440}, {3450, 3460}, {3470, 3480}, {3490, 3500}, {3600, 3630}, {3640, 3739},
    {3800, 3901}, {4000, 4040}, {4050, 4209}, {4500, 4599}, {5000, 5060}, {9999, 9999},
};

/// IDs whose default value is 1.
constexpr IdRange defaultOnes[] = {
    {1, 11},      {40, 40},     {102, 102},   {1019, 1040}, {2001, 2045}, {3000, 3044}, {3305, 3314}, {3402, 3410},
    {3450, 3455}, {3470, 3474}, {3491, 3495}, {3601, 3606}, {3640, 3645}, {3650, 3655}, {3660, 3665}, {3670, 3674},
    {3680, 3685}, {3690, 3694}, {3700, 3704}, {3710, 3714}, {3720, 3724}, {3730, 3730}, {3812, 3812}, {3814, 3814},
    {3822, 3823}, {3833, 3834}, {3872, 3873}, {3881, 3882}, {3891, 3892}, {4000, 4002}, {4010, 4013}, {4020, 4024},
    {4030, 4032}, {4050, 4052}, {4070, 4074}, {4076, 4077}, {4080, 4084}, {4108, 4133}, {4163, 4176}, {4189, 4205},
    {4591, 4591}, {5003, 5003}, {5005, 5005}, {5011, 5015}, {5022, 5024},
};

/// IDs whose default value is 2: pattern slots of positions that five numbers do not have, and one "any".
constexpr IdRange defaultTwos[] = {{5006, 5007}, {5016, 5017}, {5025, 5027}, {5036, 5037}, {5046, 5047}, {5056, 5057}};

constexpr int reductionTypeId = 3900;
constexpr int defaultReductionType = 5;

constexpr IdRange conditionCodeRanges[] = {{1, 47}, {51, 60}, {70, 75}};
constexpr IdRange defaultUsedCodes[] = {{1, 1}, {4, 5}, {7, 9}, {38, 41}, {46, 47}, {70, 70}};

/// ID 40 is unused; the working rows hold 0 there, a reset restores 1.
constexpr int unusedId = 40;

bool within(std::span<const IdRange> ranges, int id) {
  return std::any_of(ranges.begin(), ranges.end(), [&](IdRange r) { return id >= r.first && id <= r.last; });
}

std::vector<int> expanded(std::span<const IdRange> ranges) {
  std::vector<int> ids;
  for (const IdRange range : ranges)
    for (int id = range.first; id <= range.last; ++id)
      ids.push_back(id);
  return ids;
}

using Membership = std::function<bool(int number)>;

AttributeColumn attribute(const QString& name, const Membership& holds) {
  AttributeColumn column{name, {}};
  for (int n = 1; n <= numberCount; ++n)
    column.members[static_cast<std::size_t>(n)] = holds(n);
  return column;
}

/// Columns name0, name1, ... of a division of the numbers into classes.
void addClasses(std::vector<AttributeColumn>& columns, const QString& name, int first, int last,
                const std::function<int(int number)>& classOf) {
  for (int k = first; k <= last; ++k)
    columns.push_back(attribute(name + QString::number(k), [&](int n) { return classOf(n) == k; }));
}

std::vector<AttributeColumn> buildAttributeColumns() {
  const Membership big = [](int n) { return n >= 6; };
  const Membership lowTail = [](int n) { return n % 10 <= 4; };
  std::vector<AttributeColumn> columns{
      attribute(u"大数"_s, big),
      attribute(u"小数"_s, [&](int n) { return !big(n); }),
      attribute(u"低尾码"_s, lowTail),
      attribute(u"高尾码"_s, [&](int n) { return !lowTail(n); }),
  };
  addClasses(columns, u"区间"_s, 1, 4, [&](int n) { return big(n) ? 2 : 1; });
  addClasses(columns, u"头"_s, 0, 9, [](int n) { return n / 10; });
  addClasses(columns, u"尾"_s, 0, 9, [](int n) { return n % 10; });
  addClasses(columns, u"九"_s, 0, 9, [](int n) { return (n - 1) % 9; });
  addClasses(columns, u"七"_s, 0, 9, [](int n) { return (n - 1) % 7; });
  addClasses(columns, u"十二"_s, 0, 11, [](int n) { return n - 1; });
  addClasses(columns, u"十一"_s, 0, 10, [](int n) { return n - 1; });
  for (int k = 1; k <= 20; ++k)
    columns.push_back({u"自定义组%1"_s.arg(k), {}});
  for (int p = 1; p <= 7; ++p)
    columns.push_back({u"第%1位"_s.arg(p), {}});
  return columns;
}

/// A game of the catalogue: its name and its province's short name in addresses.
struct Game {
  QStringView name;
  QStringView province;
};

constexpr Game games[] = {
    {u"山东11选5(十一运夺金)", u"sd"},
    {u"广东11选5", u"gd"},
    {u"多乐彩(江西11选5)", u"jx"},
    {u"重庆11选5", u"cq"},
    {u"江苏11选5", u"js"},
    {u"上海11选5", u"sh"},
    {u"黑龙江11选5", u"hlj"},
    {u"浙江11选5", u"zj"},
    {u"辽宁11选5", u"ln"},
    {u"吉林11选5", u"jl"},
    {u"四川11选5", u"sc"},
    {u"湖北11选5", u"hub"},
    {u"安徽11选5", u"ah"},
    {u"山西11选5", u"sx"},
    {u"贵州11选5", u"gz"},
    {u"云南11选5", u"yn"},
    {u"福建11选5", u"fj"},
    {u"天津11选5", u"tj"},
    {u"河南11选5", u"hen"},
    {u"广西11选5", u"gx"},
    {u"陕西11选5", u"shx"},
    {u"新疆11选5", u"xj"},
    {u"甘肃11选5", u"gs"},
    {u"河北11选5", u"heb"},
    {u"宁夏11选5", u"nx"},
    {u"青海11选5", u"qh"},
    {u"内蒙古11选5", u"nmg"},
    {u"西藏11选5", u"xz"},
    {u"北京11选5", u"bj"},
};

struct QuickRow {
  int menu;
  QStringView condition;
  int code;
  int first;
  int last;
};

constexpr QuickRow quickRows[] = {
    {2, u"和值", 1, 1000, 1065},       {3, u"奇数和值", 2, 2000, 2065},     {4, u"偶数和值", 3, 3000, 3065},
    {18, u"头数和值", 43, 4080, 4090}, {19, u"尾数和值", 44, 4100, 4141},   {10, u"AC值", 9, 3600, 3610},
    {5, u"跨度", 4, 3300, 3314},       {6, u"最大间距", 5, 3400, 3411},     {20, u"温度值5", 46, 4160, 4180},
    {21, u"温度值10", 47, 4180, 4210}, {8, u"重叠号个数", 7, 3470, 3475},   {9, u"斜位码个数", 8, 3490, 3495},
    {12, u"大数个数", 12, 3660, 3665}, {12, u"小数个数", 13, 3670, 3675},   {11, u"奇数个数", 10, 3640, 3645},
    {11, u"偶数个数", 11, 3650, 3655}, {13, u"高尾码个数", 14, 3680, 3685}, {13, u"低尾码个数", 15, 3690, 3695},
    {14, u"区间1", 16, 3700, 3705},    {14, u"区间2", 17, 3710, 3715},      {14, u"区间3", 18, 3720, 3725},
    {14, u"区间4", 19, 3730, 3735},
};

/// Colour index of numbers 1..37 as a basic ball.
constexpr int basicBallColors[] = {0, 4, 0, 4, 0, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2,
                                   1, 2, 1, 2, 2, 2, 2, 2, 2, 2, 2, 4, 4, 4, 0, 0, 4, 4};

/// Colour index of a number as a special ball.
constexpr int specialBallColor(int number) {
  return number <= 30 ? 4 : number <= 36 ? 3 : 0;
}

struct AddressRow {
  QStringView name;
  QStringView address;
};

/// Addresses that are configuration; the hosts are reserved examples. An empty one switches its flow off.
constexpr AddressRow addressRows[] = {
    {u"开奖网站", u"https://{province}.results.example"},
    {u"第二网站", u"https://{province}.second.example"},
    {u"版本公告", u""},
    {u"开奖详情", u"https://{province}.detail.example"},
};

void insertConditions(Store& store, const char* table, bool factory) {
  Statement insert = store.query("写入默认条件", std::string("INSERT INTO ") + table + " VALUES (?, ?)");
  for (const int id : conditionIds())
    insert.run(id, id == unusedId && !factory ? 0 : defaultConditionValue(id));
}

void insertUses(Store& store, const char* table) {
  Statement insert = store.query("写入默认条件", std::string("INSERT INTO ") + table + " VALUES (?, ?)");
  for (const int code : conditionCodes())
    insert.run(code, defaultConditionUse(code));
}

void insertAttributes(Store& store) {
  const auto& columns = attributeColumns();
  std::string sql = "INSERT INTO 号码特性 VALUES (?, ?";
  for (std::size_t i = 0; i < columns.size(); ++i)
    sql += ", ?";
  Statement insert = store.query("写入号码特性", sql + ")");
  for (int n = 1; n <= numberCount; ++n) {
    insert.bind(n, n);
    int index = 2;
    for (const AttributeColumn& column : columns)
      insert.bindValue(++index, column.members[static_cast<std::size_t>(n)] ? 1 : 0);
    insert.run();
  }
}

void insertGames(Store& store) {
  Statement insert = store.query("写入彩票类型", "INSERT INTO 彩票类型 VALUES (?, ?, ?, ?, ?)");
  int row = 0;
  for (const Game& game : games) {
    const QString province = game.province.toString();
    const QString download =
        row <= 2 ? u"https://results.example/%1/haoma/"_s.arg(province + u"11x5"_s) : u"https://home.example/"_s;
    insert.run(row, game.name.toString(), download, u"https://%1.charts.example/?op=dcjb&num="_s.arg(province),
               row == 0 ? 1 : 0);
    ++row;
  }
}

void insertQuickRows(Store& store) {
  Statement insert = store.query("写入快速设置", "INSERT INTO 快速设置 VALUES (?, ?, ?, ?, ?, ?)");
  int number = 0;
  for (const QuickRow& row : quickRows)
    insert.run(number++, row.menu, row.condition.toString(), row.code, row.first, row.last);
}

void insertBallColors(Store& store) {
  Statement insert = store.query("写入球的颜色", "INSERT INTO BallColor VALUES (?, ?, ?)");
  int number = 0;
  for (const int color : basicBallColors) {
    ++number;
    insert.run(number, color, specialBallColor(number));
  }
}

void insertAliases(Store& store) {
  Statement insert = store.query("写入自定义组别名",
                                 "INSERT INTO 自定义别名 SELECT ?, ?, ? WHERE NOT EXISTS (SELECT 1 FROM 自定义别名 "
                                 "WHERE 序号 = ?)");
  for (int k = 1; k <= 20; ++k)
    insert.run(k, u"自定义组%1"_s.arg(k), u"自定义组%1"_s.arg(k), k);
}

void insertMatchRow(Store& store) {
  store.execute("写入历史数据过滤",
                "INSERT INTO 历史数据过滤 SELECT 1, 5, 2008266, 4 WHERE NOT EXISTS (SELECT 1 FROM 历史数据过滤)");
}

void insertUserMode(Store& store) {
  store.execute("写入用户模式", "INSERT INTO 用户模式 SELECT 0 WHERE NOT EXISTS (SELECT 1 FROM 用户模式)");
}

/// The account that is always there.
void insertGuest(Store& store) {
  store.execute("写入用户表",
                "INSERT INTO 用户表 SELECT ?, '', ? WHERE NOT EXISTS (SELECT 1 FROM 用户表 WHERE 用户名 = ?)",
                u"临时用户"_s, dayCountOf(QDate(2007, 10, 22)), u"临时用户"_s);
}

void insertProbabilities(Store& store) {
  Statement insert = store.query("写入概率表", "INSERT INTO 概率表 VALUES (?, 0, 0, 0, 0)");
  for (int n = 1; n <= 15; ++n)
    insert.run(n);
}

void insertAddresses(Store& store) {
  Statement insert = store.query(
      "写入数据源", "INSERT INTO 数据源 SELECT ?, ? WHERE NOT EXISTS (SELECT 1 FROM 数据源 WHERE 名称 = ?)");
  for (const AddressRow& row : addressRows)
    insert.run(row.name.toString(), row.address.toString(), row.name.toString());
}

void insertMainRows(Store& store) {
  insertConditions(store, "默认过滤条件", true);
  insertUses(store, "默认过滤条件使用情况");
  insertMatchRow(store);
  insertGames(store);
  insertProbabilities(store);
  insertBallColors(store);
  insertAliases(store);
  insertQuickRows(store);
  insertGuest(store);
  insertUserMode(store);
  insertAddresses(store);
}

}  // namespace

const std::vector<int>& conditionIds() {
  static const std::vector<int> ids = expanded(conditionIdRanges);
  return ids;
}

int defaultConditionValue(int id) {
  if (id == reductionTypeId)
    return defaultReductionType;
  if (within(defaultTwos, id))
    return 2;
  return within(defaultOnes, id) ? 1 : 0;
}

const std::vector<int>& conditionCodes() {
  static const std::vector<int> codes = expanded(conditionCodeRanges);
  return codes;
}

int defaultConditionUse(int code) {
  return within(defaultUsedCodes, code) ? 1 : 0;
}

const std::vector<AttributeColumn>& attributeColumns() {
  static const std::vector<AttributeColumn> columns = buildAttributeColumns();
  return columns;
}

void insertLostRows(Store& store) {
  insertMatchRow(store);
  insertGuest(store);
  insertUserMode(store);
  insertAliases(store);
  insertAddresses(store);
}

void insertDefaultRows(Store& store, StoreKind kind) {
  insertConditions(store, "过滤条件", false);
  insertUses(store, "过滤条件使用情况");
  insertAttributes(store);
  if (kind == StoreKind::main)
    insertMainRows(store);
  else
    store.execute("写入历史数据过滤", "INSERT INTO 历史数据过滤 VALUES (0, 2007001, 2007030, 5)");
}

}  // namespace elevenfive
