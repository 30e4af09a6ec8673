// The five atmosphere screens driven through their real widgets: typing into the boxes, clicking
// options, moving scroll bars, pressing Calculate and reading what the labels show.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "atmosphere/AtmosphereScreen.hpp"
#include "atmosphere/ChangeoverScreen.hpp"
#include "atmosphere/DensityAltitudeScreen.hpp"
#include "atmosphere/SpeedScreen.hpp"
#include "atmosphere/StallSpeedScreen.hpp"

using namespace norvane;

namespace {

struct AtmosphereUi : ::testing::Test {
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
InputBox* Box(QWidget& w, int i) { return Find<InputBox>(w, QStringLiteral("InBox%1").arg(i)); }
std::string Text(QWidget& w, const QString& name) { return Find<QLabel>(w, name)->text().toStdString(); }
std::vector<std::string> Texts(QWidget& w, const char* prefix, int n) {
  std::vector<std::string> out;
  for (int i = 0; i < n; ++i) out.push_back(Text(w, QStringLiteral("%1%2").arg(prefix).arg(i)));
  return out;
}

// Replaces the text of box i by typing, as a user does after the box selected all on focus.
void Type(QWidget& w, int i, const char* text) {
  InputBox* b = Box(w, i);
  b->setFocus();
  b->selectAll();
  QTest::keyClick(b, Qt::Key_Delete);  // "-" over a selection holding "-" would be swallowed
  QTest::keyClicks(b, text);
}
// Clicks a button where a user would: option buttons and check boxes on their indicator (a click
// right of the caption, inside a wide layout cell, does not toggle them).
void Click(QWidget& w, const QString& name) {
  auto* b = Find<QAbstractButton>(w, name);
  if (qobject_cast<QPushButton*>(b)) QTest::mouseClick(b, Qt::LeftButton);
  else QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(8, b->height() / 2));
}
bool CanCalculate(QWidget& w) { return Find<QPushButton>(w, "cmdCalculate")->isEnabled(); }
void Calculate(QWidget& w) {
  ASSERT_TRUE(CanCalculate(w));
  QTest::mouseClick(Find<QPushButton>(w, "cmdCalculate"), Qt::LeftButton);
}

template <class T>
void Show(T& s) {
  s.setAttribute(Qt::WA_DeleteOnClose, false);
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
}

}  // namespace

TEST_F(AtmosphereUi, AtmosphereDataStandardAndUnits) {
  AtmosphereScreen s;
  Show(s);
  EXPECT_EQ(s.objectName(), "frmData0");
  EXPECT_EQ(Text(s, "lblAlt"), "Altitude (m)");
  EXPECT_EQ(Box(s, 0)->toolTip(), "(Geometric altitude -500 to 85999 m)");
  EXPECT_FALSE(Find<QScrollBar>(s, "DISAScroll")->isEnabled());  // standard atmosphere at first
  EXPECT_EQ(Text(s, "MSLPData"), "Std");

  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 7), (std::vector<std::string>{"15.0", "1013.250", "1.224999", "1225.1", "1.0000000",
                                                            "1.0000000", "1.0000000"}));
  // Output units and format follow at once.
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lbldata0"), "Temperature (°F)");
  EXPECT_EQ(Text(s, "lbldata2"), "Density (sl/ft3)");
  EXPECT_EQ(Text(s, "lblMSLP"), "MSLP (inHg)");
  EXPECT_EQ(Texts(s, "dataR", 4), (std::vector<std::string>{"59.0", "29.9213", "0.0023769", "661.5"}));
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  EXPECT_EQ(Texts(s, "dataR", 7), (std::vector<std::string>{"59.0", "2.9921E+1", "2.3769E-3", "661.5", "1.0000E+0",
                                                            "1.0000E+0", "1.0000E+0"}));
  Find<QCheckBox>(s, "CheckEDisplay")->click();
  Click(s, "OptUnits0");
  EXPECT_EQ(Text(s, "dataR1"), "1013.250");

  // The tropopause in geopotential metres; the kind switch recalculates with the same number.
  Type(s, 0, "11000");
  EXPECT_EQ(Text(s, "dataR0"), "");  // typing clears the results
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR0"), "-56.4");  // 11000 m geometric is 10981 m geopotential
  Click(s, "OptAlt1");
  EXPECT_EQ(Text(s, "dataR0"), "-56.5");
  EXPECT_EQ(Text(s, "dataR5"), "0.2233611");
  EXPECT_EQ(Box(s, 0)->toolTip(), "(Geopotential altitude -500 to 84852 m)");
}

