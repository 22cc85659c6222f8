#include "shell/startup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "model/errors.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// The screen as a list of calls, in one log with the boxes and the file steps.
class RecordingScreens final : public Screens {
 public:
  explicit RecordingScreens(QStringList& log) : log_(log) {}

  int mode = 1;      ///< the answer of frmFirstrun; 0: 退出系统
  QString userName;  ///< typed into frmODBCLogon; empty: noLogOn
  LogOn noLogOn = LogOn::end;
  bool endsAfterFault = false;
  int game = 0;          ///< chosen in frmDB
  QString historyFault;  ///< thrown when the history is bound
  QString panelFault;    ///< thrown when the panels are made
  QString chartFault;    ///< thrown when the chart is shown

  void showSplash() override { log_ << u"splash"_s; }
  void setHelpFile(const QString& path) override { log_ << u"help "_s + path.section(u'/', -1); }
  void bindHistory(Workspace&) override {
    log_ << u"bind history"_s;
    if (!historyFault.isEmpty())
      throw StoreError(historyFault);
  }
  void loadBallImages(const std::vector<BallColors>& colors) override {
    log_ << u"balls %1: 2 is %2, %3"_s.arg(colors.size()).arg(colors[1].basic).arg(colors[1].special);
  }
  void loadMissBallImages() override { log_ << u"miss balls"_s; }
  void layoutHistoryGrid() override { log_ << u"grid"_s; }
  void initMainPanels() override {
    log_ << u"panels"_s;
    if (!panelFault.isEmpty())
      throw StoreError(panelFault);
  }
  void showMainForm() override { log_ << u"main form"_s; }
  bool askUserMode(int& gUserMode) override {
    log_ << u"first run, mode %1"_s.arg(gUserMode);
    gUserMode = mode;
    return mode != 0;
  }
  void showUserMenu(bool visible) override { log_ << (visible ? u"user menu"_s : u"no user menu"_s); }
  LogOn logOn(Users& users) override {
    log_ << u"logon"_s;
    if (userName.isEmpty())
      return noLogOn;
    try {
      return users.cmdOK(userName, {}) ? LogOn::done : noLogOn;
    } catch (const Error&) {
      if (!endsAfterFault)
        throw;
      return LogOn::end;  // the form tells the fault and stays; then 退出系统
    }
  }
  void setUserCaption(const Users& users) override { log_ << users.caption(u"caption"_s); }
  void showChartMode() override {
    log_ << u"chart mode"_s;
    if (!chartFault.isEmpty())
      throw StoreError(chartFault);
  }
  void chooseGame(Catalogue& catalogue) override {
    log_ << u"choose game"_s;
    catalogue.selectCaizong(game);
  }
  void fillZdyGroups() override { log_ << u"groups"_s; }
  void unload(const QString& form) override { log_ << u"unload "_s + form; }
  void releaseData() override { log_ << u"release"_s; }

 private:
  QStringList& log_;
};

class StartupTest : public ::testing::Test {
 protected:
  StartupTest() {
    Workspace::create(folders, false, quick);
    screens.userName = u"临时用户"_s;
  }

  QTemporaryDir folder;
  UnflushedFiles quick;
  Workspace::Folders folders{folder.filePath(u"program"_s), folder.filePath(u"temp"_s)};
  RecordingPorts ports;
  RecordingScreens screens{ports.log};
  Startup startup{folders, ports, screens, quick};

  /// A run before the one under test.
  void prepare(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test", sql);
    workspace.close();
  }

  void addDraw() {
    prepare(
        "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5) VALUES (11031510, 40000, 1, 2, 3, 4, "
        "5)");
  }

  int stored(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    return workspace.gConn.value("test", sql).value_or(-1);
  }

  static inline const QStringList opening{u"splash"_s,     u"bind history"_s, u"grid"_s,   u"balls 11: 2 is 4, 4"_s,
                                          u"miss balls"_s, u"grid"_s,         u"panels"_s, u"main form"_s};
};

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

/// The log without the steps that only repeat others.
QStringList withoutWrites(QStringList log) {
  log.removeIf([](const QString& step) { return step.startsWith(u"write "_s) || step.startsWith(u"folder "_s); });
  return log;
}

