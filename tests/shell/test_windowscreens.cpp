// The program as its window shows it from the start to the close.
#include "shell/widgets/windowscreens.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QUrl>

#include "model/errors.h"
#include "tests/shell/windowscreenstest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

TEST_F(WindowScreensTest, ClosingTheWindowPutsTheDataBack) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  start(quick);
  MainWindow& window = *screens.window();
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_FALSE(control<QMenu>(window, u"mnu_User"_s).menuAction()->isVisible());
  startup->workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  ports.answers = {Answer::no};
  EXPECT_FALSE(window.close());
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(window.close());
  EXPECT_FALSE(window.isVisible());
  EXPECT_FALSE(QFile::exists(folders.workingFile()));
  EXPECT_EQ(stored("SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(WindowScreensTest, ADiskThatIsFullAtTheCloseIsToldOverTheWindowAndTriedAgain) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  FaultyFiles disk;
  start(disk);
  startup->workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  disk.writableBytes = 100;
  ports.answers = {Answer::yes, Answer::yes, Answer::no};
  EXPECT_TRUE(screens.window()->close());
  ASSERT_EQ(ports.boxes.size(), 5U);
  EXPECT_EQ(ports.boxes[1].kind, BoxKind::critical);
  EXPECT_EQ(ports.boxes[2].text, u"数据没有写回，要再试一次吗？"_s);
  EXPECT_EQ(ports.boxes[3].kind, BoxKind::critical);
  EXPECT_TRUE(QFile::exists(folders.workingFile()));
}

TEST_F(WindowScreensTest, TheFirstRunAsksForTheModeAndLogsOn) {
  prepare("UPDATE 用户模式 SET 模式 = 0");
  inForms({[](QWidget& form) {
             EXPECT_EQ(form.objectName(), u"frmFirstrun"_s);
             EXPECT_TRUE(control<QRadioButton>(form, u"Option_userMode_1"_s).isChecked());
             control<QRadioButton>(form, u"Option_userMode_2"_s).click();
             click(control<QPushButton>(form, u"cmdOK"_s));
           },
           [](QWidget& form) {
             EXPECT_EQ(form.objectName(), u"frmODBCLogon"_s);
             control<QComboBox>(form, u"Combo_userName"_s).setEditText(u"临时用户"_s);
             click(control<QPushButton>(form, u"cmdOK"_s));
           }});
  start(quick);
  EXPECT_EQ(startup->workspace().gUserName, u"临时用户"_s);
  EXPECT_TRUE(screens.window()->windowTitle().endsWith(u"  —— 临时用户"_s));
  EXPECT_TRUE(control<QMenu>(*screens.window(), u"mnu_User"_s).menuAction()->isVisible());
  EXPECT_TRUE(screens.window()->close());
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 2);
}

TEST_F(WindowScreensTest, LeavingTheLogonEndsTheStart) {
  prepare("UPDATE 用户模式 SET 模式 = 2");
  inForms({[](QWidget& form) { click(control<QPushButton>(form, u"cmd_End"_s)); }});
  Startup leaving(folders, ports, screens, quick);
  EXPECT_FALSE(leaving.start());
}

