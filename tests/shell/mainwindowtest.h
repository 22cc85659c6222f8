// The main window over a fresh workspace, for tests that work it with mouse and keyboard.
#pragma once

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <functional>
#include <memory>

#include "model/widgets/gridview.h"
#include "shell/widgets/mainwindow.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

/// Boxes that let a test look at the window while one of them is up.
class WatchedBoxes final : public Boxes {
 public:
  explicit WatchedBoxes(Boxes& boxes) : boxes_(boxes) {}
  std::function<void()> onShow;

  Answer show(const Box& box) override {
    if (onShow)
      onShow();
    return boxes_.show(box);
  }

 private:
  Boxes& boxes_;
};

/// A workspace and its window, not yet open.
class MainWindowTest : public ::testing::Test {
 protected:
  void open() { openBeside({}); }

  /// Opens the window with the page loaders of a test's own.
  void openBeside(const PageLoaderFactory& loaders) {
    window = std::make_unique<MainWindow>(data.workspace(), WindowPorts{boxes, ports, files, texts, loaders});
    window->layoutHistoryGrid();
    window->initMainPanels();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }

  template <typename Control>
  Control& the(const QString& name) {
    return control<Control>(*window, name);
  }

  void typeDraw(const QString& qihao, const QStringList& numbers) {
    the<QLineEdit>(QStringLiteral("TextHistory_0")).setText(qihao);
    for (int i = 1; i <= 5; ++i) {
      auto& field = the<QLineEdit>(QStringLiteral("TextHistory_%1").arg(i));
      field.clear();
      QTest::keyClicks(&field, numbers[i - 1]);
    }
  }

  /// Whether a column of a grid is hidden.
  bool hidden(const QString& grid, const QString& column) {
    auto& view = the<GridView>(grid);
    return view.isColumnHidden(view.rows().columnOf(column));
  }

  PagedTableModel& historyRows() { return the<GridView>(QStringLiteral("TDBGridHistory")).rows(); }

  /// Turns the filter row on, types into it over a column and searches.
  void searchFor(const QString& column, const QString& text) {
    click(the<QPushButton>(QStringLiteral("CmmSousuo")));
    QTest::keyClicks(&the<QLineEdit>(QStringLiteral("filter_") + column), text);
    click(the<QPushButton>(QStringLiteral("filterBegin")));
  }

  /// The periods in the history's grid, joined by blanks.
  QString shownPeriods() {
    QStringList periods;
    for (int row = 0; row < historyRows().rowCount(); ++row)
      periods << QString::number(historyRows().keyOf(row));
    return periods.join(u' ');
  }

  /// The rows of the run panel's grid as it shows them, the cells joined by blanks.
  QStringList gridRows() {
    auto& grid = the<GridView>(QStringLiteral("TDBGrid_RZ"));
    QStringList rows;
    for (int row = 0; row < grid.rows().rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < grid.rows().columnCount(); ++column)
        if (!grid.isColumnHidden(column))
          cells << grid.rows().index(row, column).data().toString();
      rows << cells.join(u' ').trimmed();
    }
    return rows;
  }

  /// The account of the run as it stands on the screen.
  QString status() { return the<QPlainTextEdit>(QStringLiteral("TextChaoZuoTip")).toPlainText(); }

  void clickRun(int index) { click(the<QPushButton>(QStringLiteral("cmmTouZhu_%1").arg(index))); }

  /// Lets the next open-file dialog give a file with these bytes.
  void chooseFileOf(const QByteArray& bytes) {
    files.paths = {data.folders.program + QStringLiteral("/chosen.txt")};
    QFile file(files.paths.front());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  void importLines(const QByteArray& lines) {
    chooseFileOf(lines);
    click(the<QPushButton>(QStringLiteral("newBtnHistory_99")));
  }

  void triggerMenu(const QString& name) { the<QAction>(name).trigger(); }

  TestWorkspace data;
  RecordingPorts ports;
  WatchedBoxes boxes{ports};
  AnsweringFiles files;
  RecordingTexts texts;
  std::unique_ptr<MainWindow> window;
};

}  // namespace elevenfive
