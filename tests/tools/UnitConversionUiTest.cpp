// The "Unit conversions" screen driven with real key and mouse events: everything converts live.
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "tools/UnitConversionScreen.hpp"

using namespace norvane;

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace {

struct UnitScreenUi : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
    screen = std::make_unique<UnitConversionScreen>();
    screen->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(screen.get()));
  }
  template <typename T>
  T* w(const char* name) const {
    T* p = screen->findChild<T*>(name);
    EXPECT_NE(p, nullptr) << name;
    return p;
  }
  InputBox* box(int i) const { return w<InputBox>(qPrintable(QStringLiteral("InBox%1").arg(i))); }
  QString text(const char* name) const { return w<QLabel>(name)->text(); }
  void type(int i, const char* t) {
    box(i)->setFocus();  // selects all when the focus arrives; select again when it was there
    box(i)->selectAll();
    QTest::keyClicks(box(i), t);
  }
  void chooseType(const char* name) {
    auto* list = w<QListWidget>("ListUT");
    const auto items = list->findItems(name, Qt::MatchExactly);
    ASSERT_EQ(items.size(), 1) << name;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(items[0]).center());
    ASSERT_EQ(list->currentItem(), items[0]);
  }
  // Picks a combo entry with the keyboard, as a user tabbing through would.
  void chooseUnit(const char* combo, const char* unit) {
    auto* c = w<QComboBox>(combo);
    c->setFocus();
    const int target = c->findText(unit);
    ASSERT_GE(target, 0) << unit;
    while (c->currentIndex() < target) QTest::keyClick(c, Qt::Key_Down);
    while (c->currentIndex() > target) QTest::keyClick(c, Qt::Key_Up);
  }
  void chooseFormat(int i) {
    auto* b = w<QRadioButton>(qPrintable(QStringLiteral("OptDin%1").arg(i)));
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(8, b->height() / 2));
    ASSERT_TRUE(b->isChecked());
  }

  std::unique_ptr<UnitConversionScreen> screen;
};

}  // namespace

TEST_F(UnitScreenUi, LoadsTheTwelveTypesLiveAndWithoutCalculate) {
  auto* list = w<QListWidget>("ListUT");
  ASSERT_EQ(list->count(), 12);
  EXPECT_EQ(list->item(0)->text(), "Acceleration");
  EXPECT_EQ(list->item(11)->text(), "Weight");
  EXPECT_EQ(list->currentRow(), 0);
  EXPECT_EQ(w<QGroupBox>("FrameUC")->title(), "Acceleration");
  EXPECT_EQ(w<QComboBox>("FCmb")->count(), 3);
  EXPECT_TRUE(w<QRadioButton>("OptDin0")->isChecked());
  EXPECT_FALSE(w<QPushButton>("cmdCalculate")->isVisible());
  EXPECT_TRUE(w<QPushButton>("cmdClose")->isVisible());
  EXPECT_EQ(w<QPushButton>("cmdClose")->text(), "Exit");
}

