// What the tests of start and close share: data folders, and a screen and boxes that write one log.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <vector>

#include "acquire/catalogue.h"
#include "model/errors.h"
#include "shell/startup.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/filesteps.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

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

  void showSplash() override { log_ << QStringLiteral("splash"); }
  void setHelpFile(const QString& path) override { log_ << QStringLiteral("help ") + path.section(u'/', -1); }
  void bindHistory(Workspace& workspace) override {
    workspace_ = &workspace;
    log_ << QStringLiteral("bind history");
    if (!historyFault.isEmpty())
      throw StoreError(historyFault);
  }
  void loadBallImages(const std::vector<BallColors>& colors) override {
    log_ << QStringLiteral("balls %1: 2 is %2, %3").arg(colors.size()).arg(colors[1].basic).arg(colors[1].special);
  }
  void loadMissBallImages() override { log_ << QStringLiteral("miss balls"); }
  void layoutHistoryGrid() override { log_ << QStringLiteral("grid"); }
  void initMainPanels() override {
    log_ << QStringLiteral("panels");
    if (!panelFault.isEmpty())
      throw StoreError(panelFault);
  }
  void showMainForm() override { log_ << QStringLiteral("main form"); }
  bool askUserMode(int& gUserMode) override {
    log_ << QStringLiteral("first run, mode %1").arg(gUserMode);
    gUserMode = mode;
    return mode != 0;
  }
  void showUserMenu(bool visible) override {
    log_ << (visible ? QStringLiteral("user menu") : QStringLiteral("no user menu"));
  }
  LogOn logOn(Users& users) override {
    log_ << QStringLiteral("logon");
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
  void setUserCaption(const Users& users) override { log_ << users.caption(QStringLiteral("caption")); }
  void showChartMode() override {
    log_ << QStringLiteral("chart mode");
    if (!chartFault.isEmpty())
      throw StoreError(chartFault);
  }
  void chooseGame() override {
    log_ << QStringLiteral("choose game");
    Catalogue(workspace_->gConn).selectCaizong(game);
  }
  void fillZdyGroups() override { log_ << QStringLiteral("groups"); }
  void unload(const QString& form) override { log_ << QStringLiteral("unload ") + form; }
  void releaseData() override { log_ << QStringLiteral("release"); }

 private:
  QStringList& log_;
  Workspace* workspace_ = nullptr;
};

class StartupTest : public ::testing::Test {
 protected:
  StartupTest() {
    Workspace::create(folders, false, quick);
    screens.userName = QStringLiteral("临时用户");
  }

  QTemporaryDir folder;
  UnflushedFiles quick;
  Workspace::Folders folders{folder.filePath(QStringLiteral("program")), folder.filePath(QStringLiteral("temp"))};
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

  static inline const QStringList opening{QStringLiteral("splash"),     QStringLiteral("bind history"),
                                          QStringLiteral("grid"),       QStringLiteral("balls 11: 2 is 4, 4"),
                                          QStringLiteral("miss balls"), QStringLiteral("grid"),
                                          QStringLiteral("panels"),     QStringLiteral("main form")};
};

}  // namespace elevenfive
