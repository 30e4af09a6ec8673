#pragma once
// Angle helpers shared by every angle computation. Angles cross interfaces in degrees and are
// radians inside formulas. pi is the 15-digit literal used throughout the program, not M_PI:
// results are meant to match the reference values digit for digit.

#include "app/Quantity.hpp"

namespace norvane {

inline constexpr double kPi = 3.14159265358979;
inline constexpr double kTwoPi = 6.28318530717958;
inline constexpr double kDegToRad = 0.017453292519943278;
inline constexpr double kRadToDeg = 57.29577951308238;

// Four-quadrant arctangent in (-pi, pi]; ArcTan2(0, 0) is 0, never an error.
double ArcTan2(double y, double x);
// Arcsine that clamps: |x| >= 1 gives sign(x) * pi/2.
double ArcSin(double x);
// Arccosine that clamps: x > 1 gives 0, x < -1 gives pi.
double ArcCos(double x);
// One correction step into [0, 360), not a modulo: -370 gives -10 and 725 gives 365.
// Callers pass values within one turn of the range.
double Norm360(double a);

// The parts of a coordinate typed in degree, minute and second boxes, the hemisphere chosen beside
// them. A screen names the point before the caption: "Origin latitude degrees (0 to 89)".
inline constexpr Quantity kLatitudeDegrees{.caption = "Latitude degrees", .min = 0, .max = 89, .whole = true};
inline constexpr Quantity kLongitudeDegrees{.caption = "Longitude degrees", .min = 0, .max = 179, .whole = true};
inline constexpr Quantity kLatitudeMinutes{
    .caption = "Latitude minutes", .min = 0, .max = 59, .whole = true, .optional = true};
inline constexpr Quantity kLongitudeMinutes = kLatitudeMinutes.withCaption("Longitude minutes");
inline constexpr Quantity kLatitudeSeconds{.caption = "Latitude seconds",
                                           .min = 0,
                                           .max = 59.99,
                                           .rangeDecimals = 2,
                                           .maxLength = 5,
                                           .optional = true,
                                           .minDecimals = 0};
inline constexpr Quantity kLongitudeSeconds = kLatitudeSeconds.withCaption("Longitude seconds");

}  // namespace norvane
