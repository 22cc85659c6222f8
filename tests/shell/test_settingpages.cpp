// The tabs of the condition panel that hold choices in the place of value lists, and what filling a tab reads.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "shell/widgets/mainwindow.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class SettingPagesTest : public ::testing::Test {
 protected:
  void openTab(int tab) {
    window.show();
    window.selectTopTab(2);
    control<QListWidget>(window, u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1);
  }

  int value(int id) { return data.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id).value_or(-1); }

  TestWorkspace data;
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  MainWindow window{data.workspace(), {ports, ports, files, texts}};
};

TEST_F(SettingPagesTest, APositionWithoutNumbersCannotBeSwitchedOn) {
  data.store().execute("test", "UPDATE 号码特性 SET \"第1位\" = 0");
  openTab(15);
  auto& use = control<QCheckBox>(window, u"Check_useDingWeiTiaojiao_30"_s);
  auto& numbers = control<QListWidget>(window, u"List_DingweiNumber_1"_s);
  EXPECT_FALSE(use.isEnabled());
  numbers.item(2)->setSelected(true);
  EXPECT_EQ(data.rows("SELECT 号码 FROM 号码特性 WHERE \"第1位\" = 1"), QStringList{u"3"_s});
  EXPECT_TRUE(use.isEnabled());
  use.click();
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 30"), QStringList{u"1"_s});
  numbers.item(2)->setSelected(false);
  EXPECT_FALSE(use.isEnabled());
  EXPECT_FALSE(use.isChecked());
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 30"), QStringList{u"0"_s});
}

TEST_F(SettingPagesTest, ThePositionToleranceIsStoredAtOnce) {
  openTab(15);
  click(control<QRadioButton>(window, u"Option_DingweiRongcuo_2"_s));
  EXPECT_EQ(value(3901), 2);
}

TEST_F(SettingPagesTest, TheHistoryMatchIsStoredAtOnce) {
  openTab(23);
  control<QComboBox>(window, u"Combo_HistoryGuoLu_0"_s).setCurrentIndex(29);
  control<QComboBox>(window, u"Combo_PiPei"_s).setCurrentIndex(2);
  control<QCheckBox>(window, u"Check_Historyguolu"_s).setChecked(true);
  EXPECT_EQ(data.rows("SELECT 使用状态, 最小值, 匹配值 FROM 历史数据过滤"), QStringList{u"1 30 3"_s});
}

TEST_F(SettingPagesTest, TheHistoryMatchOffersItsValuesAndReadsAsALine) {
  openTab(23);
  auto& periods = control<QComboBox>(window, u"Combo_HistoryGuoLu_0"_s);
  auto& match = control<QComboBox>(window, u"Combo_PiPei"_s);
  EXPECT_EQ(periods.count(), 100);
  EXPECT_EQ(periods.itemText(0), u"1"_s);
  EXPECT_EQ(periods.itemText(99), u"100"_s);
  EXPECT_EQ(match.count(), 5);
  EXPECT_EQ(match.itemText(4), u"5"_s);
  EXPECT_EQ(periods.currentText(), u"5"_s);
  EXPECT_EQ(match.currentText(), u"4"_s);
  EXPECT_EQ(control<QCheckBox>(window, u"Check_Historyguolu"_s).text(),
            u"使用这个条件(如果要使用这个条件来过滤掉历史数据相关的号码，请在前面打上勾)"_s);
  QStringList line;
  for (const QLabel* label : periods.parentWidget()->findChildren<QLabel*>())
    line << label->text();
  EXPECT_EQ(line.join(u'|'), u"过滤掉最近：|期内，|最大匹配值为|及以上的号码"_s);
}

TEST_F(SettingPagesTest, TheSecondBoxOfThePeriodsWritesTheMaximumAndStaysOutOfTheLine) {
  openTab(23);
  auto& newest = control<QComboBox>(window, u"Combo_HistoryGuoLu_1"_s);
  EXPECT_FALSE(newest.isVisible());
  EXPECT_EQ(newest.count(), 100);
  newest.setCurrentIndex(41);
  EXPECT_EQ(data.rows("SELECT 最小值, 最大值, 匹配值 FROM 历史数据过滤"), QStringList{u"5 42 4"_s});
}

