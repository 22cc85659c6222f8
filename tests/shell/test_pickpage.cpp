// The page where numbers are picked: its buttons in the window.
#include "conditions/widgets/pickpage.h"

#include <QLabel>
#include <QTimer>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr unsigned tuoColor = 49152;

class PickPageTest : public MainWindowTest {
 protected:
  void openPicks() {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID <= 11");
    open();
    window->selectTopTab(2);
  }
  QString picks() { return data.rows("SELECT VALUE FROM 过滤条件 WHERE ID <= 11 ORDER BY ID").join(QString()); }
  unsigned color(int number) { return the<PickButton>(u"cmm_C7_%1"_s.arg(number)).backColor(); }
};

TEST_F(PickPageTest, SelectAllMakesEveryNumberADrag) {
  openPicks();
  EXPECT_EQ(the<QPushButton>(u"cmd_FX_0"_s).text(), u"全 选"_s);
  click(the<QPushButton>(u"cmd_FX_0"_s));
  EXPECT_EQ(picks(), u"11111111111"_s);
  for (int n = 1; n <= 11; ++n)
    EXPECT_EQ(color(n), tuoColor) << n;
  click(the<QPushButton>(u"cmm_clsQ"_s));
  EXPECT_EQ(picks(), u"00000000000"_s);
}

TEST_F(PickPageTest, ACancelledMachinePickShowsNoTickets) {
  openPicks();
  for (const QString& answer : {QString(), u" "_s, u"x"_s}) {
    ports.typed = {answer};
    click(the<QPushButton>(u"cmm_jixuan"_s));  // a form would wait here for its button
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(PickPageTest, AMachinePickOfThreeShowsThreeTicketsOfFiveBallsAndEndsWithItsButton) {
  openPicks();
  ports.typed = {u"3"_s};
  bool seen = false;
  QStringList pictures;
  QStringList balls;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    QWidget* form = QApplication::activeModalWidget();
    if (form == nullptr)
      return;
    poll.stop();
    seen = form->objectName() == u"frmJixuan"_s && form->windowTitle() == u"机 选"_s && form->isModal();
    for (int place = 1; place <= 5; ++place)
      if (const auto* ticket = form->findChild<QWidget*>(u"Picture1_%1"_s.arg(place)))
        pictures << ticket->accessibleName();
    for (int place = 1; place <= 25; ++place)
      if (const auto* ball = form->findChild<QLabel*>(u"Img_jixuan_red_%1"_s.arg(place)))
        balls << ball->accessibleName();
    click(control<QPushButton>(*form, u"cmdOK"_s));
  });
  poll.start(0);
  click(the<QPushButton>(u"cmm_jixuan"_s));
  EXPECT_TRUE(seen);
  EXPECT_EQ(pictures.size(), 3);
  EXPECT_EQ(balls.size(), 15);
  EXPECT_EQ(pictures.join(u' '), balls.join(u' '));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(picks(), u"00000000000"_s);
}

TEST_F(PickPageTest, APickThatCannotBeStoredShowsAsItIsStored) {
  openPicks();
  const unsigned unpicked = color(4);
  data.store().execute("test", "CREATE TRIGGER refuse BEFORE UPDATE ON 过滤条件 BEGIN SELECT RAISE(ABORT, 'no'); END");
  the<PickButton>(u"cmm_C7_4"_s).click();
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(color(4), unpicked);
}

}  // namespace

}  // namespace elevenfive
