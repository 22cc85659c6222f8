// The quick setup form without its screen: the ranges of 22 conditions as text that can be edited and submitted.
//
// The rows are those of 快速设置. Submitting first checks every row and shows a box for each fault; only a text without any
// fault is written, all rows in one step.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "model/ports.h"

namespace elevenfive {

class Store;

/// Colour of cmm_submit while there is something to submit, in the order 0xBBGGRR.
inline constexpr unsigned quickChangedColor = 33023;

class QuickSetup final {
 public:
  QuickSetup(Store& gConn, Boxes& boxes) : gConn_(gConn), boxes_(boxes) {}

  /// One row of the form.
  struct Row {
    int number = 0;  ///< 编号: index of its Check_sfsy and Text_quzifanwei
    int tab = 0;     ///< the tab of the condition panel that belongs to it
    QString name;
    int code = 0;
    int first = 0;      ///< ID of value 0
    int last = 0;       ///< the last ID that the form touches
    bool used = false;  ///< Check_sfsy
    QString text;       ///< Text_quzifanwei
    QString tip;        ///< of the text box
  };

  /// The form as it opens, in order of 编号.
  std::vector<Row> rows();

  /// The allowed values of row n in plain digits, "[20-22] , [25]"; empty for a row that does not exist.
  QString quickRangeText(int n);

  [[nodiscard]] int getQuickUse(int code);
  bool setQuickUse(int code, int value);  ///< true where the code has a row

  /// Writes value into the rows firstId..lastId of 过滤条件; into firstId alone where lastId is below 1.
  void setValueRange(int value, int firstId, int lastId);

  /// A click on Check_sfsy of a row: writes its code. The tab to show, nothing where the code has no row.
  std::optional<int> clickUse(Row& row, bool checked);

  /// Told of a row whose text has changed, before a box stands over the form.
  using ShowText = std::function<void(const Row& row)>;

  /// cmm_submit: both passes over the rows as they stand on the form. The texts come back as the form shows them then. True
  /// where the conditions were written.
  bool submit(std::span<Row> rows, const ShowText& showText = {});

 private:
  bool check(Row& row, const ShowText& showText);
  void write(const Row& row);

  Store& gConn_;
  Boxes& boxes_;
};

}  // namespace elevenfive
