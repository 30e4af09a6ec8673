#include "app/TextFormat.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "app/NumberChars.hpp"

namespace norvane {
namespace {

struct MaskParts {
  int minIntDigits = 0;
  int requiredDecimals = 0;
  int optionalDecimals = 0;
  bool hasPoint = false;
  bool exponent = false;
  std::string exponentPrefix;  // literal text before the exponent sign, e.g. " E" or "E"
  bool exponentAlwaysSigned = false;
  int exponentMinDigits = 0;
};

MaskParts ParseMask(std::string_view mask) {
  MaskParts m;
  size_t i = 0;
  for (; i < mask.size() && (mask[i] == '0' || mask[i] == '#'); ++i)
    if (mask[i] == '0') ++m.minIntDigits;
  if (i < mask.size() && mask[i] == '.') {
    m.hasPoint = true;
    for (++i; i < mask.size() && (mask[i] == '0' || mask[i] == '#'); ++i)
      (mask[i] == '0' ? m.requiredDecimals : m.optionalDecimals)++;
  }
  const size_t e = mask.find_first_of("Ee", i);
  if (e != std::string_view::npos && e + 1 < mask.size() && (mask[e + 1] == '+' || mask[e + 1] == '-')) {
    m.exponent = true;
    m.exponentPrefix = std::string(mask.substr(i, e - i + 1));
    m.exponentAlwaysSigned = mask[e + 1] == '+';
    for (size_t k = e + 2; k < mask.size(); ++k)
      if (mask[k] == '0') ++m.exponentMinDigits;
  }
  return m;
}

// Exact decimal digits of |v|: value = 0.d0 d1 d2 ... * 10^pointPos (digits[0] is the most
// significant digit, pointPos digits stand before the decimal point).
struct Digits {
  std::string d;
  int pointPos = 0;
};

Digits ExactDigits(double v) {
  char buf[128];
  // 60 significant digits: far beyond a double's 17, so the digit after any rounding position we
  // use is exact (glibc prints the exact binary expansion).
  std::snprintf(buf, sizeof buf, "%.60e", std::fabs(v));
  Digits out;
  const char* p = buf;
  for (; *p && *p != 'e'; ++p)
    if (*p >= '0' && *p <= '9') out.d.push_back(*p);
  const int exp10 = *p == 'e' ? std::atoi(p + 1) : 0;
  out.pointPos = exp10 + 1;
  return out;
}

// Rounds the digit string half away from zero, keeping `keep` digits (keep may be <= 0).
// Returns the kept digits; pointPos is increased when a carry adds a leading digit.
std::string RoundDigits(const Digits& in, int keep, int& pointPos) {
  pointPos = in.pointPos;
  if (keep < 0) return std::string();
  std::string kept = in.d.substr(0, std::min<size_t>(keep, in.d.size()));
  while (static_cast<int>(kept.size()) < keep) kept.push_back('0');
  const char next = keep < static_cast<int>(in.d.size()) ? in.d[keep] : '0';
  if (next >= '5') {
    int k = keep - 1;
    while (k >= 0 && kept[k] == '9') kept[k--] = '0';
    if (k >= 0) {
      ++kept[k];
    } else {
      kept.insert(kept.begin(), '1');
      ++pointPos;
    }
  }
  return kept;
}

bool AllZero(const std::string& s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return c == '0'; });
}

std::string Compose(bool negative, std::string intPart, std::string frac, const MaskParts& m) {
  // Cut optional trailing zeros.
  int cut = static_cast<int>(frac.size());
  while (cut > m.requiredDecimals && frac[cut - 1] == '0') --cut;
  frac.resize(cut);
  intPart.erase(0, std::min(intPart.find_first_not_of('0'), intPart.size()));
  while (static_cast<int>(intPart.size()) < m.minIntDigits) intPart.insert(intPart.begin(), '0');
  std::string out;
  if (negative && !(AllZero(intPart) && AllZero(frac))) out.push_back('-');
  out += intPart;
  if (m.hasPoint && (!frac.empty() || m.optionalDecimals == 0)) out += "." + frac;
  return out;
}

