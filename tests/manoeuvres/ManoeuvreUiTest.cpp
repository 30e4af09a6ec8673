// The wind, turn and holding screens driven through their real widgets: typing into the boxes,
// clicking options and buttons, and reading what the labels show.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <cstdlib>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "app/UiHelpers.hpp"
#include "manoeuvres/HoldingScreen.hpp"
#include "manoeuvres/TurnScreen.hpp"
#include "manoeuvres/WindScreen.hpp"

using namespace norvane;

namespace {

struct ManoeuvreUi : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
  }
};

template <class T>
T* Find(QWidget& w, const QString& name) {
  T* c = w.findChild<T*>(name);
  EXPECT_NE(c, nullptr) << name.toStdString();
  return c;
}
QLabel* Label(QWidget& w, const QString& name) { return Find<QLabel>(w, name); }
InputBox* Box(QWidget& w, int i) { return Find<InputBox>(w, QStringLiteral("InBox%1").arg(i)); }
QString Text(QWidget& w, const QString& name) { return Label(w, name)->text(); }

// Replaces the text of box i by typing, as a user does after the box selected all on focus.
void Type(QWidget& w, int i, const char* text) {
  InputBox* b = Box(w, i);
  b->setFocus();
  b->selectAll();
  QTest::keyClicks(b, text);
}

void Click(QWidget& w, const QString& name) { QTest::mouseClick(Find<QAbstractButton>(w, name), Qt::LeftButton); }

template <class T>
void Show(T& s) {
  s.setAttribute(Qt::WA_DeleteOnClose, false);
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
}

}  // namespace

TEST_F(ManoeuvreUi, WindKnownAndUnknownModes) {
  WindScreen s;
  Show(s);
  Click(s, "Optknown0");
  auto* calc = Find<QPushButton>(s, "cmdCalculate");
  EXPECT_EQ(Text(s, "lbldata0"), "TAS (kts)");
  EXPECT_EQ(Box(s, 0)->toolTip(), "True air speed (50 to 1500 kts)");
  EXPECT_EQ(Box(s, 1)->maxLength(), 3);
  EXPECT_EQ(Label(s, "dataR2")->toolTip(), "Heading to remain on track (°)");
  EXPECT_FALSE(calc->isEnabled());  // every box starts empty

  // Wind 30 kt from the right at TAS 100 on track 000.
  Type(s, 0, "100");
  Type(s, 1, "0");
  Type(s, 2, "30");
  Type(s, 3, "90");
  ASSERT_TRUE(calc->isEnabled());
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR1"), "95");
  EXPECT_EQ(Text(s, "dataR2"), "017");
  EXPECT_EQ(Text(s, "dataR3"), "+17");
  EXPECT_EQ(Text(s, "dataR4"), "-5");
  EXPECT_EQ(Text(s, "lblError"), "");

  // Any edit clears the results; a wind as strong as the TAS straight across fails.
  Type(s, 1, "90");
  EXPECT_EQ(Text(s, "dataR1"), "");
  Type(s, 2, "100");
  Type(s, 3, "360");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "lblError"), "Too strong wind for course");
  EXPECT_EQ(Text(s, "dataR1"), "");
  Type(s, 3, "361");  // out of range: Calculate disarmed, the error goes
  EXPECT_FALSE(calc->isEnabled());
  EXPECT_EQ(Text(s, "lblError"), "");
  Type(s, 0, "15001");  // four characters at most
  EXPECT_EQ(Box(s, 0)->text(), "1500");

  // Unknown wind: new captions, all boxes emptied.
  Click(s, "Optknown1");
  EXPECT_EQ(s.mode(), 1);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Box(s, i)->text(), "") << i;
  EXPECT_EQ(Text(s, "lbldata1"), "Ground speed (kts)");
  EXPECT_EQ(Text(s, "lbldata2"), "Route track (°)");
  EXPECT_EQ(Text(s, "lbldata3"), "Aircraft heading (°)");
  EXPECT_EQ(Box(s, 3)->toolTip(), "Current heading (0 to 360°)");
  EXPECT_EQ(Box(s, 1)->maxLength(), 4);
  EXPECT_EQ(Text(s, "lbldata4"), "Wind speed (kts)");
  EXPECT_EQ(Text(s, "lbldata5"), "Wind direction (°)");
  Type(s, 0, "100");
  Type(s, 1, "95");
  Type(s, 2, "0");
  Type(s, 3, "17");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR1"), "29");
  EXPECT_EQ(Text(s, "dataR2"), "089");
  EXPECT_EQ(Text(s, "dataR3"), "+17");
  EXPECT_EQ(Text(s, "dataR4"), "-5");
  Type(s, 3, "100");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "lblError"), "Inconsistent results, check input");
  Type(s, 1, "49");  // ground speed below 50
  EXPECT_FALSE(calc->isEnabled());
  Click(s, "Optknown0");
}

