// The frame of a run: from the picks to the rows of 日志表, through the fixed order of stages to the survivors.
//
// One target period at a time stands in 日志表. Every loop over rows yields after each row, which is what lets a stop
// through; each stage writes inside one transaction that also ends well after a stop. A fault ends the run: the stage's
// rows are as they were before it, the panel is usable again, and the fault reaches the caller as an Error.
#pragma once

#include <QString>
#include <span>

#include "engine/resultfiles.h"
#include "engine/runcontext.h"
#include "engine/runports.h"
#include "engine/runstate.h"
#include "model/numbers.h"

namespace elevenfive {

class Store;

class RunDriver;

/// A button of the run panel, cmmTouZhu(index).
struct RunButton {
  QStringView caption;
  QStringView tip;
  void (RunDriver::*action)() = nullptr;  ///< nullptr: the button stands disabled
};

class RunDriver final {
 public:
  RunDriver(Store& gConn, const RunPorts& ports);

  /// The seven buttons, by index.
  static std::span<const RunButton> buttons();

  /// The button row, index 0 to 6: 第一步：初始化, 第二步：过滤缩水, 精选号码, 导出, 导入, 删除, 开奖核对. A fault inside becomes one
  /// critical box here; the panel Pic_subTouZhu is disabled meanwhile and enabled again in every case.
  void cmmTouZhu_Click(int index);

  /// The stop button cmm_stop: the loop in progress ends after its row.
  void cmm_stop_Click() { state_.userStop = true; }

  /// Expands the picks into every combination for a period and returns the number of its rows.
  int initXuanhao(Qihao period);

  /// Whether the picks give at least one combination; with showMessage it says so where not and shows the picking page.
  bool checkHaomaXuanqu(bool showMessage);

  /// Recounts the picks into zuheTotal and writes the three counting lines.
  void showXuanhaoTip();

  [[nodiscard]] int countTuoma();  ///< numbers picked as 拖码
  [[nodiscard]] int countDanma();  ///< numbers picked as 胆码

  /// Start of a run: sets all marks of the period to 0. True where the period has rows and the user did not stop.
  bool resetRizhiBiaoji(Qihao period);

  /// The pipeline over a period's rows with the tolerance of the state.
  void runGuolvSuoshui(Qihao period);

  /// How many counted conditions are in use: those that the tolerance may forgive.
  [[nodiscard]] int countRongcuoTiaojian();

  /// Loads the rows first..last of 过滤条件 into tiaojianValue, from slot (first modulo 10) on. Slots not reached keep what an
  /// earlier load left.
  void loadTiaojianValues(int first, int last);

  /// Writes one value to the rows first..last of 过滤条件.
  void fillTiaojianValues(int first, int last, int value);

  void showRizhiGrid();

  /// Deletes a period's rows, all rows where it is 0, and says so in the status text.
  void deleteRizhi(Qihao period);

  /// append false: the status text becomes text and an empty line; true: text stands ahead of the old one.
  void showTip(const QString& text, bool append);

  [[nodiscard]] RunState& state() noexcept { return state_; }
  [[nodiscard]] const RunState& state() const noexcept { return state_; }

 private:
  RunContext context() { return {gConn_, ports_, state_}; }
  QString defaultPeriod();
  Qihao askPeriod(const QString& prompt, const QString& defaultText);
  void expandClicked();
  void runClicked();
  void deleteClicked();
  void analyseClicked();
  void exportClicked();
  void importClicked();
  void checkClicked();

  Store& gConn_;
  RunPorts ports_;
  RunState state_;
  ExportSettings exportSettings_;  ///< as the dialogs were left the last time
  ImportSettings importSettings_;
};

}  // namespace elevenfive
