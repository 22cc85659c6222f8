// The page where numbers are picked: its buttons in the window.
#include "conditions/widgets/pickpage.h"
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
