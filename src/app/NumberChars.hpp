#pragma once
// Numbers to and from text in the "C" form whatever the locale, as std::from_chars and
// std::to_chars do for double. Standard libraries without them for floating point (libc++ 13 of
// the web build) get an equivalent on strtod and snprintf, chosen at compile time; both are
// always compiled so that the tests compare them.

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

// As std::from_chars(first, last, v, exponent ? general : fixed): "-" and no "+", digits with an
// optional point, an exponent when allowed, inf and nan. Returns the end of the number read, or
// nullptr when none starts at first or it overflows (v is then unchanged).
const char* ReadDouble(const char* first, const char* last, double& v, bool exponent = true);

// The whole text as one number (ReadDouble's rules), nullopt otherwise.
std::optional<double> ParseDouble(std::string_view text, bool exponent = true);

// As std::to_chars(first, last, v) and, with `fixed`, (..., chars_format::fixed): the fewest
// digits that read back as v. Returns the end, or nullptr when the text does not fit.
char* WriteShortest(char* first, char* last, double v, bool fixed = false);

// As std::to_chars(..., chars_format::general, precision), that is printf's %.<precision>g.
std::string FormatGeneral(double v, int precision);

namespace detail {
// The strtod/snprintf forms, used where <charconv> lacks double.
const char* ReadDoubleFallback(const char* first, const char* last, double& v, bool exponent);
char* WriteShortestFallback(char* first, char* last, double v, bool fixed);
std::string FormatGeneralFallback(double v, int precision);
}  // namespace detail

}  // namespace norvane