TEST_F(ManoeuvreUi, WindRunwayModeHidesTasAndKeepsModeOnReopen) {
  {
    WindScreen s;
    Show(s);
    Click(s, "Optknown2");
    for (const char* name : {"lbldata0", "lbldata6", "lbldata7", "dataR3", "dataR4"})
      EXPECT_FALSE(Label(s, name)->isVisible()) << name;
    EXPECT_FALSE(Box(s, 0)->isVisible());
    EXPECT_EQ(Text(s, "lbldata1"), "Runway heading (°)");
    EXPECT_EQ(Text(s, "lbldata4"), "Crosswind (kts)");
    EXPECT_EQ(Label(s, "dataR1")->toolTip(), "Crosswind (kts, right is positive)");
    auto* calc = Find<QPushButton>(s, "cmdCalculate");
    Type(s, 1, "270");
    Type(s, 2, "20");
    EXPECT_FALSE(calc->isEnabled());
    Type(s, 3, "300");
    ASSERT_TRUE(calc->isEnabled());  // the hidden, empty TAS box does not block it
    QTest::mouseClick(calc, Qt::LeftButton);
    EXPECT_EQ(Text(s, "dataR1"), "+10");
    EXPECT_EQ(Text(s, "dataR2"), "-17");
    // Wind from behind: sin(180 degrees) rounds to a plain 0.
    Type(s, 1, "90");
    Type(s, 2, "10");
    Type(s, 3, "270");
    QTest::mouseClick(calc, Qt::LeftButton);
    EXPECT_EQ(Text(s, "dataR1"), "0");
    EXPECT_EQ(Text(s, "dataR2"), "+10");
    Type(s, 2, "151");
    EXPECT_FALSE(calc->isEnabled());
  }
  WindScreen again;
  Show(again);
  EXPECT_TRUE(Find<QRadioButton>(again, "Optknown2")->isChecked());
  EXPECT_FALSE(Box(again, 0)->isVisible());
  Click(again, "Optknown0");
  EXPECT_TRUE(Box(again, 0)->isVisible());
  EXPECT_TRUE(Label(again, "dataR4")->isVisible());
  // Back in a mode that needs the TAS, its empty box blocks Calculate again.
  Type(again, 1, "90");
  Type(again, 2, "10");
  Type(again, 3, "270");
  EXPECT_FALSE(Find<QPushButton>(again, "cmdCalculate")->isEnabled());
  Type(again, 0, "120");
  EXPECT_TRUE(Find<QPushButton>(again, "cmdCalculate")->isEnabled());
}

TEST_F(ManoeuvreUi, TurnOptionsRecalculateAndAnticipation) {
  TurnScreen s;
  Show(s);
  auto* calc = Find<QPushButton>(s, "cmdCalculate");
  EXPECT_TRUE(Find<QRadioButton>(s, "Optbankinput2")->isChecked());  // 30 degrees at first
  EXPECT_TRUE(Find<QRadioButton>(s, "OptTRinput1")->isChecked());    // standard rate
  Click(s, "Optbankinput3");
  Click(s, "RUnit0");
  Type(s, 0, "120");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR0"), "18.2");
  EXPECT_EQ(Text(s, "dataR1"), "3.00");
  EXPECT_EQ(Text(s, "dataR2"), "0.637");
  EXPECT_EQ(Text(s, "dataR5"), "1.05");
  EXPECT_EQ(Text(s, "dataR3"), "");  // no anticipation without its inputs
  EXPECT_EQ(Text(s, "dataR4"), "");

  // The radius unit changes the caption and, once calculated, the shown value.
  Click(s, "RUnit1");
  EXPECT_EQ(Text(s, "lbldata5"), "Radius (m)");
  EXPECT_EQ(Text(s, "dataR2"), "1179.0");
  Click(s, "RUnit2");
  EXPECT_EQ(Text(s, "lbldata5"), "Radius (ft)");
  EXPECT_EQ(Text(s, "dataR2"), "3868.2");
  Click(s, "RUnit0");

  // Anticipation inputs clear only the anticipation results.
  Type(s, 1, "90");
  Type(s, 2, "5");
  EXPECT_EQ(Text(s, "dataR0"), "18.2");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR3"), "7.3");
  EXPECT_EQ(Text(s, "dataR4"), "4.3");
  Type(s, 2, "4");  // below 5 NM
  EXPECT_FALSE(calc->isEnabled());
  EXPECT_EQ(Text(s, "dataR3"), "");
  Type(s, 2, "12.5");
  EXPECT_TRUE(calc->isEnabled());

  // The bank limit and the rate recalculate at once while results are shown.
  Type(s, 0, "300");
  EXPECT_EQ(Text(s, "dataR0"), "");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR0"), "39.5");
  Click(s, "Optbankinput1");
  EXPECT_EQ(Text(s, "dataR0"), "25.0");
  EXPECT_EQ(Text(s, "dataR1"), "1.70");
  EXPECT_EQ(Text(s, "dataR2"), "2.812");
  Click(s, "OptTRinput0");
  EXPECT_EQ(Text(s, "dataR0"), "22.4");
  EXPECT_EQ(Text(s, "dataR1"), "1.50");

  // A radius too large for the distance: NA; a turn ending beyond the station: past.
  Click(s, "Optbankinput3");
  Type(s, 0, "1500");
  Type(s, 2, "5");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR3"), "NA");
  EXPECT_EQ(Text(s, "dataR4"), "NA");
  Type(s, 0, "400");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR3"), "58.1");
  EXPECT_EQ(Text(s, "dataR4"), "past");

  // After an edit nothing is calculated, so an option change does not bring results back.
  Type(s, 0, "120");
  Click(s, "OptTRinput1");
  EXPECT_EQ(Text(s, "dataR0"), "");
  Click(s, "Optbankinput2");

  // Results are written with the locale's decimal separator, as the boxes take it.
  App().decimalSep = u',';
  Click(s, "Optbankinput3");
  Type(s, 2, "12,5");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(Text(s, "dataR2"), "0,637");
  EXPECT_EQ(Text(s, "dataR1"), "3,00");
}

