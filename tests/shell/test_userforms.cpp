// frmFirstrun, frmODBCLogon and 切换用户 as the window shows them.
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>

#include "model/widgets/ball.h"
#include "tests/shell/windowscreenstest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class UserFormsTest : public WindowScreensTest {
 protected:
  /// Types a name and a password and clicks 登陆.
  static void logOnAs(QWidget& form, const QString& name, const QString& password = {}) {
    control<QComboBox>(form, u"Combo_userName"_s).setEditText(name);
    control<QLineEdit>(form, u"txtPWD"_s).setText(password);
    click(control<QPushButton>(form, u"cmdOK"_s));
  }

  /// Starts with several users and logs this one on, whose account is made.
  void startAs(const QString& name, const QString& password = {}) {
    prepare("UPDATE 用户模式 SET 模式 = 2");
    inForms({[=](QWidget& form) { logOnAs(form, name, password); }});
    start(quick);
    ASSERT_EQ(startup->workspace().gUserName, name);
    ports.boxes.clear();
  }

  void setValue(int value) {
    startup->workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value);
  }
  int value() {
    return startup->workspace().gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1);
  }

  void switchUser() { control<QAction>(u"mnu_UserQiehuan"_s).trigger(); }

  template <typename Control>
  Control& control(const QString& name) {
    auto* found = screens.window()->findChild<Control*>(name);
    if (found == nullptr)
      throw std::runtime_error("no control " + name.toStdString());
    return *found;
  }
  template <typename Control>
  static Control& control(QWidget& form, const QString& name) {
    return elevenfive::control<Control>(form, name);
  }

  /// The choice that the condition panel shows for the value.
  int shownValue() {
    control<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(23);
    for (int type = 3; type <= 7; ++type)
      if (control<QRadioButton>(u"Option_ShuoSuiLeiXing_%1"_s.arg(type)).isChecked())
        return type;
    return 0;
  }

  QString fileOf(const QString& name) const { return folders.program + u'/' + name + u".uVorex"_s; }
};

TEST_F(UserFormsTest, TheFirstRunFormBearsItsTextsAndBeginsWithOneUser) {
  inForms({[&](QWidget& form) {
             EXPECT_EQ(form.objectName(), u"frmFirstrun"_s);
             EXPECT_EQ(form.windowTitle(), u"设置用户模式"_s);
             EXPECT_EQ(control<QLabel>(form, u"Text1"_s).text(),
                       u"如果这台电脑上只有你一个人使用此软件请选择“单用户模式”\n\n"
                       "如果这台电脑上有多个用户使用到此软件请选择“多用户模式”\n\n"
                       "(投注站等可能有多用户使用的情况下请选择“多用户模式”)\n"_s);
             EXPECT_EQ(control<QRadioButton>(form, u"Option_userMode_1"_s).text(), u"单用户模式"_s);
             EXPECT_EQ(control<QRadioButton>(form, u"Option_userMode_2"_s).text(), u"多用户模式"_s);
             EXPECT_EQ(control<QPushButton>(form, u"cmd_End"_s).text(), u"退出系统"_s);
             EXPECT_EQ(control<QPushButton>(form, u"cmdOK"_s).text(), u"下一步"_s);
             click(control<QPushButton>(form, u"cmdOK"_s));
           },
           [&](QWidget& form) {
             // No logon with one user, and a fresh installation has no draws.
             EXPECT_EQ(form.objectName(), u"frmDB"_s);
             QTest::keyClick(&form, Qt::Key_Escape);
           }});
  start(quick);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s});
  EXPECT_FALSE(control<QMenu>(u"mnu_User"_s).menuAction()->isVisible());
  EXPECT_EQ(startup->workspace().gUserName, QString());
  EXPECT_TRUE(screens.window()->close());
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
}

