#pragma once
// Number-to-text rules shared by every screen and by norvane-cli, so both print the same text.

#include <cstdint>
#include <string>
#include <string_view>

namespace norvane {

// Formats v through a display mask, rounding half away from zero on the exact binary value and
// never showing "-0". Supported masks:
//   integer digits "0" (minimum digits, e.g. "000"), an optional "." followed by required "0"s and
//   optional "#"s (trailing zeros of the optional part are cut), and an optional exponent part:
//   literal blanks, "E" or "e", "+" (always signed) or "-" (minus only), exponent digits "0" or "#".
// Examples: "0", "0.0", "000.0", "0.0###", "0.0000E+0", "0.00 E+##".
std::string FormatMask(double v, std::string_view mask);

// Fixed number of decimals, no thousands separator ("number-with-decimals"): 0.637, 1179.0.
std::string FormatFixed(double v, int decimals);

// Rounds to a 16-bit signed integer, halves to even (the BASIC CInt rule), saturating at the
// 16-bit limits instead of overflowing.
int16_t RoundToInt16(double v);

// Decimal text of n with "+" before positive values: 5 -> "+5", 0 -> "0", -5 -> "-5".
std::string SignedText(int n);

// %.17g, the full-precision form of --raw output.
std::string FormatRaw(double v);

// "m:ss" of a duration in seconds, rounded to the second; minutes go past 59 ("75:20").
std::string FormatMinutesSeconds(double seconds);

}  // namespace norvane
