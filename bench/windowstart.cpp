#include "bench/windowstart.h"

#include <sys/resource.h>

#include <QCoreApplication>
#include <QMainWindow>
#include <QProcess>
#include <stdexcept>

#include "bench/windowtools.h"
#include "shell/startup.h"
#include "shell/widgets/standardtexts.h"
#include "shell/widgets/theme.h"
#include "shell/widgets/windowscreens.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 7;
constexpr double goal = 500;

void tellPainted() {
  std::puts("painted");
  std::fflush(stdout);
}

void showEmptyWindow() {
  PaintCount paints;
  QMainWindow window;
  window.show();
  paints.settle();
  tellPainted();
}

void showProgram(QApplication& application, const DataFolders& folders) {
  applyTheme(application);
  useChineseStandardTexts();
  PaintCount paints;
  QuietPerson person;
  WindowScreens screens({person, person, person, person}, [](MainWindow&) {});
  Startup startup(folders, person, screens);
  if (!startup.start())
    throw std::runtime_error("the program did not start");
  paints.settle();
  tellPainted();
  startup.quit();
}

double childProcessorMilliseconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

void timeProcess(const QStringList& arguments, Times& times) {
  const double processor = childProcessorMilliseconds();
  QElapsedTimer wall;
  wall.start();
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), arguments, QIODevice::ReadOnly);
  if (!process.waitForReadyRead())
    throw std::runtime_error("the window did not come up");
  times.wall.push_back(static_cast<double>(wall.nsecsElapsed()) / 1e6);
  process.waitForFinished();
  times.processor.push_back(childProcessorMilliseconds() - processor);
}

}  // namespace

bool isStartProcess(const QStringList& arguments) {
  return arguments.contains(u"--start"_s);
}

int showStart(QApplication& application, const QStringList& arguments) {
  const qsizetype at = arguments.indexOf(u"--start"_s);
  if (arguments.size() > at + 2)
    showProgram(application, {arguments[at + 1], arguments[at + 2]});
  else
    showEmptyWindow();
  return 0;
}

void measureStart(const DataFolders& folders) {
  Times ours;
  Times empty;
  for (int round = 0; round < rounds; ++round) {
    timeProcess({u"--start"_s, folders.program, folders.temporary}, ours);
    timeProcess({u"--start"_s}, empty);
  }
  report("start until painted", ours, goal, "empty window of Qt", empty);
}

}  // namespace elevenfive