TEST_F(WindowScreensTest, AnEmptyHistoryOffersTheGames) {
  {
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test", "UPDATE 用户模式 SET 模式 = 1");
    workspace.close();
  }
  inForms({[](QWidget& form) {
    EXPECT_EQ(form.objectName(), u"frmDB"_s);
    EXPECT_EQ(form.findChildren<QRadioButton*>().size(), 29);
    const auto& frame = control<QGroupBox>(form, u"fraStep3"_s);
    EXPECT_EQ(frame.title(), u"请选择您要使用的彩种："_s);
    auto& option = control<QRadioButton>(form, u"OptionSSC_1"_s);
    option.click();
    EXPECT_EQ(frame.title(), u"请选择您要使用的彩种："_s + option.text());
    click(control<QPushButton>(form, u"cmdOK"_s));
  }});
  start(quick);
  EXPECT_EQ(startup->workspace().gConn.value("test", "SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"), 1);
  const QString ofTheForm = screens.window()->catalogue().updateAddress();
  EXPECT_FALSE(ofTheForm.isEmpty());
  click(control<QPushButton>(*screens.window(), u"newBtnHistory_7"_s));
  control<QRadioButton>(control<QWidget>(*screens.window(), u"fraCaizongTip"_s), u"OptionSSC_2"_s).click();
  EXPECT_NE(screens.window()->catalogue().updateAddress(), ofTheForm);
  click(control<QPushButton>(*screens.window(), u"cmmCaizongOK"_s));
  // What the form has left is done once the start is over: the draws of the game are read, here without an address.
  const auto updates = [this] { return ports.boxTexts().filter(u"还没有设置下载开奖数据的网址"_s).size(); };
  EXPECT_EQ(updates(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return updates() > 0; }));
  QTest::qWait(50);
  EXPECT_EQ(updates(), 1);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(WindowScreensTest, AShutChoiceOfTheGameReadsNoDraws) {
  {
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test", "UPDATE 用户模式 SET 模式 = 1");
    workspace.close();
  }
  inForms({[](QWidget& form) {
    EXPECT_EQ(form.findChildren<QRadioButton*>(), [&] {
      QList<QRadioButton*> unchecked;
      for (QRadioButton* option : form.findChildren<QRadioButton*>())
        if (!option->isChecked())
          unchecked << option;
      return unchecked;
    }());
    QTest::keyClick(&form, Qt::Key_Escape);
  }});
  start(quick);
  QTest::qWait(600);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s});
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(WindowScreensTest, TheSplashIsAsLargeAsItsPictureAndGoesWhenTheWindowComes) {
  screens.showSplash();
  QWidget* splash = topLevel(u"frmInitapp"_s);
  ASSERT_NE(splash, nullptr);
  EXPECT_TRUE(splash->isVisible());
  const auto& image = control<QLabel>(*splash, u"ImageInit"_s);
  EXPECT_EQ(image.pos(), QPoint(0, 0));
  EXPECT_EQ(image.size(), splash->size());
  EXPECT_EQ(image.pixmap(Qt::ReturnByValue).deviceIndependentSize().toSize(), splash->size());
  EXPECT_GT(splash->width(), 300);
  prepare("UPDATE 用户模式 SET 模式 = 1");
  start(quick);
  EXPECT_TRUE(screens.window()->isVisible());
  EXPECT_EQ(topLevel(u"frmInitapp"_s), nullptr);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(WindowScreensTest, TheSplashDoesNotLieOverTheBoxOfAStartThatFails) {
  prepare("DELETE FROM BallColor WHERE 号码 > 10");
  int splashes = -1;
  boxes.onShow = [&] { splashes = topLevel(u"frmInitapp"_s) == nullptr ? 0 : 1; };
  Startup failing(folders, boxes, screens, quick);
  EXPECT_FALSE(failing.start());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"程序初始化出错,即将退出。。。"_s});
  EXPECT_EQ(splashes, 0);
}

TEST_F(WindowScreensTest, TheSplashStandsWhileTheWindowIsMade) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  bool seen = false;
  WindowScreens watched({ports, ports, files, texts}, [&](MainWindow& window) {
    const QWidget* splash = topLevel(u"frmInitapp"_s);
    seen = splash != nullptr && splash->isVisible() && !window.isVisible();
  });
  Startup starting(folders, ports, watched, quick);
  ASSERT_TRUE(starting.start());
  EXPECT_TRUE(seen);
  EXPECT_TRUE(starting.close(true));
}

TEST_F(WindowScreensTest, AStartThatFailsTakesTheSplashAway) {
  prepare("DELETE FROM BallColor WHERE 号码 > 10");
  Startup starting(folders, ports, screens, quick);
  EXPECT_FALSE(starting.start());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"程序初始化出错,即将退出。。。"_s});
  EXPECT_EQ(topLevel(u"frmInitapp"_s), nullptr);
}

TEST_F(WindowScreensTest, AHistoryThatCannotBeReadIsAFaultOfTheBinding) {
  Workspace workspace(folders, {&quick, {}});
  workspace.gConn.execute("test", "DROP TABLE 历史记录");
  EXPECT_THROW(screens.bindHistory(workspace), StoreError);
  EXPECT_EQ(screens.window(), nullptr);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(WindowScreensTest, AHistoryThatCannotBeReadForThePanelsEndsTheStart) {
  expectPanelsEndTheStart("历史记录");
}

TEST_F(WindowScreensTest, NumbersThatCannotBeReadForThePanelsEndTheStart) {
  expectPanelsEndTheStart("过滤条件");
}

/// Takes the place of the system's viewer.
class Viewer final : public QObject {
  Q_OBJECT

 public:
  QList<QUrl> shown;
  Q_INVOKABLE void show(const QUrl& url) { shown << url; }
};

TEST_F(WindowScreensTest, F1ShowsTheHelpFileOfTheProgramFolder) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  QFile help(folders.helpFile());
  ASSERT_TRUE(help.open(QIODevice::WriteOnly));
  start(quick);
  Viewer viewer;
  QDesktopServices::setUrlHandler(u"file"_s, &viewer, "show");
  ASSERT_TRUE(QTest::qWaitForWindowActive(screens.window()));
  QTest::keyClick(screens.window(), Qt::Key_F1);
  QDesktopServices::unsetUrlHandler(u"file"_s);
  EXPECT_EQ(viewer.shown, QList<QUrl>{QUrl::fromLocalFile(folders.helpFile())});
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(WindowScreensTest, ADamagedDataFileIsToldOverTheWindowAndKeptAndTheBackupIsUsed) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  prepare("UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");  // the backup is the state before this run
  QFile pack(folders.packedFile());
  ASSERT_TRUE(pack.resize(pack.size() / 2));
  QFile::remove(folders.packInTransit());
  bool visible = false;
  boxes.onShow = [&] { visible = screens.window() != nullptr && screens.window()->isVisible(); };
  start(quick);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"数据文件已损坏（"_s));
  EXPECT_TRUE(ports.boxes[0].text.contains(u"已改用备份；损坏的文件保留为 "_s));
  EXPECT_TRUE(visible);
  const QStringList kept = QDir(folders.program).entryList({u"elevenfive.dat.damaged-*"_s});
  ASSERT_EQ(kept.size(), 1);
  EXPECT_TRUE(ports.boxes[0].text.contains(kept.first()));
  EXPECT_EQ(startup->workspace().gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 5);
  EXPECT_TRUE(screens.window()->close());
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
}

