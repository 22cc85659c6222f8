// Tab 22, the custom groups, clicked as a person would.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>

#include "conditions/widgets/pickpage.h"
#include "shell/widgets/mainwindow.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class GroupPageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    data.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 0, 自定义组2 = 0");
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3819");
    data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0 WHERE 条件 IN (20, 21)");
    window.show();
    window.selectTopTab(2);
    control<QListWidget>(window, u"TabStrip_TiaoJian"_s).setCurrentRow(21);
  }

  template <typename Control>
  Control& the(const QString& name) {
    return control<Control>(window, name);
  }

  void clickNumber(int number) { click(the<PickButton>(u"cmm_ZDY_%1"_s.arg(number))); }
  QString line(int k) { return the<QListWidget>(u"List_ZDY"_s).item(k - 1)->text(); }

  TestWorkspace data;
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  WatchedBoxes boxes{ports};
  MainWindow window{data.workspace(), {boxes, ports, files, texts}};
};

TEST_F(GroupPageTest, ListsTheTwentyGroups) {
  EXPECT_EQ(the<QTabBar>(u"TabStrip_ZDYchose"_s).count(), 20);
  ASSERT_EQ(the<QListWidget>(u"List_ZDY"_s).count(), 20);
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  EXPECT_EQ(the<QListWidget>(u"List_ZDY"_s).currentRow(), 0);
}

TEST_F(GroupPageTest, TheTipOfALineTellsTheWholeOfItAsPlainText) {
  data.store().execute("test", "UPDATE 自定义别名 SET 别名 = '<b>甲' WHERE 序号 = 1");
  clickNumber(1);
  EXPECT_EQ(the<QListWidget>(u"List_ZDY"_s).item(0)->toolTip(), u"&lt;b&gt;甲 ——　未 使 用 "_s);
}

TEST_F(GroupPageTest, MembersAndACountSwitchTheGroupOn) {
  auto& counts = the<QListWidget>(u"List_ZDYset"_s);
  EXPECT_FALSE(counts.isEnabled());
  clickNumber(1);
  clickNumber(11);
  EXPECT_EQ(data.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1"), (QStringList{u"1"_s, u"11"_s}));
  EXPECT_EQ(the<PickButton>(u"cmm_ZDY_11"_s).backColor(), 49152U);
  EXPECT_EQ(the<PickButton>(u"cmm_ZDY_2"_s).backColor(), 0x8000000FU);
  EXPECT_TRUE(counts.isEnabled());
  EXPECT_FALSE(the<QCheckBox>(u"Check_Zdy"_s).isChecked());
  counts.item(2)->setSelected(true);
  EXPECT_EQ(data.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 3802"), QStringList{u"1"_s});
  EXPECT_TRUE(the<QCheckBox>(u"Check_Zdy"_s).isChecked());
  EXPECT_EQ(line(1), u"自定义组1 ——　号码：（０１,１１） 允许开出个数（２个）"_s);
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).item(21)->toolTip(), u"使用中"_s);
}

TEST_F(GroupPageTest, AGroupWithoutCountsCanBeUsedAndSaysThatNoneIsSet) {
  clickNumber(5);
  auto& use = the<QCheckBox>(u"Check_Zdy"_s);
  ASSERT_TRUE(use.isEnabled());
  click(use);
  EXPECT_EQ(line(1), u"自定义组1 ——　号码：（０５）（条 件 未 设 置）"_s);
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 20"), QStringList{u"1"_s});
  click(use);
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  EXPECT_TRUE(use.isEnabled());
}

TEST_F(GroupPageTest, UnselectingTheLastCountDisablesTheBoxUntilACountIsSelected) {
  clickNumber(5);
  auto& use = the<QCheckBox>(u"Check_Zdy"_s);
  auto& counts = the<QListWidget>(u"List_ZDYset"_s);
  counts.item(1)->setSelected(true);
  EXPECT_TRUE(use.isChecked());
  counts.item(1)->setSelected(false);
  EXPECT_FALSE(use.isChecked());
  EXPECT_FALSE(use.isEnabled());
  counts.item(4)->setSelected(true);
  EXPECT_TRUE(use.isChecked());
  EXPECT_TRUE(use.isEnabled());
  counts.item(4)->setSelected(false);
  the<QListWidget>(u"List_ZDY"_s).setCurrentRow(1);
  EXPECT_TRUE(use.isEnabled());
}