TEST_F(UserFormsTest, AFreshInstallationWithSeveralUsersFromTheFirstStartToTheSecond) {
  QStringList captions;  // of the forms, each with the boxes that were shown before it
  const auto met = [&](QWidget& form) { captions << form.windowTitle() << ports.boxTexts(); };
  inForms({[&](QWidget& form) {
             met(form);
             control<QRadioButton>(form, u"Option_userMode_2"_s).click();
             click(control<QPushButton>(form, u"cmdOK"_s));
           },
           [&](QWidget& form) {
             met(form);
             EXPECT_TRUE(screens.window()->isVisible());
             logOnAs(form, u"张三"_s, u"pw"_s);
           },
           [&](QWidget& form) {
             met(form);
             EXPECT_TRUE(screens.window()->windowTitle().endsWith(u"  —— 张三"_s));
             control<QRadioButton>(form, u"OptionSSC_4"_s).click();
             QTest::keyClick(&form, Qt::Key_Escape);
           }});
  start(quick);
  const QString question = u"用户不存在，要以当前的用户名及密码来建立新用户吗？"_s;
  const QString noDraws = u"历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s;
  EXPECT_EQ(captions, QStringList({u"设置用户模式"_s, u"用户登录"_s, u"选择彩种"_s, question, noDraws}));
  EXPECT_TRUE(control<QMenu>(u"mnu_User"_s).menuAction()->isVisible());
  setValue(3);
  ASSERT_TRUE(screens.window()->close());

  ports.boxes.clear();
  captions.clear();
  inForms({[&](QWidget& form) {
             met(form);
             logOnAs(form, u"临时用户"_s, u"anything"_s);
           },
           [&](QWidget& form) {
             met(form);
             QTest::keyClick(&form, Qt::Key_Escape);
           }});
  start(quick);
  const QString noFile = u"用户文件丢失或损坏,无法打开！"_s;  // 临时用户 has none, ever
  EXPECT_EQ(captions, QStringList({u"用户登录"_s, u"选择彩种"_s, noFile, noDraws}));
  EXPECT_EQ(startup->workspace().gUserName, u"临时用户"_s);
  EXPECT_EQ(startup->workspace().gConn.value("test", "SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"), 4);
  startup->workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 7 WHERE ID = 3900");
  inForms({[&](QWidget& form) { logOnAs(form, u"张三"_s, u"pw"_s); }});
  switchUser();
  EXPECT_EQ(value(), 3);
  EXPECT_FALSE(QFile::exists(fileOf(u"临时用户"_s)));
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, LeavingTheFirstRunFormEndsTheProgramWithNothingSaved) {
  inForms({[&](QWidget& form) {
    control<QRadioButton>(form, u"Option_userMode_2"_s).click();
    click(control<QPushButton>(form, u"cmd_End"_s));
  }});
  Startup leaving(folders, boxes, screens, quick);
  EXPECT_FALSE(leaving.start());
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 0);
}

