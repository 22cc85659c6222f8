#include "acquire/downfile.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <climits>
#include <functional>
#include <memory>
#include <utility>

#include "acquire/downloaderror.h"
#include "model/errors.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/recordingports.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

constexpr int never = INT_MAX;

/// What the server of a test says to one request.
struct Answer206 {
  int status = 206;
  QByteArray body;
  QString contentRange;
  int looks = 0;  ///< complete after so many pauses
  QString statusText;
};

Answer206 refusal(int status, const QString& text = {}, int looks = 0) {
  return {status, "refused", {}, looks, text};
}

/// The piece of a file that a range header asks for, as a sound server cuts it.
Answer206 pieceOf(const QByteArray& file, const QString& range) {
  const QStringList bounds = range.mid(6).split(u'-');
  const qint64 first = bounds.value(0).toLongLong();
  const qint64 last = std::min<qint64>(bounds.value(1).toLongLong(), file.size() - 1);
  if (first > last)
    return refusal(416);
  return {206,
          file.mid(first, last - first + 1),
          u"bytes %1-%2/%3"_s.arg(QString::number(first), QString::number(last), QString::number(file.size())),
          0,
          {}};
}

/// A server without a network. All requests write down what was asked of them.
struct Script {
  std::function<Answer206(int block, const QString& range)> answer;
  QStringList log;
  int sent = 0;
  int pauses = 0;
  int pausesAtSend = 0;
  std::function<void()> onOpen = [] {};
};

class ScriptedRequest final : public PolledRequest {
 public:
  explicit ScriptedRequest(Script& script) : script_(script) {}

  void open(const QString& method, const QString& url) override {
    script_.onOpen();
    script_.log << method + u' ' + url;
  }
  void setRequestHeader(const QString& name, const QString& value) override {
    script_.log << name + u" = "_s + value;
    if (name == u"Range")
      range_ = value;
  }
  void send() override {
    script_.log << u"send"_s;
    answer_ = script_.answer(script_.sent++, range_);
    script_.pausesAtSend = script_.pauses;
  }
  [[nodiscard]] int readyState() const override {
    return script_.pauses - script_.pausesAtSend >= answer_.looks ? complete : 3;
  }
  [[nodiscard]] int status() const override { return answer_.status; }
  [[nodiscard]] QString statusText() const override { return answer_.statusText; }
  [[nodiscard]] QByteArray responseBody() const override { return answer_.body; }
  [[nodiscard]] QString getResponseHeader(const QString& name) const override {
    return name == u"Content-Range" ? answer_.contentRange : QString();
  }

 private:
  Script& script_;
  QString range_;
  Answer206 answer_;
};

class CountedPause final : public PollPause {
 public:
  explicit CountedPause(Script& script) : script_(script) {}
  void sleep(std::chrono::milliseconds time) override {
    EXPECT_EQ(time.count(), 300);
    ++script_.pauses;
  }

 private:
  Script& script_;
};

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// A file in which every byte tells its place.
QByteArray fileOf(qsizetype size) {
  QByteArray bytes(size, '\0');
  for (qsizetype i = 0; i < size; ++i)
    bytes[i] = static_cast<char>((i * 7 + i / 251) & 0xFF);
  return bytes;
}

class DownFileTest : public ::testing::Test {
 protected:
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(u"target"_s);
  Script script_;
  RecordingPorts ports_;
  CountedPause pause_{script_};
  UnflushedFiles files_;

  QString download(FileAccess& files, const QString& url = u"http://a.example/f"_s,
                   qint64 limit = Module_DownFile::largestFile) {
    const Module_DownFile downloader(
        {files, ports_, ports_, pause_}, [this] { return std::make_unique<ScriptedRequest>(script_); }, limit);
    return downloader.DownFile(url, path_);
  }
  QString download() { return download(files_); }

  /// The first blocks of a file come well, then this.
  void serve(const QByteArray& file, int blocks, const Answer206& then) {
    script_.answer = [=](int block, const QString& range) { return block < blocks ? pieceOf(file, range) : then; };
  }
  void serve(const QByteArray& file) { serve(file, never, {}); }

  void putFile(const QByteArray& content) {
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
};

TEST_F(DownFileTest, TwoBlocksAreAskedForWithOneByteOfOverlap) {
  serve(fileOf(40961));
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.log,
            (QStringList{u"GET http://a.example/f"_s, u"Range = bytes=0-20480"_s,
                         u"Content-Type: = application/octet-stream"_s, u"send"_s, u"GET http://a.example/f"_s,
                         u"Range = bytes=20480-40960"_s, u"Content-Type: = application/octet-stream"_s, u"send"_s}));
  EXPECT_EQ(contentOf(path_), fileOf(40961));
}

