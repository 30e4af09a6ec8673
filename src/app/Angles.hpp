#pragma once
// Angle helpers shared by every angle computation. Angles cross interfaces in degrees and are
// radians inside formulas. pi is the 15-digit literal used throughout the program, not M_PI:
// results are meant to match the reference values digit for digit.

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

}  // namespace norvane