std::string FormatFixedParts(double v, const MaskParts& m) {
  const int decimals = m.requiredDecimals + m.optionalDecimals;
  const Digits dg = ExactDigits(v);
  int pointPos = 0;
  const std::string kept = v == 0 ? std::string() : RoundDigits(dg, dg.pointPos + decimals, pointPos);
  // Place kept digits relative to the decimal point.
  std::string intPart, frac;
  if (kept.empty()) {
    frac.assign(decimals, '0');
  } else {
    const int nInt = pointPos;
    if (nInt > 0) {
      intPart = kept.substr(0, std::min<size_t>(nInt, kept.size()));
      frac = kept.size() > static_cast<size_t>(nInt) ? kept.substr(nInt) : std::string();
    } else {
      frac = std::string(-nInt, '0') + kept;
    }
    frac.resize(decimals, '0');
  }
  return Compose(std::signbit(v), intPart, frac, m);
}

std::string FormatExponentParts(double v, const MaskParts& m) {
  const int decimals = m.requiredDecimals + m.optionalDecimals;
  const int intDigits = std::max(1, m.minIntDigits);
  std::string intPart, frac;
  int exp10 = 0;
  if (v == 0 || !std::isfinite(v)) {
    intPart.assign(intDigits, '0');
    frac.assign(decimals, '0');
  } else {
    const Digits dg = ExactDigits(v);
    int pointPos = 0;
    std::string kept = RoundDigits(dg, intDigits + decimals, pointPos);
    if (static_cast<int>(kept.size()) > intDigits + decimals) kept.pop_back();  // carry to 10.0
    exp10 = pointPos - intDigits;
    intPart = kept.substr(0, intDigits);
    frac = kept.substr(intDigits);
  }
  std::string out = Compose(std::signbit(v) && v != 0, intPart, frac, m);
  out += m.exponentPrefix;
  if (exp10 < 0)
    out.push_back('-');
  else if (m.exponentAlwaysSigned)
    out.push_back('+');
  std::string e = std::to_string(std::abs(exp10));
  while (static_cast<int>(e.size()) < std::max(1, m.exponentMinDigits)) e.insert(e.begin(), '0');
  return out + e;
}

}  // namespace

std::string FormatMask(double v, std::string_view mask) {
  if (std::isnan(v)) return "NaN";
  if (std::isinf(v)) return v > 0 ? "Inf" : "-Inf";
  const MaskParts m = ParseMask(mask);
  return m.exponent ? FormatExponentParts(v, m) : FormatFixedParts(v, m);
}

std::string FormatFixed(double v, int decimals) {
  std::string mask = "0";
  if (decimals > 0) mask += "." + std::string(decimals, '0');
  return FormatMask(v, mask);
}

int16_t RoundToInt16(double v) {
  if (std::isnan(v)) return 0;
  const double r = std::nearbyint(v);  // default rounding mode: halves to even
  if (r >= std::numeric_limits<int16_t>::max()) return std::numeric_limits<int16_t>::max();
  if (r <= std::numeric_limits<int16_t>::min()) return std::numeric_limits<int16_t>::min();
  return static_cast<int16_t>(r);
}

std::string SignedText(int n) { return n > 0 ? "+" + std::to_string(n) : std::to_string(n); }

std::string FormatRaw(double v) { return FormatGeneral(v, 17); }

std::string FormatMinutesSeconds(double seconds) {
  const long long total = static_cast<long long>(std::floor(std::max(0.0, seconds) + 0.5));
  const int s = static_cast<int>(total % 60);
  return std::to_string(total / 60) + (s < 10 ? ":0" : ":") + std::to_string(s);
}

}  // namespace norvane
