// The sub-panels that hold choices in the place of value lists: the tolerance of the positions, the match against the
// history, the reduction, and the summary of everything.
#pragma once

#include <QFrame>
#include <array>
#include <vector>

#include "conditions/conditionpanel.h"
#include "model/ports.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QPlainTextEdit;

namespace elevenfive {

/// Option_DingweiRongcuo: how many positions a combination may miss.
class PositionTolerance final : public QFrame {
  Q_OBJECT

 public:
  PositionTolerance(ConditionPanel& panel, Boxes& boxes, QWidget* parent = nullptr);
  void reload();

 private:
  void showStored();

  ConditionPanel& panel_;
  Boxes& boxes_;
  QButtonGroup* options_;
};

/// Tab 23: combinations that resemble a recent draw are left out.
class MatchPage final : public QWidget {
  Q_OBJECT

 public:
  MatchPage(ConditionPanel& panel, Boxes& boxes, QWidget* parent = nullptr);
  void reload();
  Q_SIGNAL void tabChanged(int tab);

 private:
  void showStored();
  QComboBox* box(const QString& name, const QString& accessibleName, int last, ConditionPanel::MatchField field);

  ConditionPanel& panel_;
  Boxes& boxes_;
  QCheckBox* use_ = nullptr;
  QComboBox* periods_ = nullptr;
  QComboBox* newest_ = nullptr;
  QComboBox* match_ = nullptr;
};

/// Tab 24: the type of the reduction, and the box that asks for the optimisation before it.
class ReductionPage final : public QWidget {
  Q_OBJECT

 public:
  ReductionPage(ConditionPanel& panel, Boxes& boxes, QWidget* parent = nullptr);
  void reload();
  Q_SIGNAL void tabChanged(int tab);

 private:
  void showStored();

  ConditionPanel& panel_;
  Boxes& boxes_;
  QButtonGroup* types_ = nullptr;
  QCheckBox* optimise_ = nullptr;
  int optimiseCode_ = 0;
};

/// Tab 25: all conditions as one text.
class SummaryPage final : public QWidget {
  Q_OBJECT

 public:
  SummaryPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, QWidget* parent = nullptr);
  void reload();

 private:
  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
  QPlainTextEdit* text_ = nullptr;
};

}  // namespace elevenfive
