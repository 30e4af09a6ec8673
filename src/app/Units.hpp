#pragma once
// Unit factors shared by every model and screen, exact by definition unless noted. Arithmetic
// keeps them as written (x * kFt, never a rounded reciprocal) so results match digit for digit.

namespace norvane {

inline constexpr double kFt = 0.3048;  // m per international foot
inline constexpr double kNm = 1852;    // m per international nautical mile
inline constexpr double kKmPerNm = 1.852;
inline constexpr double kStatuteMile = 1609.344;  // m per statute mile
inline constexpr double kKgPerLb = 0.45359237;    // kg per avoirdupois pound
inline constexpr double kInHg = 33.86389;         // hPa per inch of mercury at 0 degrees C
inline constexpr double kG0 = 9.80665;            // standard gravity, m/s2
inline constexpr double kKmhPerMps = 3.6;

}  // namespace norvane
