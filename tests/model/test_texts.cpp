#include "model/texts.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <string>

#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(QuanjiaoDigits, ReplacesEveryDigitAndNothingElse) {
  EXPECT_EQ(toQuanjiaoDigits(u"第11031510期，0123456789 -.a注"_s),
            u"第１１０３１５１０期，０１２３４５６７８９ -.a注"_s);
  EXPECT_EQ(toQuanjiaoDigits(QString()), QString());
}

TEST(QuanjiaoDigits, LeavesFullWidthDigitsAsTheyAre) {
  EXPECT_EQ(toQuanjiaoDigits(u"１2"_s), u"１２"_s);
}

TEST(QuanjiaoDigits, OfNumbers) {
  EXPECT_EQ(toQuanjiaoDigits(462), u"４６２"_s);
  EXPECT_EQ(toQuanjiaoDigits(0), u"０"_s);
  EXPECT_EQ(toQuanjiaoDigits(-1), u"-１"_s);
}

TEST(TwoDigits, FillUpWithAZero) {
  EXPECT_EQ(twoDigits(1), u"01"_s);
  EXPECT_EQ(twoDigits(11), u"11"_s);
  EXPECT_EQ(twoDigits(0), u"00"_s);
  EXPECT_EQ(twoDigits(123), u"123"_s);
}

TEST(DrawText, JoinsTwoDigitNumbers) {
  EXPECT_EQ(drawText({1, 2, 3, 10, 11}, u" "_s), u"01 02 03 10 11"_s);
  EXPECT_EQ(drawText({5, 4, 3, 2, 1}, u", "_s), u"05, 04, 03, 02, 01"_s);
  EXPECT_EQ(drawText({1, 2, 3, 4, 5}, QString()), u"0102030405"_s);
}

TEST(LeadingNumber, EndsAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_EQ(leadingNumber(u"11031510,01,02"), 11031510);
  EXPECT_EQ(leadingNumber(u"12期"), 12);
  EXPECT_EQ(leadingNumber(u"007"), 7);
}

TEST(LeadingNumber, IsZeroWhereNoDigitBegins) {
  EXPECT_EQ(leadingNumber(u""), 0);
  EXPECT_EQ(leadingNumber(u"a12"), 0);
  EXPECT_EQ(leadingNumber(u" 12"), 0);
  EXPECT_EQ(leadingNumber(u"-1"), 0);
  EXPECT_EQ(leadingNumber(u"+1"), 0);
  EXPECT_EQ(leadingNumber(u".9"), 0);
}

TEST(LeadingNumber, RoundsHalfToEven) {
  EXPECT_EQ(leadingNumber(u"0.5"), 0);
  EXPECT_EQ(leadingNumber(u"1.5"), 2);
  EXPECT_EQ(leadingNumber(u"2.5"), 2);
  EXPECT_EQ(leadingNumber(u"3.5"), 4);
  EXPECT_EQ(leadingNumber(u"2.51"), 3);
  EXPECT_EQ(leadingNumber(u"2.49"), 2);
}

TEST(LeadingNumber, APointBelongsToItOnlyOnce) {
  EXPECT_EQ(leadingNumber(u"12."), 12);
  EXPECT_EQ(leadingNumber(u"12.x"), 12);
  EXPECT_EQ(leadingNumber(u"1.6.9"), 2);
}

TEST(LeadingNumber, AnExponentIsNoPartOfIt) {
  EXPECT_EQ(leadingNumber(u"1e3"), 1);
  EXPECT_EQ(leadingNumber(u"0x1F"), 0);
}

TEST(LeadingNumber, GoesUpToTheLargestPeriod) {
  EXPECT_EQ(leadingNumber(u"2147483647"), 2147483647);
  EXPECT_EQ(leadingNumber(u"2147483647.4"), 2147483647);
  EXPECT_EQ(leadingNumber(u"2147483648"), 0);
  EXPECT_EQ(leadingNumber(u"2147483647.5"), 0);
  EXPECT_EQ(leadingNumber(u"99999999999999999999"), 0);
}

