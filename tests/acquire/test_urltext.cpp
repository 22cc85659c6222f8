// A page as text by way of the temporary file, and the pause that the program itself makes.
#include <QDir>
#include <QElapsedTimer>

#include "acquire/downloaderror.h"
#include "model/texts.h"
#include "tests/acquire/networkdownload.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class UrlText : public NetworkDownload {
 protected:
  UrlText() : old_(qgetenv("TMPDIR")) { qputenv("TMPDIR", folder_.path().toUtf8()); }
  ~UrlText() override { old_.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", old_); }

  QString text() { return getUrlText(downloader_, server_.url(u"/f"_s)); }
  void servePage(const QByteArray& page) {
    server_.answer("/f", [page](const HttpRequest& request) { return rangeReply(request, page); });
  }
  static QString tempFile() { return getTempDir() + u"/KdhLoadFile.Kdtemp"_s; }

 private:
  QByteArray old_;
};

TEST_F(UrlText, IsThePageAndTheFileStays) {
  servePage(u"十一选五 2010\r\n"_s.toUtf8());
  EXPECT_EQ(text(), u"十一选五 2010\r\n"_s);
  EXPECT_TRUE(QFile::exists(tempFile()));
  EXPECT_EQ(readFileText(tempFile()), u"十一选五 2010\r\n"_s.toUtf8());
}

TEST_F(UrlText, TheNextPageReplacesTheOne) {
  servePage(QByteArray(50000, 'a'));
  EXPECT_EQ(text(), QString(50000, u'a'));
  servePage("b");
  EXPECT_EQ(text(), u"b"_s);
}

TEST_F(UrlText, AGbkPageIsRead) {
  servePage("\xCA\xAE\xD2\xBB\xD1\xA1\xCE\xE5");
  EXPECT_EQ(text(), u"十一选五"_s);
}

TEST_F(UrlText, BrokenUtf8NeitherCrashesNorLosesThePlainText) {
  servePage("11\xE5\x8D\xFF\xFE 2010 \xC3\x28 \xF0\x9F end");
  const QString result = text();
  EXPECT_TRUE(result.startsWith(u"11"_s));
  EXPECT_TRUE(result.contains(u" 2010 "_s));
  EXPECT_TRUE(result.endsWith(u"end"_s));
}

TEST_F(UrlText, AnEmptyOrMissingPageIsAnEmptyText) {
  servePage({});
  EXPECT_EQ(text(), QString());
  servePage("x");
  EXPECT_EQ(text(), u"x"_s);
  serve(status(404));
  EXPECT_EQ(text(), QString());
  serve(status(500));
  EXPECT_EQ(text(), QString());
}

TEST_F(UrlText, OfAPageThatBreaksOffIsThePartThatCame) {
  serve(QByteArray(40000, 'a'), 1, status(403));
  EXPECT_EQ(text(), QString(20481, u'a'));
}

TEST_F(UrlText, ACharacterCutInHalfAtTheBreakIsLeftOut) {
  // The cut behind 20481 bytes goes through a character of three bytes, with one and with two of them in front of it.
  for (const int before : {20480, 20479}) {
    serve(QByteArray(before - 3, 'a') + u"五选五"_s.toUtf8(), 1, status(403));
    EXPECT_EQ(text(), QString(before - 3, u'a') + u'五') << before;
  }
}

TEST_F(UrlText, WithoutATemporaryFolderTheFileLandsInTheCurrentOne) {
  const QString current = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder_.path()));
  qputenv("TMPDIR", folder_.filePath(u"missing"_s).toUtf8());
  servePage("here");
  const QString result = text();
  ASSERT_TRUE(QDir::setCurrent(current));
  EXPECT_EQ(result, u"here"_s);
  EXPECT_TRUE(QFile::exists(folder_.filePath(u"KdhLoadFile.Kdtemp"_s)));
}

TEST_F(UrlText, APageWithoutASizeIsAFault) {
  serve(piece("abc", {}));
  EXPECT_THROW(text(), DownloadError);
  EXPECT_EQ(ports_.boxTexts(), QStringList{u"无法获取文件大小！"_s});
}

TEST(EventLoopPause, LetsEventsRunForTheWholeTime) {
  EventLoopPause pause;
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++ticks; });
  timer.start(5);
  QElapsedTimer clock;
  clock.start();
  pause.sleep(std::chrono::milliseconds(60));
  EXPECT_GE(clock.elapsed(), 55);
  EXPECT_GE(ticks, 2);
}

TEST_F(NetworkDownload, WorksWithThePauseOfTheProgram) {
  EventLoopPause pause;
  const Module_DownFile downloader({files_, ports_, ports_, pause}, [] { return std::make_unique<NetworkRequest>(); });
  server_.answer("/f", [](const HttpRequest& request) { return rangeReply(request, fileOf(20480)); });
  EXPECT_EQ(downloader.DownFile(server_.url(u"/f"_s), path_), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(20480));
}

}  // namespace
}  // namespace elevenfive
