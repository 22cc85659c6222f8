// What the menus and the quick setup do with the whole condition set: export, import, restore, the zones, and the form
// Frm_kuaisusizi with what it leaves for the main window.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "conditions/conditionfiles.h"
#include "conditions/widgets/filequestion.h"
#include "conditions/zones.h"
#include "model/widgets/busystate.h"

class QWidget;

namespace elevenfive {

class ConditionView;
class HistoryPanel;
class QuickForm;
class Store;
class ZonePage;

class ConditionForms final : public QObject {
  Q_OBJECT

 public:
  /// What this speaks to, for its life.
  struct Ports {
    Boxes& boxes;
    Inputs& inputs;
    FileDialogs& files;
    BusyState& busy;
  };

  /// What the main window does for it.
  struct Window {
    QWidget* widget;                            ///< over which the forms stand
    std::function<void(int tab)> selectTopTab;  ///< 1 to 3
    std::function<void()> updateHistory;        ///< reads draws from the web; empty where that cannot be done
  };

  ConditionForms(Store& gConn, const QString& templatePath, ConditionView& conditions, const Ports& ports,
                 const Window& window);

  void exportConditions();  ///< daocu
  void importConditions();  ///< daoru
  void restoreDefaults();   ///< huanyuan
  void openQuickSetup();    ///< cmm_kuaisusezi
  void closeQuickSetup();   ///< with what was typed and not submitted

  /// The panel of mnu_newQuJian, made anew; it belongs to the parent.
  ZonePage* makeZonePage(QWidget* parent);

  /// Where zones have changed, the history's counts of them follow, with the message and the bar of the panel.
  void recountZones(HistoryPanel& history);

  /// The main window became active: the quick setup goes out of sight, and what a form left is done.
  void windowActivated();

  /// A form leaves the code of what the main window is to do once it is active and idle; the quick setup closes.
  void leaveAction(int code);

  /// What was left is not done any more: the data goes.
  void forgetAction() { pendingAction_ = 0; }

 private:
  void showConditionTab(int tab);
  void runPendingAction();

  Store& gConn_;
  ConditionView& conditions_;
  Ports ports_;
  Window window_;
  Zones zones_;
  DialogFileQuestion question_;
  ConditionFiles files_;
  QPointer<QuickForm> quick_;
  int quickPage_ = 0;      ///< shown last, taken up when the form opens again
  int pendingAction_ = 0;  ///< 0 when nothing is pending
};

}  // namespace elevenfive
