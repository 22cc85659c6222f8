// A workspace with nothing picked, and doubles of what picking speaks to beside the common ports.
#pragma once

#include <gtest/gtest.h>

#include <map>

#include "conditions/picking.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

class SilentRunView final : public RunView {
 public:
  QString tip;
  void showRizhiGrid() override {}
  [[nodiscard]] std::optional<Qihao> currentQihao() const override { return std::nullopt; }
  [[nodiscard]] QString rongcuoTipCaption() const override { return {}; }
  void showPickingPage() override {}
  void setChoseNumberTip(const QString& text) override { tip = text; }
};

class RecordingPickView final : public PickView {
 public:
  std::map<int, int> painted;
  std::map<int, bool> marks;
  QString period;
  void paintPick(int number, int value) override { painted[number] = value; }
  [[nodiscard]] bool struckThrough(int number) const override { return marks.contains(number); }
  [[nodiscard]] QString markedPeriod() const override { return period; }
};

class PickingTest : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  SilentRunView runView;
  RecordingPickView view;
  RunDriver driver{workspace.store(), {ports, ports, ports, ports, ports, ports, runView}};
  NumberPicking picking{workspace.store(), driver, ports, view};

  void SetUp() override { workspace.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID < 200"); }

  int pick(int number) {
    return workspace.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", number).value_or(-1);
  }

  void setPick(int number, int value) {
    workspace.store().execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = ?", value, number);
  }
};

}  // namespace elevenfive
