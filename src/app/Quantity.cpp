#include "app/Quantity.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace norvane {
namespace {

std::string Fixed(double v, int decimals) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
  std::string s = buf;
  if (s[0] == '-' && s.find_first_not_of("-0.") == std::string::npos) s.erase(0, 1);  // never "-0.0"
  return s;
}

// One end of the range as the screen writes it.
std::string End(const Quantity& q, double v, int decimals) {
  std::string s = Fixed(v, decimals);
  if (q.grouped) {
    const size_t begin = s[0] == '-' ? 1 : 0;
    const size_t end = std::min(s.find('.'), s.size());
    if (end - begin >= 5)
      for (size_t i = end; i > begin + 3; i -= 3) s.insert(i - 3, " ");
  }
  if (q.plusSign && v > 0) s.insert(0, "+");
  return s;
}

}  // namespace

std::string RangeText(const Quantity& q) {
  std::string s = End(q, q.max, q.rangeDecimals);
  s = q.upTo ? "up to " + s : End(q, q.min, q.minDecimals >= 0 ? q.minDecimals : q.rangeDecimals) + " to " + s;
  if (!q.unit.empty()) {
    // A degree sign (or "°C") follows the number without a blank, as on the screens.
    if (!q.unit.starts_with("\u00b0")) s += ' ';
    s += q.unit;
  }
  return s;
}

std::string ToolTipText(const Quantity& q) {
  const std::string inside = std::string(q.note) + RangeText(q) + std::string(q.remark) + ")";
  if (q.captionInBrackets) return "(" + std::string(q.caption) + " " + inside + std::string(q.after);
  return std::string(q.caption) + " (" + inside + std::string(q.after);
}

std::string_view CliUnit(const Quantity& q) { return q.cliUnit.empty() ? q.unit : q.cliUnit; }

bool Admits(const Quantity& q, double v) {
  if (!std::isfinite(v) || v < q.min || v > q.max) return false;
  return !q.whole || v == std::floor(v);
}

KeyMode KeyModeOf(const Quantity& q) {
  const bool sign = q.min < 0;
  if (q.whole) return sign ? KeyMode::SignedInt : KeyMode::UnsignedInt;
  return sign ? KeyMode::SignedReal : KeyMode::UnsignedReal;
}

int BoxLength(const Quantity& q) {
  if (q.maxLength > 0) return q.maxLength;
  const int decimals = q.whole ? 0 : std::max(q.rangeDecimals, 2);
  const auto len = [&](double v) { return static_cast<int>(Fixed(v, decimals).size()); };
  return std::max(len(q.min), len(q.max));
}

}  // namespace norvane