TEST_F(UserFormsTest, TheLogonFormBearsItsTextsAndListsTheNames) {
  startAs(u"张三"_s);
  inForms({[&](QWidget& form) {
    EXPECT_EQ(form.windowTitle(), u"用户登录"_s);
    QStringList labels;
    for (const QLabel* label : form.findChildren<QLabel*>())
      labels << label->text();
    EXPECT_EQ(labels, (QStringList{u"用户名:"_s, u"密  码:"_s}));
    EXPECT_EQ(control<QPushButton>(form, u"cmdOK"_s).text(), u"登 陆"_s);
    EXPECT_EQ(control<QPushButton>(form, u"cmd_newUser"_s).text(), u"我是新用户"_s);
    EXPECT_EQ(control<QPushButton>(form, u"cmd_End"_s).text(), u"退出系统"_s);
    const auto& names = control<QComboBox>(form, u"Combo_userName"_s);
    ASSERT_EQ(names.count(), 2);
    EXPECT_EQ(names.itemText(0) + u' ' + names.itemText(1), u"临时用户 张三"_s);
    QTest::keyClick(&form, Qt::Key_Escape);
  }});
  switchUser();
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, ATypedNameIsTakenToTheLetterAndNotPutIntoTheList) {
  startAs(u"abc"_s);
  inForms({[&](QWidget& form) {
    auto& names = control<QComboBox>(form, u"Combo_userName"_s);
    const int count = names.count();
    for (const QString& typed : {u"ab"_s, u"ABC"_s}) {
      names.clearEditText();
      ports.boxes.clear();
      ports.answers = {Answer::no};
      QTest::keyClicks(names.lineEdit(), typed);
      QTest::keyClick(names.lineEdit(), Qt::Key_Return);
      EXPECT_EQ(ports.boxTexts(), QStringList{u"用户不存在，要以当前的用户名及密码来建立新用户吗？"_s});
      EXPECT_EQ(names.currentText(), typed);
      EXPECT_EQ(names.count(), count);
      EXPECT_TRUE(form.isVisible());
    }
    QTest::keyClick(&form, Qt::Key_Escape);
  }});
  switchUser();
  EXPECT_EQ(startup->workspace().gUserName, u"abc"_s);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, AWrongPasswordIsToldAndTheFormStays) {
  startAs(u"张三"_s, u"pw"_s);
  inForms({[&](QWidget& form) {
    logOnAs(form, u"张三"_s, u"PW"_s);
    EXPECT_EQ(ports.boxTexts(), QStringList{u"密码错误！(注意大小写区分)"_s});
    EXPECT_TRUE(form.isVisible());
    logOnAs(form, u"张三"_s, u" pw "_s);
  }});
  switchUser();
  EXPECT_EQ(ports.boxes.size(), 1U);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, AMissingFileIsToldAndTheUserIsLoggedOn) {
  startAs(u"张三"_s);
  ASSERT_TRUE(screens.window()->close());
  QFile::remove(fileOf(u"张三"_s));
  ports.boxes.clear();
  inForms({[&](QWidget& form) { logOnAs(form, u"张三"_s); }});
  start(quick);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"用户文件丢失或损坏,无法打开！"_s});
  EXPECT_EQ(startup->workspace().gUserName, u"张三"_s);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, ANewAccountWithoutTheTemplateIsTold) {
  startAs(u"张三"_s);
  QFile::remove(folders.templateFile());
  ports.answers = {Answer::yes};  // 仍要切换用户吗
  inForms({[&](QWidget& form) {
    ports.boxes.clear();
    logOnAs(form, u"李四"_s);
    EXPECT_EQ(ports.boxTexts(),
              QStringList({u"用户不存在，要以当前的用户名及密码来建立新用户吗？"_s,
                           u"数据模板文件丢失无法导出，请重新安装！"_s, u"用户文件丢失或损坏,无法打开！"_s}));
  }});
  switchUser();
  EXPECT_EQ(startup->workspace().gUserName, u"李四"_s);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, SwitchingShowsTheFirstTabWithTheOtherUsersConditions) {
  startAs(u"甲"_s);
  setValue(3);
  startup->workspace().gConn.execute("test", "INSERT INTO 日志表 (序号, 期号) VALUES (1, 11031510)");
  screens.window()->selectTopTab(3);
  inForms({[&](QWidget& form) { logOnAs(form, u"乙"_s); }});
  switchUser();
  EXPECT_TRUE(screens.window()->windowTitle().endsWith(u"  —— 乙"_s));
  EXPECT_EQ(control<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 0);
  EXPECT_EQ(control<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 0);
  EXPECT_EQ(shownValue(), 5);
  EXPECT_EQ(startup->workspace().gConn.value("test", "SELECT COUNT(*) FROM 日志表"), 0);
  inForms({[&](QWidget& form) { logOnAs(form, u"甲"_s); }});
  switchUser();
  EXPECT_TRUE(screens.window()->windowTitle().endsWith(u"  —— 甲"_s));
  EXPECT_EQ(shownValue(), 3);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, AFormThatIsShutLeavesUserAndTabAsTheyAre) {
  startAs(u"甲"_s);
  screens.window()->selectTopTab(3);
  inForms({[&](QWidget& form) { QTest::keyClick(&form, Qt::Key_Escape); }});
  switchUser();
  EXPECT_TRUE(screens.window()->windowTitle().endsWith(u"  —— 甲"_s));
  EXPECT_EQ(control<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 2);
  QFile::remove(folders.templateFile());
  ports.answers = {Answer::no};
  switchUser();  // no form comes
  EXPECT_EQ(ports.boxTexts().last(), u"用户“甲”的过滤条件没有保存，仍要切换用户吗？"_s);
  EXPECT_EQ(control<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 2);
  EXPECT_TRUE(screens.window()->close());
}

