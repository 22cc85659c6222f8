// The program with its window, and someone who answers its modal forms.
#pragma once

#include <QTemporaryDir>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>

#include "shell/widgets/windowscreens.h"
#include "tests/shell/mainwindowtest.h"
#include "tests/support/faultyfiles.h"

namespace elevenfive {

/// Does these steps in turn, each in the modal form that is open by then.
inline void inForms(std::deque<std::function<void(QWidget&)>> steps) {
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

inline QWidget* topLevel(const QString& name) {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->objectName() == name)
      return widget;
  return nullptr;
}

class WindowScreensTest : public ::testing::Test {
 protected:
  WindowScreensTest() { Workspace::create(folders, false, quick); }

  /// A run before the one under test.
  void prepare(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test",
                            "INSERT OR REPLACE INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5)"
                            " VALUES (11031510, 40000, 1, 2, 3, 4, 5)");
    workspace.gConn.execute("test", sql);
    workspace.close();
  }

  int stored(const char* sql) {
    Workspace workspace(folders, {&quick, {}});
    return workspace.gConn.value("test", sql).value_or(-1);
  }

  void start(FileAccess& disk) {
    startup = std::make_unique<Startup>(folders, boxes, screens, disk);
    ASSERT_TRUE(startup->start());
    screens.window()->setLeave([this] { return startup->close(false); });
    screens.window()->setSwitchUser([this] {
      const UserSwitch result = startup->switchUser();
      if (result == UserSwitch::end)
        startup->quit();
      return result;
    });
  }

  /// A start whose panels find a table gone ends with one box that nothing lies over.
  void expectPanelsEndTheStart(const std::string& table) {
    prepare("UPDATE 用户模式 SET 模式 = 1");
    Startup* failing = nullptr;
    WindowScreens spoilt({boxes, ports, files, texts}, [&](MainWindow&) {
      failing->workspace().gConn.execute("test", "ALTER TABLE " + table + " RENAME TO 别的表");
    });
    Startup starting(folders, boxes, spoilt, quick);
    failing = &starting;
    int splashes = -1;
    boxes.onShow = [&] { splashes = topLevel(QStringLiteral("frmInitapp")) == nullptr ? 0 : 1; };
    EXPECT_FALSE(starting.start());
    EXPECT_EQ(ports.boxTexts().size(), 1) << ports.boxTexts().join(u'\n').toStdString();
    EXPECT_EQ(splashes, 0);
  }

  QTemporaryDir folder;
  UnflushedFiles quick;
  Workspace::Folders folders{folder.filePath(QStringLiteral("program")), folder.filePath(QStringLiteral("temp"))};
  RecordingPorts ports;
  WatchedBoxes boxes{ports};
  AnsweringFiles files;
  RecordingTexts texts;
  WindowScreens screens{{boxes, ports, files, texts}, [](MainWindow&) {}};
  std::unique_ptr<Startup> startup;
};

}  // namespace elevenfive
