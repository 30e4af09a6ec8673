// The tiny math calculator's evaluation and number format: the texts the result line shows.
#include <gtest/gtest.h>

#include "support/Golden.hpp"
#include "tools/TinyCalculator.hpp"

namespace norvane {
namespace {

TEST(TinyCalculator, ExpressionsGiveTheShownTexts) {
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/tiny-calculator.txt")) {
    const std::string mode = r.fields.size() > 2 ? r[2] : "";  // "rad", or "," the decimal separator
    TinyCalculator c(mode == "," ? ',' : '.');
    if (mode == "rad") c.SetAngleUnit(AngleUnit::Radians);
    EXPECT_EQ(c.Evaluate(r[0]).text, r[1]) << r.where << ": " << r[0];
  }
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

}  // namespace
}  // namespace norvane