TEST_F(UserFormsTest, LeavingTheSystemWhileSwitchingAsksNothingAndPacksNothing) {
  startAs(u"甲"_s);
  ASSERT_TRUE(screens.window()->close());
  ASSERT_EQ(stored("SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 5);
  inForms({[&](QWidget& form) { logOnAs(form, u"甲"_s); }});
  start(quick);
  ports.boxes.clear();
  setValue(3);
  inForms({[&](QWidget& form) { click(control<QPushButton>(form, u"cmd_End"_s)); }});
  switchUser();
  EXPECT_FALSE(screens.window()->isVisible());
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(QFile::exists(folders.workingFile()));  // for the next start to keep
  EXPECT_EQ(stored("SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 5);
  EXPECT_EQ(QDir(folders.bakFolder()).entryList({u"*.bak"_s}).size(), 1);
  Store saved(fileOf(u"甲"_s), StoreAccess::readOnly);  // saved as the switching began
  EXPECT_EQ(saved.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(UserFormsTest, ASecondInstanceShowsItsBoxNoWindowAndHarmsNothing) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  start(quick);
  setValue(3);
  RecordingPorts secondPorts;
  WindowScreens secondScreens({secondPorts, secondPorts, files, texts}, [](MainWindow&) {});
  Startup second(folders, secondPorts, secondScreens, quick);
  EXPECT_FALSE(second.start());
  EXPECT_EQ(secondPorts.log, QStringList{u"info [] 程序正在运行,不允许同时打开多个!!!"_s});
  EXPECT_EQ(secondScreens.window(), nullptr);
  EXPECT_EQ(value(), 3);
  EXPECT_TRUE(screens.window()->close());
  EXPECT_EQ(stored("SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(UserFormsTest, TheBallsOfTheDrawsAndOfTheRunHaveTheColoursOfTheTable) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  start(quick);
  const auto picture = [](const BallDelegate& delegate, const QModelIndex& index) {
    QImage cell(60, 28, QImage::Format_RGB32);
    cell.fill(Qt::white);
    QPainter painter(&cell);
    QStyleOptionViewItem option;
    option.rect = cell.rect();
    delegate.paint(&painter, option, index);
    return cell;
  };
  auto& grid = control<GridView>(u"TDBGridHistory"_s);
  const auto colourOf = [&](int number, const BallDelegate& balls) {
    const QModelIndex index = grid.rows().index(0, grid.rows().columnOf(u"号码%1"_s.arg(number)));
    EXPECT_EQ(index.data().toInt(), number);
    const QImage shown = picture(balls, index);
    for (int colour = 0; colour <= 4; ++colour) {
      BallDelegate expected;
      expected.setColor(number, ballColor(colour));
      if (picture(expected, index) == shown)
        return colour;
    }
    return -1;
  };
  for (const QString& name : {u"TDBGridHistory"_s, u"TDBGrid_RZ"_s}) {
    const BallDelegate& balls = control<GridView>(name).balls();
    EXPECT_EQ(colourOf(1, balls), 0);  // red
    EXPECT_EQ(colourOf(2, balls), 4);  // purple
    EXPECT_EQ(colourOf(3, balls), 0);
    EXPECT_EQ(colourOf(4, balls), 4);
  }
  EXPECT_TRUE(screens.window()->close());
}

}  // namespace

}  // namespace elevenfive