TEST_F(AtmosphereUi, AtmosphereDataAltitudeRanges) {
  AtmosphereScreen s;
  Show(s);
  struct Row { const char* kind; const char* unit; const char* text; bool valid; };
  const Row rows[] = {
      {"OptAlt0", "OptAltUnits0", "85999", true},  {"OptAlt0", "OptAltUnits0", "86000", false},
      {"OptAlt0", "OptAltUnits0", "-500", true},   {"OptAlt0", "OptAltUnits0", "-501", false},
      {"OptAlt1", "OptAltUnits0", "84852", true},  {"OptAlt1", "OptAltUnits0", "84853", false},
      {"OptAlt0", "OptAltUnits1", "282150", true}, {"OptAlt0", "OptAltUnits1", "282151", false},
      {"OptAlt1", "OptAltUnits1", "278385", true}, {"OptAlt1", "OptAltUnits1", "278386", false},
      {"OptAlt1", "OptAltUnits1", "-1500", true},  {"OptAlt1", "OptAltUnits1", "", false},
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

TEST_F(AtmosphereUi, AtmosphereDataNonStandard) {
  AtmosphereScreen s;
  Show(s);
  Calculate(s);
  auto* nsa = Find<QCheckBox>(s, "CheckNSA");
  auto* disa = Find<QScrollBar>(s, "DISAScroll");
  auto* mslp = Find<QScrollBar>(s, "MSLPScroll");
  nsa->click();
  EXPECT_TRUE(disa->isEnabled());
  EXPECT_EQ(disa->minimum(), -90);
  EXPECT_EQ(disa->maximum(), 40);
  EXPECT_EQ(mslp->minimum(), -143);
  EXPECT_EQ(mslp->maximum(), 71);

  // 1000 hPa: pressure and density follow, temperature and speed of sound do not.
  mslp->setValue(-13);
  EXPECT_EQ(Text(s, "MSLPData"), "1000");
  EXPECT_EQ(Texts(s, "dataR", 4), (std::vector<std::string>{"15.0", "1000.000", "1.208980", "1225.1"}));
  // ISA+10: temperature, theta, sigma, density and sound change; pressure and delta do not.
  mslp->setValue(0);
  disa->setValue(10);
  EXPECT_EQ(Text(s, "DISAData"), "+10");
  EXPECT_EQ(Texts(s, "dataR", 7), (std::vector<std::string>{"25.0", "1013.250", "1.183912", "1246.1", "1.0347041",
                                                            "1.0000000", "0.9664598"}));
  // US units: the sea-level scroll bar changes its range and goes back to standard.
  mslp->setValue(-20);
  Click(s, "OptUnits1");
  EXPECT_EQ(mslp->value(), 0);
  EXPECT_EQ(mslp->minimum(), -423);
  EXPECT_EQ(mslp->maximum(), 209);
  mslp->setValue(-10);
  EXPECT_EQ(Text(s, "MSLPData"), "29.82");
  EXPECT_EQ(Text(s, "dataR1"), "29.8200");
  // Unchecking returns to the standard atmosphere and recalculates.
  nsa->click();
  EXPECT_EQ(disa->value(), 0);
  EXPECT_EQ(mslp->value(), 0);
  EXPECT_FALSE(mslp->isEnabled());
  EXPECT_EQ(Text(s, "DISAData"), "0");
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"59.0", "29.9213"}));
}

