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

  /// What the form of the machine pick shows once its tickets are drawn.
  struct Shown {
    bool isForm = false;
    bool cameEmpty = false;  ///< it stood before its tickets were drawn
    QStringList pictures;    ///< the numbers of each ticket
    QStringList balls;
  };

  /// Answers the question for the number of tickets, looks at the form, and ends it with its button.
  Shown pickByMachine(const QString& answer) {
    Shown shown;
    ports.typed = {answer};
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
      QWidget* form = QApplication::activeModalWidget();
      if (form == nullptr)
        return;
      if (control<QWidget>(*form, u"Picture1_1"_s).accessibleName().isEmpty()) {
        shown.cameEmpty = form->isVisible() && form->findChild<QTimer*>(u"Timer1"_s) != nullptr;
        return;
      }
      poll.stop();
      shown.isForm = form->objectName() == u"frmJixuan"_s && form->windowTitle() == u"机 选"_s && form->isModal();
      lookAt(*form, shown);
    });
    poll.start(0);
    click(the<QPushButton>(u"cmm_jixuan"_s));
    return shown;
  }

  static void lookAt(QWidget& form, Shown& shown) {
    for (int place = 1; place <= 6; ++place)
      if (const auto* ticket = form.findChild<QWidget*>(u"Picture1_%1"_s.arg(place)))
        shown.pictures << ticket->accessibleName();
    for (int place = 1; place <= 30; ++place)
      if (const auto* ball = form.findChild<QLabel*>(u"Img_jixuan_red_%1"_s.arg(place)))
        shown.balls << ball->accessibleName();
    click(control<QPushButton>(form, u"cmdOK"_s));
  }

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
  for (const QString& answer : {QString(), u" "_s, u"abc"_s, u"0"_s}) {
    ports.typed = {answer};
    click(the<QPushButton>(u"cmm_jixuan"_s));  // a form would wait here for its button
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(PickPageTest, AMachinePickOfThreeShowsThreeTicketsOfFiveBallsAndEndsWithItsButton) {
  openPicks();
  const Shown shown = pickByMachine(u"3"_s);
  EXPECT_TRUE(shown.isForm);
  EXPECT_TRUE(shown.cameEmpty);
  EXPECT_EQ(shown.pictures.size(), 3);
  EXPECT_EQ(shown.balls.size(), 15);
  EXPECT_EQ(shown.pictures.join(u' '), shown.balls.join(u' '));
  EXPECT_FALSE(shown.balls.contains(QString()));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(picks(), u"00000000000"_s);
}

TEST_F(PickPageTest, AMachinePickOfSevenShowsFiveTickets) {
  openPicks();
  const Shown shown = pickByMachine(u"7"_s);
  EXPECT_EQ(shown.pictures.size(), 5);
  EXPECT_EQ(shown.balls.size(), 25);
  EXPECT_EQ(shown.pictures.join(u' '), shown.balls.join(u' '));
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
