#include "tools/TinyCalculator.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <utility>

#include <muParser.h>

namespace norvane {
namespace {

// Thrown by the division operator; muParser itself would return infinity for x/0.
struct DivisionByZero {};

double Add(double a, double b) { return a + b; }
double Subtract(double a, double b) { return a - b; }
double Multiply(double a, double b) { return a * b; }
double Divide(double a, double b) {
  if (b == 0) throw DivisionByZero{};
  return a / b;
}
double Power(double a, double b) { return std::pow(a, b); }
double Percent(double a) { return a / 100; }

constexpr double kDegree = std::numbers::pi / 180;

// sin or cos of x degrees, reduced to |d| <= 45 in whole quadrants first, so that the multiples of
// 90° give exact zeros and ones (sin 180 is 0, not 1.2E-16; tan 90 is no number).
double SinCosDegrees(double x, bool cosine) {
  if (!std::isfinite(x)) return NAN;
  const double r = std::fmod(x, 360.0);
  const long long q = std::llround(r / 90);
  const double d = (r - 90.0 * static_cast<double>(q)) * kDegree;
  const int quadrant = static_cast<int>(((q + (cosine ? 1 : 0)) % 4 + 4) % 4);
  switch (quadrant) {
    case 0:
      return std::sin(d);
    case 1:
      return std::cos(d);
    case 2:
      return -std::sin(d);
    default:
      return -std::cos(d);
  }
}
double SinDeg(double x) { return SinCosDegrees(x, false); }
double CosDeg(double x) { return SinCosDegrees(x, true); }
double TanDeg(double x) {
  const double c = CosDeg(x);
  return c == 0 ? NAN : SinDeg(x) / c;
}
double AsinDeg(double v) { return std::asin(v) / kDegree; }
double AcosDeg(double v) { return std::acos(v) / kDegree; }
double AtanDeg(double v) { return std::atan(v) / kDegree; }
double Sin(double x) { return std::sin(x); }
double Cos(double x) { return std::cos(x); }
double Tan(double x) { return std::tan(x); }
double Asin(double v) { return std::asin(v); }
double Acos(double v) { return std::acos(v); }
double Atan(double v) { return std::atan(v); }
double Ln(double v) { return std::log(v); }
double Log10(double v) { return std::log10(v); }

// The display forms of the screen's buttons, as the parser reads them.
std::string Normalized(std::string s) {
  static const std::pair<const char*, const char*> kForms[] = {
      {"\u00D7", "*"}, {"\u00F7", "/"}, {"\u2212", "-"}, {"\u03C0", "pi"}, {"\u221A", "sqrt"}};
  for (const auto& [from, to] : kForms) {
    const std::string f = from;
    for (std::size_t at; (at = s.find(f)) != std::string::npos;) s.replace(at, f.size(), to);
  }
  return s;
}

bool IsBlank(const std::string& s) { return s.find_first_not_of(" \t\r\n") == std::string::npos; }

}  // namespace

std::string FormatCalcResult(double value, char decimalSep) {
  if (value == 0) return "0";  // also -0
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.11e", value);  // d.ddddddddddde±XX: 12 digits, rounded
  std::string s = buf;
  const std::size_t e = s.find('e');
  const int exponent = std::atoi(s.c_str() + e + 1);
  const bool negative = s[0] == '-';
  std::string digits = s.substr(negative ? 1 : 0, e - (negative ? 1 : 0));
  digits.erase(1, 1);  // drop the point: 12 digits
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  std::string out = negative ? "-" : "";
  if (exponent >= 12 || exponent < -6) {
    out += digits.substr(0, 1);
    if (digits.size() > 1) out += decimalSep + digits.substr(1);
    out += exponent < 0 ? "E-" : "E+";
    out += std::to_string(std::abs(exponent));
  } else if (exponent >= 0) {
    if (digits.size() <= static_cast<std::size_t>(exponent) + 1) digits.append(exponent + 1 - digits.size(), '0');
    out += digits.substr(0, exponent + 1);
    if (digits.size() > static_cast<std::size_t>(exponent) + 1) out += decimalSep + digits.substr(exponent + 1);
  } else {
    out += std::string("0") + decimalSep + std::string(-exponent - 1, '0') + digits;
  }
  return out;
}

CalcOutcome TinyCalculator::Evaluate(const std::string& expression) {
  CalcOutcome r;
  if (IsBlank(expression)) {
    r.text = "Syntax error";
    r.detail = "empty expression";
    return r;
  }
  mu::Parser p;
  double ans = ans_, mem = memory_;
  try {
    p.SetDecSep(decimalSep_);
    p.SetArgSep(decimalSep_ == ',' ? ';' : ',');
    p.EnableBuiltInOprt(false);
    p.DefineOprt("+", Add, mu::prADD_SUB);
    p.DefineOprt("-", Subtract, mu::prADD_SUB);
    p.DefineOprt("*", Multiply, mu::prMUL_DIV);
    p.DefineOprt("/", Divide, mu::prMUL_DIV);
    p.DefineOprt("^", Power, mu::prPOW, mu::oaRIGHT);
    p.DefinePostfixOprt("%", Percent);
    const bool deg = angleUnit_ == AngleUnit::Degrees;
    p.DefineFun("sin", deg ? SinDeg : Sin);
    p.DefineFun("cos", deg ? CosDeg : Cos);
    p.DefineFun("tan", deg ? TanDeg : Tan);
    p.DefineFun("asin", deg ? AsinDeg : Asin);
    p.DefineFun("acos", deg ? AcosDeg : Acos);
    p.DefineFun("atan", deg ? AtanDeg : Atan);
    p.DefineFun("ln", Ln);
    p.DefineFun("log", Log10);
    p.DefineConst("pi", std::numbers::pi);
    p.DefineVar("ans", &ans);
    p.DefineVar("mem", &mem);
    p.SetExpr(Normalized(expression));
    const double v = p.Eval();
    if (p.GetNumResults() != 1) {
      r.detail = std::string("unexpected \"") + p.GetArgSep() + "\"";
      r.text = "Syntax error";
      return r;
    }
    if (!std::isfinite(v)) {
      r.kind = CalcOutcome::Kind::MathError;
      r.text = "Math error";
      return r;
    }
    r.kind = CalcOutcome::Kind::Ok;
    r.value = v;
    r.text = FormatCalcResult(v, decimalSep_);
  } catch (const DivisionByZero&) {
    r.kind = CalcOutcome::Kind::DivisionByZero;
    r.text = "Division by zero";
    return r;
  } catch (const mu::Parser::exception_type& e) {
    r.kind = CalcOutcome::Kind::SyntaxError;
    r.text = "Syntax error";
    r.detail = e.GetMsg();
    return r;
  }
  ans_ = r.value;
  history_.push_front({expression, r.text});
  if (history_.size() > kHistoryLimit) history_.pop_back();
  return r;
}

}  // namespace norvane
