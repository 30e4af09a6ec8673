#include "app/TextFormat.hpp"

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;

TEST(TextFormat, MasksAndFixedDecimalsFromTheTable) {
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "mask"))
    EXPECT_EQ(FormatMask(r.Num(0), r[1]), r[2]) << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "fixed"))
    EXPECT_EQ(FormatFixed(r.Num(0), int(r.Num(1))), r[2]) << r.where;
}

TEST(TextFormat, SignedTextAndInt16Rounding) {
  EXPECT_EQ(SignedText(5), "+5");
  EXPECT_EQ(SignedText(0), "0");
  EXPECT_EQ(SignedText(-5), "-5");

  EXPECT_EQ(RoundToInt16(2.5), 2);  // halves to even
  EXPECT_EQ(RoundToInt16(3.5), 4);
  EXPECT_EQ(RoundToInt16(-2.5), -2);
  EXPECT_EQ(RoundToInt16(-0.4), 0);
  EXPECT_EQ(RoundToInt16(1e9), 32767);
  EXPECT_EQ(RoundToInt16(-1e9), -32768);

  EXPECT_EQ(FormatRaw(0.1), "0.10000000000000001");
  EXPECT_EQ(FormatRaw(10800), "10800");
}
