#include "app/Angles.hpp"

#include <cmath>

#include <gtest/gtest.h>

using namespace norvane;

TEST(Angles, ClampedInverseFunctionsAndQuadrants) {
  EXPECT_EQ(ArcTan2(0, 0), 0);
  EXPECT_DOUBLE_EQ(ArcTan2(1, 0), kPi / 2);
  EXPECT_DOUBLE_EQ(ArcTan2(-1, 0), -kPi / 2);
  EXPECT_DOUBLE_EQ(ArcTan2(0, -1), kPi);  // y >= 0 on the negative x axis: +pi, never -pi
  EXPECT_NEAR(ArcTan2(-1, -1), -3 * kPi / 4, 1e-15);
  EXPECT_NEAR(ArcTan2(1, 1), std::atan2(1.0, 1.0), 1e-15);

  EXPECT_DOUBLE_EQ(ArcSin(1.5), kPi / 2);
  EXPECT_DOUBLE_EQ(ArcSin(-1), -kPi / 2);
  EXPECT_NEAR(ArcSin(0.5), std::asin(0.5), 1e-15);

  EXPECT_DOUBLE_EQ(ArcCos(-2), kPi);
  EXPECT_EQ(ArcCos(2), 0);
  EXPECT_EQ(ArcCos(1), 0);
  EXPECT_NEAR(ArcCos(-1), kPi, 1e-15);
  EXPECT_NEAR(ArcCos(-0.3), std::acos(-0.3), 1e-14);
  EXPECT_NEAR(ArcCos(0.7), std::acos(0.7), 1e-14);
}

TEST(Angles, Norm360IsOneStepNotModulo) {
  EXPECT_EQ(Norm360(-370), -10);
  EXPECT_EQ(Norm360(725), 365);
  EXPECT_EQ(Norm360(360), 0);
  EXPECT_EQ(Norm360(-0.5), 359.5);
  EXPECT_EQ(Norm360(0), 0);
  EXPECT_EQ(Norm360(359.9), 359.9);
}
