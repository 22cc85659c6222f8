// Clicks on the condition pages whose change the store refuses or has no row for: one box tells a refusal, none a missing row,
// and every control shows what is stored.
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>

#include "conditions/widgets/chiplist.h"
#include "conditions/widgets/pickpage.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A control of a tab; tab 0 is the panel of the parity patterns.
struct Place {
  int tab;
  QStringView name;
};

class RefusedClicks : public MainWindowTest {
 protected:
  void SetUp() override {
    data.store().execute("test", "UPDATE 号码特性 SET 第3位 = (号码 > 4), 自定义组1 = (号码 = 5)");
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3809");
    open();
    window->selectTopTab(2);
  }

  void openPlace(const Place& place) {
    if (place.tab == 0)
      triggerMenu(u"paicu"_s);
    else
      the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(place.tab - 1);
  }

  /// From now on no condition can be written.
  void refuse() {
    for (const std::string table : {"过滤条件", "过滤条件使用情况", "号码特性", "历史数据过滤"})
      data.store().execute("test", "CREATE TEMP TRIGGER refuse_" + table + " BEFORE UPDATE ON " + table +
                                       " BEGIN SELECT RAISE(ABORT, 'disk full'); END");
  }

  /// How many critical boxes a click shows; boxes of another kind count as a hundred.
  template <typename Work>
  std::size_t faultsOf(Work&& work) {
    ports.boxes.clear();
    work();
    std::size_t faults = 0;
    for (const Box& box : ports.boxes)
      faults += box.kind == BoxKind::critical ? 1 : 100;
    return faults;
  }

  static void clickItem(QListWidget& list, int item) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(item)).center());
  }
};

TEST_F(RefusedClicks, AValueStaysAsItIsStored) {
  refuse();
  for (const Place& place :
       {Place{2, u"List_TiaoJian"}, Place{12, u"List_TJ_1"}, Place{14, u"List_QJ_2"},
        Place{15, u"List_DingweiNumber_3"}, Place{19, u"List_TiaojianElse"}, Place{22, u"List_ZDYset"}}) {
    openPlace(place);
    auto& list = the<ChipList>(place.name.toString());
    const std::vector<bool> stored = list.selection();
    ASSERT_GE(stored.size(), 6U);
    for (const int item : {0, 5}) {
      EXPECT_EQ(faultsOf([&] { clickItem(list, item); }), 1U) << place.tab;
      EXPECT_EQ(list.selection(), stored) << place.tab << ' ' << item;
    }
  }
}

TEST_F(RefusedClicks, TheButtonsOfAListLeaveItAsItIsStored) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 1020) WHERE ID BETWEEN 1000 AND 1170");
  openPlace({2, u"List_TiaoJian"});
  refuse();
  auto& list = the<ChipList>(u"List_TiaoJian"_s);
  auto& tip = the<QPlainTextEdit>(u"Text_tiaojianTip"_s);
  const std::vector<bool> stored = list.selection();
  for (const QString& button : {u"cmmAll"_s, u"cmmInvert"_s, u"cmmNone"_s}) {
    EXPECT_EQ(faultsOf([&] { click(the<QPushButton>(button + u"_List_TiaoJian"_s)); }), 1U);
    EXPECT_EQ(list.selection(), stored) << button.toStdString();
    EXPECT_TRUE(tip.toPlainText().endsWith(u"[２０]"_s));
  }
}

TEST_F(RefusedClicks, ACheckBoxStaysAsItIsStored) {
  refuse();
  for (const Place& place :
       {Place{2, u"Check_useTiaojiao_1"}, Place{12, u"Check_useTiaojiao_3"}, Place{14, u"Check_useTiaojiao_5"},
        Place{15, u"Check_useDingWeiTiaojiao_32"}, Place{16, u"Check_useTiaojiao_else"}, Place{22, u"Check_Zdy"},
        Place{23, u"Check_Historyguolu"}, Place{24, u"Check_auto"}, Place{0, u"Check1_paicu_2"}}) {
    openPlace(place);
    auto& check = the<QCheckBox>(place.name.toString());
    const bool stored = check.isChecked();
    EXPECT_EQ(faultsOf([&] { check.click(); }), 1U) << place.tab;
    EXPECT_EQ(check.isChecked(), stored) << place.tab;
  }
}

TEST_F(RefusedClicks, AnOptionStaysAsItIsStored) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 4 WHERE ID = 3900");
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 1 WHERE ID = 3901");
  refuse();
  openPlace({24, {}});
  EXPECT_EQ(faultsOf([&] { the<QRadioButton>(u"Option_ShuoSuiLeiXing_6"_s).click(); }), 1U);
  EXPECT_TRUE(the<QRadioButton>(u"Option_ShuoSuiLeiXing_4"_s).isChecked());
  EXPECT_FALSE(the<QRadioButton>(u"Option_ShuoSuiLeiXing_6"_s).isChecked());
  openPlace({15, {}});
  EXPECT_EQ(faultsOf([&] { the<QRadioButton>(u"Option_DingweiRongcuo_3"_s).click(); }), 1U);
  EXPECT_TRUE(the<QRadioButton>(u"Option_DingweiRongcuo_1"_s).isChecked());
  EXPECT_FALSE(the<QRadioButton>(u"Option_DingweiRongcuo_3"_s).isChecked());
}

