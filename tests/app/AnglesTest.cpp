#include "app/Angles.hpp"

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;

TEST(Angles, ClampedInverseFunctionsAndQuadrants) {
  for (const GoldenRow& r : ReadGolden("app/data/angles.txt", "atan2"))
    EXPECT_NEAR(ArcTan2(r.Num(0), r.Num(1)), r.Num(2), r.Num(3)) << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/angles.txt", "asin"))
    EXPECT_NEAR(ArcSin(r.Num(0)), r.Num(1), r.Num(2)) << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/angles.txt", "acos"))
    EXPECT_NEAR(ArcCos(r.Num(0)), r.Num(1), r.Num(2)) << r.where;
}

TEST(Angles, Norm360IsOneStepNotModulo) {
  for (const GoldenRow& r : ReadGolden("app/data/angles.txt", "norm360"))
    EXPECT_EQ(Norm360(r.Num(0)), r.Num(1)) << r.where;
}
