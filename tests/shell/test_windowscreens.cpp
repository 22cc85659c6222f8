// The program as its window shows it from the start to the close.
#include "shell/widgets/windowscreens.h"

#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>

#include "tests/shell/windowtest.h"
#include "tests/support/faultyfiles.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Does these steps in turn, each in the modal form that is open by then.
void inForms(std::deque<std::function<void(QWidget&)>> steps) {
  if (steps.empty())
    return;
  QTimer::singleShot(0, [steps]() mutable {
    if (QWidget* form = QApplication::activeModalWidget()) {
      const auto step = steps.front();
      steps.pop_front();
      inForms(steps);
      step(*form);
    } else {
      inForms(steps);
    }
  });
}

class WindowScreensTest : public ::testing::Test {
 protected:
  WindowScreensTest() { Workspace::create(folders, false, quick); }

  /// A run before the one under test.
  void prepare(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test",
                            "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5)"
                            " VALUES (11031510, 40000, 1, 2, 3, 4, 5)");
    workspace.gConn.execute("test", sql);
    workspace.close();
  }

  int stored(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    return workspace.gConn.value("test", sql).value_or(-1);
  }

  void start(FileAccess& disk) {
    startup = std::make_unique<Startup>(folders, ports, screens, disk);
    ASSERT_TRUE(startup->start());
    screens.window()->setLeave([this] { return startup->close(false); });
  }

  QTemporaryDir folder;
  UnflushedFiles quick;
  Workspace::Folders folders{folder.filePath(u"program"_s), folder.filePath(u"temp"_s)};
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  WindowScreens screens{{ports, ports, files, texts}, [](MainWindow&) {}};
  std::unique_ptr<Startup> startup;
};

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
    control<QRadioButton>(form, u"OptionSSC_1"_s).click();
    click(control<QPushButton>(form, u"cmdOK"_s));
  }});
  start(quick);
  EXPECT_EQ(startup->workspace().gConn.value("test", "SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"), 1);
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