TEST(LeadingNumber, VeryLongTextsAreReadAsWell) {
  EXPECT_EQ(leadingNumber(QString(100'000, u'9')), 0);
  EXPECT_EQ(leadingNumber(QString(QString(100'000, u'0') + u"42"_s)), 42);
  EXPECT_EQ(leadingNumber(QString(u"7."_s + QString(100'000, u'3'))), 7);
}

TEST(LeadingNumber, FullWidthDigitsAreNoDigits) {
  EXPECT_EQ(leadingNumber(u"１２"), 0);
  EXPECT_EQ(leadingNumber(u"1２"), 1);
}

TEST(InputNumber, AnEmptyOrCancelledBoxIsZero) {
  EXPECT_EQ(inputNumber(QString()), 0);
  EXPECT_EQ(inputNumber(u""_s), 0);
}

TEST(InputNumber, BlanksAreTrimmed) {
  EXPECT_EQ(inputNumber(u"   "_s), 0);
  EXPECT_EQ(inputNumber(u"  11031510  "_s), 11031510);
}

TEST(InputNumber, ATextThatBeginsWithALetterIsZero) {
  EXPECT_EQ(inputNumber(u"a12"_s), 0);
  EXPECT_EQ(inputNumber(u"期12"_s), 0);
}

TEST(InputNumber, ANegativeNumberIsZero) {
  EXPECT_EQ(inputNumber(u"-1"_s), 0);
  EXPECT_EQ(inputNumber(u"+1"_s), 0);
}

TEST(InputNumber, OnlyTheFirstNineCharactersCount) {
  EXPECT_EQ(inputNumber(u"123456789"_s), 123456789);
  EXPECT_EQ(inputNumber(u"1234567890"_s), 123456789);
  EXPECT_EQ(inputNumber(u"  9999999999999999  "_s), 999999999);
  EXPECT_EQ(inputNumber(u"00000000012"_s), 0);
}

TEST(InputNumber, BlanksInsideCountAmongTheNineAndEndTheNumber) {
  EXPECT_EQ(inputNumber(u"12 34"_s), 12);
}

TEST(InputNumber, ALeadingPointIsAFraction) {
  EXPECT_EQ(inputNumber(u".5"_s), 0);  // 0.5, to even
  EXPECT_EQ(inputNumber(u".6"_s), 1);
  EXPECT_EQ(inputNumber(u"2.5"_s), 2);
  EXPECT_EQ(inputNumber(u"3.5"_s), 4);
}

TEST(InputNumber, FullWidthDigitsAreZero) {
  EXPECT_EQ(inputNumber(u"５"_s), 0);
}

TEST(InputNumber, ReadsBackWhatTheProgramShows) {
  EXPECT_TRUE(rc::check("numbers up to nine digits come back", [] {
    const int number = *rc::gen::inRange(0, 1'000'000'000);
    RC_ASSERT(inputNumber(QString::number(number)) == number);
    RC_ASSERT(inputNumber(u"  %1 期"_s.arg(number)) == number);
  }));
}

TEST(CharsIn, EveryCharacterMustOccur) {
  EXPECT_TRUE(isCharsIn(u"0123", u"0123456789"));
  EXPECT_FALSE(isCharsIn(u"01a3", u"0123456789"));
  EXPECT_FALSE(isCharsIn(u"１", u"0123456789"));
  EXPECT_FALSE(isCharsIn(u"1", u""));
}

TEST(CharsIn, AnEmptyTextHoldsNothingForbidden) {
  EXPECT_TRUE(isCharsIn(u"", u"0123456789"));
  EXPECT_TRUE(isCharsIn(u"", u""));
}

TEST(HasChar, ComparesByCode) {
  EXPECT_TRUE(hasChar(u'a', u"abc"));
  EXPECT_FALSE(hasChar(u'A', u"abc"));
  EXPECT_FALSE(hasChar(u'１', u"1"));
}

TEST(CountStringLine, IsCrLfsPlusOne) {
  EXPECT_EQ(CountStringLine(u"a"_s), 1);
  EXPECT_EQ(CountStringLine(u"a\r\nb"_s), 2);
  EXPECT_EQ(CountStringLine(u"a\r\n"_s), 2);
}

TEST(CountStringLine, AnEmptyTextIsOneLine) {
  EXPECT_EQ(CountStringLine(QString()), 1);
  EXPECT_EQ(CountStringLine(u"\r\n\r\n"_s), 3);
}

TEST(CountStringLine, ALoneCrOrLfEndsNoLine) {
  EXPECT_EQ(CountStringLine(u"a\nb\rc\n\rd"_s), 1);
}

TEST(ReadStringLine, CountsFrom1) {
  EXPECT_EQ(ReadStringLine(u"a\r\nb\r\nc"_s, 1), u"a"_s);
  EXPECT_EQ(ReadStringLine(u"a\r\nb\r\nc"_s, 2), u"b"_s);
  EXPECT_EQ(ReadStringLine(u"a\r\nb\r\nc"_s, 3), u"c"_s);
}

TEST(ReadStringLine, ALastLineNeedsNoLineEnd) {
  EXPECT_EQ(ReadStringLine(u"a\r\nb\r\n"_s, 2), u"b"_s);
  EXPECT_EQ(ReadStringLine(u"a\r\n\r"_s, 2), u"\r"_s);
}

TEST(ReadStringLine, IsEmptyBeyondTheLastLine) {
  EXPECT_EQ(ReadStringLine(u"a\r\nb"_s, 3), QString());
  EXPECT_EQ(ReadStringLine(u"a\r\nb\r\n"_s, 3), QString());
  EXPECT_EQ(ReadStringLine(u"a\r\nb"_s, 1000), QString());
  EXPECT_EQ(ReadStringLine(QString(), 1), QString());
}

TEST(ReadStringLine, ThereIsNoLineBelow1) {
  EXPECT_EQ(ReadStringLine(u"a"_s, 0), QString());
  EXPECT_EQ(ReadStringLine(u"a"_s, -1), QString());
}

TEST(Lines, JoinedAgainAreTheText) {
  EXPECT_TRUE(rc::check("all lines joined by CR LF give the text back", [] {
    const auto codes = *rc::gen::container<std::string>(rc::gen::element('a', '\r', '\n', ' '));
    const QString text = QString::fromStdString(codes);
    QStringList lines;
    for (int n = 1; n <= CountStringLine(text); ++n)
      lines << ReadStringLine(text, n);
    RC_ASSERT(lines.join(u"\r\n"_s) == text);
  }));
}

TEST(DecodeText, ReadsUtf8WithAndWithoutAByteOrderMark) {
  EXPECT_EQ(decodeText("期号 01\r\n"), u"期号 01\r\n"_s);
  EXPECT_EQ(decodeText("\xEF\xBB\xBF期号"), u"期号"_s);
  EXPECT_EQ(decodeText(""), QString());
}

TEST(DecodeText, DropsNoBytesFromTheMiddle) {
  EXPECT_EQ(decodeText(QByteArray("a\0b", 3)), QString(u"a"_s + QChar(0) + u'b'));
}

TEST(DecodeText, ReadsGb18030WhereItIsNoUtf8) {
  EXPECT_EQ(decodeText("\xC6\xDA\xBA\xC5 01"), u"期号 01"_s);
  EXPECT_EQ(decodeText("\xA3\xAC\xD6\xD0"), u"，中"_s);
}

TEST(DecodeText, AGb18030CharacterAtTheEndIsNotTakenForACutUtf8One) {
  // E4 BD is the beginning of a three-byte sequence in one encoding and a whole character in the other.
  EXPECT_EQ(decodeText("ab\xE4\xBD"), u"ab浣"_s);
}

TEST(DecodeText, ACharacterCutOffAtTheEndOfTheFileIsMarked) {
  EXPECT_EQ(decodeText("\xC6\xDA\xBA"), u"期\uFFFD"_s);
  EXPECT_EQ(decodeText("\xBD"), u"\uFFFD"_s);
}

TEST(DecodeText, BytesOfNeitherEncodingLoseNothingThatCanBeRead) {
  const QString text = decodeText("11031510 01 02 03 04 05\r\n\xFF\xFF\xFF\r\n11031511 01 02 03 04 06");
  EXPECT_TRUE(text.startsWith(u"11031510 01 02 03 04 05\r\n"_s));
  EXPECT_TRUE(text.endsWith(u"\r\n11031511 01 02 03 04 06"_s));
}

QString writeFile(const QTemporaryDir& folder, const QByteArray& bytes) {
  const QString path = folder.filePath(u"文件.txt"_s);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("cannot write the test's file");
  return path;
}

TEST(ReadFileText, GivesTheBytesAsTheyStand) {
  const QTemporaryDir folder;
  const QByteArray bytes("\xEF\xBB\xBF\0\r\n\xFF", 7);
  EXPECT_EQ(readFileText(writeFile(folder, bytes)), bytes);
  EXPECT_EQ(readFileText(writeFile(folder, {})), QByteArray());
}

TEST(ReadFileText, ReadsLargeFiles) {
  const QTemporaryDir folder;
  const QByteArray bytes(50 << 20, 'x');
  EXPECT_EQ(readFileText(writeFile(folder, bytes)).size(), bytes.size());
}

std::string faultOf(const QString& path) {
  try {
    readFileText(path);
  } catch (const FileError& fault) {
    return fault.message().toStdString();
  }
  return "no fault";
}

TEST(ReadFileText, NamesTheFileThatCannotBeRead) {
  const QTemporaryDir folder;
  const QString missing = folder.filePath(u"缺.txt"_s);
  EXPECT_EQ(faultOf(missing), "无法打开文件 " + missing.toStdString() + "。");
  EXPECT_EQ(faultOf(folder.path()), "无法打开文件 " + folder.path().toStdString() + "。");
  EXPECT_EQ(faultOf(QString()), "无法打开文件 。");
}

/// The environment variable that names the system's temporary folder, for the length of a test.
class TempFolderIs final {
 public:
  explicit TempFolderIs(const QString& path) : old_(qgetenv("TMPDIR")) { qputenv("TMPDIR", path.toUtf8()); }
  ~TempFolderIs() { old_.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", old_); }
  TempFolderIs(const TempFolderIs&) = delete;
  TempFolderIs& operator=(const TempFolderIs&) = delete;

 private:
  QByteArray old_;
};

TEST(TempDir, IsAFolderOfTheUsersOwnThatNobodyElseMayEnter) {
  const QTemporaryDir system;
  const TempFolderIs scope(system.path());
  const QString path = getTempDir();
  EXPECT_EQ(QFileInfo(path).path(), system.path());
  EXPECT_FALSE(path.endsWith(u'/'));
  const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                      QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
  EXPECT_FALSE(QFileInfo(path).permissions() & others);
  EXPECT_EQ(getTempDir(), path);  // also when it stands there already
}

TEST(TempDir, ClosesAFolderThatWasOpenToOthers) {
  const QTemporaryDir system;
  const TempFolderIs scope(system.path());
  const QString path = getTempDir();
  ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::Permissions(0x7777)));
  EXPECT_EQ(getTempDir(), path);
  EXPECT_FALSE(QFileInfo(path).permissions() & QFileDevice::WriteOther);
}

TEST(TempDir, IsEmptyWhereItCannotBeMade) {
  const QTemporaryDir system;
  const TempFolderIs scope(system.filePath(u"missing"_s));
  EXPECT_EQ(getTempDir(), QString());
}

TEST(TempDir, IsEmptyWhereALinkStandsInItsPlace) {
  const QTemporaryDir system;
  const QTemporaryDir elsewhere;
  const TempFolderIs scope(system.path());
  const QString path = getTempDir();
  ASSERT_TRUE(QDir().rmdir(path));
  ASSERT_TRUE(QFile::link(elsewhere.path(), path));
  EXPECT_EQ(getTempDir(), QString());
}

TEST(TempDir, IsEmptyWhereAFileStandsInItsPlace) {
  const QTemporaryDir system;
  const TempFolderIs scope(system.path());
  const QString path = getTempDir();
  ASSERT_TRUE(QDir().rmdir(path));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(getTempDir(), QString());
}

}  // namespace
}  // namespace elevenfive
