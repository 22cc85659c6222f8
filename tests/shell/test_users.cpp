#include "shell/users.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "model/daycount.h"
#include "model/errors.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QDate today(2026, 11, 21);

class UsersTest : public ::testing::Test {
 protected:
  TestWorkspace w;
  RecordingPorts ports;
  UnflushedFiles files;
  Users users{w.workspace(), ports, files, [] { return QDateTime(today, QTime(12, 0)); }};

  QString fileOf(const QString& name) const { return w.folders.program + u'/' + name + u".uVorex"_s; }
  void setValue(int value) { w.store().execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value); }
  int value() { return w.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1); }
  QStringList accounts() { return w.rows("SELECT 用户名 FROM 用户表 ORDER BY 用户名"); }

  /// One that logged on last so many days before noon of today.
  void addAccount(const QString& name, double daysAgo) {
    constexpr double noon = 0.5;
    w.store().execute("test", "INSERT INTO 用户表 VALUES (?, '', ?)", name, dayCountOf(today) + noon - daysAgo);
    QFile file(fileOf(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
};

TEST_F(UsersTest, AnEmptyNameIsRefused) {
  EXPECT_FALSE(users.cmdOK(u"   "_s, u"x"_s));
  EXPECT_EQ(ports.log, QStringList{u"critical [] 用户名不能为空！"_s});
}

TEST_F(UsersTest, AnUnknownNameIsAskedAboutAndNoStays) {
  ports.answers = {Answer::no};
  EXPECT_FALSE(users.cmdOK(u"张三"_s, u"pw"_s));
  EXPECT_EQ(ports.log, QStringList{u"question [] 用户不存在，要以当前的用户名及密码来建立新用户吗？"_s});
  EXPECT_EQ(accounts(), QStringList{u"临时用户"_s});
}

TEST_F(UsersTest, YesMakesTheAccountWithItsFileAndLogsOn) {
  EXPECT_TRUE(users.cmdOK(u" 张三 "_s, u" pw "_s));
  EXPECT_EQ(ports.boxTexts().size(), 1);
  EXPECT_EQ(w.rows("SELECT 用户名, 密码 FROM 用户表 WHERE 用户名 <> '临时用户'"), QStringList{u"张三 pw"_s});
  EXPECT_TRUE(QFile::exists(fileOf(u"张三"_s)));
  EXPECT_EQ(w.workspace().gUserName, u"张三"_s);
  EXPECT_EQ(users.caption(u"标题"_s), u"标题  —— 张三"_s);
}

TEST_F(UsersTest, AWrongPasswordIsRefused) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u"Pw"_s));
  ports.log.clear();
  w.workspace().gUserName.clear();
  EXPECT_FALSE(users.cmdOK(u"张三"_s, u"pw"_s));
  EXPECT_EQ(ports.log, QStringList{u"plain [] 密码错误！(注意大小写区分)"_s});
  EXPECT_EQ(w.workspace().gUserName, QString());
}

TEST_F(UsersTest, BlanksAroundAPasswordCountForNothing) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u"  pw"_s));
  EXPECT_TRUE(users.cmdOK(u"张三"_s, u"pw  "_s));
}

TEST_F(UsersTest, TheTemporaryUserNeedsNoPassword) {
  EXPECT_TRUE(users.cmdOK(u"临时用户"_s, u"anything"_s));
  EXPECT_EQ(w.workspace().gUserName, u"临时用户"_s);
}

TEST_F(UsersTest, QuotesInNamesAndPasswordsAreData) {
  const QString name = u"o'Brien; --"_s;
  EXPECT_TRUE(users.cmdOK(name, u"' OR '1'='1"_s));
  EXPECT_FALSE(users.cmdOK(name, u"' OR 1=1 --"_s));
  EXPECT_TRUE(users.cmdOK(name, u"' OR '1'='1"_s));
  EXPECT_EQ(accounts().size(), 2);
}