TEST_F(ManoeuvreUi, HoldingLiveLimitsMarksAndTurnDirection) {
  HoldingScreen s;
  Show(s);
  EXPECT_FALSE(Find<QPushButton>(s, "cmdCalculate")->isVisible());  // live screen
  Click(s, "HDTurn0");
  const auto limits = [&] {
    return QStringList{Text(s, "lbllimit0"), Text(s, "lbllimit1"), Text(s, "lbllimit2")};
  };
  const auto names = [&] { return QStringList{Text(s, "lbldata2"), Text(s, "lbldata3"), Text(s, "lbldata4")}; };
  const auto marked = [&] {
    QList<bool> m;
    for (int i = 0; i < 3; ++i) {
      QLabel* name = Label(s, QStringLiteral("lbldata%1").arg(i + 2));
      QLabel* lim = Label(s, QStringLiteral("lbllimit%1").arg(i));
      const bool bold = name->font().bold();
      const bool red = name->palette().color(QPalette::WindowText) == QColor(192, 0, 0);
      const bool lit = lim->autoFillBackground() && lim->palette().color(QPalette::Window) == HoldingScreen::kHighlight;
      EXPECT_EQ(bold, red) << i;
      EXPECT_EQ(bold, lit) << i;
      m << bold;
    }
    return m;
  };

  Type(s, 0, "180");
  EXPECT_EQ(limits(), (QStringList{"290 -> 110", "110 -> 180", "180 -> 290"}));
  EXPECT_EQ(names(), (QStringList{"Direct", "Teardrop", "Parallel"}));
  EXPECT_EQ(marked(), (QList<bool>{false, false, false}));

  const struct {
    const char* track;
    QList<bool> marks;
  } rows[] = {
      {"100", {true, false, false}},
      {"150", {false, true, false}},
      {"200", {false, false, true}},
      {"110", {true, true, false}},  // on a limit: both neighbours
  };
  for (const auto& r : rows) {
    Type(s, 1, r.track);
    EXPECT_EQ(marked(), r.marks) << r.track;
  }

  // Left-hand: the row names swap and the limits follow.
  Click(s, "HDTurn1");
  EXPECT_EQ(names(), (QStringList{"Direct", "Parallel", "Teardrop"}));
  EXPECT_EQ(limits(), (QStringList{"250 -> 070", "070 -> 180", "180 -> 250"}));
  EXPECT_EQ(marked(), (QList<bool>{false, true, false}));  // 110 is a parallel entry now

  // An out-of-range track shows the pattern without a mark; a bad outbound course empties all.
  Type(s, 1, "361");
  EXPECT_EQ(marked(), (QList<bool>{false, false, false}));
  EXPECT_EQ(limits()[0], "250 -> 070");
  Type(s, 1, "300");
  EXPECT_EQ(marked(), (QList<bool>{true, false, false}));
  if (const char* dir = std::getenv("NORVANE_SHOT_DIR")) s.grab().save(QString(dir) + "/frmData15-left.png");
  Type(s, 0, "400");
  EXPECT_EQ(limits(), (QStringList{"", "", ""}));
  EXPECT_EQ(marked(), (QList<bool>{false, false, false}));
  Type(s, 0, "360");  // north, the same as 000
  EXPECT_EQ(limits(), (QStringList{"070 -> 250", "250 -> 000", "000 -> 070"}));

  // Enter moves from the outbound course to the track.
  Box(s, 0)->setFocus();
  QApplication::setActiveWindow(&s);
  QTest::keyClick(Box(s, 0), Qt::Key_Return);
  EXPECT_TRUE(Box(s, 1)->hasFocus());
  Click(s, "HDTurn0");
}
