#include "shell/startup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "model/errors.h"
#include "tests/shell/startupfixture.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST_F(StartupTest, TheFirstRunAsksTheModeThenOffersTheGames) {
  screens.game = 4;
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(ports.log, opening + QStringList({u"first run, mode 1"_s, u"no user menu"_s, u"chart mode"_s,
                                              u"plain [] 历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s,
                                              u"choose game"_s, u"groups"_s}));
  ASSERT_TRUE(startup.close(true));
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
  EXPECT_EQ(stored("SELECT 序号 FROM 彩票类型 WHERE 使用 = 1"), 4);
}

TEST_F(StartupTest, AModeTableThatHasLostItsRowGetsOne) {
  prepare("DELETE FROM 用户模式");
  ASSERT_TRUE(startup.start());
  EXPECT_TRUE(ports.log.contains(u"first run, mode 1"_s));
  ASSERT_TRUE(startup.close(true));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM 用户模式"), 1);
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
}

TEST_F(StartupTest, TheModeIsAskedOnlyOnce) {
  addDraw();
  prepare("UPDATE 用户模式 SET 模式 = 1");
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(ports.log, opening + QStringList({u"no user menu"_s, u"chart mode"_s, u"groups"_s}));
}

TEST_F(StartupTest, WithSeveralUsersTheLogonComesBeforeTheChart) {
  addDraw();
  prepare("UPDATE 用户模式 SET 模式 = 2");
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(ports.log, opening + QStringList({u"user menu"_s, u"logon"_s,
                                              u"plain [] 用户文件丢失或损坏,无法打开！"_s,  // 临时用户 has none
                                              u"caption  —— 临时用户"_s, u"chart mode"_s, u"groups"_s}));
}

TEST_F(StartupTest, LeavingTheFirstRunFormEndsWithNothingSaved) {
  screens.mode = 0;
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log, opening + QStringList({u"first run, mode 1"_s, u"release"_s}));
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 0);
}

TEST_F(StartupTest, LeavingTheLogonEndsWithNothingSaved) {
  addDraw();
  screens.mode = 2;
  screens.userName.clear();
  for (const LogOn left : {LogOn::end, LogOn::shut}) {
    screens.noLogOn = left;
    EXPECT_FALSE(startup.start());
    EXPECT_EQ(ports.log.last(), u"release"_s);
  }
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 0);
}

TEST_F(StartupTest, AHelpFileInTheProgramFolderBecomesTheHelp) {
  QFile file(folders.program + u"/elevenfive-help.html"_s);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  FaultyFiles disk;
  disk.shared = &ports.log;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  const auto splash = ports.log.indexOf(u"splash"_s);
  ASSERT_GE(splash, 0);
  EXPECT_EQ(ports.log.sliced(splash, 3), QStringList({u"splash"_s, u"help elevenfive-help.html"_s,
                                                      u"create program/elevenfive.bak.new"_s}));  // the backup
}

TEST_F(StartupTest, TheBackupIsInThePlaceOfALostPackBeforeTheHelpIsSet) {
  { const Workspace workspace(folders, {&quick, {}}); }  // its start takes the backup
  ASSERT_TRUE(QFile::remove(folders.packedFile()));
  QFile file(folders.program + u"/elevenfive-help.html"_s);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  FaultyFiles disk;
  disk.shared = &ports.log;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  const QStringList order{u"splash"_s, u"rename temp/elevenfive.dat.new -> temp/elevenfive.dat"_s,
                          u"help elevenfive-help.html"_s, u"create program/elevenfive.bak.new"_s};
  QStringList found;
  for (const QString& step : ports.log)
    if (order.contains(step))
      found << step;
  EXPECT_EQ(found, order);
}

TEST_F(StartupTest, AFaultBeforeTheWindowIsUpEndsTheStart) {
  screens.panelFault = u"读取失败。"_s;
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log.last(3), QStringList({u"unload frmInitapp"_s, u"critical [] 读取失败。"_s, u"release"_s}));
  EXPECT_NO_THROW(Workspace(folders, {&quick, {}}));  // nothing holds the data any more
}