TEST_F(GroupPageTest, TheBoxOfAGroupThatARestoreOrAnImportReplacedIsFree) {
  auto& use = the<QCheckBox>(u"Check_Zdy"_s);
  auto& conditionTabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  const auto close = [&] {
    conditionTabs.setCurrentRow(21);
    if (!the<QListWidget>(u"List_ZDYset"_s).isEnabled())
      clickNumber(5);
    auto& counts = the<QListWidget>(u"List_ZDYset"_s);
    counts.item(1)->setSelected(true);
    counts.clearSelection();
    return !use.isEnabled();
  };
  const QString path = data.folders.program + u"/set.Vorex"_s;
  files.paths = {path};
  the<QAction>(u"daocu"_s).trigger();
  for (const QString& entry : {u"daoru"_s, u"huanyuan"_s}) {
    ASSERT_TRUE(close()) << entry.toStdString();
    files.paths = {path};
    the<QAction>(entry).trigger();
    conditionTabs.setCurrentRow(21);
    EXPECT_TRUE(use.isEnabled()) << entry.toStdString();
  }
}

TEST_F(GroupPageTest, LosingTheLastNumberSwitchesTheGroupOff) {
  clickNumber(7);
  the<QListWidget>(u"List_ZDYset"_s).item(0)->setSelected(true);
  clickNumber(7);
  EXPECT_FALSE(the<QListWidget>(u"List_ZDYset"_s).isEnabled());
  EXPECT_FALSE(the<QCheckBox>(u"Check_Zdy"_s).isChecked());
  EXPECT_FALSE(the<QCheckBox>(u"Check_Zdy"_s).isEnabled());
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 20"), QStringList{u"0"_s});
  EXPECT_EQ(data.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 3800"), QStringList{u"0"_s});
}

TEST_F(GroupPageTest, ALineAndTheNextButtonSelectTheGroup) {
  the<QListWidget>(u"List_ZDY"_s).setCurrentRow(4);
  EXPECT_EQ(the<QTabBar>(u"TabStrip_ZDYchose"_s).currentIndex(), 4);
  EXPECT_EQ(the<QCheckBox>(u"Check_Zdy"_s).text(), u"使用“自定义组5”过滤"_s);
  click(the<QPushButton>(u"cmmZDYnext"_s));
  EXPECT_EQ(the<QListWidget>(u"List_ZDY"_s).currentRow(), 5);
  the<QTabBar>(u"TabStrip_ZDYchose"_s).setCurrentIndex(19);
  click(the<QPushButton>(u"cmmZDYnext"_s));
  EXPECT_EQ(the<QListWidget>(u"List_ZDY"_s).currentRow(), 19);
}

TEST_F(GroupPageTest, ACommonGroupFillsTheGroupAndNamesIt) {
  auto& common = the<QComboBox>(u"ComboZDYcyfz"_s);
  const int entry = common.findText(u"除3余0(0路)"_s);
  ASSERT_GE(entry, 0);
  common.setCurrentIndex(entry);
  Q_EMIT common.activated(entry);
  EXPECT_EQ(data.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1"), (QStringList{u"3"_s, u"6"_s, u"9"_s}));
  EXPECT_EQ(the<QLabel>(u"Label_ZDYname"_s).text(), u"除3余0(0路)"_s);
  EXPECT_EQ(common.currentIndex(), -1);
}

TEST_F(GroupPageTest, RenamingAndClearing) {
  ports.typed = {u"热号"_s};
  QStringList behindTheBox;
  boxes.onShow = [&] { behindTheBox << line(1) << the<QLabel>(u"Label_ZDYname"_s).text(); };
  click(the<QPushButton>(u"cmmChangeZDYname"_s));
  boxes.onShow = {};
  EXPECT_EQ(behindTheBox, (QStringList{u"热号 ——　未 使 用 "_s, u"热号"_s}));
  EXPECT_EQ(line(1), u"热号 ——　未 使 用 "_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"名称已修改完成！"_s});
  clickNumber(4);
  click(the<QPushButton>(u"cmm_EmptyZDY_1"_s));
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  EXPECT_EQ(data.rows("SELECT count(*) FROM 号码特性 WHERE 自定义组1 = 1"), QStringList{u"0"_s});

  clickNumber(4);
  the<QListWidget>(u"List_ZDY"_s).setCurrentRow(1);
  clickNumber(5);
  click(the<QPushButton>(u"cmm_EmptyZDY_0"_s));
  EXPECT_EQ(data.rows("SELECT count(*) FROM 号码特性 WHERE 自定义组1 = 1 OR 自定义组2 = 1"), QStringList{u"0"_s});
  EXPECT_EQ(the<QListWidget>(u"List_ZDY"_s).currentRow(), 0);
}

TEST_F(GroupPageTest, ANameOfFiftyOneCharactersIsToldAndRefused) {
  ports.typed = {QString(51, u'名')};
  click(the<QPushButton>(u"cmmChangeZDYname"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  ports.typed = {QString(50, u'名')};
  click(the<QPushButton>(u"cmmChangeZDYname"_s));
  EXPECT_EQ(line(1), QString(50, u'名') + u" ——　未 使 用 "_s);
}

TEST_F(GroupPageTest, ANameWithQuotesAndMarkupShowsAsItStandsEverywhere) {
  const QString name = u"'; DROP TABLE 自定义别名; --\"<b>“热”</b>&"_s;
  ports.typed = {name};
  click(the<QPushButton>(u"cmmChangeZDYname"_s));
  EXPECT_EQ(line(1), name + u" ——　未 使 用 "_s);
  EXPECT_EQ(the<QLabel>(u"Label_ZDYname"_s).text(), name);
  EXPECT_EQ(the<QLabel>(u"Label_ZDYname"_s).textFormat(), Qt::PlainText);
  EXPECT_EQ(data.rows("SELECT COUNT(*) FROM 自定义别名"), QStringList{u"20"_s});
  control<QListWidget>(window, u"TabStrip_TiaoJian"_s).setCurrentRow(24);
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_TiaoJianList"_s).toPlainText().contains(u" "_s + name + u" ——　未 使 用 "_s));
}

TEST_F(GroupPageTest, TheButtonsOfTheCountsFollowTheList) {
  auto& all = the<QPushButton>(u"cmmAll_List_ZDYset"_s);
  EXPECT_FALSE(all.isEnabled());
  clickNumber(3);
  click(all);
  EXPECT_EQ(line(1), u"自定义组1 ——　号码：（０３） 允许开出个数（０个,１个,２个,３个,４个,５个）"_s);
  click(the<QPushButton>(u"cmmNone_List_ZDYset"_s));
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
}

TEST_F(GroupPageTest, TheHelpTellsTheFiveStepsAndTheTails) {
  const QString help = the<QPlainTextEdit>(u"Text_ZDYhelp"_s).toPlainText();
  for (const QString& part : {u"第一步"_s, u"第二步"_s, u"第三步"_s, u"第四步"_s, u"第五步"_s, u"０１ 和 １１"_s})
    EXPECT_TRUE(help.contains(part)) << part.toStdString();
}

TEST_F(GroupPageTest, ARuleLineOfTheCommonGroupsChangesNothing) {
  auto& common = the<QComboBox>(u"ComboZDYcyfz"_s);
  const QStringList before = data.rows("SELECT * FROM 号码特性");
  EXPECT_EQ(common.placeholderText(), u"常用分组"_s);
  QStringList rules;
  for (int i = 0; i < common.count(); ++i)
    if (common.itemText(i) == u"-------"_s)
      rules << QString::number(i);
  EXPECT_EQ(rules.join(u' '), u"2 9 13 24 29 35"_s);
  common.setCurrentIndex(2);
  Q_EMIT common.activated(2);
  EXPECT_EQ(data.rows("SELECT * FROM 号码特性"), before);
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  EXPECT_EQ(common.currentIndex(), -1);
}

TEST_F(GroupPageTest, TheCommonGroupsKeepThePeriodThatWasNextWhenTheyWereFilled) {
  const auto firstOfDraws = [this] { return the<QComboBox>(u"ComboZDYcyfz"_s).itemText(3); };
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  window.selectTopTab(1);
  window.selectTopTab(2);
  EXPECT_EQ(firstOfDraws(), u"0期旧码(复码)"_s);  // the history was empty at the start
  window.fillZdyGroups();
  EXPECT_EQ(firstOfDraws(), u"11031511期旧码(复码)"_s);
  data.addDraws(u"11031511 02 03 04 05 06"_s);
  window.selectTopTab(1);
  window.selectTopTab(2);
  EXPECT_EQ(firstOfDraws(), u"11031511期旧码(复码)"_s);
  window.fillZdyGroups();
  EXPECT_EQ(firstOfDraws(), u"11031512期旧码(复码)"_s);
}

TEST_F(GroupPageTest, ACommonGroupWithoutItsDrawsTellsWhy) {
  auto& common = the<QComboBox>(u"ComboZDYcyfz"_s);
  const int entry = common.findText(u"期斜码"_s, Qt::MatchEndsWith);
  ASSERT_GE(entry, 0);
  Q_EMIT common.activated(entry);
  EXPECT_EQ(ports.log, QStringList{u"info [] 无法提取上期开奖号码！"_s});
}

}  // namespace

}  // namespace elevenfive
