#include "acquire/processloader.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <csignal>

#include "acquire/pagerules.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView programFile = u"elevenfive-page";

/// The longest answer that is waited for, in bytes; the process cuts its texts well below it.
constexpr qsizetype longestAnswer = qsizetype{128} << 20;

/// Exit status of a program that the system's loader could not put together.
constexpr int lacksLibrary = 127;

QString missingText() {
  return u"读取网页的组件 %1 没有找到或无法启动，请重新安装本软件。"_s.arg(programFile);
}

}  // namespace

QString ProcessLoader::pageProgram() {
  const QString folder = QCoreApplication::applicationDirPath();
  for (const QString& place : {u"/"_s, u"/../libexec/elevenfive/"_s})
    if (const QFileInfo file(folder + place + programFile.toString()); file.isExecutable())
      return file.absoluteFilePath();
  return {};
}

ProcessLoader::ProcessLoader(const LoaderTimes& times, const QString& program) : times_(times), program_(program) {
  limit_.setSingleShot(true);
  QObject::connect(&limit_, &QTimer::timeout, &limit_, [this] {
    endReading();
    complete();
  });
}

ProcessLoader::~ProcessLoader() {
  stop();
}

void ProcessLoader::stop() {
  ++load_;
  busy_ = false;
  limit_.stop();
  pending_.clear();
  endReading();
  if (!process_)
    return;
  process_->disconnect();
  if (const qint64 group = process_->processId(); group > 0)
    ::kill(static_cast<pid_t>(-group), SIGKILL);  // with its renderer, which may be caught in a script
  process_->kill();
  process_->waitForFinished(1000);
  // It may be one of its own signals that led here.
  process_.release()->deleteLater();
  scratch_.reset();
}

void ProcessLoader::navigate(const QUrl& url) {
  stop();
  fault_.clear();
  asked_ = address_ = url;
  away_ = false;
  busy_ = true;
  if (!isWebAddress(url)) {  // an address of another kind, a local file first of all, is not loaded
    complete();
    return;
  }
  limit_.start(times_.loadMs);
  startProcess();
  if (process_->state() == QProcess::NotRunning)
    return;
  PageRequest request;
  request.address = url;
  process_->write(lineOf(request));
}

void ProcessLoader::startProcess() {
  process_ = std::make_unique<QProcess>();
  process_->setStandardErrorFile(QProcess::nullDevice());
  scratch_ = std::make_unique<QTemporaryDir>();
  QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
  if (scratch_->isValid())
    for (const QString& home : {u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_RUNTIME_DIR"_s})
      surroundings.insert(home, scratch_->path());
  process_->setProcessEnvironment(surroundings);
  QObject::connect(process_.get(), &QProcess::readyReadStandardOutput, process_.get(), [this] { output(); });
  QObject::connect(process_.get(), &QProcess::errorOccurred, process_.get(), [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
      fault_ = missingText();
    endReading();
    complete();
  });
  QObject::connect(process_.get(), &QProcess::finished, process_.get(), [this](int status) {
    if (fault_.isEmpty())
      fault_ = status == lacksLibrary ? missingText() : u"读取网页的组件意外结束，没有读到网页。"_s;
    endReading();
    complete();
  });
  process_->setChildProcessModifier([] { ::setpgid(0, 0); });
  process_->start(program_.isEmpty() ? pageProgram() : program_, QStringList());
}

void ProcessLoader::output() {
  const qsizetype looked = pending_.size();
  pending_ += process_->readAllStandardOutput();
  if (pending_.size() > longestAnswer) {
    const bool waitedFor = busy_;
    stop();
    busy_ = waitedFor;
    complete();
    return;
  }
  for (qsizetype at = pending_.indexOf('\n', looked); at >= 0; at = pending_.indexOf('\n')) {
    const QByteArray line = pending_.left(at);
    pending_.remove(0, at + 1);
    if (const std::optional<PageTold> message = pageTold(line))
      told(*message);
  }
}

void ProcessLoader::told(const PageTold& message) {
  switch (message.kind) {
    case PageTold::Kind::complete:
      if (away_)  // of the load that was refused
        break;
      if (busy_ && mayHoldPage(asked_, message.address))
        address_ = message.address;
      if (busy_)
        complete();
      else  // a script has put another document in its place
        tellLater([this] { tellDocument(); });
      break;
    case PageTold::Kind::away:
      away_ = true;
      address_ = message.address;
      complete();
      break;
    case PageTold::Kind::fault:
      fault_ = message.text;
      endReading();
      complete();
      break;
    case PageTold::Kind::text:
      if (message.id == reading_ && answered_) {
        answer_ = message.text.isNull() ? u""_s : message.text;
        endReading();
      }
      break;
  }
}

void ProcessLoader::complete() {
  limit_.stop();
  // From the event loop, not from inside one of the process's signals: whoever is told may read the page at once.
  if (busy_)
    tellLater([this] {
      if (std::exchange(busy_, false))
        tellDocument();
    });
}

void ProcessLoader::tellLater(std::function<void()> tell) {
  QTimer::singleShot(0, &limit_, [this, load = load_, tell = std::move(tell)] {
    if (load == load_)
      tell();
  });
}

void ProcessLoader::endReading() {
  if (answered_)
    answered_();
}

void ProcessLoader::tellDocument() {
  if (documentComplete)
    documentComplete(true);
}

QString ProcessLoader::read(PagePart part) {
  if (!process_ || process_->state() != QProcess::Running || answered_)
    return {};
  answer_.clear();
  PageRequest request;
  request.kind = PageRequest::Kind::read;
  request.part = part;
  request.id = ++reading_;
  QEventLoop loop;
  answered_ = [&loop] { loop.quit(); };
  process_->write(lineOf(request));
  QTimer::singleShot(times_.readMs, &loop, &QEventLoop::quit);
  loop.exec();
  answered_ = nullptr;
  return std::exchange(answer_, {});
}

PageLoaderFactory processLoaders() {
  return [] { return std::make_unique<ProcessLoader>(); };
}

}  // namespace elevenfive
