// The five atmosphere screens' wiring: options and scroll bars recalculate, edits clear, ranges
// follow the units. The screens show what the model functions return for their settings.
#include <QCheckBox>
#include <QScrollBar>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "atmosphere/AtmosphereScreen.hpp"
#include "atmosphere/ChangeoverScreen.hpp"
#include "atmosphere/DensityAltitudeScreen.hpp"
#include "atmosphere/SpeedScreen.hpp"
#include "atmosphere/StallSpeedScreen.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;
using AtmosphereUi = UiFixture;

namespace {
std::vector<std::string> Atm(const AtmosphereDataInput& in) {
  const AtmosphereDataResult r = ComputeAtmosphereData(in);
  return {r.temperature.text, r.pressure.text, r.density.text, r.sound.text, r.theta.text, r.delta.text, r.sigma.text};
}
std::vector<std::string> Speeds(const SpeedCalculationInput& in) {
  const SpeedCalculationResult r = ComputeSpeeds(in);
  return {r.cas.text, r.tas.text, r.mach.text, r.eas.text, r.tat.text, r.q.text};
}
}  // namespace

TEST_F(AtmosphereUi, AtmosphereDataOptionsRecalculate) {
  AtmosphereScreen s;
  Show(s);
  const auto shown = [&s] { return Texts(s, "dataR", 7); };
  Calculate(s);
  EXPECT_EQ(shown(), Atm({}));
  Click(s, "OptUnits1");  // units and format follow at once
  EXPECT_EQ(shown(), Atm({.us = true}));
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  EXPECT_EQ(shown(), Atm({.us = true, .scientific = true}));
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  Click(s, "OptUnits0");

  Type(s, 0, "11000");
  EXPECT_EQ(Text(s, "dataR0"), "");
  Calculate(s);
  EXPECT_EQ(shown(), Atm({.altitude = 11000}));
  Click(s, "OptAlt1");  // the same number, now geopotential
  EXPECT_EQ(shown(), Atm({.altitude = 11000, .geopotential = true}));

  // Non-standard: the bars recalculate; unchecking goes back to standard.
  Find<QCheckBox>(s, "CheckNSA")->click();
  auto* disa = Find<QScrollBar>(s, "DISAScroll");
  auto* mslp = Find<QScrollBar>(s, "MSLPScroll");
  disa->setValue(10);
  EXPECT_EQ(Text(s, "DISAData"), "+10");
  EXPECT_EQ(shown(), Atm({.altitude = 11000, .geopotential = true, .disa = 10}));
  mslp->setValue(-20);
  EXPECT_EQ(shown(),
            Atm({.altitude = 11000, .geopotential = true, .disa = 10, .mslpHpa = MslpHpaFromScroll(-20, false)}));
  Click(s, "OptUnits1");  // the sea-level bar takes the inHg range and goes back to standard
  EXPECT_EQ(mslp->value(), 0);
  EXPECT_EQ(mslp->minimum(), MslpScrollRange(true).first);
  Find<QCheckBox>(s, "CheckNSA")->click();
  EXPECT_EQ(disa->value(), 0);
  EXPECT_FALSE(mslp->isEnabled());
  EXPECT_EQ(shown(), Atm({.altitude = 11000, .geopotential = true, .us = true}));
}

TEST_F(AtmosphereUi, AtmosphereDataRangeFollowsKindAndUnitWithoutConverting) {
  AtmosphereScreen s;
  Show(s);
  for (bool feet : {false, true})
    for (bool geopotential : {false, true}) {
      Click(s, geopotential ? "OptAlt1" : "OptAlt0");
      Click(s, feet ? "OptAltUnits1" : "OptAltUnits0");
      const Quantity range = AtmosphereAltitude(feet, geopotential);  // its values are AtmosphereData's
      EXPECT_EQ(std::pair(Box(s, 0)->rule().min, Box(s, 0)->rule().max), std::pair(range.min, range.max))
          << feet << geopotential;
    }
  // Switching the unit converts a valid number; one out of range is kept and checked anew.
  Click(s, "OptAlt0");
  Type(s, 0, "200000");
  Click(s, "OptAltUnits0");
  EXPECT_EQ(Box(s, 0)->text(), "60960");
  EXPECT_TRUE(CanCalculate(s));
  Type(s, 0, "90000");
  EXPECT_FALSE(CanCalculate(s));
  Click(s, "OptAltUnits1");
  EXPECT_EQ(Box(s, 0)->text(), "90000");
  EXPECT_TRUE(CanCalculate(s));  // 90000 ft is in range
}

