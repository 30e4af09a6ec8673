#include "app/TextFormat.hpp"

#include <gtest/gtest.h>

using namespace norvane;

TEST(TextFormat, FixedMasksRoundHalfAwayFromZero) {
  struct Row { double v; const char* mask; const char* text; };
  const Row rows[] = {
      {15.0, "0.0", "15.0"},          {1013.25, "0.000", "1013.250"},
      {1.22499915588771, "0.000000", "1.224999"},
      {0.5, "0", "1"},                {-0.5, "0", "-1"},     {2.5, "0", "3"},
      {0.25, "0.0", "0.3"},           {-0.25, "0.0", "-0.3"},  // exact binary ties
      {0.049999, "0.0", "0.0"},       {0.05, "0.0", "0.1"},  // 0.05 is just above the tie in binary
      {-0.04, "0.0", "0.0"},          {-0.0, "0.0", "0.0"},  // never "-0.0"
      {-0.4, "0", "0"},               {359.96, "000.0", "360.0"},
      {5.5, "000.0", "005.5"},        {17, "000", "017"},    {9.96, "0.0", "10.0"},
      {1234.5678, "0.0##", "1234.568"}, {1234.5678, "0.0###", "1234.5678"}, {0.5, "0.0#####", "0.5"}, {3.0, "0.0###", "3.0"},
      {1234567.8, "0", "1234568"},    {1e-300, "0.0", "0.0"}, {123456789012.0, "0", "123456789012"},
      {0.999999, "0.00", "1.00"},     {-999.995, "0.00", "-1000.00"},
  };
  for (const auto& r : rows) EXPECT_EQ(FormatMask(r.v, r.mask), r.text) << r.v << " " << r.mask;
}

TEST(TextFormat, ExponentMasks) {
  EXPECT_EQ(FormatMask(1013.25, "0.0000E+0"), "1.0133E+3");
  EXPECT_EQ(FormatMask(0.00122, "0.0000E+0"), "1.2200E-3");
  EXPECT_EQ(FormatMask(1.0, "0.0000E+0"), "1.0000E+0");
  EXPECT_EQ(FormatMask(9.99996, "0.0000E+0"), "1.0000E+1");  // carry into the exponent
  EXPECT_EQ(FormatMask(-2.5e-7, "0.0000E+0"), "-2.5000E-7");
  EXPECT_EQ(FormatMask(0.0, "0.0000E+0"), "0.0000E+0");
  EXPECT_EQ(FormatMask(0.00001, "0.00 E+##"), "1.00 E-5");
  EXPECT_EQ(FormatMask(123456789, "0.00 E+##"), "1.23 E+8");
  EXPECT_EQ(FormatMask(-1.5e20, "0.00 E+##"), "-1.50 E+20");
}

TEST(TextFormat, FixedDecimalsSignedTextAndInt16Rounding) {
  EXPECT_EQ(FormatFixed(0.6366, 3), "0.637");
  EXPECT_EQ(FormatFixed(1179.0, 1), "1179.0");
  EXPECT_EQ(FormatFixed(3868.08, 1), "3868.1");
  EXPECT_EQ(FormatFixed(12345678.9, 0), "12345679");  // no thousands separator

  EXPECT_EQ(SignedText(5), "+5");
  EXPECT_EQ(SignedText(0), "0");
  EXPECT_EQ(SignedText(-5), "-5");

  EXPECT_EQ(RoundToInt16(2.5), 2);   // halves to even
  EXPECT_EQ(RoundToInt16(3.5), 4);
  EXPECT_EQ(RoundToInt16(-2.5), -2);
  EXPECT_EQ(RoundToInt16(-0.4), 0);
  EXPECT_EQ(RoundToInt16(1e9), 32767);
  EXPECT_EQ(RoundToInt16(-1e9), -32768);

  EXPECT_EQ(FormatRaw(0.1), "0.10000000000000001");
  EXPECT_EQ(FormatRaw(10800), "10800");
}
