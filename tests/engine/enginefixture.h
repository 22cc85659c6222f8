// A run driver over a fresh workspace with recording doubles, and rows and conditions written as text.
#pragma once

#include <gtest/gtest.h>

#include "engine/rundriver.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// The double of the run panel.
class RecordingView final : public RunView {
 public:
  int gridShown = 0;
  std::optional<Qihao> current;
  int pickingPagesShown = 0;
  QString tip;

  void showRizhiGrid() override { ++gridShown; }
  [[nodiscard]] std::optional<Qihao> currentQihao() const override { return current; }
  [[nodiscard]] QString rongcuoTipCaption() const override;
  void showPickingPage() override { ++pickingPagesShown; }
  void setChoseNumberTip(const QString& text) override { tip = text; }
};

/// Starts with every condition off, all values 0, one earlier draw "11031509 02 04 06 08 10", and no row. The target period is
/// 11031510.
class EngineTest : public ::testing::Test {
 protected:
  static constexpr Qihao period = 11031510;

  EngineTest();

  TestWorkspace workspace;
  RecordingPorts ports;
  RecordingView view;
  RunPorts runPorts{ports, ports, ports, ports, ports, ports, view};
  RunDriver driver{workspace.store(), runPorts};

  [[nodiscard]] RunContext run() { return {workspace.store(), runPorts, driver.state()}; }

  void sql(const char* statement) { workspace.store().execute("test", statement); }
  void use(int code, int value = 1);
  void allow(int first, int last) { driver.fillTiaojianValues(first, last, 1); }
  void setValue(int id, int value) { driver.fillTiaojianValues(id, id, value); }

  /// Puts fresh rows of the period into 日志表, numbered from 1, one a line: "01 02 03 04 05".
  void addRows(const QString& lines);

  /// All 462 combinations as fresh rows.
  void addAllRows();

  /// The rows of the period in the order of 序号: "序号: numbers".
  QStringList survivors();

  /// The numbers alone.
  QStringList numbers();

  /// 过滤标记 in the order of `ID`.
  QStringList marks();

  /// The lines of the status text: what stands between double line ends, without empty ones.
  QStringList statusLines();

  /// Asks for a stop at the n-th yield from now on.
  void stopAtYield(int n);
};

}  // namespace elevenfive