TEST_F(SettingPagesTest, TheReductionShowsAndStoresItsType) {
  openTab(24);
  EXPECT_TRUE(control<QRadioButton>(window, u"Option_ShuoSuiLeiXing_5"_s).isChecked());
  control<QRadioButton>(window, u"Option_ShuoSuiLeiXing_3"_s).click();
  EXPECT_EQ(value(3900), 3);
  control<QCheckBox>(window, u"Check_auto"_s).click();
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 45"), QStringList{u"1"_s});
}

TEST_F(SettingPagesTest, OpeningTabsWritesNothing) {
  const QStringList values = data.rows("SELECT * FROM 过滤条件");
  const QStringList uses = data.rows("SELECT * FROM 过滤条件使用情况");
  const QStringList match = data.rows("SELECT * FROM 历史数据过滤");
  for (int tab = 1; tab <= 25; ++tab)
    openTab(tab);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件"), values);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件使用情况"), uses);
  EXPECT_EQ(data.rows("SELECT * FROM 历史数据过滤"), match);
}

TEST_F(SettingPagesTest, TheSummaryTellsThePresentConditions) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 7) * 2 WHERE ID <= 11");
  openTab(25);
  EXPECT_TRUE(control<QPlainTextEdit>(window, u"Text_TiaoJianList"_s).toPlainText().contains(u" 已选“胆码”： ０７"_s));
}

TEST_F(SettingPagesTest, TheReductionTellsWhatItsTypesReduce) {
  openTab(24);
  const auto& note = control<QLabel>(window, u"Label_ShuoSuiTip"_s);
  EXPECT_TRUE(note.isVisible());
  EXPECT_EQ(note.text(), u"提示，这里的保Ｎ型是对整注号码（包含蓝球号码）进行缩水的。"_s);
}

TEST_F(SettingPagesTest, FillingATabsListLoadsItsStretchIntoTheBufferOfTheRun) {
  auto& buffer = window.driver().state().tiaojianValue;
  // The stretch of the sums has 171 rows, that of 温度值10 30: slot 170 keeps what the first one left.
  data.store().execute("test",
                       "UPDATE 过滤条件 SET VALUE = CASE ID WHEN 1023 THEN 5 WHEN 1170 THEN 6 ELSE 0 END"
                       " WHERE ID BETWEEN 1000 AND 1170");
  data.store().execute("test",
                       "UPDATE 过滤条件 SET VALUE = CASE ID WHEN 4203 THEN 7 ELSE 0 END"
                       " WHERE ID BETWEEN 4180 AND 4209");
  openTab(2);
  EXPECT_EQ(buffer[23], 5);
  EXPECT_EQ(buffer[170], 6);
  openTab(21);
  EXPECT_EQ(buffer[23], 7);
  EXPECT_EQ(buffer[170], 6);
}

TEST_F(SettingPagesTest, TheTabsWithoutStretchesAndWithoutAGroupInUseLeaveTheBufferOfTheRunAlone) {
  openTab(2);
  auto& buffer = window.driver().state().tiaojianValue;
  buffer.fill(-1);
  const auto untouched = buffer;
  for (const int tab : {1, 15, 22, 23, 24, 25}) {
    control<QListWidget>(window, u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1);
    EXPECT_EQ(buffer, untouched) << tab;
  }
}

TEST_F(SettingPagesTest, TheCountsOfAGroupInUseGoThroughTheBufferOfTheRun) {
  data.store().execute("test",
                       "UPDATE 号码特性 SET 自定义组2 = 1 WHERE 号码 = 4");  // the factory set allows 2 and 4 of it
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 = 21");
  auto& buffer = window.driver().state().tiaojianValue;
  for (const int tab : {22, 25}) {
    buffer.fill(-1);
    openTab(tab);
    EXPECT_EQ(std::vector<int>(buffer.begin(), buffer.begin() + 11),
              (std::vector<int>{0, 0, 1, 0, 1, 0, 0, 0, 0, 0, -1}))
        << tab;
  }
}

}  // namespace

}  // namespace elevenfive