TEST_F(UsersTest, ANameThatWouldLeaveTheFolderIsRefusedWithOneSentence) {
  for (const QString& name : {u"../x"_s, u"a/b"_s, u"a\\b"_s, u".."_s, u"CON"_s, u"a:b"_s}) {
    ports.log.clear();
    EXPECT_FALSE(users.cmdOK(name, u""_s));
    EXPECT_EQ(ports.log,
              QStringList{
                  u"critical [] 用户名不能用作文件名（最多50个字符，不能含有 / \\ : * ? \" < > | 等符号，首尾不能是点，"
                  "也不能是 CON、NUL、COM1 等设备名），请换一个用户名！"_s});
  }
  EXPECT_EQ(accounts(), QStringList{u"临时用户"_s});
}

TEST_F(UsersTest, APasswordOf51CharactersIsRefused) {
  EXPECT_FALSE(users.cmdOK(u"a"_s, QString(51, u'x')));
  EXPECT_EQ(ports.log, QStringList{u"critical [] 密码太长，最多50个字符！"_s});
  EXPECT_TRUE(users.cmdOK(u"a"_s, QString(50, u'x')));
}

TEST_F(UsersTest, ACharacterOutsideTheBasicPlaneCountsAsTwo) {
  const QString face = u"\U0001F600"_s;
  EXPECT_FALSE(users.cmdOK(face.repeated(26), u""_s));
  EXPECT_TRUE(ports.log.last().startsWith(u"critical [] 用户名不能用作文件名"_s));
  EXPECT_FALSE(users.cmdOK(u"a"_s, face.repeated(26)));
  EXPECT_EQ(ports.log.last(), u"critical [] 密码太长，最多50个字符！"_s);
  EXPECT_TRUE(users.cmdOK(face.repeated(25), face.repeated(25)));
}

TEST_F(UsersTest, WhoHasAnAccountMayTypeAsLongAPasswordAsTheyLike) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u"pw"_s));
  ports.log.clear();
  EXPECT_FALSE(users.cmdOK(u"张三"_s, QString(60, u'x')));
  EXPECT_EQ(ports.log, QStringList{u"plain [] 密码错误！(注意大小写区分)"_s});
  EXPECT_TRUE(users.cmdOK(u"临时用户"_s, QString(60, u'x')));
}

TEST_F(UsersTest, AFileThatAnAccountLeftBehindIsKeptWhenTheNameIsTakenAnew) {
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  setValue(7);
  ASSERT_TRUE(users.saveUserFile(u"甲"_s));
  w.store().execute("test", "DELETE FROM 用户表 WHERE 用户名 = '甲'");  // as after a run that was lost
  ports.log.clear();
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  EXPECT_EQ(value(), 5);
  const QStringList kept = QDir(w.folders.program).entryList({u"甲.uVorex.old-*"_s});
  ASSERT_EQ(kept.size(), 1);
  const QString path = w.folders.program + u'/' + kept.first();
  EXPECT_EQ(ports.log, QStringList({u"question [] 用户不存在，要以当前的用户名及密码来建立新用户吗？"_s,
                                    u"info [] 用户“甲”以前的用户文件保留为 %1。"_s.arg(path)}));
  Store old(path, StoreAccess::readOnly);
  EXPECT_EQ(old.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 7);
}

TEST_F(UsersTest, AFaultWhileAnAccountIsMadeLeavesTheOldUserWithTheOwnConditions) {
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  setValue(7);
  w.store().executeScript("test",
                          "CREATE TRIGGER fault BEFORE UPDATE ON 用户表 BEGIN SELECT RAISE(ABORT, 'disk'); END;");
  EXPECT_THROW(users.cmdOK(u"乙"_s, u""_s), StoreError);
  EXPECT_EQ(w.workspace().gUserName, u"甲"_s);
  EXPECT_EQ(value(), 7);
  EXPECT_FALSE(accounts().contains(u"乙"_s));
}

