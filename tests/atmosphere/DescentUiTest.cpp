// The descent screen's wiring: the "Given" choice, the error label and the side view.
#include <QImage>

#include "atmosphere/DescentProfile.hpp"
#include "atmosphere/DescentScreen.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;

using DescentUi = UiFixture;

TEST_F(DescentUi, GivenErrorAndSideView) {
  DescentScreen s;
  Show(s);
  auto* view = Find<DescentProfile>(s, "PictProfile");
  Calculate(s);  // the defaults; the figures are DescentTest's
  EXPECT_NE(Text(s, "dataR0"), "");
  EXPECT_TRUE(view->hasProfile());
  const QImage drawn = view->grab().toImage();
  int ink = 0;  // the path's blue
  for (int y = 0; y < drawn.height(); ++y)
    for (int x = 0; x < drawn.width(); ++x) ink += drawn.pixelColor(x, y).blue() > drawn.pixelColor(x, y).red() + 90;
  EXPECT_GT(ink, drawn.width());

  // Each choice brings its range and default, and clears the results.
  struct Row {
    const char* option;
    const char* value;
    const char* outOfRange;
  };
  const Row rows[] = {{"OptGiven1", "3.0", "10.1"}, {"OptGiven2", "100", "501"}, {"OptGiven0", "2000", "99"}};
  for (const Row& r : rows) {
    Calculate(s);
    Click(s, r.option);
    EXPECT_EQ(Text(s, "InBox5"), r.value);
    EXPECT_EQ(Text(s, "dataR2"), "");
    EXPECT_FALSE(view->hasProfile());
    Type(s, 5, r.outOfRange);
    EXPECT_FALSE(CanCalculate(s)) << r.option;
    Type(s, 5, r.value);
  }

  Type(s, 1, "35000");
  Calculate(s);
  EXPECT_EQ(Text(s, "lblError"), "Final altitude must be below initial altitude");
  EXPECT_EQ(Texts(s, "dataR", 3), (std::vector<std::string>{"", "", ""}));
  EXPECT_FALSE(view->hasProfile());
}
