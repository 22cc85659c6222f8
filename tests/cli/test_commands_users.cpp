// user, game.
#include <gtest/gtest.h>

#include <QFile>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class UserCommands : public ::testing::Test {
 protected:
  UserCommands() { cli.call({u"init"_s}); }

  QString sumCondition() { return cli.rows(u"SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 2"_s); }

  CliProcess cli;
};

}  // namespace

TEST_F(UserCommands, ListShowsNoPasswords) {
  EXPECT_EQ(cli.call({u"user"_s, u"list"_s}).out, u"用户名\t最后登陆时间\n临时用户\t2007-10-22\n"_s);
}

TEST_F(UserCommands, ModeIsStored) {
  EXPECT_EQ(cli.rows(u"SELECT 模式 FROM 用户模式"_s), u"0\n"_s);
  EXPECT_EQ(cli.call({u"user"_s, u"mode"_s, u"2"_s}).status, exitDone);
  EXPECT_EQ(cli.call({u"user"_s, u"mode"_s, u"3"_s}).status, exitUsage);
  EXPECT_EQ(cli.rows(u"SELECT 模式 FROM 用户模式"_s), u"2\n"_s);
}

TEST_F(UserCommands, AnUnknownUserIsMadeOnlyWithCreate) {
  const QString question = u"[question] elevenfive 11选5: 用户不存在，要以当前的用户名及密码来建立新用户吗？\n"_s;
  const auto refused = cli.call({u"user"_s, u"logon"_s, u"小王"_s, u"secret"_s});
  EXPECT_EQ(refused.status, exitFailed);
  EXPECT_EQ(refused.err, question);
  const auto made = cli.call({u"user"_s, u"logon"_s, u"小王"_s, u"secret"_s, u"--create"_s});
  EXPECT_EQ(made.status, exitDone) << made.err.toStdString();
  EXPECT_EQ(made.err, question);
  EXPECT_TRUE(QFile::exists(cli.path(u"小王.uVorex"_s)));
}

TEST_F(UserCommands, ASessionsEndSavesTheUsersConditions) {
  cli.batch(u"user mode 2\nuser logon a 1 --create\nuse 2 1\n"_s);
  cli.batch(u"user logon b 2 --create\n"_s);  // a new user begins with the defaults
  EXPECT_EQ(sumCondition(), u"0\n"_s);
  cli.batch(u"user logon a 1\n"_s);
  EXPECT_EQ(sumCondition(), u"1\n"_s);
}

TEST_F(UserCommands, AChangeOfUserInsideASessionSavesTheFirst) {
  cli.batch(u"user mode 2\nuser logon a 1 --create\nuse 2 1\nuser logon b 2 --create\nuser logon a 1\n"_s);
  EXPECT_EQ(sumCondition(), u"1\n"_s);
}

TEST_F(UserCommands, ConditionsThatCannotBeSavedKeepTheUserAndFailTheCall) {
  const QString box = u"[plain] elevenfive 11选5: 数据模板文件丢失无法导出，请重新安装！\n"_s;
  cli.batch(u"user mode 2\nuser logon b 2 --create\nuser logon a 1 --create\n"_s);
  ASSERT_TRUE(QFile::rename(cli.path(u"TJmode.tjmod"_s), cli.path(u"gone"_s)));
  const auto outcome = cli.batch(u"user logon a 1\nuse 2 1\nuser logon b 2\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_TRUE(outcome.err.contains(box));
  EXPECT_EQ(sumCondition(), u"1\n"_s);  // b never logged on, and the data was put back all the same
  const auto single = cli.call({u"user"_s, u"logon"_s, u"a"_s, u"1"_s});
  EXPECT_EQ(single.status, exitFailed);
  EXPECT_EQ(single.err, box);
}

TEST_F(UserCommands, WrongPasswordsAndNamesAreRefused) {
  cli.call({u"user"_s, u"logon"_s, u"a"_s, u"1"_s, u"--create"_s});
  const auto wrong = cli.call({u"user"_s, u"logon"_s, u"a"_s, u"' OR '1'='1"_s});
  EXPECT_EQ(wrong.status, exitFailed);
  EXPECT_EQ(wrong.err, u"[plain] elevenfive 11选5: 密码错误！(注意大小写区分)\n"_s);
  for (const QString& name : {u"../a"_s, u"/etc/a"_s, QString(), QString(51, u'x')})
    EXPECT_EQ(cli.call({u"user"_s, u"logon"_s, name, u"1"_s, u"--create"_s}).status, exitFailed) << name.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 用户表"_s), u"2\n"_s);
}

TEST_F(UserCommands, GameUseChangesTheGameAndItsPage) {
  EXPECT_EQ(cli.call({u"game"_s, u"use"_s, u"1"_s}).status, exitDone);
  EXPECT_EQ(cli.rows(u"SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"_s), u"1\n"_s);
  EXPECT_EQ(cli.call({u"game"_s, u"source"_s}).out, u"https://gd.results.example/?op=dcjb&num=100\n"_s);
  for (const QString& row : {u"29"_s, u"-1"_s})
    EXPECT_EQ(cli.call({u"game"_s, u"use"_s, row}).status, exitFailed) << row.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"_s), u"1\n"_s);
}

TEST_F(UserCommands, AGameWithoutAPageHasNoSource) {
  cli.call({u"game"_s, u"use"_s, u"3"_s});  // 重庆
  const auto outcome = cli.call({u"game"_s, u"source"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.out, QString());
}

}  // namespace elevenfive
