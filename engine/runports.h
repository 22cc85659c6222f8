// What a run speaks to: the common ports, and the few things that only the run panel can show or tell.
#pragma once

#include <QString>
#include <optional>

#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

/// The run panel and its neighbours, as far as a run touches them.
class RunView {
 public:
  virtual ~RunView() = default;
  /// Reads 日志表 again in 期号, 序号, `ID` order and shows it in TDBGrid_RZ.
  virtual void showRizhiGrid() = 0;
  /// 期号 of the grid's current row; nothing where there is no row or the cell is empty.
  [[nodiscard]] virtual std::optional<Qihao> currentQihao() const = 0;
  /// The caption of LabelRongcuoTip, which opens the question for the tolerance.
  [[nodiscard]] virtual QString rongcuoTipCaption() const = 0;
  /// Selects tab 2 of TabStrip_Top and tab 1 of TabStrip_TiaoJian, where numbers are picked.
  virtual void showPickingPage() = 0;
  /// Marks the numbers of a draw in the grid's columns 号码1 to 号码5, so that hits stand out, in higher rows (405 twips).
  virtual void showDrawnNumbers(const Draw& draw) { static_cast<void>(draw); }
  /// The counting lines of Text_ChoseNumberTip.
  virtual void setChoseNumberTip(const QString& text) = 0;
};

class ResultFileDialogs;

/// References, handed to the run driver for its life.
struct RunPorts {
  Boxes& boxes;
  Inputs& inputs;
  Progress& progress;
  Controls& controls;
  StatusText& status;
  Events& events;
  RunView& view;
  ResultFileDialogs* dialogs = nullptr;  ///< without them no result file goes out or comes in
};

}  // namespace elevenfive
