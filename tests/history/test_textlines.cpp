#include "history/textlines.h"

#include <gtest/gtest.h>

#include <QDir>

#include "model/errors.h"
#include "model/texts.h"
#include "tests/history/historytools.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class Lines : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;

  /// "count: line|line|line" of a file of these bytes.
  QString linesOf(const QByteArray& bytes) {
    TextLines lines(writeFile(workspace, bytes), ports);
    QStringList texts;
    for (QString line; lines.next(line);)
      texts << line;
    return u"%1: "_s.arg(lines.count()) + texts.join(u'|');
  }
};

TEST_F(Lines, EndInCrLfOrLf) {
  EXPECT_EQ(linesOf("a\r\nb\nc"), u"3: a|b|c"_s);
  EXPECT_EQ(linesOf("a\r\nb\r\n"), u"2: a|b"_s);
  EXPECT_EQ(linesOf("\n\n"), u"2: |"_s);
}

TEST_F(Lines, OfAnEmptyFileAreNone) {
  EXPECT_EQ(linesOf(""), u"0: "_s);
  EXPECT_EQ(linesOf("\xEF\xBB\xBF"), u"0: "_s);
}

TEST_F(Lines, AreUtf8WithOrWithoutAMark) {
  EXPECT_EQ(linesOf("期号，一\n"), u"1: 期号，一"_s);
  EXPECT_EQ(linesOf("\xEF\xBB\xBF期号，一\n二"), u"2: 期号，一|二"_s);
}

TEST_F(Lines, AreGb18030WhereTheyAreNoUtf8) {
  EXPECT_EQ(linesOf("11031510\xA3\xAC"
                    "01\r\n\xC6\xDA\xA1\xA1\n"),
            u"2: 11031510，01|期　"_s);
}

TEST_F(Lines, OfBytesInNoEncodingStillEnd) {
  EXPECT_TRUE(linesOf(QByteArray("\xFF\xFE\x80\n\x81\x0A\xFF", 7)).startsWith(u"3: "_s));
}

TEST_F(Lines, KeepNulCharacters) {
  EXPECT_EQ(linesOf(QByteArray("a\0b\nc", 5)), QString(u"2: a"_s + QChar(u'\0') + u"b|c"_s));
}

TEST_F(Lines, AreWholeAcrossTheBlocksOfTheReader) {
  QByteArray bytes;
  QStringList expected;
  for (int i = 0; i < 30000; ++i) {
    bytes += "第" + QByteArray::number(i) + "行\r\n";
    expected << u"第%1行"_s.arg(i);
  }
  EXPECT_EQ(linesOf(bytes), u"30000: "_s + expected.join(u'|'));
}

TEST_F(Lines, OfAbsurdLengthCountAndComeEmpty) {
  const QByteArray longest(64 * 1024, '7');
  EXPECT_EQ(linesOf("a\n" + longest + "\nb"), u"3: a|"_s + QString::fromLatin1(longest) + u"|b"_s);
  EXPECT_EQ(linesOf("a\n" + longest + "7\nb"), u"3: a||b"_s);
  EXPECT_EQ(linesOf("a\n" + QByteArray(3 * 1024 * 1024, '7') + "\nb"), u"3: a||b"_s);
  EXPECT_EQ(linesOf("a\n" + QByteArray(3 * 1024 * 1024, '7')), u"2: a|"_s);
}

TEST_F(Lines, OfAMissingFileOrAFolderAreAFault) {
  EXPECT_THROW(TextLines(workspace.folders.program + u"/none.txt"_s, ports), FileError);
  EXPECT_THROW(TextLines(workspace.folders.program, ports), FileError);
}

}  // namespace
}  // namespace elevenfive
