#pragma once
// What one numeric input is: its caption, admissible range, unit and whether it takes whole
// numbers. Written once per input, next to the model that uses it; the screen's box takes its
// rule and tool tip from it, the help line its range text, and norvane-cli its option help, its
// check and its refusal text (`norvane-cli describe` lists them all).

#include <string>
#include <string_view>

#include "app/InputRules.hpp"

namespace norvane {

struct Quantity {
  std::string_view caption{};      // "True air speed": starts the tool tip and the option help
  double min = 0;                  // inclusive
  double max = 0;                  // inclusive
  std::string_view unit{};         // as the screen writes it after the range: "kts", "°", "NM"; may be empty
  bool whole = false;              // whole numbers only
  int rangeDecimals = 0;           // decimals of min and max in the range text: 1 gives "0.0 to 360.0°"
  int maxLength = 0;               // characters the box takes; 0: enough for min and max (and 2 decimals)
  bool optional = false;           // the box may stay empty
  std::string_view note{};         // inside the brackets, before the range: "CAS ; " in "(CAS ; 20 to 300 kts)"
  std::string_view after{};        // after the brackets: " - Leave blank for automatic calculation"
  std::string_view cliUnit{};      // the unit as norvane-cli names it when it differs: "kt", "degrees"
  int minDecimals = -1;            // decimals of min when they differ from rangeDecimals: 0 gives "0 to 3.00"
  bool upTo = false;               // the range text names the maximum alone: "up to 5400 NM"
  std::string_view remark{};       // inside the brackets, after the range: ", tail wind positive"
  bool grouped = false;            // numbers of five digits or more in groups of three: "1 500 000"
  bool plusSign = false;           // a plus sign before a positive end: "-90 to +40°C"
  bool captionInBrackets = false;  // the tool tip opens with the bracket: "(Geometric altitude -500 to 85999 m)"

  constexpr Quantity withCaption(std::string_view c) const {
    Quantity q = *this;
    q.caption = c;
    return q;
  }
  constexpr Quantity withRange(double lo, double hi) const {
    Quantity q = *this;
    q.min = lo;
    q.max = hi;
    return q;
  }
};

// "50 to 1500 kts", "0.0 to 360.0°", "-75 to 55°C", "0.05 to 3.00", "up to 5400 NM" (no blank before a
// degree sign).
std::string RangeText(const Quantity& q);
// "True air speed (50 to 1500 kts)", with the note, the remark and the text after the brackets.
std::string ToolTipText(const Quantity& q);
// The unit as the command line names it: cliUnit, else unit.
std::string_view CliUnit(const Quantity& q);
// True when v lies in the range and is whole where the quantity must be.
bool Admits(const Quantity& q, double v);
// The key filter's mode: signed when the range goes below zero, integer when whole.
KeyMode KeyModeOf(const Quantity& q);
// The characters the box takes (maxLength, or enough for the range's ends).
int BoxLength(const Quantity& q);

}  // namespace norvane
