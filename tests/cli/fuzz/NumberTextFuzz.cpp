// libFuzzer target: the readers of typed numbers, coordinates and dates, in norvane-cli's options
// and in the screens' input boxes. Whatever they accept must be a finite number within the stated
// range, written in the accepted form; anything else is refused with a message, never thrown past.
#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/InputRules.hpp"
#include "cli/CliSupport.hpp"
#include "support/FuzzSupport.hpp"

using namespace norvane;

namespace {
using norvane::fuzz::Require;

// Only an optional sign, digits and at most one point, with at least one digit.
bool PlainDecimal(std::string_view s) {
  if (!s.empty() && (s[0] == '+' || s[0] == '-')) s.remove_prefix(1);
  int points = 0, digits = 0;
  for (char c : s) {
    if (c == '.')
      ++points;
    else if (c >= '0' && c <= '9')
      ++digits;
    else
      return false;
  }
  return points <= 1 && digits >= 1;
}

void CheckCli(const std::string& text) {
  if (const auto v = cli::ParseNumber(text)) {
    Require(std::isfinite(*v) && PlainDecimal(text));
    Require(*v == std::strtod(text.c_str(), nullptr));
  }
  try {
    const cli::LatLon p = cli::ParseLatLon("--at", text);
    Require(std::fabs(p.lat) <= 90 && std::fabs(p.lon) <= 180);
  } catch (const cli::UsageError& e) {
    Require(std::string_view(e.what()).substr(0, 4) == "--at");
  }
  try {
    const cli::Date d = cli::ParseDate("--date", text);
    char again[16];
    std::snprintf(again, sizeof again, "%04d-%02d-%02d", d.year, d.month, d.day);
    Require(text == again && d.year >= 1900 && d.year <= 2100);
  } catch (const cli::UsageError& e) {
    Require(std::string_view(e.what()).substr(0, 6) == "--date");
  }
}

void CheckBox(FuzzedDataProvider& in) {
  const char16_t sep = in.ConsumeBool() ? u'.' : u',';
  const bool allowEmpty = in.ConsumeBool();
  const double a = in.ConsumeFloatingPointInRange(-1e6, 1e6), b = in.ConsumeFloatingPointInRange(-1e6, 1e6);
  const double lo = std::fmin(a, b), hi = std::fmax(a, b);
  const int32_t ilo = static_cast<int32_t>(lo), ihi = static_cast<int32_t>(hi);
  std::u16string text;
  while (in.remaining_bytes() > 0 && text.size() < 40) {
    const uint8_t c = in.ConsumeIntegral<uint8_t>();
    text.push_back(c < 0xF0 ? c : static_cast<char16_t>(0x100 * c));  // mostly ASCII, some wide
  }
  const auto real = ParseLocaleReal(text, sep);
  if (real) Require(std::isfinite(*real));
  if (IsValidRealText(text, allowEmpty, lo, hi, sep))
    Require(text.empty() ? allowEmpty : real && *real >= lo && *real <= hi);
  const auto whole = ParseInt32(text);
  if (IsValidIntText(text, allowEmpty, ilo, ihi))
    Require(text.empty() ? allowEmpty : whole && *whole >= ilo && *whole <= ihi);
  BoxState box{text, static_cast<int>(text.size()) + 1, static_cast<int>(text.size()), 0};
  for (char16_t key : {u'-', u'.', u',', u'7', u'a', char16_t(13)})
    (void)FilterKey(box, key, static_cast<KeyMode>(text.size() % 6), true, sep);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CheckCli(std::string(reinterpret_cast<const char*>(data), size));
  FuzzedDataProvider in(data, size);
  CheckBox(in);
  return 0;
}
