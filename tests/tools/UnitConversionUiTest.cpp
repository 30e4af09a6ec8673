// The "Unit conversions" screen's wiring: everything converts live on each valid edit and each
// unit change; a new type resets; the degrees converter follows its input format. The factors and
// texts themselves are in UnitConversionTest.
#include <QComboBox>
#include <QListWidget>

#include "support/UiTest.hpp"
#include "tools/UnitConversionScreen.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

struct UnitScreenUi : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    s = std::make_unique<UnitConversionScreen>();
    Show(*s);
  }
  void chooseType(const char* name) {
    auto* list = Find<QListWidget>(*s, "ListUT");
    const auto items = list->findItems(name, Qt::MatchExactly);
    ASSERT_EQ(items.size(), 1) << name;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(items[0]).center());
  }
  // Picks a combo entry with the keyboard, as a user tabbing through would.
  void chooseUnit(const char* combo, const char* unit) {
    auto* c = Find<QComboBox>(*s, combo);
    c->setFocus();
    const int target = c->findText(unit);
    ASSERT_GE(target, 0) << unit;
    while (c->currentIndex() < target) QTest::keyClick(c, Qt::Key_Down);
    while (c->currentIndex() > target) QTest::keyClick(c, Qt::Key_Up);
  }
  QString result() { return Text(*s, "DataR"); }
  std::unique_ptr<UnitConversionScreen> s;
};

}  // namespace

TEST_F(UnitScreenUi, ConvertsOnEveryValidEditAndUnitChange) {
  EXPECT_FALSE(Find<QPushButton>(*s, "cmdCalculate")->isVisible());
  chooseType("Speed");
  chooseUnit("FCmb", "kt");
  chooseUnit("TCmb", "km/h");
  Type(*s, 0, "1");
  EXPECT_EQ(result(), "1.852");
  QTest::keyClicks(Box(*s, 0), "00");
  EXPECT_EQ(result(), "185.2");
  chooseUnit("TCmb", "m/s");
  EXPECT_EQ(result(), "51.44444");
  chooseUnit("FCmb", "m/s");
  EXPECT_EQ(result(), "100.0");
  QTest::keyClicks(Box(*s, 0), "0000000");  // beyond the check: no result
  EXPECT_EQ(result(), "");
  chooseType("Temperature");  // a new type resets the value and the result
  EXPECT_EQ(Text(*s, "InBox0"), "");
  chooseUnit("FCmb", "\u00B0C");
  chooseUnit("TCmb", "\u00B0F");
  Type(*s, 0, "0");
  EXPECT_EQ(result(), "32.0");
  Type(*s, 0, "-");  // a lone minus is not a number yet
  EXPECT_EQ(result(), "");
}

TEST_F(UnitScreenUi, DegreesConverterFollowsTheInputFormat) {
  EXPECT_FALSE(Box(*s, 2)->isVisible());
  Type(*s, 1, "45.5");
  EXPECT_EQ(Texts(*s, "LabelDC", 2, 1), (std::vector<std::string>{"45 30.000000", "45 30 0.0000"}));
  Click(*s, "OptDin1");  // D-M: 45.5 is no longer a valid whole number of degrees
  EXPECT_TRUE(Box(*s, 2)->isVisible());
  EXPECT_FALSE(Box(*s, 3)->isVisible());
  EXPECT_FALSE(Box(*s, 1)->isValid());
  EXPECT_EQ(Text(*s, "LabelDC1"), "");
  Type(*s, 1, "45");
  EXPECT_EQ(Text(*s, "LabelDC1"), "45.00000000");  // empty minutes add nothing
  Type(*s, 2, "30");
  EXPECT_EQ(Text(*s, "LabelDC1"), "45.50000000");
  Click(*s, "OptDin2");  // D-M-S
  EXPECT_TRUE(Box(*s, 3)->isVisible());
  Type(*s, 3, "59.99");
  EXPECT_EQ(Text(*s, "LabelDC1"), "45.51666389");
  Type(*s, 3, "60");
  EXPECT_EQ(Text(*s, "LabelDC1"), "");
  Click(*s, "OptDin0");  // back to D: the hidden boxes no longer count
  Type(*s, 1, "10.25");
  EXPECT_EQ(Text(*s, "LabelDC1"), "10 15.000000");
}
