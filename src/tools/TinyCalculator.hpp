#pragma once
// The tiny math calculator's state and texts: an expression evaluated by muParser with the
// program's decimal separator, degree (or radian) trigonometry, `ans` (the last result) and `mem`
// (the one memory) as variables, and the results as the screen shows them.
//
// Operators: + - * / ^ with the usual precedence (^ binds tightest and to the right, then the sign,
// then * /, then + -), a postfix % (divides by 100), parentheses. Functions: sin cos tan asin acos
// atan (degrees unless radians are chosen), sqrt ln log (base 10) exp abs, the constant pi.
// The display forms "×", "÷", "−", "π" and "√" are accepted as well.

#include <cstddef>
#include <deque>
#include <string>

namespace norvane {

enum class AngleUnit { Degrees, Radians };

// How an evaluation ended. `text` is what the result line shows: the number, or "Division by
// zero", "Math error" (outside a function's domain, overflow) or "Syntax error"; `detail` says
// where a syntax error lies (the parser's own message).
struct CalcOutcome {
  enum class Kind { Ok, DivisionByZero, MathError, SyntaxError };
  Kind kind = Kind::SyntaxError;
  double value = 0;
  std::string text;
  std::string detail;
  bool ok() const { return kind == Kind::Ok; }
};

// 12 significant digits without trailing zeros; scientific ("1.5E+15", "2E-7") from 1E+12 up and
// below 1E-6 (0 excepted), decided after rounding, so 999999999999.9 shows "1E+12".
std::string FormatCalcResult(double value, char decimalSep = '.');

class TinyCalculator {
 public:
  struct HistoryEntry {
    std::string expression, result;
  };
  static constexpr std::size_t kHistoryLimit = 200;

  explicit TinyCalculator(char decimalSep = '.') : decimalSep_(decimalSep) {}

  // Evaluates `expression`; a success becomes `ans` and the newest history entry.
  CalcOutcome Evaluate(const std::string& expression);

  void SetAngleUnit(AngleUnit unit) { angleUnit_ = unit; }
  AngleUnit angleUnit() const { return angleUnit_; }
  char decimalSep() const { return decimalSep_; }

  double lastResult() const { return ans_; }
  double memory() const { return memory_; }
  bool memorySet() const { return memory_ != 0; }  // the "M" indicator
  void MemoryStore() { memory_ = ans_; }
  void MemoryAdd() { memory_ += ans_; }
  void MemorySubtract() { memory_ -= ans_; }
  void MemoryClear() { memory_ = 0; }

  const std::deque<HistoryEntry>& history() const { return history_; }

 private:
  char decimalSep_;
  AngleUnit angleUnit_ = AngleUnit::Degrees;
  double ans_ = 0;
  double memory_ = 0;
  std::deque<HistoryEntry> history_;
};

}  // namespace norvane
