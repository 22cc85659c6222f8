// What every pass over the rows of the history shares: transactions of a bounded size and a bar that never stays behind.
#pragma once

#include <optional>

#include "history/statuspanels.h"
#include "model/ports.h"
#include "model/store.h"

namespace elevenfive {

/// The transactions of a long pass of row-by-row writes. They are kept small enough that no single commit holds up the event
/// loop, and a fault, a full disk included, costs at most the rows of the last one; every row is written whole or not at all.
class PassTransaction final {
 public:
  explicit PassTransaction(Store& store) : store_(store) { begin(); }

  /// Call after each row.
  void rowDone() {
    if (++rows_ < rowsACommit)
      return;
    commit();
    begin();
  }

  /// Writes what is left; call it at the end, so that a full disk is noticed.
  void commit() { transaction_->commit(); }

 private:
  static constexpr int rowsACommit = 4096;

  void begin() {
    transaction_.reset();
    transaction_.emplace(store_, OnFault::keep);
    rows_ = 0;
  }

  Store& store_;
  std::optional<StoreTransaction> transaction_;
  int rows_ = 0;
};

/// Shows a bar for the length of a scope; a fault hides it too. The bar may be null.
class PassBar final {
 public:
  PassBar(Progress* bar, int maximum, int value) : bar_(bar), maximum_(maximum) {
    if (bar_ == nullptr)
      return;
    bar_->setMinimum(0);
    bar_->setMaximum(maximum);
    bar_->setValue(value);
    bar_->setVisible(true);
  }
  ~PassBar() {
    if (bar_ != nullptr)
      bar_->setVisible(false);
  }
  PassBar(const PassBar&) = delete;
  PassBar& operator=(const PassBar&) = delete;

  void set(int value) {
    if (bar_ != nullptr)
      bar_->setValue(value);
  }
  void fill() { set(maximum_); }

 private:
  Progress* bar_;
  int maximum_;
};

/// Empties the panel of running passes when the scope ends, also by a fault. The panels may be null.
class PanelEmptied final {
 public:
  explicit PanelEmptied(StatusPanels* panels) : panels_(panels) {}
  ~PanelEmptied() {
    if (panels_ != nullptr)
      panels_->setPanel(StatusPanels::runningPass, {});
  }
  PanelEmptied(const PanelEmptied&) = delete;
  PanelEmptied& operator=(const PanelEmptied&) = delete;

 private:
  StatusPanels* panels_;
};

}  // namespace elevenfive
