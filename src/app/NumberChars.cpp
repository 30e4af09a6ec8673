#include "app/NumberChars.hpp"

#include <cerrno>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <version>

// libstdc++ announces double support in <charconv> through this macro; libc++ 13 does not have it.
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
#define NORVANE_DOUBLE_CHARCONV 1
#else
#define NORVANE_DOUBLE_CHARCONV 0
#endif

namespace norvane {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Whether [p, last) starts with `word` (lower case), letters compared without case.
bool StartsWithWord(const char* p, const char* last, std::string_view word) {
  if (last - p < static_cast<std::ptrdiff_t>(word.size())) return false;
  for (size_t i = 0; i < word.size(); ++i) {
    const char c = p[i] >= 'A' && p[i] <= 'Z' ? char(p[i] - 'A' + 'a') : p[i];
    if (c != word[i]) return false;
  }
  return true;
}

// The decimal d.ddd x 10^exp10 of `digits` and `exp10`, moved by one unit of its last digit.
void StepLastDigit(std::string& digits, int& exp10, int step) {
  long i = long(digits.size()) - 1;
  if (step > 0) {
    for (; i >= 0 && digits[size_t(i)] == '9'; --i) digits[size_t(i)] = '0';
    if (i >= 0) {
      ++digits[size_t(i)];
    } else {
      digits.insert(digits.begin(), '1');
      digits.pop_back();
      ++exp10;
    }
  } else {
    for (; i >= 0 && digits[size_t(i)] == '0'; --i) digits[size_t(i)] = '9';
    if (i >= 0) --digits[size_t(i)];
    if (digits[0] == '0' && digits.size() > 1) {  // 1.000 -> 0.999: one exponent lower
      digits.erase(0, 1);
      digits.push_back('9');
      --exp10;
    }
  }
}

double DecimalValue(const std::string& digits, int exp10, bool negative) {
  std::string s = std::string(negative ? "-" : "") + digits[0] + "." + digits.substr(1) + "e" + std::to_string(exp10);
  double v = 0;
  detail::ReadDoubleFallback(s.data(), s.data() + s.size(), v, true);
  return v;
}

// The fewest significant digits that read back as v (finite, not zero), and the decimal exponent
// of the first: |v| = d.ddd x 10^exp10; of two such, the nearer to v. printf gives the nearest
// decimal of each length; beside a power of two the one on the other side of v may be the only
// one that reads back (the gap below is half the gap above).
void ShortestDigits(double v, std::string& digits, int& exp10) {
  char buf[48];
  for (int precision = 1; precision <= 17; ++precision) {
    std::snprintf(buf, sizeof buf, "%.*e", precision - 1, std::fabs(v));
    digits.clear();
    const char* p = buf;
    for (; *p && *p != 'e'; ++p)
      if (IsDigit(*p)) digits.push_back(*p);
    exp10 = std::atoi(p + 1);
    if (precision == 17 || DecimalValue(digits, exp10, v < 0) == v) break;
    bool found = false;
    for (const int step : {1, -1}) {
      std::string other = digits;
      int otherExp = exp10;
      StepLastDigit(other, otherExp, step);
      if (DecimalValue(other, otherExp, v < 0) == v) {
        digits = other, exp10 = otherExp, found = true;
        break;
      }
    }
    if (found) break;
  }
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
}

std::string FixedText(const std::string& digits, int exp10) {
  const int n = static_cast<int>(digits.size());
  if (exp10 < 0) return "0." + std::string(size_t(-exp10 - 1), '0') + digits;
  if (n <= exp10 + 1) return digits + std::string(size_t(exp10 + 1 - n), '0');
  return digits.substr(0, size_t(exp10 + 1)) + "." + digits.substr(size_t(exp10 + 1));
}

std::string ScientificText(const std::string& digits, int exp10) {
  std::string s(1, digits[0]);
  if (digits.size() > 1) s += "." + digits.substr(1);
  const int e = std::abs(exp10);
  return s + (exp10 < 0 ? "e-" : "e+") + (e < 10 ? "0" : "") + std::to_string(e);
}

char* CopyOut(char* first, char* last, const std::string& s) {
  if (last - first < static_cast<std::ptrdiff_t>(s.size())) return nullptr;
  std::memcpy(first, s.data(), s.size());
  return first + s.size();
}

}  // namespace