TEST_F(StartupTest, TheFileStepsOfAStartStandBetweenThoseOnTheScreen) {
  FaultyFiles disk;
  disk.shared = &ports.log;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  EXPECT_EQ(withoutWrites(ports.log), QStringList({
                                          u"create temp/elevenfive.dat.new"_s,
                                          u"create temp/elevenfive.ico.new"_s,
                                          u"remove temp/elevenfive.dat-journal"_s,
                                          u"remove temp/elevenfive.dat-wal"_s,
                                          u"remove temp/elevenfive.dat-shm"_s,
                                          u"rename temp/elevenfive.ico.new -> temp/elevenfive.ico"_s,
                                          u"rename temp/elevenfive.dat.new -> temp/elevenfive.dat"_s,
                                          u"splash"_s,
                                          u"create program/elevenfive.bak.new"_s,
                                          u"flush program/elevenfive.bak.new"_s,
                                          u"rename program/elevenfive.bak.new -> program/elevenfive.bak"_s,
                                          u"flush folder program"_s,
                                          u"remove temp/Temp_fu.mdb"_s,
                                          u"rename temp/Temp_fu.mdb -> temp/elevenfive.dat"_s,
                                      }) + opening.sliced(1) +
                                          QStringList({
                                              u"first run, mode 1"_s,
                                              u"no user menu"_s,
                                              u"chart mode"_s,
                                              u"plain [] 历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s,
                                              u"choose game"_s,
                                              u"groups"_s,
                                          }));
}

TEST_F(StartupTest, ACloseAsksThenSavesTheUserThenClearsTheScreenThenPutsTheDataBack) {
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
                                          u"create Bak/elevenfive.dat.new"_s,
                                          u"flush Bak/elevenfive.dat.new"_s,
                                          u"rename Bak/elevenfive.dat.new -> Bak/elevenfive.dat"_s,
                                          u"flush folder Bak"_s,
                                          u"create program/elevenfive.dat.new"_s,
                                          u"flush program/elevenfive.dat.new"_s,
                                          u"rename program/elevenfive.dat.new -> program/elevenfive.dat"_s,
                                          u"flush folder program"_s,
                                          u"remove temp/elevenfive.dat"_s,
                                          u"remove temp/elevenfive.dat-journal"_s,
                                          u"remove temp/elevenfive.dat-wal"_s,
                                          u"remove temp/elevenfive.dat-shm"_s,
                                          u"remove temp/elevenfive.ico"_s,
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

TEST_F(StartupTest, TheCloseAsksAndNoLeavesEverything) {
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

TEST_F(StartupTest, TheCloseUnloadsTheFormsReleasesTheDataAndPutsItBack) {
  ASSERT_TRUE(startup.start());
  ports.log.clear();
  EXPECT_TRUE(startup.close(false));
  EXPECT_EQ(ports.log, QStringList({u"question [] 确认要退出吗？"_s, u"unload frmFromFile"_s, u"unload frmInitapp"_s,
                                    u"unload frmToFile"_s, u"unload Frm_kuaisusizi"_s, u"release"_s}));
  EXPECT_EQ(stored("SELECT 模式 FROM 用户模式"), 1);
}

TEST_F(StartupTest, TheCloseSavesTheUsersConditions) {
  screens.mode = 2;
  screens.userName = u"张三"_s;
  ASSERT_TRUE(startup.start());
  startup.workspace().gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900");
  const QString file = folders.program + u"/张三.uVorex"_s;
  ASSERT_TRUE(startup.close(true));
  Store saved(file, StoreAccess::readOnly);
  EXPECT_EQ(saved.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), 3);
}

TEST_F(StartupTest, WithOneUserTheCloseSavesNoUsersFile) {
  FaultyFiles disk;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  disk.log.clear();
  ASSERT_TRUE(start.close(true));
  EXPECT_EQ(disk.log.filter(u"uVorex"_s), QStringList());
}

TEST_F(StartupTest, ADiskThatIsFullAtTheCloseIsToldAndTriedAgain) {
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

TEST_F(StartupTest, ConditionsThatCannotBeSavedLetTheUserStay) {
  FaultyFiles disk;
  screens.mode = 2;
  screens.userName = u"张三"_s;
  Startup start(folders, ports, screens, disk);
  ASSERT_TRUE(start.start());
  disk.writableBytes = 100;
  ports.boxes.clear();
  ports.answers = {Answer::no};
  EXPECT_FALSE(start.close(true));
  ASSERT_EQ(ports.boxes.size(), 2U);
  EXPECT_EQ(ports.boxes[1].text, u"用户“张三”的过滤条件没有保存，仍要退出吗？"_s);
  disk.writableBytes = FaultyFiles::never;
  EXPECT_TRUE(start.close(true));
}

TEST_F(StartupTest, SwitchingSavesTheOldUserThenLogsOn) {
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

TEST_F(StartupTest, ALogonThatIsShutLeavesTheOldUser) {
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

TEST_F(StartupTest, LeavingTheSystemWhileSwitchingPacksNothingAndTheNextStartKeepsWhatWasEntered) {
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

TEST_F(StartupTest, ATemporaryFolderThatWasClearedTakesNeitherTheUsersConditionsNorTheData) {
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

TEST_F(StartupTest, SwitchingSavesTheOldUserAlsoWhereTheTemporaryFolderWasCleared) {
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

TEST_F(StartupTest, WorkWithoutAPlaceIsToldWhereItWasKept) {
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

TEST_F(StartupTest, WithoutTheTemplateTheConditionsAreNotLostUnasked) {
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
