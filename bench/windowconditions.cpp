#include "bench/windowconditions.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>

#include "bench/baresqlite.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int rounds = 15;
constexpr double clickGoal = 10;
constexpr double tabGoal = 30;
constexpr double setGoal = 150;

constexpr int groupsTab = 22;
constexpr int lastListTab = 21;

QListWidget& tabStrip(Bench& bench) {
  return bench.the<QListWidget>(u"TabStrip_TiaoJian"_s);
}

void openTab(Bench& bench, int tab) {
  bench.window.selectTopTab(2);
  tabStrip(bench).setCurrentRow(tab - 1);
  bench.paints.finish();
}

/// The value lists that the tab on the screen has.
std::vector<QListWidget*> shownLists(Bench& bench) {
  std::vector<QListWidget*> lists;
  for (auto* list : bench.window.findChildren<QListWidget*>())
    if (list->isVisible() && list->selectionMode() == QAbstractItemView::MultiSelection)
      lists.push_back(list);
  return lists;
}

/// Clicks up to rounds items of a list. The floor paints the list as it stands.
void clickItems(Bench& bench, QListWidget& list, Times& ours, Times& floor) {
  for (int item = 0; item < std::min(rounds, list.count()); ++item) {
    const bool selected = list.item(item)->isSelected();
    const QPoint place = list.visualItemRect(list.item(item)).center();
    bench.time(ours, [&] { clickAt(*list.viewport(), place); });
    if (list.item(item)->isSelected() == selected)
      throw std::runtime_error("a click changed no value");
    bench.timePainting(floor, *list.viewport());
  }
}

/// The slowest of the tabs that hold value lists only, by the median over the clicks on each of its lists.
void measureLists(Bench& bench) {
  Times slowest;
  Times slowestFloor;
  int slowestTab = 0;
  for (int tab = 2; tab <= lastListTab; ++tab) {
    openTab(bench, tab);
    Times ours;
    Times floor;
    for (QListWidget* list : shownLists(bench))
      clickItems(bench, *list, ours, floor);
    if (slowestTab == 0 || median(ours.wall) > median(slowest.wall)) {
      slowest = ours;
      slowestFloor = floor;
      slowestTab = tab;
    }
  }
  report(u"value clicked, slowest tab %1"_s.arg(slowestTab).toUtf8().constData(), slowest, clickGoal,
         "painting that list again", slowestFloor);
}

/// The numbers of the first tab: a pick, which the counts and both lines of text follow, and all of them at once.
void measurePicks(Bench& bench) {
  openTab(bench, 1);
  Times picks;
  Times all;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    auto& number = bench.the<QWidget>(u"cmm_C7_%1"_s.arg(1 + round % 11));
    bench.time(picks, [&] { click(number); });
    auto& buttonOfAll = bench.the<QWidget>(round % 2 == 0 ? u"cmm_clsQ"_s : u"cmd_FX_0"_s);
    bench.time(all, [&] { click(buttonOfAll); });
    bench.timePainting(floor, bench.the<QWidget>(u"pic_subTiaojian_1"_s));
  }
  report("number picked", picks, clickGoal, "painting that page again", floor);
  report("all numbers picked or cleared", all, clickGoal, "painting that page again", floor);
}

/// Clicks a check box or option that must be another state after it.
void clickOther(Bench& bench, QAbstractButton& button, Times& ours) {
  const bool checked = button.isChecked();
  bench.time(ours, [&] { button.click(); });
  if (button.isChecked() == checked)
    throw std::runtime_error("a click switched nothing: " + button.objectName().toStdString());
}

/// The slowest check box of the pages, each of which also marks its tab.
void measureSwitches(Bench& bench) {
  struct Switch {
    int tab;
    QStringView name;
  };
  constexpr Switch switches[] = {{2, u"Check_useTiaojiao_1"},     {12, u"Check_useTiaojiao_3"},
                                 {14, u"Check_useTiaojiao_5"},    {15, u"Check_useDingWeiTiaojiao_32"},
                                 {16, u"Check_useTiaojiao_else"}, {groupsTab, u"Check_Zdy"},
                                 {23, u"Check_Historyguolu"},     {24, u"Check_auto"}};
  bench.workspace.gConn.execute("bench", "UPDATE 号码特性 SET 第3位 = 1");
  Times slowest;
  Times slowestFloor;
  QStringView slowestName;
  for (const Switch& place : switches) {
    openTab(bench, place.tab);
    auto& check = bench.the<QAbstractButton>(place.name.toString());
    Times ours;
    Times floor;
    for (int round = 0; round < rounds; ++round) {
      clickOther(bench, check, ours);
      bench.timePainting(floor, check);
    }
    if (slowestName.isEmpty() || median(ours.wall) > median(slowest.wall)) {
      slowest = ours;
      slowestFloor = floor;
      slowestName = place.name;
    }
  }
  report(u"box ticked, slowest %1"_s.arg(slowestName).toUtf8().constData(), slowest, clickGoal,
         "painting that box again", slowestFloor);
}

