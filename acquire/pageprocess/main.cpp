// elevenfive-page: loads one web page for the program that started it, and ends when that program lets go of it.
//
// It is a process of its own so that a browser engine is neither part of the window's start nor of its fate: the window needs
// none until a page is read, a page that hangs or crashes ends here, and the companion needs no screen for it.
// What is said on standard input and output: acquire/pagemessages.h.
#include <unistd.h>

#include <QGuiApplication>
#include <QNetworkProxyFactory>
#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>

#include "acquire/pagemessages.h"
#include "acquire/pageprocess/hiddenpage.h"
#include "acquire/pagerules.h"

namespace {

using namespace elevenfive;

/// Flags for the engine: nothing is drawn, and nothing is fetched but the page. Its older layout, where it still has it, gives
/// the same text in a third of the memory and two thirds of the time: some 20 KB a row of a table of seven cells. The limit of
/// the scripts' heap, in MB, counts what is laid out too.
constexpr const char* engineFlags =
    "--disable-gpu --disable-gpu-compositing --disable-dev-shm-usage --disable-background-networking"
    " --disable-component-update --disable-domain-reliability --disable-sync --disable-breakpad --no-first-run"
    " --no-pings --mute-audio --js-flags=--max-old-space-size=2048"
    " --disable-blink-features=LayoutNG --force-webrtc-ip-handling-policy=disable_non_proxied_udp";

/// Only the page's site can be found at all, and what the person goes through to reach it. This holds also for what the engine
/// asks of no gate, such as a page's own connections to other machines.
QByteArray hostFlag(const QUrl& asked) {
  QStringList rules = hostRules(asked);
  for (const QNetworkProxy& proxy : QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(asked)))
    if (!proxy.hostName().isEmpty())
      rules << QStringLiteral("EXCLUDE ") + proxy.hostName();
  rules << QStringLiteral("MAP * ~NOTFOUND");  // the first that fits counts
  return " --host-resolver-rules=\"" + rules.join(u',').toUtf8() + '"';
}

/// What the surroundings say of the engine does not count here. Only root, for whom the sandbox cannot work, goes without it.
void setEnvironment() {
  for (const char* name : {"QTWEBENGINE_CHROMIUM_FLAGS", "QTWEBENGINE_REMOTE_DEBUGGING", "QTWEBENGINE_DISABLE_SANDBOX"})
    unsetenv(name);
  if (geteuid() == 0)
    setenv("QTWEBENGINE_DISABLE_SANDBOX", "1", 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("QT_QUICK_BACKEND", "software", 1);
}

void writeAll(const QByteArray& bytes) {
  qsizetype written = 0;
  while (written < bytes.size()) {
    const ssize_t now =
        ::write(STDOUT_FILENO, bytes.constData() + written, static_cast<std::size_t>(bytes.size() - written));
    if (now < 0 && errno == EINTR)
      continue;
    if (now <= 0)
      std::_Exit(1);
    written += now;
  }
}

/// The page with its profile, and what the program says to it.
class Conversation final {
 public:
  Conversation() : input_(STDIN_FILENO, QSocketNotifier::Read) {
    QObject::connect(&input_, &QSocketNotifier::activated, &input_, [this] { readInput(); });
  }

 private:
  void readInput() {
    char block[4096];
    const ssize_t got = ::read(STDIN_FILENO, block, sizeof block);
    if (got < 0 && errno == EINTR)
      return;
    if (got <= 0)
      end(0);
    pending_.append(block, got);
    for (qsizetype at = pending_.indexOf('\n'); at >= 0; at = pending_.indexOf('\n')) {
      const QByteArray line = pending_.left(at);
      pending_.remove(0, at + 1);
      if (const std::optional<PageRequest> request = pageRequest(line))
        answer(*request);
    }
  }

  void answer(const PageRequest& request) {
    if (request.kind == PageRequest::Kind::read) {
      if (page_)
        page_->read(request.part, request.id);
      return;
    }
    if (page_ || !isWebAddress(request.address))
      end(2);
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", engineFlags + hostFlag(request.address));  // read with the first profile
    profile_ = std::make_unique<HiddenProfile>(request.address);
    page_ = std::make_unique<HiddenPage>(*profile_, [this](const PageTold& told) {
      writeAll(lineOf(told));
      if (told.kind == PageTold::Kind::fault)
        end(3);
    });
    page_->navigate(request.address);
  }

  /// At once: a renderer caught in an endless script would keep an orderly end waiting.
  [[noreturn]] void end(int status) {
    if (page_ && page_->renderProcessPid() > 0)
      ::kill(static_cast<pid_t>(page_->renderProcessPid()), SIGKILL);
    std::_Exit(status);
  }

  QSocketNotifier input_;
  QByteArray pending_;
  std::unique_ptr<HiddenProfile> profile_;
  std::unique_ptr<HiddenPage> page_;  // goes before its profile
};

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  setEnvironment();
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  const QGuiApplication application(argc, argv);
  const Conversation conversation;
  return QGuiApplication::exec();
}
