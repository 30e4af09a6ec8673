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

TEST(TextFormat, SignedTextInt16RoundingAndRawFromTheTable) {
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "signed"))
    EXPECT_EQ(SignedText(int(r.Num(0))), r[1]) << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "int16"))
    EXPECT_EQ(RoundToInt16(r.Num(0)), r.Num(1)) << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "raw")) EXPECT_EQ(FormatRaw(r.Num(0)), r[1]) << r.where;
}