/// Options and choices: the tolerance of the positions, the reduction, the match.
void measureChoices(Bench& bench) {
  const auto measureOptions = [&](const char* name, int tab, const QString& option, int first) {
    openTab(bench, tab);
    bench.the<QAbstractButton>(option.arg(first)).click();
    bench.paints.finish();
    Times ours;
    Times floor;
    for (int round = 1; round <= rounds; ++round) {
      auto& button = bench.the<QAbstractButton>(option.arg(first + round % 5));
      clickOther(bench, button, ours);
      bench.timePainting(floor, button);
    }
    report(name, ours, clickGoal, "painting that option again", floor);
  };
  measureOptions("tolerance of the positions chosen", 15, u"Option_DingweiRongcuo_%1"_s, 0);
  measureOptions("type of the reduction chosen", 24, u"Option_ShuoSuiLeiXing_%1"_s, 3);
  openTab(bench, 23);
  auto& match = bench.the<QComboBox>(u"Combo_PiPei"_s);
  Times ours;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    bench.time(ours, [&] { match.setCurrentIndex((match.currentIndex() + 1) % match.count()); });
    bench.timePainting(floor, match);
  }
  report("match chosen", ours, clickGoal, "painting that box again", floor);
}

/// All groups in use with numbers and counts, which makes their lines as long as they get.
void useAllGroups(Store& store) {
  store.execute("bench",
                "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 BETWEEN 20 AND 29 OR 条件 BETWEEN 51 AND 60");
  for (int k = 1; k <= 20; ++k)
    store.execute("bench",
                  u"UPDATE 号码特性 SET 自定义组%1 = 号码 %% 2"_s.arg(k).replace(u"%%"_s, u"%"_s).toStdString());
}

void measureGroups(Bench& bench) {
  useAllGroups(bench.workspace.gConn);
  openTab(bench, groupsTab);
  Times numbers;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    auto& number = bench.the<QWidget>(u"cmm_ZDY_%1"_s.arg(2 + round % 9));
    bench.time(numbers, [&] { click(number); });
    bench.timePainting(floor, bench.the<QWidget>(u"pic_subTiaojian_7"_s));
  }
  report("number of a group clicked", numbers, clickGoal, "painting that page again", floor);
  Times counts;
  Times listFloor;
  for (int round = 0; round < 3; ++round)
    clickItems(bench, bench.the<QListWidget>(u"List_ZDYset"_s), counts, listFloor);
  report("count of a group clicked", counts, clickGoal, "painting that list again", listFloor);
  Times groups;
  auto& tabs = bench.the<QTabBar>(u"TabStrip_ZDYchose"_s);
  for (int round = 0; round < rounds; ++round)
    bench.time(groups, [&] { tabs.setCurrentIndex((round + 1) % tabs.count()); });
  report("group chosen", groups, clickGoal, "painting that page again", floor);
}

void measureParity(Bench& bench) {
  bench.the<QAction>(u"paicu"_s).trigger();
  bench.paints.finish();
  auto& sign = bench.the<QComboBox>(u"Combo1_dansuang_33"_s);
  Times ours;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    bench.time(ours, [&] { sign.setCurrentIndex((sign.currentIndex() + 1) % sign.count()); });
    bench.timePainting(floor, bench.the<QWidget>(u"Frame1_pcMain"_s));
  }
  report("parity sign chosen", ours, clickGoal, "painting that panel again", floor);
}

void measureZones(Bench& bench) {
  bench.the<QAction>(u"mnu_newQuJian"_s).trigger();
  bench.paints.finish();
  Times ours;
  Times floor;
  for (int round = 0; round < 2 * 11; ++round) {
    auto& number = bench.the<QWidget>(u"cmm_QujianHuafen_%1"_s.arg(1 + round % 11));
    bench.time(ours, [&] { click(number); });
    bench.timePainting(floor, bench.the<QWidget>(u"Frm_Sub_5"_s));
  }
  report("number of a zone clicked", ours, clickGoal, "painting that page again", floor);
}

