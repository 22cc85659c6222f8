// The ways out of a run: closing, changing the user, and what is left where something cannot be saved.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "tests/shell/startupfixture.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using CloseTest = StartupTest;

TEST_F(CloseTest, ACloseAsksThenSavesTheUserThenClearsTheScreenThenPutsTheDataBack) {
  FaultyFiles disk;
  screens.mode = 2;
  screens.userName = u"甲"_s;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  ports.log.clear();
  disk.shared = &ports.log;
  ASSERT_TRUE(start.close(false));
  EXPECT_EQ(withoutWrites(ports.log), QStringList({
                                          u"question [] 确认要退出吗？"_s,
                                          u"remove temp/Temp_user.uVorex-journal"_s,
                                          u"create temp/Temp_user.uVorex.new"_s,
                                          u"flush temp/Temp_user.uVorex.new"_s,
                                          u"rename temp/Temp_user.uVorex.new -> temp/Temp_user.uVorex"_s,
                                          u"flush folder temp"_s,
                                          u"remove temp/Temp_fuVorex.mdb"_s,
                                          u"rename temp/Temp_fuVorex.mdb -> temp/Temp_user.uVorex"_s,
                                          u"create program/TJmode.tjmod.new"_s,
                                          u"flush program/TJmode.tjmod.new"_s,
                                          u"rename program/TJmode.tjmod.new -> program/TJmode.tjmod"_s,
                                          u"flush folder program"_s,
                                          u"remove temp/Temp_user.uVorex"_s,
                                          u"remove temp/Temp_user.uVorex-journal"_s,
                                          u"create program/甲.uVorex.new"_s,
                                          u"flush program/甲.uVorex.new"_s,
                                          u"rename program/甲.uVorex.new -> program/甲.uVorex"_s,
                                          u"flush folder program"_s,
                                          u"unload frmFromFile"_s,
                                          u"unload frmInitapp"_s,
                                          u"unload frmToFile"_s,
                                          u"unload Frm_kuaisusizi"_s,
                                          u"release"_s,
                                      }) + putBackSteps());
}

