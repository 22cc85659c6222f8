// The hidden web page control, in a process of its own: elevenfive-page, which stands beside the program.
//
// A process serves one page: the next load starts another, so that no page knows of an earlier one. A page that takes too
// long to come, a process that ends and one that cannot be started are told like a document that could not be had.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include "acquire/pageloader.h"
#include "acquire/pagemessages.h"

namespace elevenfive {

/// How long the control itself waits, in milliseconds.
struct LoaderTimes {
  int loadMs = 180'000;  ///< for a page to be complete; whoever waits for it gives up earlier
  int readMs = 15'000;   ///< for an answer to a reading, which a page caught in a script never gives
};

class ProcessLoader final : public PageLoader {
 public:
  /// program: the page process; empty: the one beside the running program.
  explicit ProcessLoader(const LoaderTimes& times = {}, const QString& program = {});
  ~ProcessLoader() override;

  [[nodiscard]] bool busy() const override { return busy_; }
  void stop() override;
  void navigate(const QUrl& url) override;
  [[nodiscard]] QUrl address() const override { return address_; }
  [[nodiscard]] QString bodyText() override { return read(PagePart::text); }
  [[nodiscard]] QString markup() override { return read(PagePart::markup); }
  void refresh() override { stop(); }
  [[nodiscard]] QString fault() const override { return fault_; }

  /// The page process that serves the page at present; 0 where none does.
  [[nodiscard]] qint64 processId() const { return process_ ? process_->processId() : 0; }

  /// Where the page process is looked for: beside the running program, then in the libexec folder of an installation.
  static QString pageProgram();

 private:
  void startProcess();
  void output();
  void told(const PageTold& message);
  void complete();
  void endReading();
  void tellLater(std::function<void()> tell);
  void tellDocument();
  QString read(PagePart part);

  LoaderTimes times_;
  QString program_;
  std::unique_ptr<QProcess> process_;
  std::unique_ptr<QTemporaryDir> scratch_;  ///< what the engine would leave in the person's home; goes with its process
  QByteArray pending_;                      ///< an answer that has not come whole
  QTimer limit_;
  QUrl asked_;
  QUrl address_;
  bool away_ = false;  ///< the load was sent off its site and refused: none of its documents counts
  QString fault_;
  QString answer_;
  std::function<void()> answered_;  ///< set while a reading waits
  int reading_ = 0;                 ///< counts the readings, so that a late answer is not taken for a later one's
  bool busy_ = false;
  int load_ = 0;  ///< counts loads and stops, so that nothing is told of a load that is over
};

/// Makes a ProcessLoader with the usual times.
PageLoaderFactory processLoaders();

}  // namespace elevenfive
