#include "conditions/customgroups.h"

#include <algorithm>
#include <string>

#include "conditions/conditionpanel.h"
#include "conditions/conditionrows.h"
#include "engine/conditionvalues.h"
#include "model/errors.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A block of counts has this many rows.
constexpr int blockSize = 10;

bool isGroup(int k) {
  return k >= 1 && k <= zdyGroupCount;
}

/// The column's name in a statement; k is checked before, nothing else goes into the text.
std::string columnSql(int k) {
  return zdyColumn(k).toStdString();
}

/// The numbers of a group, ascending.
std::vector<int> membersOf(Store& store, int k) {
  std::vector<int> members;
  if (!isGroup(k))
    return members;
  Statement query =
      store.query("读取自定义组", "SELECT 号码 FROM 号码特性 WHERE " + columnSql(k) + " <> 0 ORDER BY 号码");
  while (query.next())
    members.push_back(query.integer(0));
  return members;
}

/// The counts that a group allows, ascending.
std::vector<int> countsOf(Store& store, int k) {
  if (!isGroup(k))
    return {};
  return allowedOffsets(store, zdyCountId(k, 0), zdyCountId(k, blockSize - 1));
}

/// Whether a character of a name would break the one line that tells of a group.
bool breaksLines(QChar ch) {
  const QChar::Category category = ch.category();
  return category == QChar::Other_Control || category == QChar::Separator_Line ||
         category == QChar::Separator_Paragraph;
}

/// Whether a group allows a count that the list shows.
bool hasShownCounts(Store& store, int k) {
  const std::vector<int> counts = countsOf(store, k);
  return !counts.empty() && counts.front() <= zdyLargestCount;  // ascending: the list shows 0 to 5 only
}

/// Switches a group on where it allows a count that the list shows, off where it allows none. True where it allows one.
bool switchByCounts(Store& store, int k) {
  const bool any = hasShownCounts(store, k);
  setConditionUse(store, zdyCode(k), any ? 1 : 0);
  return any;
}

/// Gives a group no members, no counts, its first name, and switches it off.
void clearGroup(Store& store, int k) {
  store.execute("清空自定义组", "UPDATE 号码特性 SET " + columnSql(k) + " = 0");
  store.execute("清空自定义组", "UPDATE 自定义别名 SET 别名 = 自定义名称 WHERE 序号 = ?", k);
  store.execute("清空自定义组", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID >= ? AND ID <= ?", zdyCountId(k, 0),
                zdyCountId(k, blockSize - 1));
  setConditionUse(store, zdyCode(k), 0);
}

}  // namespace

QString zdyColumn(int k) {
  return u"自定义组%1"_s.arg(k);
}

QString zdySwitchCaption(int k) {
  return u"使用“%1”过滤"_s.arg(zdyColumn(k));
}

QStringList zdyCountItems() {
  QStringList items;
  for (int v = 0; v <= zdyLargestCount; ++v)
    items << u"开出个数=%1"_s.arg(v);
  return items;
}

QString getZdyAlias(Store& store, int k) {
  Statement row = store.query("读取自定义组名称", "SELECT 别名 FROM 自定义别名 WHERE 序号 = ?", k);
  return row.next() ? row.text(0) : QString();
}

void CustomGroups::setZdyAlias(int k, const QString& text) {
  if (text.size() > zdyAliasLength)
    throw Error(u"自定义组名称太长，最多 %1 个字符，请缩短后再试。"_s.arg(zdyAliasLength));
  if (std::any_of(text.begin(), text.end(), breaksLines))
    throw Error(u"自定义组名称不能含有换行等控制字符，请修改后再试。"_s);
  gConn_.execute("写入自定义组名称", "UPDATE 自定义别名 SET 别名 = ? WHERE 序号 = ?", text, k);
}

QString zdyMembersText(Store& store, int k) {
  QStringList numbers;
  for (const int number : membersOf(store, k))
    numbers << toQuanjiaoDigits(twoDigits(number));
  return numbers.isEmpty() ? u"（ 无 号 码 ）"_s : u"　号码：（"_s + numbers.join(u',') + u"）"_s;
}

QString zdyCountsText(Store& store, int k, RunState* run) {
  RunState own;
  RunState& state = run == nullptr ? own : *run;
  if (isGroup(k))
    loadTiaojianValues(store, state, zdyCountId(k, 0), zdyCountId(k, blockSize - 1));
  QStringList counts;
  for (int count = 0; isGroup(k) && count < blockSize; ++count)
    if (state.tiaojianValue[static_cast<std::size_t>(count)] > 0)
      counts << toQuanjiaoDigits(count) + u"个"_s;
  return counts.isEmpty() ? u"（条 件 未 设 置）"_s : u" 允许开出个数（"_s + counts.join(u',') + u"）"_s;
}

QStringList zdyLines(Store& store, RunState* run) {
  QStringList lines;
  for (int k = 1; k <= zdyGroupCount; ++k) {
    if (!isConditionUsed(store, zdyCode(k))) {
      lines << getZdyAlias(store, k) + u" ——　未 使 用 "_s;
      continue;
    }
    const QString counts = membersOf(store, k).empty() ? QString() : zdyCountsText(store, k, run);
    lines << getZdyAlias(store, k) + u" ——"_s + zdyMembersText(store, k) + counts;
  }
  return lines;
}

