#include "model/widgets/textwindow.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class TextWindowTest : public ::testing::Test {
 protected:
  void click(const QString& caption) {
    for (QPushButton* button : window.findChildren<QPushButton*>())
      if (button->text().startsWith(caption))
        QTest::mouseClick(button, Qt::LeftButton);
  }

  [[nodiscard]] static QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
  }

  QTemporaryDir folder;
  AnsweringFiles files;
  RecordingPorts ports;
  TextWindow& window = *new TextWindow(u"号码"_s, u"01 02 03 04 05\r\n02 03 04 05 06\r\n"_s, files, ports, nullptr);
  ~TextWindowTest() override { delete &window; }
};

TEST_F(TextWindowTest, CopiesTheWholeText) {
  click(u"全部复制"_s);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"01 02 03 04 05\n02 03 04 05 06\n"_s);
}

TEST_F(TextWindowTest, SavesWithCrLfUnderTheChosenName) {
  files.paths = {folder.filePath(u"mine.txt"_s)};
  click(u"另存为"_s);
  EXPECT_EQ(content(folder.filePath(u"mine.txt"_s)), QByteArray("01 02 03 04 05\r\n02 03 04 05 06\r\n"));
}

TEST_F(TextWindowTest, SaysSoWhereTheFileCannotBeWritten) {
  const QString path = folder.filePath(u"no such folder/mine.txt"_s);
  files.paths = {path};
  click(u"另存为"_s);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"无法写入文件 "_s + path));
}

TEST_F(TextWindowTest, AViewerOpensAWindowThatStaysWithItsTitleAndText) {
  QWidget main;
  QtTextViewer viewer(files, ports);
  viewer.setParent(&main);
  viewer.showText(u"投注号码"_s, u"01,02,03,04,05\n07,08,09,10,11\n"_s);
  auto& shown = control<TextWindow>(main, u"textWindow"_s);
  EXPECT_TRUE(shown.isVisible());
  EXPECT_FALSE(shown.isModal());
  EXPECT_EQ(shown.windowTitle(), u"投注号码"_s);
  EXPECT_EQ(shown.findChild<QPlainTextEdit*>()->toPlainText(), u"01,02,03,04,05\n07,08,09,10,11\n"_s);
}

TEST_F(TextWindowTest, PrintsIntoADocument) {
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(folder.filePath(u"print.pdf"_s));
  window.printTo(printer);
  EXPECT_TRUE(content(folder.filePath(u"print.pdf"_s)).startsWith("%PDF-"));
}

}  // namespace

}  // namespace elevenfive
