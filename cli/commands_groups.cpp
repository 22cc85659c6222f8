// Custom groups and zones, as their screens do them.
#include <QString>
#include <algorithm>
#include <optional>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/values.h"
#include "conditions/commongroups.h"
#include "history/derivation.h"
#include "model/errors.h"
#include "model/navigators.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

int groupOf(const Arguments& arguments) {
  return numberOf(arguments, u"K"_s, 1, zdyGroupCount);
}

void printGroup(Session& session, int k) {
  printText(session.out(), session.program().groups.fillZdyList().at(k - 1));
}

bool holds(const std::vector<int>& numbers, int n) {
  return std::binary_search(numbers.begin(), numbers.end(), n);
}

/// The clicks that put numbers in come first: a group that was empty in between would lose its counts.
void setMembers(Session& session, int k, const std::vector<int>& members) {
  StoreTransaction transaction(session.store());
  for (const bool wanted : {true, false})
    for (int n = 1; n <= numberCount; ++n) {
      const bool is = session.program().groups.showZdyGroup(k).members.at(static_cast<std::size_t>(n));
      if (holds(members, n) == wanted && is != wanted)
        session.program().groups.clickMember(k, n);
    }
  transaction.commit();
}

Action prepareMembers(const Arguments& arguments) {
  const int k = groupOf(arguments);
  const std::vector<int> members = listOf(arguments, u"NUMBERS"_s, 1, numberCount);
  return [k, members](Session& session) {
    setMembers(session, k, members);
    printGroup(session, k);
  };
}

void setCounts(Session& session, int k, const std::vector<int>& counts) {
  CustomGroups& groups = session.program().groups;
  const CustomGroups::GroupState state = groups.showZdyGroup(k);
  if (!counts.empty() && !state.countsEnabled)
    throw MissingData(u"自定义组%1 中没有号码，请先设置号码。"_s.arg(k));
  std::vector<bool> selected;
  for (int v = 0; v <= zdyLargestCount; ++v)
    selected.push_back(holds(counts, v));
  groups.selectCounts(k, selected);
}

Action prepareCounts(const Arguments& arguments) {
  const int k = groupOf(arguments);
  const std::vector<int> counts = listOf(arguments, u"COUNTS"_s, 0, zdyLargestCount);
  return [k, counts](Session& session) {
    setCounts(session, k, counts);
    printGroup(session, k);
  };
}

Action prepareGroupUse(const Arguments& arguments) {
  const int k = groupOf(arguments);
  const bool use = arguments.text(u"0|1"_s) == u"1"_s;
  return [k, use](Session& session) {
    session.program().groups.clickUse(k, use);
    printGroup(session, k);
  };
}

Action prepareName(const Arguments& arguments) {
  const int k = groupOf(arguments);
  const QString name = arguments.text(u"TEXT"_s);
  if (name.isEmpty())
    throw UsageError(u"参数 TEXT 不能为空。"_s);
  return [k, name](Session& session) {
    session.ports().typed = {name};
    session.program().groups.rename(k);
    printGroup(session, k);
  };
}

Action prepareCommon(const Arguments& arguments) {
  const int k = groupOf(arguments);
  const QString entry = arguments.text(u"ENTRY"_s);
  return [k, entry](Session& session) {
    const std::optional<QString> meant = entryMeant(session.program().commonEntries, entry);
    if (!meant || !session.program().groups.chooseCommon(k, *meant))
      throw MissingData(u"常用分组中没有“%1”。"_s.arg(entry.left(40)));
    printGroup(session, k);
  };
}

Action prepareGroupClear(const Arguments& arguments) {
  const int k = groupOf(arguments);
  return [k](Session& session) {
    session.program().groups.clearZdyGroup(k);
    printGroup(session, k);
  };
}

Action prepareGroupList(const Arguments&) {
  return [](Session& session) {
    for (const QString& line : session.program().groups.fillZdyList())
      printText(session.out(), line);
  };
}

Action prepareEntries(const Arguments&) {
  return [](Session& session) {
    for (const QString& entry : session.program().commonEntries)
      printText(session.out(), entry);
  };
}

void printZones(Session& session) {
  printText(session.out(), session.program().zones.showZones());
}

Action prepareZonesShow(const Arguments&) {
  return printZones;
}

Action prepareZonesClick(const Arguments& arguments) {
  const int k = numberOf(arguments, u"K"_s, 1, zoneCount);
  const int number = numberOf(arguments, u"N"_s, 1, numberCount);
  return [k, number](Session& session) {
    session.program().zones.clickNumber(k, number);
    printZones(session);
  };
}

Action prepareZonesClear(const Arguments&) {
  return [](Session& session) {
    session.program().zones.clear();
    printZones(session);
  };
}

Action prepareZonesRecalc(const Arguments&) {
  return [](Session& session) {
    Store& store = session.store();
    CliPorts& ports = session.ports();
    recalcQujian(store, getFirstQihao(store), getLastQihao(store), ports, ports, ports);
    printZones(session);
  };
}

constexpr QStringView groupsText = u"custom groups as their screen does them";
constexpr QStringView groupsPrint = u"the group's line of List_ZDY";
constexpr QStringView listsText = u"List_ZDY; the entries of ComboZDYcyfz";
constexpr QStringView zonesText =
    u"zone texts; number N clicked with zone K current; clearing; recalcQujian over the whole history";

constexpr Command commands[] = {
    {u"group K members NUMBERS", groupsText, groupsPrint, prepareMembers,
     u"members: exactly these numbers, - for none"},
    {u"group K counts COUNTS", groupsText, groupsPrint, prepareCounts,
     u"counts: exactly these of 0 to 5; any switches the group on, none switches it off"},
    {u"group K use 0|1", groupsText, groupsPrint, prepareGroupUse},
    {u"group K name TEXT", groupsText, groupsPrint, prepareName},
    {u"group K common ENTRY", groupsText, groupsPrint, prepareCommon},
    {u"group K clear", groupsText, groupsPrint, prepareGroupClear},
    {u"group list", listsText, u"lines", prepareGroupList},
    {u"group entries", listsText, u"lines", prepareEntries},
    {u"zones show", zonesText, u"zone texts", prepareZonesShow},
    {u"zones click K N", zonesText, u"zone texts", prepareZonesClick},
    {u"zones clear", zonesText, u"zone texts", prepareZonesClear},
    {u"zones recalc", zonesText, u"zone texts", prepareZonesRecalc},
};

}  // namespace

std::span<const Command> groupCommands() {
  return commands;
}

}  // namespace elevenfive
