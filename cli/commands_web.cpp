// Draws from the web: a page kept in a file, or the page of the game in use.
#include <QScopeGuard>
#include <QString>
#include <ostream>

#include "acquire/pagetext.h"
#include "acquire/processloader.h"
#include "acquire/webupdate.h"
#include "cli/command.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/values.h"
#include "model/errors.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Prints what the panel of running passes tells; what a derivation tells again and again comes once.
class PrintedPanels final : public StatusPanels {
 public:
  explicit PrintedPanels(std::ostream& out) : out_(out) {}
  void setPanel(int panel, const QString& text) override {
    if (panel != runningPass || (text == last_ && !text.startsWith(u"数据下载中"_s)))
      return;
    last_ = text;
    printText(out_, text);
    out_.flush();
  }

 private:
  std::ostream& out_;
  QString last_;
};

/// Nobody looks at the history while a command runs.
class NoView final : public UpdateView {
 public:
  void setButtonsEnabled(bool) override {}
  void selectDataMode(bool) override {}
  void showNextPeriod() override {}
  void reloadHistoryGrid() override {}
  void refreshViews() override {}
};

/// Looks for Ctrl-C between the lines of a page and the rows of a derivation, where no event loop runs.
class WatchedSteps final : public Events {
 public:
  Interrupt* interrupt = nullptr;
  void yield() override {
    if (interrupt)
      interrupt->look();
  }
};

Action preparePage(const Arguments& arguments) {
  const QString path = pathOf(arguments, u"FILE"_s);
  const QDate date = dateOf(arguments, u"--date"_s);
  return [path, date](Session& session) {
    requireReadable(path);
    const QString text = decodePage(readFileText(path));
    CliPorts& ports = session.ports();
    if (!text.contains(resultsPageMark)) {
      ports.show({BoxKind::critical, failedUpdateTitle.toString(), failedUpdateText(), BoxButtons::ok});
      throw Refused();
    }
    Store& store = session.store();
    PageCounts counts = scanPage(store, text, date, lastQihaoForUpdate(store), ports);
    deriveScanned(store, counts, &ports, ports, nullptr);
    if (!counts.underivable.isEmpty())
      ports.plain(counts.underivable);
    if (!counts.fault.isEmpty())
      throw StoreError(counts.fault);
    printRow(session.out(), {u"rowsDone"_s, u"lowQihao"_s, u"highQihao"_s});
    printRow(session.out(),
             {QString::number(counts.rowsDone), QString::number(counts.lowQihao), QString::number(counts.highQihao)});
  };
}

Action prepareUpdate(const Arguments&) {
  return [](Session& session) {
    CliPorts& ports = session.ports();
    PrintedPanels panels(session.out());
    NoView view;
    WatchedSteps steps;
    UpdateTimes times;
    times.pulseMs = 0;
    WebUpdate update(session.store(),
                     {ports, steps, panels, ports, view, processLoaders(),
                      [&session](const QUrl& page) { printText(session.out(), page.toString()); }},
                     times);
    update.setNoticeDone(session.noticeDone);
    const auto kept = qScopeGuard([&] { session.noticeDone = update.isNoticeDone(); });
    Interrupt interrupt([&update] { update.requestStop(); });
    steps.interrupt = &interrupt;
    const bool done = update.updateHistory();
    if (interrupt.wasAsked())
      throw Error(u"下载已被中断，已经保存的开奖数据保留不变。"_s);
    if (done)
      return;
    if (!update.leftSiteText().isEmpty())  // which the panel alone has told
      throw Error(update.leftSiteText());
    throw Refused();
  };
}

constexpr Command commands[] = {
    {u"history page FILE --date YYYY-MM-DD",
     u"the update flow's line scan and derivation on a page's rendered text in FILE", u"rowsDone lowQihao highQihao",
     preparePage},
    {u"history update", u"the update flow from the web, for the game in use", u"status panel texts", prepareUpdate},
};

}  // namespace

std::span<const Command> webCommands() {
  return commands;
}

}  // namespace elevenfive
