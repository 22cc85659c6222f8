// The entries of the menu that work on the whole condition set: export, import, restore.
#include <QFile>
#include <QListWidget>
#include <QTabBar>

#include "conditions/widgets/filequestion.h"
#include "conditions/widgets/pickpage.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Answers with fixed paths and keeps what it was asked.
class AskedFiles final : public FileDialogs {
 public:
  QString path;
  QStringList asked;
  QString openFile(const QString& title, const QString& filter) override {
    asked << QStringList{u"open"_s, title, filter}.join(u'|');
    return path;
  }
  QString saveFile(const QString& title, const QString& filter, const QString& defaultName) override {
    asked << QStringList{u"save"_s, title, filter, defaultName}.join(u'|');
    return path;
  }
};

class ConditionMenusTest : public MainWindowTest {
 protected:
  QStringList conditionSet() {
    QStringList all;
    for (const char* sql : {"SELECT * FROM 过滤条件 ORDER BY ID", "SELECT * FROM 过滤条件使用情况 ORDER BY 条件",
                            "SELECT * FROM 号码特性 ORDER BY 号码", "SELECT * FROM 历史数据过滤"})
      all << data.rows(sql);
    return all;
  }

  void changeEverything() {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (VALUE + 1) % 3");
    data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 1 - 使用情况");
    data.store().execute("test", "UPDATE 号码特性 SET 大数 = 1 - 大数, 区间1 = 1 - 区间1, 自定义组20 = 1, 第7位 = 1");
    data.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0, 最小值 = 1, 最大值 = 2, 匹配值 = 3");
  }

  void expectPickingPage() {
    EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
    EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 0);
    EXPECT_TRUE(the<QWidget>(u"pic_subTiaojian_1"_s).isVisible());
  }
};

TEST_F(ConditionMenusTest, EntriesBearTheirCaptions) {
  open();
  EXPECT_EQ(the<QAction>(u"huanyuan"_s).text(), u"全部还原为默认值"_s);
  EXPECT_EQ(the<QAction>(u"daocu"_s).text(), u"导出过滤条件..."_s);
  EXPECT_EQ(the<QAction>(u"daoru"_s).text(), u"导入过滤条件..."_s);
}

TEST_F(ConditionMenusTest, WhatWasExportedComesBackWithTheNumberButtons) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 2 WHERE ID IN (3, 104)");
  const QStringList saved = conditionSet();
  const QString path = data.folders.program + u"/mine.Vorex"_s;
  files.paths = {path};
  open();
  triggerMenu(u"daocu"_s);
  EXPECT_EQ(ports.log, QStringList{u"plain [] 导出完成！"_s});
  ASSERT_TRUE(QFile::exists(path));

  changeEverything();
  window->selectTopTab(2);
  the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(8);
  window->selectTopTab(3);
  files.paths = {path};
  triggerMenu(u"daoru"_s);
  EXPECT_EQ(ports.log.last(), u"plain [] 导入完成！"_s);
  EXPECT_EQ(conditionSet(), saved);
  expectPickingPage();
  EXPECT_EQ(the<PickButton>(u"cmm_C7_3"_s).backColor(), 192U);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_104"_s).backColor(), 192U);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_4"_s).backColor(), 49152U);
}

TEST_F(ConditionMenusTest, ASetThatComesWhileTheParityPanelShowsStaysAsItCame) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  data.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 5, 匹配值 = 4");  // as restored
  const QString path = data.folders.program + u"/mine.Vorex"_s;
  files.paths = {path, path};
  open();
  triggerMenu(u"huanyuan"_s);
  triggerMenu(u"daocu"_s);
  const QStringList saved = conditionSet();
  triggerMenu(u"paicu"_s);
  ASSERT_NE(conditionSet(), saved);  // the newest draw stands in its first row
  triggerMenu(u"daoru"_s);
  EXPECT_EQ(ports.log.last(), u"plain [] 导入完成！"_s);
  EXPECT_EQ(conditionSet(), saved);
  expectPickingPage();
  triggerMenu(u"paicu"_s);
  ASSERT_NE(conditionSet(), saved);
  triggerMenu(u"huanyuan"_s);
  EXPECT_EQ(conditionSet(), saved);
  expectPickingPage();
}

TEST_F(ConditionMenusTest, AnExistingFileIsAskedAbout) {
  const QString path = data.folders.program + u"/mine.Vorex"_s;
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("old");
  file.close();
  files.paths = {path, path};
  ports.answers = {Answer::no, Answer::yes};
  open();
  triggerMenu(u"daocu"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"要覆盖这个文件吗？"_s});
  EXPECT_EQ(QFile(path).size(), 3);
  triggerMenu(u"daocu"_s);
  EXPECT_EQ(ports.boxTexts().last(), u"导出完成！"_s);
  EXPECT_GT(QFile(path).size(), 1000);
}

TEST_F(ConditionMenusTest, ACancelledDialogSaysNothing) {
  const QStringList before = conditionSet();
  open();
  triggerMenu(u"daocu"_s);
  triggerMenu(u"daoru"_s);
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_EQ(conditionSet(), before);
  expectPickingPage();  // an import leads there however it ended
}

TEST_F(ConditionMenusTest, ALostTemplateIsToldByTheMenuAndByWhatAFormLeaves) {
  open();
  ASSERT_TRUE(QFile::remove(data.folders.templateFile()));
  const QString lost = u"plain [] 数据模板文件丢失无法导出，请重新安装！"_s;
  triggerMenu(u"daocu"_s);
  EXPECT_EQ(ports.log, QStringList{lost});
  window->leaveAction(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ports.log.size() == 2; }));
  EXPECT_EQ(ports.log, (QStringList{lost, lost}));
}

