// The wind, turn and holding screens' wiring: modes, options that recalculate, edits that clear,
// the holding screen's live marks. The values themselves are checked in the model tests.
#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include "app/InputBox.hpp"
#include "app/UiHelpers.hpp"
#include "manoeuvres/HoldingScreen.hpp"
#include "manoeuvres/Turn.hpp"
#include "manoeuvres/TurnScreen.hpp"
#include "manoeuvres/Wind.hpp"
#include "manoeuvres/WindScreen.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;
using ManoeuvreUi = UiFixture;

namespace {
std::vector<std::string> Model(const WindTexts& t) { return {t.text, t.text + t.count}; }
}  // namespace

TEST_F(ManoeuvreUi, WindModesClearAndTheRunwayModeHidesTheTas) {
  {
    WindScreen s;
    Show(s);
    Click(s, "Optknown0");
    EXPECT_FALSE(CanCalculate(s));  // every box starts empty
    for (auto [i, t] : {std::pair{0, "100"}, {1, "0"}, {2, "100"}, {3, "360"}}) Type(s, i, t);
    Calculate(s);
    EXPECT_EQ(Text(s, "lblError").toStdString(), KnownWindTexts(100, 0, 100, 360).message);
    Type(s, 3, "361");  // out of range: Calculate disarmed, the error goes
    EXPECT_FALSE(CanCalculate(s));
    EXPECT_EQ(Text(s, "lblError"), "");
    Type(s, 3, "90");
    Type(s, 2, "30");
    Calculate(s);
    EXPECT_EQ(Texts(s, "dataR", 4, 1), Model(KnownWindTexts(100, 0, 30, 90)));
    Type(s, 2, "31");
    EXPECT_EQ(Text(s, "dataR1"), "");  // any edit clears
    Calculate(s);
    // Another mode: the results and the boxes go.
    Click(s, "Optknown1");
    EXPECT_EQ(Text(s, "dataR1"), "");
    EXPECT_EQ(Texts(s, "InBox", 4), (std::vector<std::string>{"", "", "", ""}));
    for (auto [i, t] : {std::pair{0, "100"}, {1, "95"}, {2, "0"}, {3, "17"}}) Type(s, i, t);
    Calculate(s);
    EXPECT_EQ(Texts(s, "dataR", 4, 1), Model(UnknownWindTexts(100, 95, 0, 17)));
    Click(s, "Optknown2");
    EXPECT_FALSE(Box(s, 0)->isVisible());
    EXPECT_FALSE(Find<QLabel>(s, "dataR4")->isVisible());
    for (auto [i, t] : {std::pair{1, "270"}, {2, "20"}, {3, "300"}}) Type(s, i, t);
    Calculate(s);  // the hidden, empty TAS box does not block it
    EXPECT_EQ(Texts(s, "dataR", 2, 1), Model(RunwayWindTexts(270, 20, 300)));
    s.close();
  }
  WindScreen again;  // the mode is kept while the program runs
  Show(again);
  EXPECT_TRUE(Checked(again, "Optknown2"));
  Click(again, "Optknown0");
  for (auto [i, t] : {std::pair{1, "90"}, {2, "10"}, {3, "270"}}) Type(again, i, t);
  EXPECT_FALSE(CanCalculate(again));  // the TAS is needed again
}