TEST_F(RefusedClicks, AChoiceStaysAsItIsStored) {
  triggerMenu(u"paicu"_s);  // takes the newest draw into its first row
  refuse();
  for (const Place& place :
       {Place{23, u"Combo_HistoryGuoLu_0"}, Place{23, u"Combo_PiPei"}, Place{0, u"Combo1_dansuang_33"}}) {
    openPlace(place);
    auto& choice = the<QComboBox>(place.name.toString());
    const int stored = choice.currentIndex();
    ASSERT_GE(stored, 0);
    EXPECT_EQ(faultsOf([&] { choice.setCurrentIndex(stored == 0 ? 1 : 0); }), 1U)
        << place.name.toString().toStdString();
    EXPECT_EQ(choice.currentIndex(), stored) << place.name.toString().toStdString();
  }
  EXPECT_FALSE(the<QCheckBox>(u"Check1_paicu_3"_s).isChecked());
}

TEST_F(RefusedClicks, ANumberOfAGroupStaysAsItIsStored) {
  openPlace({22, {}});
  refuse();
  auto& number = the<PickButton>(u"cmm_ZDY_7"_s);
  const unsigned stored = number.backColor();
  EXPECT_EQ(faultsOf([&] { click(number); }), 1U);
  EXPECT_EQ(number.backColor(), stored);
}

TEST_F(RefusedClicks, AGroupThatCannotBeReadEitherIsToldOnce) {
  openPlace({22, {}});
  data.store().execute("test", "DROP TABLE 号码特性");
  EXPECT_EQ(faultsOf([&] { click(the<PickButton>(u"cmm_ZDY_7"_s)); }), 1U);
  EXPECT_EQ(faultsOf([&] { clickItem(the<ChipList>(u"List_ZDYset"_s), 2); }), 1U);
}

TEST_F(RefusedClicks, SwitchesThatCannotBeReadEitherAreToldOnce) {
  for (const Place& place : {Place{2, u"Check_useTiaojiao_1"}, Place{22, u"Check_Zdy"}, Place{24, u"Check_auto"},
                             Place{0, u"Check1_paicu_1"}}) {
    openPlace(place);
    data.store().execute("test", "ALTER TABLE 过滤条件使用情况 RENAME TO 别处");
    EXPECT_EQ(faultsOf([&] { the<QCheckBox>(place.name.toString()).click(); }), 1U) << place.tab;
    data.store().execute("test", "ALTER TABLE 别处 RENAME TO 过滤条件使用情况");
  }
}

TEST_F(RefusedClicks, MarksThatCannotBeReadAreToldOnceForAll) {
  openPlace({1, {}});
  data.store().execute("test", "DROP TABLE 过滤条件使用情况");
  EXPECT_EQ(faultsOf([&] { window->selectTopTab(2); }), 1U);
}

TEST_F(RefusedClicks, AClickWithoutARowChangesNothingOnTheScreenEither) {
  data.store().execute("test", "DELETE FROM 过滤条件 WHERE ID IN (1020, 3900, 3901)");
  data.store().execute("test", "DELETE FROM 过滤条件使用情况 WHERE 条件 IN (1, 45, 70)");
  data.store().execute("test", "DELETE FROM 历史数据过滤");
  openPlace({2, {}});
  auto& list = the<ChipList>(u"List_TiaoJian"_s);
  const std::vector<bool> stored = list.selection();
  ASSERT_FALSE(stored.at(5));
  EXPECT_EQ(faultsOf([&] { clickItem(list, 5); }), 0U);
  EXPECT_EQ(list.selection(), stored);
  for (const Place& place : {Place{2, u"Check_useTiaojiao_1"}, Place{23, u"Check_Historyguolu"},
                             Place{24, u"Check_auto"}, Place{0, u"Check1_paicu_0"}}) {
    openPlace(place);
    auto& check = the<QCheckBox>(place.name.toString());
    ASSERT_FALSE(check.isChecked()) << place.tab;
    EXPECT_EQ(faultsOf([&] { check.click(); }), 0U) << place.tab;
    EXPECT_FALSE(check.isChecked()) << place.tab;
  }
  for (const Place& place : {Place{15, u"Option_DingweiRongcuo_3"}, Place{24, u"Option_ShuoSuiLeiXing_6"}}) {
    openPlace(place);
    auto& option = the<QRadioButton>(place.name.toString());
    EXPECT_EQ(faultsOf([&] { option.click(); }), 0U) << place.tab;
    EXPECT_FALSE(option.isChecked()) << place.tab;
  }
  click(the<QPushButton>(u"cmm_kuaisusezi"_s));
  auto& use = the<QCheckBox>(u"Check_sfsy_0"_s);
  ASSERT_FALSE(use.isChecked());
  EXPECT_EQ(faultsOf([&] { use.click(); }), 0U);
  EXPECT_FALSE(use.isChecked());
}

TEST_F(RefusedClicks, ASwitchOfTheQuickSetupStaysAsItIsStored) {
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0 WHERE 条件 = 1");
  click(the<QPushButton>(u"cmm_kuaisusezi"_s));
  refuse();
  auto& use = the<QCheckBox>(u"Check_sfsy_0"_s);
  ASSERT_EQ(use.text(), u"和值"_s);
  EXPECT_EQ(faultsOf([&] { use.click(); }), 1U);
  EXPECT_FALSE(use.isChecked());
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 1"), QStringList{u"0"_s});
}

}  // namespace

}  // namespace elevenfive