TEST_F(AtmosphereUi, SpeedCalculations) {
  SpeedScreen s;
  Show(s);
  EXPECT_EQ(s.objectName(), "frmData1");
  EXPECT_EQ(Box(s, 0)->toolTip(), "Flight level (0 to 650)");
  Type(s, 0, "350");
  Click(s, "Optinput2");
  EXPECT_EQ(Text(s, "lblSpeed"), "Mach number");
  EXPECT_EQ(Box(s, 1)->toolTip(), "Mach number (0 to 3.00)");
  Type(s, 1, "3.01");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 1, "0.80");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 6), (std::vector<std::string>{"272", "461", "0.800", "295", "-26.3", "10681"}));
  EXPECT_EQ(Text(s, "lbldata4"), "TAT (°C)");

  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lbldata4"), "TAT (°F)");
  EXPECT_EQ(Text(s, "lbldata5"), "q (lb/ft2)");
  EXPECT_EQ(Texts(s, "dataR", 6), (std::vector<std::string>{"272", "461", "0.800", "295", "-15.4", "223.1"}));
  // A warmer atmosphere: same Mach, faster TAS, the CAS follows the unchanged pressure.
  Find<QScrollBar>(s, "DISAScroll")->setValue(15);
  EXPECT_EQ(Text(s, "DISAData"), "+15");
  EXPECT_EQ(Text(s, "dataR1"), "477");
  EXPECT_EQ(Text(s, "dataR0"), "272");
  Find<QScrollBar>(s, "DISAScroll")->setValue(0);
  Click(s, "OptUnits0");

  // Supersonic: EAS is not defined.
  Type(s, 0, "500");
  Type(s, 1, "2");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR3"), "NA");
  EXPECT_EQ(Text(s, "dataR0"), "532");

  // Back to CAS: the box takes the speed range and the results go (the number means another speed).
  Click(s, "Optinput0");
  EXPECT_EQ(Text(s, "dataR0"), "");
  EXPECT_EQ(Text(s, "lblSpeed"), "CAS (kts)");
  EXPECT_EQ(Box(s, 1)->toolTip(), "Calibrated air speed (0 to 1500 kts)");
  Type(s, 0, "0");
  Type(s, 1, "250");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 6), (std::vector<std::string>{"250", "250", "0.378", "250", "23.2", "10131"}));
  Type(s, 1, "1501");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 0, "651");
  Type(s, 1, "1500");
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, ChangeoverLevel) {
  ChangeoverScreen s;
  Show(s);
  EXPECT_EQ(s.objectName(), "frmData2");
  EXPECT_EQ(Box(s, 0)->toolTip(), "Indicated air speed (50 to 1500 kts)");
  EXPECT_EQ(Box(s, 1)->toolTip(), "Mach number (0.05 to 3.00)");
  struct Row { const char *ias, *mach, *alt, *fl, *error; };
  const Row rows[] = {
      {"300", "0.78", "29314", "293", ""},
      {"250", "0.5", "15351", "154", ""},
      {"400", "0.50", "NA", "NA", "No calculable changeover level"},
      {"50", "3.00", ">65000", ">650", ""},
  };
  for (const Row& r : rows) {
    Type(s, 0, r.ias);
    Type(s, 1, r.mach);
    // Enter moves on to the next control and never computes.
    QTest::keyClick(Box(s, 1), Qt::Key_Return);
    EXPECT_EQ(Text(s, "dataR0"), "");
    Calculate(s);
    EXPECT_EQ(Text(s, "dataR0"), r.alt) << r.ias << " " << r.mach;
    EXPECT_EQ(Text(s, "dataR1"), r.fl) << r.ias << " " << r.mach;
    EXPECT_EQ(Text(s, "lblError"), r.error) << r.ias << " " << r.mach;
  }
  Type(s, 0, "4");  // editing clears the results and the error
  EXPECT_EQ(Text(s, "lblError"), "");
  EXPECT_EQ(Text(s, "dataR1"), "");
  EXPECT_FALSE(CanCalculate(s));  // 4 kt: below 50
  Type(s, 0, "1500");
  Type(s, 1, "0.04");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 1, "3.01");
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, DensityAltitude) {
  DensityAltitudeScreen s;
  Show(s);
  EXPECT_EQ(s.objectName(), "frmData4");
  EXPECT_EQ(Box(s, 0)->toolTip(), "Altimeter setting (870 to 1084 hPa)");
  EXPECT_EQ(Box(s, 3)->toolTip(), "Geometric altitude (-1500 to 15000 ft)");
  Type(s, 0, "1013.25");
  Type(s, 1, "30");
  Type(s, 2, "-75");
  Type(s, 3, "5000");
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(Box(s, i)->isValid()) << i << " " << Box(s, i)->text().toStdString();
  Calculate(s);
  EXPECT_EQ(Texts(s, "DataR", 3), (std::vector<std::string>{"843.1", "0%", "7802"}));

  // A dew point above the temperature is taken as the temperature, in the box too.
  Type(s, 1, "20");
  Type(s, 2, "25");
  Type(s, 3, "0");
  Calculate(s);
  EXPECT_EQ(Box(s, 2)->text(), "20");
  // 1013.25 hPa at the mask "0.0" is an exact tie: either neighbour is right, so not checked.
  EXPECT_EQ(Text(s, "DataR1"), "100%");
  EXPECT_EQ(Text(s, "DataR2"), "885");
  EXPECT_TRUE(s.calculated());

  // US units convert the numbers and recalculate: a hot day stays a hot day.
  Type(s, 0, "1008");
  Type(s, 1, "38");
  Type(s, 2, "22");
  Type(s, 3, "5000");
  Calculate(s);
  const int densityAltitude = std::stoi(Text(s, "DataR2"));
  EXPECT_NEAR(densityAltitude, 9200, 50);
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput0"), "Alt setting (inHg)");
  EXPECT_EQ(Text(s, "lblInput1"), "Temperature (°F)");
  EXPECT_EQ(Text(s, "lbldata0"), "Pressure (inHg)");
  EXPECT_EQ(Box(s, 1)->toolTip(), "Air temperature (-103 to 131°F)");
  const auto boxes = [&s] { return QStringList{Box(s, 0)->text(), Box(s, 1)->text(), Box(s, 2)->text(), Box(s, 3)->text()}; };
  EXPECT_EQ(boxes(), (QStringList{"29.77", "100.4", "71.6", "5000"}));
  EXPECT_NEAR(std::stoi(Text(s, "DataR2")), densityAltitude, 10);  // 29.77 inHg is 1008.13 hPa
  // Back to metric: the same values again; a value out of range is kept and checked anew.
  Type(s, 1, "140");
  Click(s, "OptUnits0");
  EXPECT_EQ(boxes(), (QStringList{"1008.13", "140", "22", "5000"}));
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 0, "1013.25");
  Type(s, 1, "30");
  Type(s, 2, "20");
  Type(s, 3, "0");
  Calculate(s);
  EXPECT_EQ(Text(s, "DataR1"), "55%");
  EXPECT_EQ(Text(s, "DataR2"), "2020");
  Type(s, 1, "56");
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(AtmosphereUi, StallSpeed) {
  StallSpeedScreen s;
  Show(s);
  EXPECT_EQ(s.objectName(), "frmData13");
  EXPECT_EQ(Box(s, StallSpeedScreen::kClMax)->toolTip(), "Maximum lift coefficient (0.5 to 2.5)");
  EXPECT_FALSE(Box(s, StallSpeedScreen::kVs)->isVisible());
  Type(s, StallSpeedScreen::kClMax, "1.6");
  Type(s, StallSpeedScreen::kWingArea, "16.2");
  Type(s, StallSpeedScreen::kMtow, "1111");
  Type(s, StallSpeedScreen::kWeight, "1000");
  Type(s, StallSpeedScreen::kAltitude, "0");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"48.3", "48.3"}));

  // An empty CL max blocks Calculate only while the aerodynamic data are in use.
  Type(s, StallSpeedScreen::kClMax, "");
  EXPECT_FALSE(CanCalculate(s));
  Click(s, "OptRef1");
  EXPECT_TRUE(Box(s, StallSpeedScreen::kVs)->isVisible());
  EXPECT_FALSE(Box(s, StallSpeedScreen::kClMax)->isVisible());
  EXPECT_EQ(Text(s, "lblInput3"), "Vs (KCAS)");
  Type(s, StallSpeedScreen::kVs, "60");
  Type(s, StallSpeedScreen::kMtow, "1000");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"60.0", "60.0"}));

  // 60 degrees of bank: sqrt(2) times the wings-level speed, recalculated as the bar moves.
  auto* bank = Find<QScrollBar>(s, "BAScroll");
  EXPECT_EQ(bank->maximum(), 60);
  bank->setValue(60);
  EXPECT_EQ(Text(s, "BAData"), "60");
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"84.9", "84.9"}));
  // The bar is reachable from the keyboard: Tab from the altitude box, then the arrow keys.
  bank->setValue(0);
  Box(s, StallSpeedScreen::kAltitude)->setFocus();
  QTest::keyClick(Box(s, StallSpeedScreen::kAltitude), Qt::Key_Tab);
  ASSERT_TRUE(bank->hasFocus());
  QTest::keyClick(bank, Qt::Key_Right);
  EXPECT_EQ(Text(s, "BAData"), "1");
  bank->setValue(0);
  Type(s, StallSpeedScreen::kMtow, "2000");  // a quarter of the weight halves it
  Type(s, StallSpeedScreen::kWeight, "500");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "30.0");

  // US units: the weights are converted (500 kg is 1102 lb) and the result stays.
  Click(s, "OptUnits1");
  EXPECT_EQ(Text(s, "lblInput2"), "MTOW (lb)");
  EXPECT_EQ(Text(s, "lblInput4"), "Weight (lb)");
  EXPECT_EQ(Box(s, StallSpeedScreen::kWeight)->toolTip(), "Current weight (1000 to 1 500 000 lb)");
  EXPECT_EQ(Box(s, StallSpeedScreen::kMtow)->text(), "4409");
  EXPECT_EQ(Box(s, StallSpeedScreen::kWeight)->text(), "1102");
  EXPECT_EQ(Text(s, "dataR1"), "30.0");
  Type(s, StallSpeedScreen::kWeight, "4409");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR1"), "60.0");
  Type(s, StallSpeedScreen::kAltitude, "65001");
  EXPECT_FALSE(CanCalculate(s));
}
