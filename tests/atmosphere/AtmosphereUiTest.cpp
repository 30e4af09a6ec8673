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
  Click(s, "OptAltUnits0");
  EXPECT_EQ(Box(s, 0)->text(), "-1500");
  EXPECT_FALSE(CanCalculate(s));
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
  // US units: the boxes are validated anew, not converted; 1013.25 inHg is out of range.
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput0"), "Alt setting (inHg)");
  EXPECT_FALSE(CanCalculate(s));
  EXPECT_EQ(Text(s, "DataR0"), "");
  for (auto [i, t] : {std::pair{0, "29.92"}, {1, "86"}, {2, "50"}, {3, "5000"}}) Type(s, i, t);
  Calculate(s);
  EXPECT_EQ(Texts(s, "DataR", 3), (std::vector<std::string>{"24.896", "29%", "7982"}));
  Click(s, "OptUnits0");
  EXPECT_EQ(Text(s, "DataR0"), "");
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
  // US units: captions and ranges switch, numbers stay; 1000 lb is in range, 500 is not.
  Type(s, StallSpeedScreen::kWeight, "500");
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput2"), "MTOW (lb)");
  EXPECT_FALSE(CanCalculate(s));
  EXPECT_EQ(Text(s, "dataR0"), "");
}