TEST_F(UsersTest, AFaultBehindANewAccountNeverPutsItsConditionsIntoTheOldUsersFile) {
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  setValue(7);
  ASSERT_TRUE(users.saveUserFile(u"甲"_s));
  w.store().executeScript("test",
                          "CREATE TRIGGER fault BEFORE DELETE ON 日志表 BEGIN SELECT RAISE(ABORT, 'disk'); END;"
                          "INSERT INTO 日志表 (序号, 期号) VALUES (1, 1);"
                          "CREATE TRIGGER fault2 BEFORE UPDATE ON 用户表 WHEN old.最后登陆时间 IS NOT NULL "
                          "BEGIN SELECT RAISE(ABORT, 'disk'); END;");
  EXPECT_THROW(users.cmdOK(u"乙"_s, u""_s), StoreError);
  EXPECT_EQ(w.workspace().gUserName, u"乙"_s);
  EXPECT_EQ(value(), 5);
  ASSERT_TRUE(users.saveUserFile(w.workspace().gUserName));
  Store old(fileOf(u"甲"_s), StoreAccess::readOnly);
  EXPECT_EQ(old.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 7);
}

TEST_F(UsersTest, ANewUserBeginsWithTheDefaultsButKeepsTheNumbersAttributes) {
  setValue(9);
  w.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID = 40");
  w.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 = 75");
  w.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 7, 最大值 = 8, 匹配值 = 2");
  w.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 1 WHERE 号码 = 7");
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  EXPECT_EQ(value(), 5);
  EXPECT_EQ(w.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 40"), QStringList{u"1"_s});
  EXPECT_EQ(w.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 75"), QStringList{u"0"_s});
  EXPECT_EQ(w.rows("SELECT * FROM 历史数据过滤"), QStringList{u"0 7 8 5"_s});
  EXPECT_EQ(w.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1"), QStringList{u"7"_s});
}

TEST_F(UsersTest, EachUserFindsTheOwnConditionsAgain) {
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  setValue(1);
  ASSERT_TRUE(users.saveUserFile(w.workspace().gUserName));
  ASSERT_TRUE(users.cmdOK(u"乙"_s, u""_s));
  EXPECT_EQ(value(), 5);
  setValue(2);
  ASSERT_TRUE(users.saveUserFile(w.workspace().gUserName));
  ASSERT_TRUE(users.cmdOK(u"甲"_s, u""_s));
  EXPECT_EQ(value(), 1);
  ASSERT_TRUE(users.cmdOK(u"乙"_s, u""_s));
  EXPECT_EQ(value(), 2);
}

TEST_F(UsersTest, TheTemporaryUserIsNeverSaved) {
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_TRUE(users.saveUserFile(u"临时用户"_s));
  EXPECT_FALSE(QFile::exists(fileOf(u"临时用户"_s)));
}

TEST_F(UsersTest, AMissingFileShowsItsBoxAndTheUserStaysLoggedOn) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  QFile::remove(fileOf(u"张三"_s));
  setValue(9);
  ports.log.clear();
  EXPECT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  EXPECT_EQ(ports.log, QStringList{u"plain [] 用户文件丢失或损坏,无法打开！"_s});
  EXPECT_EQ(w.workspace().gUserName, u"张三"_s);
  EXPECT_EQ(value(), 9);
}

TEST_F(UsersTest, WithoutTheTemplateTheBoxSaysSo) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  QFile::remove(w.folders.templateFile());
  ports.log.clear();
  EXPECT_FALSE(users.saveUserFile(u"张三"_s));
  EXPECT_EQ(ports.log, QStringList{u"plain [] 数据模板文件丢失无法导出，请重新安装！"_s});
}

TEST_F(UsersTest, ALogonSetsItsDateAndTime) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  Statement row = w.store().query("test", "SELECT 最后登陆时间 FROM 用户表 WHERE 用户名 = '张三'");
  ASSERT_TRUE(row.next());
  EXPECT_DOUBLE_EQ(row.real(0), dayCountOf(today) + 0.5);
}

TEST_F(UsersTest, AccountsIdleForThirtyDaysGoWithTheirFiles) {
  addAccount(u"二十九天"_s, 29);
  addAccount(u"三十天"_s, 30.5);  // midnight of the thirtieth day before today
  addAccount(u"一年"_s, 365);
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(accounts(), (QStringList{u"临时用户"_s, u"二十九天"_s}));
  EXPECT_TRUE(QFile::exists(fileOf(u"二十九天"_s)));
  EXPECT_FALSE(QFile::exists(fileOf(u"三十天"_s)));
  EXPECT_FALSE(QFile::exists(fileOf(u"一年"_s)));
}