TEST_F(AtmosphereUi, SpeedInputKindClearsOptionsRecalculate) {
  SpeedScreen s;
  Show(s);
  const auto shown = [&s] { return Texts(s, "dataR", 6); };
  Type(s, 0, "350");
  Click(s, "Optinput2");  // the Mach range and its tip: EveryBoxSaysTheRangeItChecks
  Type(s, 1, "0.80");
  Calculate(s);
  EXPECT_EQ(shown(), Speeds({350, SpeedInput::Mach, 0.8}));
  Click(s, "OptUnits1");
  EXPECT_EQ(shown(), Speeds({350, SpeedInput::Mach, 0.8, 0, true}));
  Find<QScrollBar>(s, "DISAScroll")->setValue(15);
  EXPECT_EQ(shown(), Speeds({350, SpeedInput::Mach, 0.8, 15, true}));
  // Another input kind: the number now means another speed, so the results go.
  Click(s, "Optinput0");
  EXPECT_EQ(Text(s, "dataR1"), "");
}

TEST_F(AtmosphereUi, ChangeoverErrorAndEnter) {
  ChangeoverScreen s;
  Show(s);
  Type(s, 0, "400");
  Type(s, 1, "0.50");
  Calculate(s);
  EXPECT_EQ(Text(s, "lblError"), ComputeChangeover(400, 0.5).error.c_str());
  Type(s, 0, "4");  // editing clears the error; 4 kt is below 50
  EXPECT_EQ(Text(s, "lblError"), "");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 0, "300");
  Type(s, 1, "0.78");
  Calculate(s);
  const ChangeoverResult c = ComputeChangeover(300, 0.78);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{c.altitude.text, c.flightLevel.text}));
}

TEST_F(AtmosphereUi, DensityAltitudeDewPointAndUnits) {
  DensityAltitudeScreen s;
  Show(s);
  const auto boxes = [&s] {
    return QStringList{Box(s, 0)->text(), Box(s, 1)->text(), Box(s, 2)->text(), Box(s, 3)->text()};
  };
  for (auto [i, t] : {std::pair{0, "1008"}, {1, "38"}, {2, "40"}, {3, "5000"}}) Type(s, i, t);
  Calculate(s);
  EXPECT_EQ(Box(s, 2)->text(), "38");  // a dew point above the temperature is taken as it
  const std::string da = ComputeDensityAltitude({1008, 38, 38, 5000, false}).densityAltitude.text;
  EXPECT_EQ(Text(s, "DataR2").toStdString(), da);

  // US units convert the numbers and recalculate: a hot day stays a hot day.
  Click(s, "OptUnits1");
  EXPECT_EQ(boxes(), (QStringList{"29.77", "100.4", "100.4", "5000"}));
  EXPECT_NEAR(Text(s, "DataR2").toInt(), std::stoi(da), 10);  // 29.77 inHg is 1008.13 hPa
  // Back to metric: the same values again; a value out of range is kept and checked anew.
  Type(s, 1, "140");
  Click(s, "OptUnits0");
  EXPECT_EQ(boxes(), (QStringList{"1008.13", "140", "38", "5000"}));
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, StallSpeedReferenceBankAndUnits) {
  StallSpeedScreen s;
  Show(s);
  for (auto [i, t] : {std::pair{StallSpeedScreen::kMtow, "2000"},
                      {StallSpeedScreen::kWeight, "500"},
                      {StallSpeedScreen::kAltitude, "0"},
                      {StallSpeedScreen::kClMax, ""}})
    Type(s, i, t);
  EXPECT_FALSE(CanCalculate(s));  // an empty CL max blocks Calculate with the aerodynamic data
  Click(s, "OptRef1");
  EXPECT_TRUE(Box(s, StallSpeedScreen::kVs)->isVisible());
  EXPECT_FALSE(Box(s, StallSpeedScreen::kClMax)->isVisible());
  Type(s, StallSpeedScreen::kVs, "60");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "30.0");  // a quarter of the weight halves it
  auto* bank = Find<QScrollBar>(s, "BAScroll");
  bank->setValue(60);  // recalculated as the bar moves
  EXPECT_EQ(Text(s, "dataR1").toStdString(), ComputeStallSpeed({true, 0, 0, 60, 2000, 500, 0, 60, false}).kcas.text);
  bank->setValue(0);
  // The bar is reachable from the keyboard: Tab from the altitude box, then an arrow key.
  Box(s, StallSpeedScreen::kAltitude)->setFocus();
  QTest::keyClick(Box(s, StallSpeedScreen::kAltitude), Qt::Key_Tab);
  ASSERT_TRUE(bank->hasFocus());
  QTest::keyClick(bank, Qt::Key_Right);
  EXPECT_EQ(Text(s, "BAData"), "1");
  bank->setValue(0);

  // US units: the weights are converted (500 kg is 1102 lb) and the result stays.
  Click(s, "OptUnits1");
  EXPECT_EQ(Box(s, StallSpeedScreen::kMtow)->text(), "4409");
  EXPECT_EQ(Box(s, StallSpeedScreen::kWeight)->text(), "1102");
  EXPECT_EQ(Text(s, "dataR1"), "30.0");
  Type(s, StallSpeedScreen::kAltitude, "65001");
  EXPECT_FALSE(CanCalculate(s));
}
