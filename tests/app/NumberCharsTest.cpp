#include "app/NumberChars.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace norvane;

namespace {

std::string Exact(double v) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.17g", v);
  return buf;
}

// What std::from_chars reads, as "end offset:value", or "-" when it reads nothing.
std::string StdRead(const std::string& s, bool exponent) {
  double v = 0;
  const auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v,
                                         exponent ? std::chars_format::general : std::chars_format::fixed);
  return ec != std::errc() ? "-" : std::to_string(ptr - s.data()) + ":" + Exact(v);
}
std::string FallbackRead(const std::string& s, bool exponent) {
  double v = 0;
  const char* end = detail::ReadDoubleFallback(s.data(), s.data() + s.size(), v, exponent);
  return !end ? "-" : std::to_string(end - s.data()) + ":" + Exact(v);
}

std::string StdWrite(double v, bool fixed, size_t room) {
  char buf[400];
  const auto res = fixed ? std::to_chars(buf, buf + room, v, std::chars_format::fixed) : std::to_chars(buf, buf + room, v);
  return res.ec != std::errc() ? "(does not fit)" : std::string(buf, res.ptr);
}
std::string FallbackWrite(double v, bool fixed, size_t room) {
  char buf[400];
  char* end = detail::WriteShortestFallback(buf, buf + room, v, fixed);
  return !end ? "(does not fit)" : std::string(buf, end);
}

}  // namespace

// The web build runs on the strtod/snprintf forms: they must read and write exactly as <charconv>.
TEST(NumberChars, FallbackReadsAsFromChars) {
  for (const std::string s : {"0", "-0", "12.5", ".5", "5.", ".", "-", "", "+5", "-.25", "1e5", "1E-3", "2.5e+2x",
                              "1e", "1e+", "7e-x", "12abc", "inf", "-Infinity", "nan", "NaN(12ab)", "nan(", "infin",
                              "1e400", "-1e400", "1e-400", "4e-320", "0x10", " 5", "0.1000000000000000055511151231257827",
                              "179769313486231570000000000000000000000000000000000000000000000000000000000000000000000"
                              "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
                              "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
                              "000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"}) {
    for (const bool exponent : {true, false}) EXPECT_EQ(FallbackRead(s, exponent), StdRead(s, exponent)) << s;
  }
  EXPECT_EQ(ParseDouble("3.25"), 3.25);
  EXPECT_FALSE(ParseDouble("3.25 "));
  EXPECT_FALSE(ParseDouble("1e3", /*exponent*/ false));
}

TEST(NumberChars, FallbackWritesAsToChars) {
  std::mt19937_64 random(20240601);
  std::vector<double> values = {0.0, -0.0, 0.1, 1.0 / 3, 100, 1000, 10000, 100000, 1e21, 1e22, 123456789012345680.0,
                                5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 0.3, 9007199254740993.0,
                                std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(), 1e-7, 1.5e-7, 123.456, -42.0};
  for (int e = -1074; e <= 1023; e += 7) values.push_back(std::ldexp(1.0, e));  // powers of two: uneven neighbours
  for (int i = 0; i < 5000; ++i) {
    const uint64_t bits = random();
    double v;
    std::memcpy(&v, &bits, sizeof v);
    values.push_back(v);
    values.push_back(double(int64_t(random() % 2000000) - 1000000) / 1000);  // typical results
  }
  for (const double v : values) {
    EXPECT_EQ(FallbackWrite(v, false, 400), StdWrite(v, false, 400)) << v;
    EXPECT_EQ(FallbackWrite(v, true, 64), StdWrite(v, true, 64)) << v;
    EXPECT_EQ(detail::FormatGeneralFallback(v, 17), FormatGeneral(v, 17)) << v;
  }
  EXPECT_EQ(FallbackWrite(1234.5, false, 5), "(does not fit)");
  EXPECT_EQ(FallbackWrite(1234.5, false, 6), "1234.5");
}