TEST_F(UsersTest, ThirtyDaysAreCountedFromTheDateAlone) {
  constexpr double minute = 1.0 / (24 * 60);
  addAccount(u"零点前"_s, 30.5 + minute);
  addAccount(u"零点后"_s, 30.5 - minute);
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(accounts(), (QStringList{u"临时用户"_s, u"零点后"_s}));
}

TEST_F(UsersTest, TheTemporaryUserIsNeverRemovedHoweverOld) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));  // 临时用户 was last there in 2007
  EXPECT_TRUE(accounts().contains(u"临时用户"_s));
}

TEST_F(UsersTest, WhoLogsOnIsSafeHoweverLongAway) {
  ASSERT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  w.store().execute("test", "UPDATE 用户表 SET 最后登陆时间 = 40000 WHERE 用户名 = '张三'");
  EXPECT_TRUE(users.cmdOK(u"张三"_s, u""_s));
  EXPECT_TRUE(accounts().contains(u"张三"_s));
  EXPECT_TRUE(QFile::exists(fileOf(u"张三"_s)));
}

TEST_F(UsersTest, AnIdleAccountWhoseNameWouldLeaveTheFolderTakesNoFileAlong) {
  w.store().execute("test", "INSERT INTO 用户表 VALUES ('../program/victim', '', 1)");
  QFile victim(fileOf(u"victim"_s));
  ASSERT_TRUE(victim.open(QIODevice::WriteOnly));
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(accounts(), QStringList{u"临时用户"_s});
  EXPECT_TRUE(victim.exists());
}

TEST_F(UsersTest, AnIdleAccountWhoseFileCannotBeRemovedKeepsNobodyOut) {
  addAccount(u"一年"_s, 365);
  FaultyFiles disk;
  disk.failingStep = 0;
  Users onFailingDisk(w.workspace(), ports, disk, [] { return QDateTime(today, QTime(12, 0)); });
  EXPECT_TRUE(onFailingDisk.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(accounts(), (QStringList{u"一年"_s, u"临时用户"_s}));
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(accounts(), QStringList{u"临时用户"_s});
}

TEST_F(UsersTest, AfterALogonThereAreNoCandidates) {
  w.store().execute("test", "INSERT INTO 日志表 (序号, 期号) VALUES (1, 11031510)");
  ASSERT_TRUE(users.cmdOK(u"临时用户"_s, u""_s));
  EXPECT_EQ(w.rows("SELECT * FROM 日志表"), QStringList());
}

TEST_F(UsersTest, CandidatesOfOnePeriodCanGoAlone) {
  w.store().execute("test", "INSERT INTO 日志表 (序号, 期号) VALUES (1, 11031510), (1, 11031511)");
  users.clearRunLog(11031510);
  EXPECT_EQ(w.rows("SELECT 期号 FROM 日志表"), QStringList{u"11031511"_s});
}

TEST_F(UsersTest, TheHintForNewUsersHasTwoLines) {
  users.cmd_newUser();
  EXPECT_EQ(ports.log, QStringList{u"info [] 请在<用户名>及<密码>栏中输入一个新的用户名称及设置密码；\r\n"
                                   "然后再点击<登陆>按钮，系统将为您建立一个相应的新用户..."_s});
}

TEST_F(UsersTest, NamesAreListedInOrder) {
  addAccount(u"b"_s, 0);
  addAccount(u"a"_s, 0);
  EXPECT_EQ(users.userNames(), (QStringList{u"a"_s, u"b"_s, u"临时用户"_s}));
}

TEST_F(UsersTest, AFullDiskTakesTheNewAccountBack) {
  FaultyFiles full;
  full.writableBytes = 1000;
  Users onFullDisk(w.workspace(), ports, full);
  setValue(9);
  EXPECT_THROW(onFullDisk.cmdOK(u"张三"_s, u""_s), FileError);
  EXPECT_EQ(accounts(), QStringList{u"临时用户"_s});
  EXPECT_EQ(value(), 9);
  EXPECT_FALSE(QFile::exists(fileOf(u"张三"_s)));
}

}  // namespace
}  // namespace elevenfive