CustomGroups::GroupState CustomGroups::showZdyGroup(int k) {
  GroupState state;
  state.counts.assign(zdyLargestCount + 1, false);
  if (!isGroup(k))
    return state;
  if (k != closedGroup_)
    closedGroup_ = 0;
  for (const int number : membersOf(gConn_, k))
    if (isNumber(number))
      state.members[static_cast<std::size_t>(number)] = true;
  state.countsEnabled = state.members != GroupMembers{};
  for (const int count : countsOf(gConn_, k))
    if (count <= zdyLargestCount)
      state.counts[static_cast<std::size_t>(count)] = true;
  state.used = isConditionUsed(gConn_, zdyCode(k));
  // A box that is on, as a loaded condition set may leave it, can always be switched off.
  state.useEnabled = k != closedGroup_ || state.used;
  return state;
}

void CustomGroups::clearZdyGroup(int k) {
  if (!isGroup(k))
    return;
  StoreTransaction transaction(gConn_);
  clearGroup(gConn_, k);
  transaction.commit();
  openGroup(k);
}

void CustomGroups::clickMember(int k, int number) {
  if (panel_.loadingPanel || !isGroup(k))
    return;
  StoreTransaction transaction(gConn_);
  const std::string column = columnSql(k);
  if (gConn_.execute("设置自定义组", "UPDATE 号码特性 SET " + column + " = NOT " + column + " WHERE 号码 = ?",
                     number) == 0)
    return;
  const std::vector<int> members = membersOf(gConn_, k);
  const bool losesCounts = members.empty() && hasShownCounts(gConn_, k);
  if (losesCounts) {
    for (int v = 0; v <= zdyLargestCount; ++v)
      setConditionValue(gConn_, zdyCountId(k, v), 0);
    switchByCounts(gConn_, k);
  }
  transaction.commit();
  if (losesCounts)
    closedGroup_ = k;
  else if (std::find(members.begin(), members.end(), number) != members.end())
    openGroup(k);
}

void CustomGroups::clickCount(int k, int count, bool selected) {
  if (panel_.loadingPanel || !isGroup(k) || count < 0 || count > zdyLargestCount)
    return;
  StoreTransaction transaction(gConn_);
  if (!setConditionValue(gConn_, zdyCountId(k, count), selected ? 1 : 0))
    return;
  const bool any = switchByCounts(gConn_, k);
  transaction.commit();
  closedGroup_ = any ? 0 : k;
}

void CustomGroups::selectCounts(int k, const std::vector<bool>& selected) {
  if (panel_.loadingPanel || !isGroup(k))
    return;
  StoreTransaction transaction(gConn_);
  const std::vector<int> present = countsOf(gConn_, k);
  bool missing = false;
  bool written = false;
  for (int count = 0; count <= std::min(zdyLargestCount, static_cast<int>(selected.size()) - 1); ++count) {
    const bool wanted = selected[static_cast<std::size_t>(count)];
    if (wanted == (std::find(present.begin(), present.end(), count) != present.end()))
      continue;
    const bool exists = setConditionValue(gConn_, zdyCountId(k, count), wanted ? 1 : 0);
    written = written || exists;
    missing = missing || !exists;
  }
  if (missing && !written)
    return;
  const bool any = switchByCounts(gConn_, k);
  transaction.commit();
  closedGroup_ = any ? 0 : k;
}

void CustomGroups::openGroup(int k) {
  if (closedGroup_ == k)
    closedGroup_ = 0;
}

QStringList CustomGroups::fillZdyList() {
  return zdyLines(gConn_, panel_.run());
}

void CustomGroups::clickUse(int k, bool checked) {
  if (isGroup(k))
    panel_.clickSwitch(zdyCode(k), checked);
}

bool CustomGroups::rename(int k, const std::function<void()>& show) {
  const QString old = getZdyAlias(k);
  const QString name = inputs_.askText({u"修改为容易识别的名称"_s, u"【 "_s + old + u" 】 名称修改为："_s, old});
  if (name.isEmpty())
    return false;
  setZdyAlias(k, name);
  if (show)
    show();
  boxes_.plain(u"名称已修改完成！"_s);
  return true;
}

void CustomGroups::clearAll() {
  StoreTransaction transaction(gConn_);
  for (int k = 1; k <= zdyGroupCount; ++k)
    clearGroup(gConn_, k);
  transaction.commit();
  closedGroup_ = 0;
}

bool CustomGroups::chooseCommon(int k, const QString& entry) {
  if (!isGroup(k))
    return false;
  const std::optional<CommonGroup> group = commonGroup(gConn_, entry);
  if (!group)
    return false;
  if (!group->message.isEmpty())
    boxes_.information(group->message);
  StoreTransaction transaction(gConn_);
  Statement update = gConn_.query("写入自定义组", "UPDATE 号码特性 SET " + columnSql(k) + " = ? WHERE 号码 = ?");
  for (int n = 1; n <= numberCount; ++n)
    update.run(group->members[static_cast<std::size_t>(n)] ? 1 : 0, n);
  setZdyAlias(k, entry.trimmed());
  transaction.commit();
  openGroup(k);
  return true;
}

}  // namespace elevenfive