TEST_F(WindowScreensTest, AReadOnlyFolderAtTheCloseIsToldAndTheWorkStays) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  FaultyFiles disk;
  start(disk);
  startup->workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  disk.failingStep = disk.steps;
  ports.answers = {Answer::yes, Answer::no};
  EXPECT_TRUE(screens.window()->close());
  ASSERT_EQ(ports.boxes.size(), 3U);
  EXPECT_EQ(ports.boxes[1].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[1].text.contains(folders.workingFile()));
  Store left(folders.workingFile(), StoreAccess::readOnly);
  EXPECT_EQ(left.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(WindowScreensTest, AShutLogonWhileSwitchingLeavesTheOldUser) {
  prepare("UPDATE 用户模式 SET 模式 = 2");
  inForms({[](QWidget& form) {
    control<QComboBox>(form, u"Combo_userName"_s).setEditText(u"张三"_s);
    click(control<QPushButton>(form, u"cmdOK"_s));
  }});
  start(quick);
  inForms({[](QWidget& form) { QTest::keyClick(&form, Qt::Key_Escape); }});
  EXPECT_EQ(startup->switchUser(), UserSwitch::stayed);
  EXPECT_EQ(startup->workspace().gUserName, u"张三"_s);
  EXPECT_TRUE(screens.window()->close());
  EXPECT_TRUE(QFile::exists(folders.program + u"/张三.uVorex"_s));
}

TEST_F(WindowScreensTest, TheLogonFormSaysWhatIsWrongAndStays) {
  prepare("UPDATE 用户模式 SET 模式 = 2");
  ports.answers = {Answer::no};
  inForms({[&](QWidget& form) {
    EXPECT_EQ(form.windowTitle(), u"用户登录"_s);
    EXPECT_EQ(control<QComboBox>(form, u"Combo_userName"_s).currentText(), QString());
    click(control<QPushButton>(form, u"cmdOK"_s));
    EXPECT_EQ(ports.boxTexts().last(), u"用户名不能为空！"_s);
    control<QComboBox>(form, u"Combo_userName"_s).setEditText(u"张三"_s);
    click(control<QPushButton>(form, u"cmdOK"_s));
    EXPECT_EQ(ports.boxTexts().last(), u"用户不存在，要以当前的用户名及密码来建立新用户吗？"_s);
    control<QLineEdit>(form, u"txtPWD"_s).setText(u"pw"_s);
    click(control<QPushButton>(form, u"cmd_newUser"_s));
    EXPECT_EQ(ports.boxes.back().kind, BoxKind::information);
    EXPECT_EQ(control<QLineEdit>(form, u"txtPWD"_s).text(), QString());
    EXPECT_TRUE(form.isVisible());
    click(control<QPushButton>(form, u"cmdOK"_s));  // yes: the account is made
  }});
  start(quick);
  EXPECT_EQ(startup->workspace().gUserName, u"张三"_s);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(WindowScreensTest, TheChartModeCannotBeChosen) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  start(quick);
  const auto& chart = control<QRadioButton>(*screens.window(), u"Option_TorD_1"_s);
  EXPECT_FALSE(chart.isEnabled());
  EXPECT_FALSE(chart.toolTip().isEmpty());
  EXPECT_TRUE(screens.window()->close());
}

}  // namespace

}  // namespace elevenfive

#include "test_windowscreens.moc"
