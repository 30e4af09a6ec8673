// The racetrack screen's wiring: options recalculate, the picture follows the results, errors.
#include <QImage>

#include "manoeuvres/RacetrackPicture.hpp"
#include "manoeuvres/RacetrackScreen.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;

using RacetrackUi = UiFixture;

TEST_F(RacetrackUi, OptionsPictureAndError) {
  RacetrackScreen s;
  Show(s);
  auto* picture = Find<RacetrackPicture>(s, "PictBox");
  Type(s, 2, "90");
  Type(s, 3, "20");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR0"), "006");  // 180 kt, 20 kt from the right: asin(20 / 180)
  ASSERT_TRUE(picture->hasTrack());
  const QImage right = picture->grab().toImage();
  int ink = 0;
  for (int y = 0; y < right.height(); ++y)
    for (int x = 0; x < right.width(); ++x) ink += right.pixelColor(x, y).lightness() < 80;
  EXPECT_GT(ink, right.width());

  const QString bank = Text(s, "dataR6");
  Click(s, "Optbankinput3");
  EXPECT_NE(Text(s, "dataR6"), bank);
  Click(s, "OptTurn1");
  EXPECT_NE(picture->grab().toImage(), right);
  Click(s, "OptTRinput0");
  EXPECT_EQ(Text(s, "dataR7"), "1.50");

  Type(s, 1, "50");
  Type(s, 3, "100");
  Calculate(s);
  EXPECT_EQ(Text(s, "lblError"), "Too strong wind for course");
  EXPECT_EQ(Text(s, "dataR0"), "");
  EXPECT_FALSE(picture->hasTrack());
}
