// Frm_kuaisusizi: the ranges of 22 conditions as text on two pages, with buttons that lead to what has no range text.
//
// The form does not block the main window. It is hidden while that is active and shown again with what the person typed and
// has not submitted; all else is read anew. Closing it forgets what was typed.
#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "conditions/quicksetup.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace elevenfive {

class QuickForm final : public QDialog {
  Q_OBJECT

 public:
  QuickForm(Store& gConn, Boxes& boxes, QWidget* parent);

  /// Reads the rows from the store and shows the form on a page, 0 or 1.
  void open(int page);

  /// The page that is shown.
  [[nodiscard]] int page() const;

  /// The person works on a condition of this tab of the condition panel.
  Q_SIGNAL void tabWanted(int tab);

  /// A page, 0 or 1, was turned to.
  Q_SIGNAL void pageShown(int page);

  /// The conditions were written.
  Q_SIGNAL void submitted();

  /// A button that leaves a code for the main window was clicked.
  Q_SIGNAL void actionLeft(int code);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// The controls of one row of the form.
  struct Line {
    QCheckBox* use = nullptr;
    QLineEdit* text = nullptr;
  };

  QWidget* buildPages();
  QWidget* buildPage(int page);
  QWidget* buildActions();
  QWidget* buildButtons();
  QPushButton* button(const QString& name, const QString& caption);
  QPushButton* actionButton(int code);
  void buildLine(QWidget* page, std::size_t row);
  void load();
  void showPage(int page);
  void clickUse(std::size_t row, bool checked);
  void submit();
  void showText(const QuickSetup::Row& row);
  void setChanged(bool changed);

  Boxes& boxes_;
  QuickSetup quick_;
  std::vector<QuickSetup::Row> rows_;
  std::vector<Line> lines_;
  QStackedWidget* pages_ = nullptr;
  QPushButton* turn_ = nullptr;
  QPushButton* submit_ = nullptr;
};

}  // namespace elevenfive