void measureQuickSetup(Bench& bench) {
  openTab(bench, 2);
  Times ours;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    click(bench.the<QPushButton>(u"cmm_kuaisusezi"_s));
    bench.paints.finish();
    auto& text = bench.the<QLineEdit>(u"Text_quzifanwei_0"_s);
    text.setText(round % 2 == 0 ? u"[20-39],[41-44]"_s : u"[15-45]"_s);
    auto& submit = bench.the<QPushButton>(u"cmm_submit"_s);
    submit.setEnabled(true);
    bench.paints.finish();
    bench.time(ours, [&] { click(submit); });
    bench.timePainting(floor, bench.the<QWidget>(u"Frm_Sub_1"_s));
  }
  bench.the<QWidget>(u"Frm_kuaisusizi"_s).hide();
  report("quick setup submitted", ours, clickGoal, "painting the conditions again", floor);
}

}  // namespace

void measureConditionTabs(Bench& bench) {
  bench.window.selectTopTab(2);
  QListWidget& tabs = tabStrip(bench);
  Times all;
  Times floor;
  std::vector<Times> ofTab(static_cast<std::size_t>(tabs.count()));
  constexpr int turns = 4;
  for (int round = 0; round < turns * tabs.count(); ++round) {
    const int row = (round + 1) % tabs.count();
    QListWidgetItem* item = tabs.item(row);
    tabs.scrollToItem(item);
    Times& ours = ofTab[static_cast<std::size_t>(row)];
    bench.time(ours, [&] { clickAt(*tabs.viewport(), tabs.visualItemRect(item).center()); });
    all.wall.push_back(ours.wall.back());
    all.processor.push_back(ours.processor.back());
    bench.timePainting(floor, bench.the<QWidget>(u"Frm_Sub_1"_s));
  }
  report("condition tab changed", all, tabGoal, "painting that page again", floor);
  const auto slowest = std::max_element(ofTab.begin(), ofTab.end(), [](const Times& left, const Times& right) {
    return median(left.wall) < median(right.wall);
  });
  report(u"slowest condition tab %1"_s.arg(slowest - ofTab.begin() + 1).toUtf8().constData(), *slowest, tabGoal,
         "painting the pages again", floor);
}

void measureConditionClicks(Bench& bench) {
  measureLists(bench);
  measurePicks(bench);
  measureSwitches(bench);
  measureChoices(bench);
  measureGroups(bench);
  measureParity(bench);
  measureZones(bench);
  measureQuickSetup(bench);
}

void measureConditionSets(Bench& bench) {
  bench.window.selectTopTab(2);
  bench.paints.finish();
  const QString file = bench.copy + u".set"_s;
  const QString copied = file + u".copy"_s;
  bench.person.file = file;
  BareSqlite bare(bench.copy);
  const char* rows =
      "BEGIN; UPDATE 过滤条件 SET VALUE = (SELECT VALUE FROM 默认过滤条件 WHERE ID = 过滤条件.ID);"
      "UPDATE 过滤条件使用情况 SET 使用情况 = (SELECT 使用情况 FROM 默认过滤条件使用情况 WHERE 条件 = "
      "过滤条件使用情况.条件);"
      "COMMIT";
  struct Work {
    const char* name;
    QString action;
    Times ours;
    Times floor;
  };
  Work works[] = {{"conditions exported", u"daocu"_s, {}, {}},
                  {"conditions imported", u"daoru"_s, {}, {}},
                  {"factory conditions restored", u"huanyuan"_s, {}, {}}};
  for (int round = 0; round < rounds; ++round)
    for (Work& work : works) {
      {
        const Stopwatch watch(work.ours);
        bench.the<QAction>(work.action).trigger();
        bench.paints.finish();
      }
      const bool exported = &work == &works[0];
      const Stopwatch watch(work.floor);
      if (exported && (!QFile::copy(file, copied) || !QFile::remove(copied)))
        throw std::runtime_error("no file was exported");
      if (!exported)
        bare.run(rows);
    }
  report(works[0].name, works[0].ours, setGoal, "copying that file", works[0].floor);
  for (const Work& work : {works[1], works[2]})
    report(work.name, work.ours, setGoal, "bare sqlite3 writes the rows", work.floor);
}

}  // namespace elevenfive
