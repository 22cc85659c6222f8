// Draws from the web: the page of the game in use is loaded in the hidden control, its text is scanned line by line, draws
// are stored and their columns derived.
//
// There is one source and no other to fall back on: where the site gives nothing, the person is told so and the table stays
// as it was. Waiting runs the event loop; whoever offers the buttons keeps them disabled meanwhile (UpdateView), and a second
// call during a first one does nothing.
#pragma once

#include <QDate>
#include <QUrl>
#include <functional>

#include "acquire/pageloader.h"
#include "acquire/pagetext.h"
#include "acquire/statuspulse.h"

namespace elevenfive {

class Store;

/// What shows the history, as an update sees it. None of these throws, for they also run where a fault ends an update; only
/// reloadHistoryGrid may, and its fault is told like one of the table.
class UpdateView {
 public:
  virtual ~UpdateView() = default;
  /// The command buttons of the history panel.
  virtual void setButtonsEnabled(bool enabled) = 0;
  /// Option_TorD: data or chart mode; chart mode draws the distribution of the newest periods anew.
  virtual void selectDataMode(bool chart) = 0;
  /// The next period goes into TextHistory_0.
  virtual void showNextPeriod() = 0;
  virtual void reloadHistoryGrid() = 0;
  /// Period lists, miss view, status line; and the bar of a derivation is hidden.
  virtual void refreshViews() = 0;
};

struct UpdatePorts {
  Boxes& boxes;
  Events& events;
  StatusPanels& panels;
  Progress& derivation;  ///< ProgressBar_TuBiao
  UpdateView& view;
  PageLoaderFactory loaders;
  std::function<void(const QUrl&)> openPage;  ///< shows a page in the person's browser
};

/// Times of an update, in milliseconds where nothing else is told.
struct UpdateTimes {
  double documentSeconds = 120;  ///< for the page to be complete
  int betweenReadsMs = 400;      ///< the text is read three times, so that scripts can fill the table
  int pulseMs = 260;             ///< 0: the status text does not pulse
  int noticeMs = 30'000;         ///< for the version notice
  /// Seconds since midnight. A wait across midnight counts backwards and ends only when the control itself gives up.
  std::function<double()> clock;  ///< empty: the system's
};

class WebUpdate final {
 public:
  WebUpdate(Store& gConn, UpdatePorts ports, UpdateTimes times = {});

  /// cmmUpdateHistory_1 and _2: update, show, and once a run the version notice. True where the page was read to its end.
  /// A fault of the table while draws are stored is thrown last, when all that there is has been derived and shown.
  bool updateHistory();

  /// The page of the game in use, and nothing around it. `date` is the day being fetched; `interactive`: boxes may appear; `name`
  /// does not matter; `lastQihao`: what the largest period of this run begins with. True where the page was read to its end,
  /// even if no line was a draw. A fault in a draw or in the derivation is not thrown: it stands in fault().
  bool updateFromWeb(const QDate& date, bool interactive, const QString& name, Qihao lastQihao);

  /// What the table refused first in the last update, a sentence for the person; empty where it took all.
  [[nodiscard]] const QString& fault() const noexcept { return fault_; }

  /// Ends a running updateHistory() at its next step: nothing more is read or asked. A reading that waits ends at once.
  void requestStop();

  /// What the panel said of the last page where it was led off its site, which no box tells; empty after any other outcome.
  [[nodiscard]] const QString& leftSiteText() const noexcept { return leftSiteText_; }

  /// Whether the version notice has run; who makes a second flow in one run of the program hands that on.
  [[nodiscard]] bool isNoticeDone() const noexcept { return noticeDone_; }
  void setNoticeDone(bool done) noexcept { noticeDone_ = done; }

  /// Whether an updateHistory() runs.
  [[nodiscard]] bool isRunning() const noexcept { return running_; }

 private:
  enum class Outcome { noAddress, unsetAddress, noControl, leftSite, notResults, stopped, read };

  PageLoader& control();
  void documentComplete(bool topLevel);
  void loadDocument(const QUrl& url);
  QString readBody();
  Outcome fetch(const QDate& date, Qihao lastQihao, PageCounts& counts);
  void scan(const QString& text, const QDate& date, Qihao lastQihao, PageCounts& counts);
  void tellOutcome(Outcome outcome, const QDate& date, bool interactive);
  void versionNotice();
  void setPanel(const QString& text);
  void leaveInPanel(const QString& text);

  Store& gConn_;
  UpdatePorts ports_;
  UpdateTimes times_;
  StatusPulse timerXZ_;
  std::unique_ptr<PageLoader> webBrowser_history_;  ///< made on first use
  QUrl asked_;                                      ///< the page that was loaded last
  bool stored_ = false;                             ///< the last update has brought a record
  QString fault_;
  QString leftInPanel_;  ///< what the panel shows after an update
  QString leftSiteText_;
  bool waitingDoc_ = false;
  bool docDone_ = false;
  bool running_ = false;
  bool stopRequested_ = false;
  bool noticeDone_ = false;
};

/// Where the address of the results site is set, for one whose game has a page but whose address was never set.
QString unsetAddressText();

/// The box of a page that could not be had; its title.
QString failedUpdateText();
inline constexpr QStringView failedUpdateTitle = u"开奖数据更新失败！";

}  // namespace elevenfive