namespace detail {

const char* ReadDoubleFallback(const char* first, const char* last, double& v, bool exponent) {
  const char* p = first;
  const bool negative = p != last && *p == '-';
  if (negative) ++p;
  if (StartsWithWord(p, last, "inf")) {
    p += StartsWithWord(p, last, "infinity") ? 8 : 3;
    v = negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    return p;
  }
  if (StartsWithWord(p, last, "nan")) {
    p += 3;
    if (p != last && *p == '(') {
      const char* q = p + 1;
      while (q != last && (IsDigit(*q) || *q == '_' || (*q | 0x20) >= 'a' && (*q | 0x20) <= 'z')) ++q;
      if (q != last && *q == ')') p = q + 1;
    }
    v = std::copysign(std::numeric_limits<double>::quiet_NaN(), negative ? -1.0 : 1.0);
    return p;
  }
  // strtod reads the locale's decimal point: the copy carries that one.
  std::string text = negative ? "-" : "";
  size_t digits = 0;
  for (; p != last && IsDigit(*p); ++p, ++digits) text.push_back(*p);
  if (p != last && *p == '.') {
    text += std::localeconv()->decimal_point;
    for (++p; p != last && IsDigit(*p); ++p, ++digits) text.push_back(*p);
  }
  if (digits == 0) return nullptr;
  if (exponent && p != last && (*p == 'e' || *p == 'E')) {
    const char* q = p + 1;
    std::string e = "e";
    if (q != last && (*q == '+' || *q == '-')) e.push_back(*q++);
    if (q != last && IsDigit(*q)) {
      for (; q != last && IsDigit(*q); ++q) e.push_back(*q);
      text += e;
      p = q;
    }
  }
  errno = 0;
  const double r = std::strtod(text.c_str(), nullptr);
  if (errno == ERANGE && (std::isinf(r) || r == 0)) return nullptr;
  v = r;
  return p;
}

char* WriteShortestFallback(char* first, char* last, double v, bool fixed) {
  if (std::isnan(v)) return CopyOut(first, last, std::signbit(v) ? "-nan" : "nan");
  if (std::isinf(v)) return CopyOut(first, last, v < 0 ? "-inf" : "inf");
  if (v == 0) return CopyOut(first, last, std::signbit(v) ? "-0" : "0");
  std::string digits;
  int exp10 = 0;
  ShortestDigits(v, digits, exp10);
  const std::string sign = v < 0 ? "-" : "";
  std::string plain = sign + FixedText(digits, exp10);
  if (std::fabs(v) >= 0x1p53) {
    // Integers past 2^53 without exponent: <charconv> writes the exact value, not digits and zeros.
    char buf[320];
    std::snprintf(buf, sizeof buf, "%.0f", v);
    plain = buf;
  }
  if (fixed) return CopyOut(first, last, plain);
  const std::string scientific = sign + ScientificText(digits, exp10);
  return CopyOut(first, last, plain.size() <= scientific.size() ? plain : scientific);
}

std::string FormatGeneralFallback(double v, int precision) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*g", precision, v);
  std::string s = buf;
  const std::string point = std::localeconv()->decimal_point;
  if (point != ".") {
    const size_t at = s.find(point);
    if (at != std::string::npos) s.replace(at, point.size(), ".");
  }
  return s;
}

}  // namespace detail

const char* ReadDouble(const char* first, const char* last, double& v, bool exponent) {
#if NORVANE_DOUBLE_CHARCONV
  const auto [ptr, ec] =
      std::from_chars(first, last, v, exponent ? std::chars_format::general : std::chars_format::fixed);
  return ec == std::errc() ? ptr : nullptr;
#else
  return detail::ReadDoubleFallback(first, last, v, exponent);
#endif
}

std::optional<double> ParseDouble(std::string_view text, bool exponent) {
  double v = 0;
  const char* end = ReadDouble(text.data(), text.data() + text.size(), v, exponent);
  if (end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

char* WriteShortest(char* first, char* last, double v, bool fixed) {
#if NORVANE_DOUBLE_CHARCONV
  const auto res = fixed ? std::to_chars(first, last, v, std::chars_format::fixed) : std::to_chars(first, last, v);
  return res.ec == std::errc() ? res.ptr : nullptr;
#else
  return detail::WriteShortestFallback(first, last, v, fixed);
#endif
}

std::string FormatGeneral(double v, int precision) {
#if NORVANE_DOUBLE_CHARCONV
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, precision);
  return std::string(buf, res.ptr);
#else
  return detail::FormatGeneralFallback(v, precision);
#endif
}

}  // namespace norvane
