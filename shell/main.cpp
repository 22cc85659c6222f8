// The window program. It reads no arguments.
#include <QApplication>
#include <cstdio>

#include "model/errors.h"
#include "model/widgets/faultbox.h"
#include "model/widgets/qtports.h"
#include "model/widgets/textwindow.h"
#include "model/workspace.h"
#include "shell/startup.h"
#include "shell/widgets/standardtexts.h"
#include "shell/widgets/theme.h"
#include "shell/widgets/windowscreens.h"

namespace {

/// Without a display the platform plugin would abort the process: say it in one line first.
bool displayMissing() {
  return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
         qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

}  // namespace

int main(int argc, char** argv) {
  if (displayMissing()) {
    std::fputs("没有图形显示（DISPLAY 和 WAYLAND_DISPLAY 都未设置），无法打开窗口。请使用 elevenfive-cli。\n", stderr);
    return 1;
  }
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("elevenfive"));
  elevenfive::applyTheme(application);
  elevenfive::useChineseStandardTexts();

  elevenfive::QtBoxes boxes;
  elevenfive::QtInputs inputs;
  elevenfive::QtFileDialogs files;
  elevenfive::QtTextViewer texts(files, boxes);
  const elevenfive::Workspace::Folders folders = elevenfive::Workspace::defaultFolders();
  try {
    elevenfive::Workspace::install(folders);
  } catch (const elevenfive::AlreadyRunning& fault) {
    boxes.information(fault.message());
    return 0;
  } catch (const elevenfive::Error& fault) {
    boxes.critical(fault.message());
    return 1;
  }

  elevenfive::WindowScreens screens({boxes, inputs, files, texts}, [&](elevenfive::MainWindow& window) {
    boxes.setParent(&window);
    inputs.setParent(&window);
    files.setParent(&window);
    texts.setParent(&window);
  });
  elevenfive::Startup startup(folders, boxes, screens);
  if (!startup.start())
    return 0;
  screens.window()->setLeave([&] { return startup.close(false); });
  screens.window()->setSwitchUser([&] {
    const elevenfive::UserSwitch result = startup.switchUser();
    if (result == elevenfive::UserSwitch::end)
      startup.quit();
    return result;
  });
  return QApplication::exec();
}