TEST_F(ManoeuvreUi, TurnOptionsRecalculateAndAnticipationClearsAlone) {
  TurnScreen s;
  Show(s);
  const auto model = [](double tas, std::optional<double> bank, double rate, RadiusUnit unit) {
    const TurnTexts t = CalculateTurnTexts(tas, bank, rate, unit, std::nullopt, std::nullopt);
    return std::vector<std::string>{t.bank, t.rate, t.radius};
  };
  EXPECT_TRUE(Checked(s, "Optbankinput2"));  // 30 degrees and standard rate at first
  EXPECT_TRUE(Checked(s, "OptTRinput1"));
  Click(s, "Optbankinput3");
  Click(s, "RUnit0");
  Type(s, 0, "120");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 3), model(120, std::nullopt, 3, RadiusUnit::NauticalMiles));
  Click(s, "RUnit1");
  EXPECT_EQ(Texts(s, "dataR", 3), model(120, std::nullopt, 3, RadiusUnit::Metres));
  Click(s, "RUnit0");

  Type(s, 1, "90");
  Type(s, 2, "5");
  Calculate(s);
  const TurnTexts a = CalculateTurnTexts(120, std::nullopt, 3, RadiusUnit::NauticalMiles, 90.0, 5.0);
  EXPECT_EQ(Texts(s, "dataR", 6),
            (std::vector<std::string>{a.bank, a.rate, a.radius, a.anticipation, a.finalDistance, a.gLoad}));
  for (int box : {1, 2}) {  // an anticipation input clears both anticipation results, and only them
    Type(s, box, "45");
    EXPECT_EQ(Texts(s, "dataR", 6), (std::vector<std::string>{a.bank, a.rate, a.radius, "", "", a.gLoad}));
    Calculate(s);
  }
  Type(s, 2, "12.5");

  Type(s, 0, "600");
  Calculate(s);
  Click(s, "Optbankinput1");  // bank limit and rate recalculate while results are shown
  Click(s, "OptTRinput0");
  EXPECT_EQ(Texts(s, "dataR", 3), model(600, 25, 1.5, RadiusUnit::NauticalMiles));
  Type(s, 0, "120");  // after an edit an option change brings no results back
  Click(s, "OptTRinput1");
  EXPECT_EQ(Text(s, "dataR0"), "");

  App().decimalSep = u',';  // results take the locale's separator, as the boxes do
  Click(s, "Optbankinput3");
  Type(s, 2, "12,5");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR2"), "0,637");
}

TEST_F(ManoeuvreUi, HoldingLiveLimitsMarksAndTurnDirection) {
  HoldingScreen s;
  Show(s);
  EXPECT_FALSE(Find<QPushButton>(s, "cmdCalculate")->isVisible());  // live screen
  Click(s, "HDTurn0");
  const auto limits = [&] { return Texts(s, "lbllimit", 3); };
  const auto marked = [&] {
    std::vector<bool> m;
    for (int i = 0; i < 3; ++i) {
      QLabel* name = Find<QLabel>(s, QStringLiteral("lbldata%1").arg(i + 2));
      QLabel* lim = Find<QLabel>(s, QStringLiteral("lbllimit%1").arg(i));
      const bool bold = name->font().bold();
      EXPECT_EQ(bold, name->palette().color(QPalette::WindowText) == QColor(192, 0, 0)) << i;
      EXPECT_EQ(bold, lim->autoFillBackground() && lim->palette().color(QPalette::Window) == Colours().marked);
      m.push_back(bold);
    }
    return m;
  };
  Type(s, 0, "180");
  EXPECT_EQ(limits(), (std::vector<std::string>{"290 -> 110", "110 -> 180", "180 -> 290"}));
  EXPECT_EQ(marked(), (std::vector<bool>{false, false, false}));
  Type(s, 1, "110");  // on a limit: both neighbours
  EXPECT_EQ(marked(), (std::vector<bool>{true, true, false}));
  Click(s, "HDTurn1");  // left-hand: the rows swap and the limits follow
  EXPECT_EQ(Texts(s, "lbldata", 3, 2), (std::vector<std::string>{"Direct", "Parallel", "Teardrop"}));
  EXPECT_EQ(limits()[0], "250 -> 070");
  EXPECT_EQ(marked(), (std::vector<bool>{false, true, false}));
  Type(s, 1, "361");  // an out-of-range track: the pattern without a mark
  EXPECT_EQ(marked(), (std::vector<bool>{false, false, false}));
  EXPECT_EQ(limits()[0], "250 -> 070");
  Type(s, 0, "400");  // a bad outbound course empties everything
  EXPECT_EQ(limits(), (std::vector<std::string>{"", "", ""}));
  Box(s, 0)->setFocus();  // Enter moves from the outbound course to the track
  QApplication::setActiveWindow(&s);
  QTest::keyClick(Box(s, 0), Qt::Key_Return);
  EXPECT_TRUE(Box(s, 1)->hasFocus());
}
