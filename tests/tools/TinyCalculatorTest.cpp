// The tiny math calculator's evaluation and number format: the texts the result line shows.
#include <gtest/gtest.h>

#include "tools/TinyCalculator.hpp"

namespace norvane {
namespace {

TEST(TinyCalculator, ExpressionsGiveTheShownTexts) {
  struct Row {
    const char* expression;
    const char* text;
  } rows[] = {
      // precedence and associativity: ^ tightest and to the right, then the sign, then * /, then + -
      {"2+3*4", "14"}, {"2^3^2", "512"}, {"-2^2", "-4"}, {"(-2)^2", "4"}, {"2*-3", "-6"},
      {"8/2/2", "2"}, {"2-3-4", "-5"}, {"2^-2", "0.25"}, {"200*15%", "30"},
      // degree trigonometry, exact at the multiples of 90°
      {"sin(30)", "0.5"}, {"cos(60)", "0.5"}, {"sin(180)", "0"}, {"cos(90)", "0"}, {"cos(-270)", "0"},
      {"tan(45)", "1"}, {"sin(-30)", "-0.5"}, {"sin(390)", "0.5"}, {"asin(0.5)", "30"}, {"acos(0)", "90"},
      {"atan(1)", "45"}, {"acos(-1)", "180"},
      // functions and the display forms of the keys
      {"sqrt(2)^2", "2"}, {"ln(exp(2))", "2"}, {"log(1000)", "3"}, {"3 \u00D7 4 \u00F7 2 \u2212 1", "5"},
      {"\u221A(16)", "4"}, {"2*\u03C0", "6.28318530718"}, {"abs(-3)", "3"},
      // 12 significant digits; scientific from 1E+12 and below 1E-6, decided after rounding
      {"1/3", "0.333333333333"}, {"2/3", "0.666666666667"}, {"0.1+0.2", "0.3"}, {"-1*0", "0"},
      {"999999999999", "999999999999"}, {"999999999999.9", "1E+12"}, {"1e12", "1E+12"},
      {"1.5e15", "1.5E+15"}, {"-2.5e20", "-2.5E+20"}, {"0.000001", "0.000001"},
      {"0.00000099999999999999", "0.000001"}, {"9.99e-7", "9.99E-7"}, {"-1/3*1e-7", "-3.33333333333E-8"},
      {"123456.7890123", "123456.789012"}, {"100000", "100000"},
      // the three error texts
      {"1/0", "Division by zero"}, {"1/(2-2)", "Division by zero"}, {"ln(0)", "Math error"},
      {"sqrt(-1)", "Math error"}, {"asin(2)", "Math error"}, {"tan(90)", "Math error"},
      {"10^400", "Math error"}, {"2+", "Syntax error"}, {"(1", "Syntax error"}, {"1,5", "Syntax error"},
      {"", "Syntax error"}, {"foo", "Syntax error"}, {"sin 30", "Syntax error"},
  };
  for (const Row& r : rows) {
    TinyCalculator c;
    EXPECT_EQ(c.Evaluate(r.expression).text, r.text) << r.expression;
  }
  TinyCalculator rad;
  rad.SetAngleUnit(AngleUnit::Radians);
  EXPECT_EQ(rad.Evaluate("sin(pi/2)").text, "1");
  EXPECT_EQ(rad.Evaluate("cos(pi)").text, "-1");
}

TEST(TinyCalculator, AnsMemoryAndHistoryFollowTheSuccesses) {
  TinyCalculator c;
  EXPECT_EQ(c.Evaluate("6*7").text, "42");
  EXPECT_EQ(c.Evaluate("1/0").text, "Division by zero");  // keeps ans
  EXPECT_EQ(c.Evaluate("ans/2").text, "21");
  EXPECT_FALSE(c.memorySet());
  c.MemoryStore();
  c.MemoryAdd();
  EXPECT_EQ(c.Evaluate("mem+1").text, "43");
  c.MemorySubtract();
  EXPECT_EQ(c.memory(), 42 - 43);
  c.MemoryClear();
  EXPECT_FALSE(c.memorySet());
  ASSERT_EQ(c.history().size(), 3u);  // newest first, failures left out
  EXPECT_EQ(c.history()[0].expression, "mem+1");
  EXPECT_EQ(c.history()[2].result, "42");
}

TEST(TinyCalculator, DecimalCommaIsReadAndWritten) {
  TinyCalculator c(',');
  EXPECT_EQ(c.Evaluate("1,5*2").text, "3");
  EXPECT_EQ(c.Evaluate("1/4").text, "0,25");
  EXPECT_EQ(c.Evaluate("1,5E+15").text, "1,5E+15");
  EXPECT_EQ(c.Evaluate("1.5").text, "Syntax error");
}

}  // namespace
}  // namespace norvane