TEST_F(ConditionMenusTest, ImportedZonesLeaveTheCountsOfTheHistoryAsTheyWere) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  data.store().execute("test", "UPDATE 历史记录 SET 区间1 = 3, 区间2 = 1, 区间3 = 1, 区间4 = 0");
  const QString path = data.folders.program + u"/zones.Vorex"_s;
  files.paths = {path, path};
  open();
  triggerMenu(u"daocu"_s);
  data.store().execute("test", "UPDATE 号码特性 SET 区间1 = 1 - 区间1, 区间4 = 1");
  triggerMenu(u"daoru"_s);
  EXPECT_EQ(data.rows("SELECT 区间1, 区间4 FROM 号码特性 WHERE 号码 = 5"), QStringList{u"1 0"_s});
  window->selectTopTab(1);
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"导出完成！"_s, u"导入完成！"_s}));
  EXPECT_EQ(data.rows("SELECT 区间1, 区间2, 区间3, 区间4 FROM 历史记录"), QStringList{u"3 1 1 0"_s});
}

TEST_F(ConditionMenusTest, AFolderThatCannotBeWrittenIsToldInOneBox) {
  files.paths = {data.folders.program + u"/none/such/mine.Vorex"_s};
  open();
  triggerMenu(u"daocu"_s);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
}

TEST_F(ConditionMenusTest, AFileThatIsNoConditionSetIsRefused) {
  const QString path = data.folders.program + u"/lines.txt"_s;
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("no condition set\n");
  file.close();
  const QStringList before = conditionSet();
  files.paths = {path};
  open();
  triggerMenu(u"daoru"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"文件格式错误无法导入数据！"_s});
  EXPECT_EQ(conditionSet(), before);
}

TEST_F(ConditionMenusTest, ARestoreBringsTheFactoryConditionsAndLeavesNoNumberPicked) {
  open();
  changeEverything();
  data.store().execute("test", "UPDATE 自定义别名 SET 别名 = '热号' WHERE 序号 = 2");
  triggerMenu(u"paicu"_s);
  QStringList picksBehindTheBox;
  boxes.onShow = [&] { picksBehindTheBox = data.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 5"); };
  triggerMenu(u"huanyuan"_s);
  boxes.onShow = {};
  EXPECT_EQ(ports.log, QStringList{u"plain [] 全部过滤条件已还原为默认值！"_s});
  EXPECT_EQ(picksBehindTheBox, QStringList{u"1"_s});  // the picks go after the box
  EXPECT_EQ(data.rows("SELECT SUM(VALUE) FROM 过滤条件 WHERE ID < 40 OR ID BETWEEN 101 AND 199"), QStringList{u"0"_s});
  EXPECT_EQ(
      data.rows("SELECT count(*) FROM 过滤条件 c JOIN 默认过滤条件 d ON c.ID = d.ID WHERE c.VALUE <> d.VALUE AND c.ID "
                "BETWEEN 1000 AND 3799"),
      QStringList{u"0"_s});
  EXPECT_EQ(data.rows("SELECT * FROM 历史数据过滤"), QStringList{u"1 5 2 4"_s});
  EXPECT_EQ(data.rows("SELECT 别名 FROM 自定义别名 WHERE 序号 = 2"), QStringList{u"自定义组2"_s});
  expectPickingPage();
  EXPECT_EQ(the<PickButton>(u"cmm_C7_5"_s).backColor(), 0x8000000FU);
}

TEST(DialogFileQuestionTest, AsksWithTheFilterOfTheExtensionAndOfAllFiles) {
  AskedFiles dialogs;
  DialogFileQuestion question(dialogs);
  dialogs.path = u"/tmp/a.Vorex"_s;
  EXPECT_EQ(question.OpenSaveDialog(u"Open"_s, u"选择文件"_s, u"Vorex"_s, u"过滤条件"_s, {}), u"/tmp/a.Vorex"_s);
  EXPECT_EQ(question.OpenSaveDialog(u"save"_s, u"保存文件"_s, u"Vorex"_s, u"过滤条件"_s, u"条件设置0309.Vorex"_s),
            u"/tmp/a.Vorex"_s);
  EXPECT_EQ(dialogs.asked, (QStringList{u"open|选择文件|过滤条件(*.Vorex);;所有文件(*.*)"_s,
                                        u"save|保存文件|过滤条件(*.Vorex);;所有文件(*.*)|条件设置0309.Vorex"_s}));
}

TEST(DialogFileQuestionTest, ANameWithoutExtensionIsSavedUnderExe) {
  AskedFiles dialogs;
  DialogFileQuestion question(dialogs);
  dialogs.path = u"/tmp/my.set/mine"_s;
  EXPECT_EQ(question.OpenSaveDialog(u"save"_s, {}, u"Vorex"_s, {}, {}), u"/tmp/my.set/mine.exe"_s);
  EXPECT_EQ(question.OpenSaveDialog(u"open"_s, {}, u"Vorex"_s, {}, {}), u"/tmp/my.set/mine"_s);
  dialogs.path.clear();
  EXPECT_EQ(question.OpenSaveDialog(u"save"_s, {}, u"Vorex"_s, {}, {}), QString());
}

}  // namespace

}  // namespace elevenfive