TEST_F(UnitScreenUi, ConvertsOnEveryValidEditAndEveryUnitChange) {
  chooseType("Speed");
  EXPECT_EQ(w<QGroupBox>("FrameUC")->title(), "Speed");
  chooseUnit("FCmb", "kt");
  chooseUnit("TCmb", "km/h");
  type(0, "1");
  EXPECT_EQ(text("DataR"), "1.852");
  QTest::keyClicks(box(0), "00");
  EXPECT_EQ(text("DataR"), "185.2");  // 100 kt
  chooseUnit("TCmb", "m/s");
  EXPECT_EQ(text("DataR"), "51.44444");
  chooseUnit("FCmb", "m/s");
  EXPECT_EQ(text("DataR"), "100.0");  // the same unit on both sides
  QTest::keyClicks(box(0), "0000000");  // 1e9 is beyond the check: no result
  EXPECT_FALSE(box(0)->isValid());
  EXPECT_EQ(text("DataR"), "");
  type(0, "99999999");
  EXPECT_EQ(text("DataR"), "99999999");

  // A new type resets the value and empties the result.
  chooseType("Temperature");
  EXPECT_EQ(box(0)->text(), "");
  EXPECT_EQ(text("DataR"), "");
  chooseUnit("FCmb", "\u00B0C");
  chooseUnit("TCmb", "\u00B0F");
  type(0, "0");
  EXPECT_EQ(text("DataR"), "32.0");
  chooseUnit("FCmb", "\u00B0K");
  chooseUnit("TCmb", "\u00B0C");
  EXPECT_EQ(text("DataR"), "-273.15");
  type(0, "-");  // a lone minus is not a number yet
  EXPECT_EQ(text("DataR"), "");

  chooseType("Length-Distance");
  chooseUnit("FCmb", "m");
  chooseUnit("TCmb", "km");
  type(0, "0.01");
  EXPECT_EQ(text("DataR"), "1.00 E-5");
  chooseUnit("FCmb", "km");
  chooseUnit("TCmb", "m");
  type(0, "123456.789");
  EXPECT_EQ(text("DataR"), "1.23 E+8");
}

TEST_F(UnitScreenUi, DegreesConverterFollowsTheInputFormat) {
  // D: only the degrees box, real.
  EXPECT_FALSE(box(2)->isVisible());
  EXPECT_FALSE(box(3)->isVisible());
  EXPECT_EQ(text("lblDeg1"), "Decimal degrees (0 to 180)");
  type(1, "45.5");
  EXPECT_EQ(text("LabelDC1"), "45 30.000000");
  EXPECT_EQ(text("LabelDC2"), "45 30 0.0000");

  // D-M: whole degrees and decimal minutes; 45.5 in the degrees box is no longer valid.
  chooseFormat(1);
  EXPECT_TRUE(box(2)->isVisible());
  EXPECT_FALSE(box(3)->isVisible());
  EXPECT_EQ(text("lblDeg1"), "Degrees (0 to 180)");
  EXPECT_EQ(text("lblDeg2"), "Decimal minutes (0 to 60)");
  EXPECT_FALSE(box(1)->isValid());
  EXPECT_EQ(text("LabelDC1"), "");
  type(1, "45");
  EXPECT_EQ(text("LabelDC1"), "45.00000000");  // empty minutes add nothing
  type(2, "30");
  EXPECT_EQ(text("LabelDC1"), "45.50000000");
  EXPECT_EQ(text("LabelDC2"), "45 30 0.0000");
  type(2, "60");  // the caption says "0 to 60", the check stops at 59.999999
  EXPECT_FALSE(box(2)->isValid());
  EXPECT_EQ(text("LabelDC1"), "");
  type(2, "59.999999");
  EXPECT_EQ(text("LabelDC1"), "45.99999998");

  // D-M-S: whole minutes, decimal seconds up to 59.99.
  chooseFormat(2);
  EXPECT_TRUE(box(3)->isVisible());
  EXPECT_EQ(text("lblDeg2"), "Minutes (0 to 59)");
  EXPECT_EQ(text("lblDeg3"), "Decimal seconds (0 to 60)");
  EXPECT_FALSE(box(2)->isValid());  // 59.999999 is not a whole number
  type(2, "30");
  type(3, "60");
  EXPECT_FALSE(box(3)->isValid());
  EXPECT_EQ(text("LabelDC1"), "");
  type(3, "59.99");
  EXPECT_EQ(text("LabelDC1"), "45.51666389");
  EXPECT_EQ(text("LabelDC2"), "45 30.999833");
  type(1, "x.");  // refused by the key filter of a whole-number box: the text stays
  EXPECT_EQ(box(1)->text(), "45");
  EXPECT_EQ(text("LabelDC1"), "45.51666389");

  // Back to D: the hidden boxes no longer count.
  chooseFormat(0);
  type(1, "10.25");
  EXPECT_EQ(text("LabelDC1"), "10 15.000000");
}