TEST_F(StartupTest, AFaultBehindItLeavesTheWindowAsFarAsItGot) {
  screens.chartFault = u"读取失败。"_s;
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(ports.log.last(2), QStringList({u"chart mode"_s, u"critical [] 读取失败。"_s}));
  EXPECT_TRUE(startup.close(true));
}

TEST_F(StartupTest, ASecondInstanceShowsItsBoxAndNothingElse) {
  Workspace first(folders, {&quick, {}});
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log, QStringList(u"info [] 程序正在运行,不允许同时打开多个!!!"_s));
}

TEST_F(StartupTest, WithNeitherPackNorBackupOneBoxEndsIt) {
  QFile::remove(folders.packedFile());
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log, QStringList(u"critical [] 找不到数据文件，也没有备份，程序无法启动，请重新安装！"_s));
}

TEST_F(StartupTest, TheFileStepsOfAStartStandBetweenThoseOnTheScreen) {
  FaultyFiles disk;
  disk.shared = &ports.log;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  EXPECT_EQ(withoutWrites(ports.log), unpackSteps() + QStringList(u"splash"_s) + compactionSteps() + opening.sliced(1) +
                                          QStringList({
                                              u"first run, mode 1"_s,
                                              u"no user menu"_s,
                                              u"chart mode"_s,
                                              u"plain [] 历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s,
                                              u"choose game"_s,
                                              u"groups"_s,
                                          }));
}

/// A disk that spoils the working database as its compaction ends.
class SpoilingFiles final : public FileAccess {
 public:
  std::unique_ptr<OutputFile> create(const QString& path) override { return quick_.create(path); }
  void flushFile(const QString&) override {}
  void flushFolder(const QString&) override {}
  void rename(const QString& from, const QString& to) override {
    quick_.rename(from, to);
    if (!from.endsWith(u"Temp_fu.mdb"_s))
      return;
    QFile file(to);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no database at all");
  }
  void remove(const QString& path) override { quick_.remove(path); }
  void makeFolder(const QString& path) override { quick_.makeFolder(path); }

 private:
  UnflushedFiles quick_;
};

TEST_F(StartupTest, AnAccountMadeByALogonThatFailedIsKeptForTheNextStartToTell) {
  prepare("INSERT INTO 日志表 (序号, 期号) VALUES (1, 1)");
  prepare("CREATE TRIGGER fault BEFORE DELETE ON 日志表 BEGIN SELECT RAISE(ABORT, 'disk'); END");
  screens.mode = 2;
  screens.userName = u"甲"_s;
  screens.endsAfterFault = true;
  EXPECT_FALSE(startup.start());
  ASSERT_TRUE(QFile::exists(folders.workingFile()));
  Store kept(folders.workingFile(), StoreAccess::readOnly);
  EXPECT_EQ(kept.value("test", "SELECT COUNT(*) FROM 用户表 WHERE 用户名 = '甲'"), 1);
}

TEST_F(StartupTest, ADatabaseThatCannotBeOpenedIsToldWithTheAdvice) {
  SpoilingFiles disk;
  Startup start(folders, ports, screens, disk);
  EXPECT_FALSE(start.start());
  EXPECT_EQ(ports.log, QStringList({u"splash"_s, u"unload frmInitapp"_s,
                                    u"info [] 打开数据文件失败：文件不是有效的数据库（%1）。"
                                    "(文件丢失,需要重新安装!)"_s.arg(folders.workingFile())}));
}

TEST_F(StartupTest, TooFewBallsEndIt) {
  prepare("DELETE FROM BallColor WHERE 号码 > 10");
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log, QStringList({u"splash"_s, u"bind history"_s, u"grid"_s, u"unload frmInitapp"_s,
                                    u"plain [] 程序初始化出错,即将退出。。。"_s, u"release"_s}));
}

