// The heaviest run that the conditions allow, and the ports of one that nobody watches.
#pragma once

#include <QString>
#include <optional>

#include "engine/runports.h"
#include "model/store.h"

namespace elevenfive {

/// Shows nothing and answers with what a question offers.
struct QuietRun final : Boxes, Inputs, Progress, Controls, StatusText, Events, RunView {
  QString status;
  Answer show(const Box&) override { return Answer::yes; }
  QString askText(const InputBox& box) override { return box.defaultText; }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool) override {}
  void setEnabled(ControlId, bool) override {}
  [[nodiscard]] QString text() const override { return status; }
  void setText(const QString& text) override { status = text; }
  void moveCaretToEnd() override {}
  void yield() override {}
  void showRizhiGrid() override {}
  [[nodiscard]] std::optional<Qihao> currentQihao() const override { return {}; }
  [[nodiscard]] QString rongcuoTipCaption() const override { return {}; }
  void showPickingPage() override {}
  void setChoseNumberTip(const QString&) override {}
};

/// Puts every stage in use, with values that let most rows through.
inline void useEverything(Store& store) {
  store.executeScript("bench",
                      "UPDATE 过滤条件使用情况 SET 使用情况 = 1;"
                      "UPDATE 过滤条件 SET VALUE = 1 WHERE ID BETWEEN 1000 AND 4599 AND ID NOT IN (3900, 3901);"
                      "UPDATE 过滤条件 SET VALUE = 3 WHERE ID = 3900;"
                      "UPDATE 号码特性 SET 第1位 = (号码 <= 7), 第2位 = 1, 第3位 = 1, 第4位 = 1, 第5位 = (号码 > 5);"
                      "UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 5, 匹配值 = 5;");
}

}  // namespace elevenfive
