// The five atmosphere screens' wiring: options and scroll bars recalculate, edits clear, ranges
// follow the units. The values themselves are checked in AtmosphereCalculationsTest.
#include <QCheckBox>
#include <QScrollBar>

#include "app/InputBox.hpp"
#include "atmosphere/AtmosphereScreen.hpp"
#include "atmosphere/ChangeoverScreen.hpp"
#include "atmosphere/DensityAltitudeScreen.hpp"
#include "atmosphere/SpeedScreen.hpp"
#include "atmosphere/StallSpeedScreen.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;
using AtmosphereUi = UiFixture;

TEST_F(AtmosphereUi, AtmosphereDataOptionsRecalculate) {
  AtmosphereScreen s;
  Show(s);
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR0"), "15.0");
  Click(s, "OptUnits1");  // units and format follow at once
  EXPECT_EQ(Text(s, "dataR0"), "59.0");
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  EXPECT_EQ(Text(s, "dataR1"), "2.9921E+1");
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  Click(s, "OptUnits0");

  Type(s, 0, "11000");
  EXPECT_EQ(Text(s, "dataR0"), "");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR0"), "-56.4");  // geometric
  Click(s, "OptAlt1");
  EXPECT_EQ(Text(s, "dataR0"), "-56.5");  // the same number, now geopotential

  // Non-standard: the bars recalculate; unchecking goes back to standard.
  Find<QCheckBox>(s, "CheckNSA")->click();
  auto* disa = Find<QScrollBar>(s, "DISAScroll");
  auto* mslp = Find<QScrollBar>(s, "MSLPScroll");
  disa->setValue(10);
  EXPECT_EQ(Text(s, "DISAData"), "+10");
  EXPECT_EQ(Text(s, "dataR0"), "-46.5");
  mslp->setValue(-20);
  Click(s, "OptUnits1");  // the sea-level bar takes the inHg range and goes back to standard
  EXPECT_EQ(mslp->value(), 0);
  EXPECT_EQ(mslp->minimum(), -423);
  Find<QCheckBox>(s, "CheckNSA")->click();
  EXPECT_EQ(disa->value(), 0);
  EXPECT_FALSE(mslp->isEnabled());
  EXPECT_EQ(Text(s, "dataR0"), "-69.7");
}

TEST_F(AtmosphereUi, AtmosphereDataRangeFollowsKindAndUnitWithoutConverting) {
  AtmosphereScreen s;
  Show(s);
  struct Row { const char *kind, *unit, *text; bool valid; };
  const Row rows[] = {
      {"OptAlt0", "OptAltUnits0", "85999", true},  {"OptAlt0", "OptAltUnits0", "86000", false},
      {"OptAlt1", "OptAltUnits0", "84853", false}, {"OptAlt0", "OptAltUnits1", "282150", true},
      {"OptAlt1", "OptAltUnits1", "278386", false}, {"OptAlt1", "OptAltUnits1", "-1500", true},
  };
  for (const Row& r : rows) {
    Click(s, r.kind);
    Click(s, r.unit);
    Type(s, 0, r.text);
    EXPECT_EQ(CanCalculate(s), r.valid) << r.kind << " " << r.unit << " " << r.text;
  }
  // Switching the unit converts a valid number; one out of range is kept and checked anew.
  Click(s, "OptAlt0");
  Click(s, "OptAltUnits1");
  Type(s, 0, "200000");
  Click(s, "OptAltUnits0");
  EXPECT_EQ(Box(s, 0)->text(), "60960");
  EXPECT_EQ(Text(s, "lblAlt"), "Altitude (m)");
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
  Click(s, "Optinput2");
  EXPECT_EQ(Text(s, "lblSpeed"), "Mach number");
  Type(s, 1, "3.01");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 1, "0.80");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "461");
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "dataR4"), "-15.4");
  Find<QScrollBar>(s, "DISAScroll")->setValue(15);
  EXPECT_EQ(Text(s, "dataR1"), "477");
  // Another input kind: the number now means another speed, so the results go.
  Click(s, "Optinput0");
  EXPECT_EQ(Text(s, "dataR1"), "");
  EXPECT_EQ(Text(s, "lblSpeed"), "CAS (kts)");
  Type(s, 1, "1501");
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, ChangeoverErrorAndEnter) {
  ChangeoverScreen s;
  Show(s);
  Type(s, 0, "400");
  Type(s, 1, "0.50");
  QTest::keyClick(Box(s, 1), Qt::Key_Return);  // Enter moves on and never computes
  EXPECT_EQ(Text(s, "dataR0"), "");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"NA", "NA"}));
  EXPECT_EQ(Text(s, "lblError"), "No calculable changeover level");
  Type(s, 0, "4");  // editing clears the error; 4 kt is below 50
  EXPECT_EQ(Text(s, "lblError"), "");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 0, "300");
  Type(s, 1, "0.78");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"29314", "293"}));
}

