// The engine's sandbox: on for every user but root, for whom it cannot work.
//
// What the kernel tells of the page process's children is looked at: a sandboxed renderer is filtered in its system calls
// (Seccomp 2) and lives in process and network namespaces of its own.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/web/processtree.h"
#include "tests/web/webtest.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

QString nameSpace(qint64 process, const QString& kind) {
  return QFile::symLinkTarget(u"/proc/%1/ns/%2"_s.arg(process).arg(kind)).section(u'/', -1);
}

class SandboxTest : public ::testing::Test {
 protected:
  SandboxTest() { server.answer("/", pageReply("<p>there</p>")); }

  /// Shows a page with this program for the page process; its text is read.
  void show(ProcessLoader& loader) {
    bool done = false;
    loader.documentComplete = [&done](bool) { done = true; };
    loader.navigate(QUrl(server.url(u"/"_s)));
    runEventsFor(60'000, [&done] { return done; });
    EXPECT_EQ(loader.bodyText(), u"there"_s) << loader.fault().toStdString();
  }

  static bool works(const QStringList& words) { return QProcess::execute(words.first(), words.mid(1)) == 0; }

  HttpServer server;
};

/// How an ordinary user is become: not at all where one is at work already.
const QStringList asNobody{u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s};

TEST_F(SandboxTest, ForAnOrdinaryUserTheRendererIsFilteredAndShutOff) {
  const QString page = ProcessLoader::pageProgram();
  const QStringList start = geteuid() == 0 ? asNobody : QStringList{u"env"_s};
  if (!works(start + QStringList{u"test"_s, u"-x"_s, page}))
    GTEST_SKIP() << "there is no other user here who may run the page process";
  if (!works(start + QStringList{u"unshare"_s, u"--user"_s, u"true"_s}))
    GTEST_SKIP() << "this system opens no user namespaces to ordinary users, which the sandbox needs";
  QTemporaryDir folder;
  QFile script(folder.filePath(u"page"_s));
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\nHOME=/nonexistent; export HOME\nexec " + (start + QStringList{page}).join(u' ').toUtf8() +
               '\n');
  script.close();
  script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
  ProcessLoader loader({}, script.fileName());
  show(loader);
  const qint64 process = loader.processId();
  EXPECT_NE(statusOf(process, u"Uid"_s), u"0"_s);
  int filtered = 0;
  for (const qint64 child : descendants(process)) {
    EXPECT_NE(statusOf(child, u"Uid"_s), u"0"_s);
    if (statusOf(child, u"Seccomp"_s) != u"2"_s)
      continue;
    ++filtered;
    for (const QString& kind : {u"user"_s, u"pid"_s, u"net"_s})
      EXPECT_NE(nameSpace(child, kind), nameSpace(process, kind)) << kind.toStdString();
    EXPECT_TRUE(geteuid() != 0 || !nameSpace(child, u"net"_s).isEmpty());  // others may not be allowed to look
  }
  EXPECT_GE(filtered, 1);
}

TEST_F(SandboxTest, ForRootThePageIsShownWithoutIt) {
  if (geteuid() != 0)
    GTEST_SKIP() << "not root";
  ProcessLoader loader;
  show(loader);
  const QList<qint64> children = descendants(loader.processId());
  EXPECT_FALSE(children.isEmpty());
  for (const qint64 child : children)
    EXPECT_NE(statusOf(child, u"Seccomp"_s), u"2"_s);
}

}  // namespace
}  // namespace elevenfive