TEST_F(DownFileTest, TheNextBlockIsWrittenOverTheLastByteOfTheOneBefore) {
  script_.answer = [](int block, const QString&) {
    return block == 0 ? Answer206{206, QByteArray(20481, 'a'), u"bytes 0-20480/40961"_s, 0, {}}
                      : Answer206{206, QByteArray(20481, 'b'), u"bytes 20480-40960/40961"_s, 0, {}};
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(contentOf(path_), QByteArray(20480, 'a') + QByteArray(20481, 'b'));
}

TEST_F(DownFileTest, AnAddressWithoutASchemeGetsOne) {
  serve(fileOf(1));
  const std::pair<QString, QString> addresses[] = {{u"a.example/f"_s, u"GET http://a.example/f"_s},
                                                   {u"http://a.example/f"_s, u"GET http://a.example/f"_s},
                                                   {u"HTTP://a.example/f"_s, u"GET http://HTTP://a.example/f"_s},
                                                   {u"https://a.example"_s, u"GET http://https://a.example"_s},
                                                   {u"http:/"_s, u"GET http://http:/"_s},
                                                   {QString(), u"GET http://"_s}};
  for (const auto& [url, asked] : addresses) {
    script_.log.clear();
    download(files_, url);
    EXPECT_EQ(script_.log.value(0), asked);
  }
}

TEST_F(DownFileTest, AnAnswerThatIsThereAtTheFirstLookIsNotWaitedFor) {
  serve(fileOf(20481));
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.pauses, 0);
  EXPECT_EQ(ports_.yields, 0);
}

TEST_F(DownFileTest, EventsRunAfterEachPauseAndOnceBetweenBlocks) {
  script_.answer = [](int block, const QString& range) {
    Answer206 answer = pieceOf(fileOf(40961), range);
    answer.looks = block == 0 ? 3 : 2;
    return answer;
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.pauses, 5);
  EXPECT_EQ(ports_.yields, 6);
}

TEST_F(DownFileTest, AnAnswerAfterTheLastPauseStillCounts) {
  script_.answer = [](int, const QString& range) {
    Answer206 answer = pieceOf(fileOf(5), range);
    answer.looks = 120;
    return answer;
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.pauses, 120);
  EXPECT_EQ(contentOf(path_), fileOf(5));
}

TEST_F(DownFileTest, AnAnswerThatComesLaterIsATimeout) {
  script_.answer = [](int, const QString& range) {
    Answer206 answer = pieceOf(fileOf(5), range);
    answer.looks = 121;
    return answer;
  };
  EXPECT_EQ(download(), u"下载文件超时"_s);
  EXPECT_EQ(script_.pauses, 120);
  EXPECT_EQ(contentOf(path_), QByteArray());
}

TEST_F(DownFileTest, EachBlockHasAllItsPauses) {
  script_.answer = [](int, const QString& range) {
    Answer206 answer = pieceOf(fileOf(40961), range);
    answer.looks = 120;
    return answer;
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.pauses, 240);
}

// One row for each way to end at the first answer.

struct Outcome {
  const char* name;
  int status;
  QStringView statusText;
  int looks;
  QStringView result;
};

class OutcomeTest : public DownFileTest, public ::testing::WithParamInterface<Outcome> {};