TEST_F(StartupTest, WhatTheUnpackingKeptIsToldAlsoWhereTheStartFailsBehindIt) {
  prepare("DELETE FROM BallColor WHERE 号码 > 10");
  prepare("UPDATE 用户模式 SET 模式 = 1");
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"程序初始化出错,即将退出。。。"_s, u"找不到数据文件，已改用备份。"_s}));
}

TEST_F(StartupTest, WhatTheUnpackingKeptIsToldAlsoWhereTheUnpackingItselfFails) {
  QFile pack(folders.packedFile());
  ASSERT_TRUE(pack.open(QIODevice::ReadOnly));
  const QByteArray older = pack.readAll();
  prepare("UPDATE 用户模式 SET 模式 = 1");
  pack.close();
  ASSERT_TRUE(pack.open(QIODevice::WriteOnly));
  pack.write(older);
  pack.close();
  FaultyFiles disk;
  disk.failingText = u"rename temp/elevenfive.dat.new -> temp/elevenfive.dat"_s;
  Startup start(folders, ports, screens, disk);
  EXPECT_FALSE(start.start());
  const QStringList copies = QDir(folders.bakFolder()).entryList({u"elevenfive-*.bak"_s}, QDir::Files);
  ASSERT_EQ(copies.size(), 1);
  EXPECT_EQ(ports.boxTexts(),
            (QStringList{u"无法完成一步：%1。"_s.arg(disk.failingText),
                         u"Bak 中的数据已保存为 %1/%2。"_s.arg(folders.bakFolder(), copies.first())}));
}

TEST_F(StartupTest, ADamagedPackIsToldAlsoWhereTheBackupCannotTakeItsPlace) {
  prepare("UPDATE 用户模式 SET 模式 = 1");
  QFile::remove(folders.packInTransit());
  QFile pack(folders.packedFile());
  ASSERT_TRUE(pack.open(QIODevice::WriteOnly));
  pack.write("garbage");
  pack.close();
  FaultyFiles disk;
  disk.failingText = u"create temp/elevenfive.dat.new"_s;
  Startup start(folders, ports, screens, disk);
  EXPECT_FALSE(start.start());
  const QStringList kept = QDir(folders.program).entryList({u"elevenfive.dat.damaged-*"_s}, QDir::Files);
  ASSERT_EQ(kept.size(), 1);
  ASSERT_EQ(ports.boxTexts().size(), 2);
  EXPECT_EQ(ports.boxTexts()[0], u"无法完成一步：%1。"_s.arg(disk.failingText));
  EXPECT_TRUE(ports.boxTexts()[1].endsWith(u"损坏的文件保留为 %1/%2。"_s.arg(folders.program, kept.first())));
}

TEST_F(StartupTest, TheRowsOfTheBallsCountByTheirOrder) {
  TestWorkspace w;
  w.store().execute("test", "UPDATE BallColor SET 号码 = 号码 + 100, 基本号 = 3, 特别号 = 2 WHERE 号码 = 1");
  const std::vector<BallColors> colors = readBallColors(w.store());
  ASSERT_EQ(colors.size(), 11U);
  for (int n = 1; n <= 11; ++n)
    EXPECT_EQ(colors[static_cast<std::size_t>(n - 1)].number, n);
  EXPECT_EQ(colors[0].basic, w.store().value("test", "SELECT 基本号 FROM BallColor WHERE 号码 = 2"));
}

TEST_F(StartupTest, AHistoryThatCannotBeBoundIsToldWithTheAdvice) {
  screens.historyFault = u"读取失败。"_s;
  EXPECT_FALSE(startup.start());
  EXPECT_EQ(ports.log.sliced(2, 2),
            QStringList({u"unload frmInitapp"_s, u"info [] 读取失败。(文件丢失,需要重新安装!)"_s}));
}

TEST_F(StartupTest, WhatTheStartHadToRepairIsToldOnceTheMainFormIsUp) {
  addDraw();
  prepare("UPDATE 用户模式 SET 模式 = 1");
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  ASSERT_TRUE(startup.start());
  EXPECT_EQ(ports.log[8], u"critical [] 找不到数据文件，已改用备份。"_s);
}

}  // namespace
}  // namespace elevenfive
