#include "app/NumberChars.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace norvane;

namespace {
// "end offset:value" of what a reader takes from s, "-" when it takes nothing.
template <class Read>
std::string Reading(const std::string& s, Read read) {
  double v = 0;
  const char* end = read(s.data(), s.data() + s.size(), v);
  char buf[64];
  std::snprintf(buf, sizeof buf, "%d:%.17g", end ? int(end - s.data()) : -1, v);
  return end ? buf : "-";
}
}  // namespace

// The web build runs on the strtod/snprintf forms: they must read and write exactly as <charconv>.
TEST(NumberChars, FallbackReadsAndWritesAsCharconv) {
  for (const bool exponent : {true, false}) {
    const auto std = [exponent](const char* f, const char* l, double& v) -> const char* {
      const auto [p, ec] = std::from_chars(f, l, v, exponent ? std::chars_format::general : std::chars_format::fixed);
      return ec == std::errc() ? p : nullptr;
    };
    const auto fallback = [exponent](const char* f, const char* l, double& v) {
      return detail::ReadDoubleFallback(f, l, v, exponent);
    };
    // clang-format off
    const std::string inputs[] = {
        "0", "-0", "12.5", ".5", "5.", ".", "-", "", "+5", "-.25", "1e5", "1E-3", "2.5e+2x", "1e", "1e+", "7e-x",
        "12abc", "inf", "-Infinity", "nan", "NaN(12ab)", "nan(", "infin", "1e400", "-1e400", "1e-400", "4e-320",
        "0x10", " 5", "0.1000000000000000055511151231257827",
        "17976931348623157" + std::string(292, '0'), "17976931348623159" + std::string(292, '0')};
    // clang-format on
    for (const std::string& s : inputs)
      EXPECT_EQ(Reading(s, fallback), Reading(s, std)) << s << (exponent ? "" : " (fixed)");
  }
  // clang-format off
  std::vector<double> values = {0.0, -0.0, 0.1, 1.0 / 3, 100, 1000, 10000, 100000, 1e21, 1e22, 123456789012345680.0,
                                5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 9007199254740993.0, 1e-7,
                                -42.0, INFINITY, -INFINITY, NAN};
  // clang-format on
  for (int e = -1074; e <= 1023; e += 7) values.push_back(std::ldexp(1.0, e));  // uneven neighbours
  std::mt19937_64 random(20240601);
  for (int i = 0; i < 5000; ++i) {
    const uint64_t bits = random();
    double v;
    std::memcpy(&v, &bits, sizeof v);
    values.push_back(v);
    values.push_back(double(int64_t(random() % 2000000) - 1000000) / 1000);  // typical results
  }
  for (const double v : values) {
    for (const auto& [fixed, room] : {std::pair{false, 400}, {true, 64}, {false, 5}}) {
      char a[400], b[400];
      const auto res = fixed ? std::to_chars(a, a + room, v, std::chars_format::fixed) : std::to_chars(a, a + room, v);
      char* end = detail::WriteShortestFallback(b, b + room, v, fixed);
      EXPECT_EQ(end ? std::string(b, end) : "(too long)",
                res.ec == std::errc() ? std::string(a, res.ptr) : "(too long)")
          << v << (fixed ? " fixed" : "") << " in " << room;
    }
    EXPECT_EQ(detail::FormatGeneralFallback(v, 17), FormatGeneral(v, 17)) << v;
  }
}