TEST_F(AtmosphereUi, DensityAltitudeDewPointAndUnits) {
  DensityAltitudeScreen s;
  Show(s);
  for (auto [i, t] : {std::pair{0, "1013.25"}, {1, "20"}, {2, "25"}, {3, "0"}}) Type(s, i, t);
  Calculate(s);
  EXPECT_EQ(Box(s, 2)->text(), "20");  // a dew point above the temperature is taken as it
  EXPECT_EQ(Text(s, "DataR2"), "885");
  EXPECT_TRUE(s.calculated());

  // US units convert the numbers and recalculate: a hot day stays a hot day.
  Type(s, 0, "1008");
  Type(s, 1, "38");
  Type(s, 2, "22");
  Type(s, 3, "5000");
  Calculate(s);
  const int densityAltitude = Text(s, "DataR2").toInt();
  EXPECT_NEAR(densityAltitude, 9200, 50);
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput0"), "Alt setting (inHg)");
  const auto boxes = [&s] { return QStringList{Box(s, 0)->text(), Box(s, 1)->text(), Box(s, 2)->text(), Box(s, 3)->text()}; };
  EXPECT_EQ(boxes(), (QStringList{"29.77", "100.4", "71.6", "5000"}));
  EXPECT_NEAR(Text(s, "DataR2").toInt(), densityAltitude, 10);  // 29.77 inHg is 1008.13 hPa
  // Back to metric: the same values again; a value out of range is kept and checked anew.
  Type(s, 1, "140");
  Click(s, "OptUnits0");
  EXPECT_EQ(boxes(), (QStringList{"1008.13", "140", "22", "5000"}));
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, StallSpeedReferenceBankAndUnits) {
  StallSpeedScreen s;
  Show(s);
  EXPECT_FALSE(Box(s, StallSpeedScreen::kVs)->isVisible());
  Type(s, StallSpeedScreen::kMtow, "1000");
  Type(s, StallSpeedScreen::kWeight, "1000");
  Type(s, StallSpeedScreen::kAltitude, "0");
  Type(s, StallSpeedScreen::kClMax, "");
  EXPECT_FALSE(CanCalculate(s));  // an empty CL max blocks Calculate with the aerodynamic data
  Click(s, "OptRef1");
  EXPECT_TRUE(Box(s, StallSpeedScreen::kVs)->isVisible());
  EXPECT_FALSE(Box(s, StallSpeedScreen::kClMax)->isVisible());
  Type(s, StallSpeedScreen::kVs, "60");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "60.0");
  auto* bank = Find<QScrollBar>(s, "BAScroll");
  bank->setValue(60);  // recalculated as the bar moves
  EXPECT_EQ(Text(s, "BAData"), "60");
  EXPECT_EQ(Text(s, "dataR1"), "84.9");
  bank->setValue(0);
  // The bar is reachable from the keyboard: Tab from the altitude box, then an arrow key.
  Box(s, StallSpeedScreen::kAltitude)->setFocus();
  QTest::keyClick(Box(s, StallSpeedScreen::kAltitude), Qt::Key_Tab);
  ASSERT_TRUE(bank->hasFocus());
  QTest::keyClick(bank, Qt::Key_Right);
  EXPECT_EQ(Text(s, "BAData"), "1");
  Type(s, StallSpeedScreen::kMtow, "2000");  // a quarter of the weight halves it
  Type(s, StallSpeedScreen::kWeight, "500");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "30.0");

  // US units: the weights are converted (500 kg is 1102 lb) and the result stays.
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput2"), "MTOW (lb)");
  EXPECT_EQ(Box(s, StallSpeedScreen::kMtow)->text(), "4409");
  EXPECT_EQ(Box(s, StallSpeedScreen::kWeight)->text(), "1102");
  EXPECT_EQ(Text(s, "dataR1"), "30.0");
  Type(s, StallSpeedScreen::kWeight, "4409");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "60.0");
  Type(s, StallSpeedScreen::kAltitude, "65001");
  EXPECT_FALSE(CanCalculate(s));
}
