#pragma once
// The kinds of input the manoeuvre calculators share. Built field by field (Quantity q{} and
// assignments), so that each input names only what sets it apart.

#include <string_view>

#include "app/Quantity.hpp"

namespace norvane {

// Whole knots: "kts" on the screens, "kt" in norvane-cli.
constexpr Quantity WholeKnots(std::string_view caption, double min, double max) {
  Quantity q{};
  q.caption = caption;
  q.min = min;
  q.max = max;
  q.unit = "kts";
  q.whole = true;
  q.cliUnit = "kt";
  return q;
}

// Whole degrees: "°" on the screens, "degrees" in norvane-cli. Tracks, headings and wind
// directions take 0 to 360, where 360 is north as 0 is.
constexpr Quantity WholeDegrees(std::string_view caption, double min = 0, double max = 360) {
  Quantity q = WholeKnots(caption, min, max);
  q.unit = "\u00b0";
  q.cliUnit = "degrees";
  return q;
}

// A number with `decimals` in its range text.
constexpr Quantity DecimalInput(std::string_view caption, double min, double max, std::string_view unit, int decimals) {
  Quantity q{};
  q.caption = caption;
  q.min = min;
  q.max = max;
  q.unit = unit;
  q.rangeDecimals = decimals;
  return q;
}

// The same input where the box may stay empty.
constexpr Quantity OptionalInput(Quantity q) {
  q.optional = true;
  return q;
}

}  // namespace norvane