TEST_P(OutcomeTest, IsToldAndLeavesAnEmptyFile) {
  putFile("old");
  serve({}, 0, refusal(GetParam().status, GetParam().statusText.toString(), GetParam().looks));
  EXPECT_EQ(download(), GetParam().result.toString());
  EXPECT_EQ(contentOf(path_), QByteArray());
  EXPECT_EQ(script_.sent, 1);
  EXPECT_TRUE(ports_.boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Statuses, OutcomeTest,
    ::testing::Values(Outcome{"RangeOutside", 416, u"Range Not Satisfiable", 0, u"下载完成"},
                      Outcome{"RangeOutsideWithoutAnEnd", 416, u"Range Not Satisfiable", never, u"下载完成"},
                      Outcome{"Forbidden", 403, u"Forbidden", 0, u"连接数过多"},
                      Outcome{"ForbiddenWithoutAnEnd", 403, u"Forbidden", never, u"连接数过多"},
                      Outcome{"NotFound", 404, u"Not Found", 0, u"文件无法找到"},
                      Outcome{"NotFoundWithoutAnEnd", 404, u"Not Found", never, u"文件无法找到"},
                      Outcome{"NothingCame", 0, u"", never, u"下载文件超时"},
                      Outcome{"PieceWithoutAnEnd", 206, u"Partial Content", never, u"下载文件超时"},
                      Outcome{"WholeWithoutAnEnd", 200, u"OK", never, u"下载文件超时"},
                      Outcome{"ErrorWithoutAnEnd", 500, u"Internal Server Error", never, u"下载文件超时"},
                      Outcome{"Error", 500, u"Internal Server Error", 0, u"未知错误：Internal Server Error(500)"},
                      Outcome{"ErrorWithoutAText", 503, u"", 0, u"未知错误：(503)"},
                      Outcome{"FirstAboveTheGoodOnes", 300, u"Multiple Choices", 0, u"未知错误：Multiple Choices(300)"},
                      Outcome{"Unauthorized", 401, u"Unauthorized", 0, u"未知错误：Unauthorized(401)"},
                      Outcome{"Gone", 410, u"Gone", 0, u"未知错误：Gone(410)"},
                      Outcome{"NetworkFailed", 12029, u"无法连接服务器", 0, u"未知错误：无法连接服务器(12029)"},
                      Outcome{"Whole", 200, u"OK", 0, u"不支持断点续传"},
                      Outcome{"NoContent", 204, u"No Content", 0, u"不支持断点续传"},
                      Outcome{"LastGoodOne", 299, u"", 0, u"不支持断点续传"},
                      Outcome{"NoStatus", 0, u"", 0, u"不支持断点续传"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DownFileTest, AFailureAtAnyBlockKeepsTheBlocksBefore) {
  const QByteArray file = fileOf(5 * 20480 + 1);  // five blocks
  const std::pair<Answer206, QString> failures[] = {{refusal(403), u"连接数过多"_s},
                                                    {refusal(404), u"文件无法找到"_s},
                                                    {refusal(206, {}, never), u"下载文件超时"_s},
                                                    {refusal(500, u"x"_s), u"未知错误：x(500)"_s},
                                                    {refusal(200), u"不支持断点续传"_s},
                                                    {refusal(416), u"下载完成"_s}};
  for (const auto& [answer, result] : failures) {
    for (int blocks = 0; blocks < 5; ++blocks) {
      script_.sent = 0;
      serve(file, blocks, answer);
      EXPECT_EQ(download(), result);
      EXPECT_EQ(contentOf(path_), file.left(blocks == 0 ? 0 : blocks * 20480 + 1)) << blocks;
    }
  }
}

TEST_F(DownFileTest, TheOldFileIsGoneBeforeTheFirstRequest) {
  putFile("old");
  QByteArray seen = "nothing";
  script_.onOpen = [&] { seen = contentOf(path_); };
  serve({}, 0, refusal(404));
  EXPECT_EQ(download(), u"文件无法找到"_s);
  EXPECT_EQ(seen, QByteArray());
}

TEST_F(DownFileTest, TheFileStaysEmptyUntilTheLastBlockIsThere) {
  QList<QByteArray> seen;
  script_.onOpen = [&] { seen << contentOf(path_); };
  serve(fileOf(3 * 20480));
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(seen, QList<QByteArray>(3));
}

TEST_F(DownFileTest, AnAnswerWithoutASizeIsToldInABoxAndNothingIsSaved) {
  for (int blocks = 0; blocks < 3; ++blocks) {
    putFile("old");
    script_.sent = 0;
    ports_.boxes.clear();
    serve(fileOf(100000), blocks, {206, "bytes", {}, 0, {}});
    EXPECT_THROW(download(), DownloadError);
    ASSERT_EQ(ports_.boxes.size(), 1U);
    EXPECT_EQ(ports_.boxes[0].kind, BoxKind::information);
    EXPECT_EQ(ports_.boxes[0].title, u"错误006"_s);
    EXPECT_EQ(ports_.boxes[0].text, u"无法获取文件大小！"_s);
    EXPECT_EQ(contentOf(path_), QByteArray());
  }
}

TEST_F(DownFileTest, AnAnswerWithASizeThatIsNoneSavesNothingAndShowsNoBox) {
  for (const QString& range : {u"bytes 0-4"_s, u"bytes 0-4/*"_s, u"bytes */5"_s, u"bytes 0-x/5"_s}) {
    putFile("old");
    serve({}, 0, {206, "bytes", range, 0, {}});
    EXPECT_THROW(download(), DownloadError);
    EXPECT_TRUE(ports_.boxes.empty());
    EXPECT_EQ(contentOf(path_), QByteArray());
  }
}

TEST_F(DownFileTest, AShortPieceLeavesZerosUpToTheNext) {
  script_.answer = [](int block, const QString&) {
    return block == 0 ? Answer206{206, "abc", u"bytes 0-2/20482"_s, 0, {}}
                      : Answer206{206, "yz", u"bytes 20480-20481/20482"_s, 0, {}};
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(contentOf(path_), "abc" + QByteArray(20477, '\0') + "yz");
}

TEST_F(DownFileTest, APieceLongerThanAskedForIsKeptWhole) {
  serve({}, 0, {206, fileOf(50000), u"bytes 0-49999/50000"_s, 0, {}});
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(contentOf(path_), fileOf(50000));
  EXPECT_EQ(script_.sent, 1);
}

TEST_F(DownFileTest, ASizeBelowTheEndOfThePieceIsNoEnd) {
  serve(fileOf(3), 0, {});
  script_.answer = [](int block, const QString&) {
    return block == 0 ? Answer206{206, "abc", u"bytes 0-20480/100"_s, 0, {}} : refusal(416);
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(script_.sent, 2);
  EXPECT_EQ(contentOf(path_), QByteArray("abc"));
}

TEST_F(DownFileTest, AFileWithoutAnEndIsStoppedAtTheLimitAndNothingIsSaved) {
  putFile("old");
  script_.answer = [](int, const QString&) {
    return Answer206{206, QByteArray(20481, 'x'), u"bytes 0-20480/5368709120"_s, 0, {}};
  };
  EXPECT_THROW(download(files_, u"http://a"_s, qint64{1} << 20), DownloadError);
  EXPECT_EQ(script_.sent, 52);  // 51 steps of 20480 and 20481 bytes are the first beyond 1048576
  EXPECT_EQ(contentOf(path_), QByteArray());
}

TEST_F(DownFileTest, EmptyPiecesWithoutAnEndAreStoppedAtTheLimitToo) {
  script_.answer = [](int, const QString&) { return Answer206{206, {}, u"bytes 0-20480/5368709120"_s, 0, {}}; };
  EXPECT_THROW(download(files_, u"http://a"_s, qint64{1} << 20), DownloadError);
  EXPECT_EQ(contentOf(path_), QByteArray());
}

TEST_F(DownFileTest, AFileOfExactlyTheLimitComes) {
  serve(fileOf(50000));
  EXPECT_EQ(download(files_, u"http://a"_s, 50000), u"下载完成"_s);
  EXPECT_THROW(download(files_, u"http://a"_s, 49999), DownloadError);
}

TEST_F(DownFileTest, AFullDiskLeavesAnEmptyFileAndNoOther) {
  for (const qint64 room : {0, 1, 40960}) {
    putFile("old");
    serve(fileOf(40961));
    FaultyFiles files;
    files.writableBytes = room;
    EXPECT_THROW(download(files), FileError);
    EXPECT_EQ(contentOf(path_), QByteArray());
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"target"_s});
  }
}

TEST_F(DownFileTest, AFaultAtAnyStepOnTheDiskLeavesNoHalfFile) {
  const QByteArray file = fileOf(40961);
  serve(file);
  FaultyFiles sound;
  ASSERT_EQ(download(sound), u"下载完成"_s);
  ASSERT_GE(sound.steps, 6);
  for (qint64 step = 0; step < sound.steps; ++step) {
    putFile("old");
    FaultyFiles files;
    files.failingStep = step;
    EXPECT_THROW(download(files), FileError);
    const QByteArray left = contentOf(path_);
    const bool removed = step > 0;
    EXPECT_TRUE(removed ? left.isEmpty() || left == file || left == "no file" : left == "old") << step;
  }
}

TEST_F(DownFileTest, ATargetThatIsAFolderOrHasNoFolderIsAFault) {
  serve(fileOf(1));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"target"_s));
  EXPECT_THROW(download(), FileError);
  path_ = folder_.filePath(u"missing/target"_s);
  EXPECT_THROW(download(), FileError);
  EXPECT_EQ(script_.sent, 0);
}

TEST_F(DownFileTest, ALinkAtTheTargetIsReplacedAndWhatItNamesStays) {
  const QString other = folder_.filePath(u"other"_s);
  path_ = other;
  putFile("mine");
  path_ = folder_.filePath(u"target"_s);
  ASSERT_TRUE(QFile::link(other, path_));
  serve(fileOf(10));
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(contentOf(other), QByteArray("mine"));
  EXPECT_EQ(contentOf(path_), fileOf(10));
}

TEST_F(DownFileTest, AnySizeArrivesByteForByte) {
  EXPECT_TRUE(rc::check("a file of any size", [this] {
    const qsizetype size = *rc::gen::oneOf(
        rc::gen::inRange<qsizetype>(0, 100000),
        rc::gen::map(rc::gen::inRange<qsizetype>(-2, 12), [](qsizetype i) { return 20480 * (1 + i % 4) + i / 4; }));
    serve(fileOf(size));
    RC_ASSERT(download() == u"下载完成"_s);
    RC_ASSERT(contentOf(path_) == fileOf(size));
  }));
}

}  // namespace
}  // namespace elevenfive