TEST_F(CloseTest, TheCloseAsksAndNoLeavesEverything) {
  screens.mode = 2;
  screens.userName = u"张三"_s;
  ASSERT_TRUE(startup.start());
  const auto bytes = [](const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QString usersFile = folders.program + u"/张三.uVorex"_s;
  const QByteArray saved = bytes(usersFile);
  const QByteArray pack = bytes(folders.packedFile());
  ASSERT_FALSE(saved.isEmpty());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  ports.log.clear();
  ports.answers = {Answer::no};
  EXPECT_FALSE(startup.close(false));
  EXPECT_EQ(ports.log, QStringList(u"question [] 确认要退出吗？"_s));
  EXPECT_EQ(bytes(usersFile), saved);
  EXPECT_EQ(bytes(folders.packedFile()), pack);
  EXPECT_EQ(startup.workspace().gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(CloseTest, TheCloseUnloadsTheFormsReleasesTheDataAndPutsItBack) {
  ASSERT_TRUE(startup.start());
  ports.log.clear();
  EXPECT_TRUE(startup.close(false));
  EXPECT_EQ(ports.log, QStringList({u"question [] 确认要退出吗？"_s, u"unload frmFromFile"_s, u"unload frmInitapp"_s,
                                    u"unload frmToFile"_s, u"unload Frm_kuaisusizi"_s, u"release"_s}));
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
}

TEST_F(CloseTest, TheCloseSavesTheUsersConditions) {
  screens.mode = 2;
  screens.userName = u"张三"_s;
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  const QString file = folders.program + u"/张三.uVorex"_s;
  ASSERT_TRUE(startup.close(true));
  Store saved(file, StoreAccess::readOnly);
  EXPECT_EQ(saved.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(CloseTest, WithOneUserTheCloseSavesNoUsersFile) {
  FaultyFiles disk;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  disk.log.clear();
  ASSERT_TRUE(start.close(true));
  EXPECT_EQ(disk.log.filter(u"uVorex"_s), QStringList());
}

TEST_F(CloseTest, ADiskThatIsFullAtTheCloseIsToldAndTriedAgain) {
  FaultyFiles disk;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  disk.writableBytes = 100;
  ports.boxes.clear();
  ports.answers = {Answer::yes, Answer::no};
  EXPECT_TRUE(start.close(true));
  ASSERT_EQ(ports.boxes.size(), 4U);
  EXPECT_TRUE(ports.boxes[0].text.contains(u"磁盘空间已满"_s));
  EXPECT_EQ(ports.boxes[1].text, u"数据没有写回，要再试一次吗？"_s);
  EXPECT_EQ(ports.boxes[3].text, u"数据没有写回，要再试一次吗？"_s);
  EXPECT_TRUE(QFile::exists(folders.workingFile()));  // what was done is still there, and the next start keeps it
}

/// A run of 张三 whose disk fills up, and who answers no to what that leads to.
class FullDiskTest : public StartupTest {
 protected:
  FullDiskTest() {
    screens.mode = 2;
    screens.userName = u"张三"_s;
    EXPECT_TRUE(start.start());
    disk.writableBytes = 100;
    ports.boxes.clear();
    ports.answers = {Answer::no};
  }

  void expectAsked(const QString& question) {
    ASSERT_EQ(ports.boxes.size(), 2U);
    EXPECT_TRUE(ports.boxes[0].text.contains(u"磁盘空间已满"_s));
    EXPECT_EQ(ports.boxes[1].text, question);
  }

  FaultyFiles disk;
  Startup start{folders, ports, screens, disk};
};

TEST_F(FullDiskTest, ConditionsThatCannotBeSavedLetTheUserStay) {
  EXPECT_FALSE(start.close(true));
  expectAsked(u"用户“张三”的过滤条件没有保存，仍要退出吗？"_s);
  disk.writableBytes = FaultyFiles::never;
  EXPECT_TRUE(start.close(true));
}

TEST_F(FullDiskTest, ConditionsThatCannotBeSavedForALogonOfAnotherAreAskedAbout) {
  EXPECT_EQ(start.switchUser(), UserSwitch::stayed);
  expectAsked(u"用户“张三”的过滤条件没有保存，仍要切换用户吗？"_s);
}

TEST_F(CloseTest, SwitchingSavesTheOldUserThenLogsOn) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  screens.userName = u"乙"_s;
  ports.log.clear();
  ASSERT_EQ(startup.switchUser(), UserSwitch::done);
  EXPECT_EQ(ports.log, QStringList({u"logon"_s, u"question [] 用户不存在，要以当前的用户名及密码来建立新用户吗？"_s,
                                    u"caption  —— 乙"_s}));
  Store old(folders.program + u"/甲.uVorex"_s, StoreAccess::readOnly);
  EXPECT_EQ(old.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
  EXPECT_EQ(startup.workspace().gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 5);
}

TEST_F(CloseTest, ALogonThatIsShutLeavesTheOldUser) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  screens.userName.clear();
  screens.noLogOn = LogOn::shut;
  ports.log.clear();
  EXPECT_EQ(startup.switchUser(), UserSwitch::stayed);
  EXPECT_EQ(ports.log, QStringList({u"logon"_s, u"caption  —— 甲"_s}));
  EXPECT_EQ(startup.workspace().gUserName, u"甲"_s);
  screens.noLogOn = LogOn::end;
  EXPECT_EQ(startup.switchUser(), UserSwitch::end);
}

TEST_F(CloseTest, LeavingTheSystemWhileSwitchingPacksNothingAndTheNextStartKeepsWhatWasEntered) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  ASSERT_TRUE(startup.close(true));
  const auto pack = [&] {
    QFile file(folders.packedFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  };
  const QByteArray before = pack();
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test",
                                    "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5)"
                                    " VALUES (11031511, 40000, 1, 2, 3, 4, 5)");
  screens.userName.clear();
  screens.noLogOn = LogOn::end;
  ASSERT_EQ(startup.switchUser(), UserSwitch::end);
  startup.quit();
  EXPECT_EQ(pack(), before);
  ports.log.clear();
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(startup.workspace().gConn.value("test", "SELECT COUNT(*) FROM 历史记录"), 0);
  const QString sentence = u"critical [] 上次没有正常退出，当时没有保存的数据留在 "_s;
  const QStringList told = ports.log.filter(sentence);
  ASSERT_EQ(told.size(), 1);
  const QString copy = told.first().mid(sentence.size()).chopped(1);
  EXPECT_TRUE(copy.startsWith(folders.bakFolder()));
  Store kept(copy, StoreAccess::readOnly);
  EXPECT_EQ(kept.value("test", "SELECT 期号 FROM 历史记录"), 11031511);
}

TEST_F(CloseTest, ATemporaryFolderThatWasClearedTakesNeitherTheUsersConditionsNorTheData) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  addDraw();
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  startup.workspace().gConn.execute("test", "DELETE FROM 历史记录");
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  ports.log.clear();
  EXPECT_TRUE(startup.close(true));
  EXPECT_EQ(ports.log.filter(u"没有"_s), QStringList());
  {
    Store saved(folders.program + u"/甲.uVorex"_s, StoreAccess::readOnly);
    EXPECT_EQ(saved.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
  }
  EXPECT_EQ(stored("SELECT COUNT(*) FROM 历史记录"), 0);
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(startup.workspace().gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(CloseTest, SwitchingSavesTheOldUserAlsoWhereTheTemporaryFolderWasCleared) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  screens.userName.clear();
  screens.noLogOn = LogOn::shut;
  EXPECT_EQ(startup.switchUser(), UserSwitch::stayed);
  Store saved(folders.program + u"/甲.uVorex"_s, StoreAccess::readOnly);
  EXPECT_EQ(saved.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(CloseTest, WorkWithoutAPlaceIsToldWhereItWasKept) {
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  QFile inTheWay(folders.temporary);
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  ports.boxes.clear();
  ports.answers = {Answer::no};
  EXPECT_TRUE(startup.close(true));
  const QStringList copies = QDir(folders.bakFolder()).entryList({u"elevenfive-*.bak"_s}, QDir::Files);
  ASSERT_EQ(copies.size(), 1);
  const QString copy = folders.bakFolder() + u'/' + copies.first();
  ASSERT_EQ(ports.boxes.size(), 2U);
  EXPECT_TRUE(ports.boxes[0].text.endsWith(
      u"工作数据库 %1 在运行中被删除，本次的改动已保存为 %2。"_s.arg(folders.workingFile(), copy)));
  EXPECT_EQ(ports.boxes[1].text, u"数据没有写回，要再试一次吗？"_s);
  Store kept(copy, StoreAccess::readOnly);
  EXPECT_EQ(kept.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(CloseTest, WithoutTheTemplateTheConditionsAreNotLostUnasked) {
  screens.mode = 2;
  screens.userName = u"甲"_s;
  ASSERT_TRUE(startup.start());
  QFile::remove(folders.templateFile());
  ports.log.clear();
  ports.answers = {Answer::no, Answer::no};
  EXPECT_EQ(startup.switchUser(), UserSwitch::stayed);
  EXPECT_FALSE(startup.close(true));
  EXPECT_EQ(ports.log, QStringList({u"plain [] 数据模板文件丢失无法导出，请重新安装！"_s,
                                    u"question [] 用户“甲”的过滤条件没有保存，仍要切换用户吗？"_s,
                                    u"plain [] 数据模板文件丢失无法导出，请重新安装！"_s,
                                    u"question [] 用户“甲”的过滤条件没有保存，仍要退出吗？"_s}));
}

}  // namespace
}  // namespace elevenfive
