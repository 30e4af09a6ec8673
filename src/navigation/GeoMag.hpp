#pragma once
// Magnetic variation (declination) from a spherical-harmonic main-field model: the World Magnetic
// Model 2005 (McLean et al., NOAA Technical Report NESDIS/NGDC-1, 2004) and the 10th generation
// International Geomagnetic Reference Field (IAGA Working Group V-MOD, 2005), both for epoch
// 2005.0, and their current successors WMM2025 (Chulliat et al., NOAA NCEI, 2024) and IGRF-14
// (IAGA Working Group V-MOD, 2024), both for epoch 2025.0. The coefficients are compiled into the
// program from data/geomag/*.COF.
//
// Accuracy: the synthesis reproduces NOAA's published test values (WMM2005 at 2006.0, WMM2025 in
// 2025-2030) to their printed precision. Each model describes the main field to about 0.5 degree
// of declination away from the magnetic poles within its five years; dates beyond are
// extrapolated linearly, dates before use the epoch.

#include <string>

namespace norvane {

// A calendar date (proleptic Gregorian).
struct CalendarDate {
  int year = 2005;
  int month = 1;
  int day = 1;
};

inline constexpr int kGeomagMaxDegree = 13;
inline constexpr double kGeomagReferenceRadiusKm = 6371.2;

// Schmidt semi-normalised Gauss coefficients of a main-field model at its epoch, indexed [n][m]
// with degree n from 1 and order m = 0..n; unused slots are zero.
struct GaussCoefficients {
  double g[kGeomagMaxDegree + 1][kGeomagMaxDegree + 1]{};     // nT
  double h[kGeomagMaxDegree + 1][kGeomagMaxDegree + 1]{};     // nT
  double gdot[kGeomagMaxDegree + 1][kGeomagMaxDegree + 1]{};  // secular variation, nT/year
  double hdot[kGeomagMaxDegree + 1][kGeomagMaxDegree + 1]{};  // nT/year
  int maxDegree = 0;                                          // degree used in the synthesis
};

// The models, numbered as the settings file stores them (DefMVModel).
enum class MagModel { IGRF10 = 0, WMM2005 = 1, WMM2025 = 2, IGRF14 = 3 };
inline constexpr int kMagModelCount = 4;

// The published tables: WMM2005 (degree 12, secular variation to 8) and IGRF-10 (13 / 8) for
// 2005.0; WMM2025 (12 / 12) and IGRF-14 (13 / 8) for 2025.0. Each call returns a fresh copy of a
// constant table (a few kilobytes, no parsing).
GaussCoefficients LoadWMM2005();
GaussCoefficients LoadIGRF10();
GaussCoefficients LoadWMM2025();
GaussCoefficients LoadIGRF14();
GaussCoefficients LoadMagModel(MagModel model);

// "IGRF-10", "WMM2005", "WMM2025", "IGRF-14".
const char* MagModelName(MagModel model);
// The model's epoch year (2005 or 2025); it is valid from 1 January of that year for five years,
// and the year lists offer the epoch year to the fourth after it.
inline constexpr int MagModelEpoch(MagModel model) {
  return model == MagModel::WMM2025 || model == MagModel::IGRF14 ? 2025 : 2005;
}
inline constexpr int MagModelLastYear(MagModel model) { return MagModelEpoch(model) + 4; }
// The degree up to which the secular variation is applied: 8, or 12 for WMM2025.
int MagModelSecularDegree(MagModel model);

// Geodetic (WGS-84) to geocentric spherical coordinates.
//   latitude geodetic in radians, altitude in km above the ellipsoid.
//   r: geocentric radius in km; sinTheta, cosTheta: geocentric colatitude; sinDelta, cosDelta:
//   the angle between the geodetic and the geocentric vertical (positive in the northern
//   hemisphere).
struct GeocentricCoordinates {
  double r = 0;
  double sinTheta = 0, cosTheta = 0;
  double sinDelta = 0, cosDelta = 1;
};
GeocentricCoordinates GeodeticToGeocentric(double latitude, double altitude);

// Main-field vector in the geodetic frame, nT: x north, y east, z down.
struct MagneticVector {
  double x = 0, y = 0, z = 0;
};

// Field synthesised from the coefficients as given (no time advance), up to c.maxDegree.
// latitude and longitude geodetic in radians, altitude km above the ellipsoid. The east component
// divides by the sine of the geocentric colatitude: not defined on the poles themselves.
MagneticVector MainField(const GaussCoefficients& c, double latitude, double longitude, double altitude);

// Whole days from 1 January 2005 to `date` (negative before).
long DaysSince2005(const CalendarDate& date);

// The field of `model` advanced by `years` (decimal years after its epoch; 0 or less: the epoch
// coefficients) of secular variation up to MagModelSecularDegree.
MagneticVector ModelField(MagModel model, double latitude, double longitude, double altitude, double years);

// Magnetic variation in degrees, east positive, at a geodetic latitude and longitude in radians,
// altitude in km, on `date`, with `model`.
//   The coefficients are advanced by (days since 1 January of the epoch year) / 365.25 years of
//   secular variation, and only after that day: earlier dates use the epoch coefficients. The
//   callers keep |latitude| <= 89 degrees 59 minutes.
double ComputeMagVar(double latitude, double longitude, double altitude, const CalendarDate& date, MagModel model);

// The variation used for magnetic tracks on the navigation screens: at sea level on 1 January of
// `year`, latitude and longitude in degrees; a latitude beyond 89.98 degrees is taken at 89
// degrees 59 minutes (1.57050543858 rad) with its sign, where the model is defined.
double TrackMagVar(double latDeg, double lonDeg, int year, MagModel model);

// Empty when `date` lies in the model's five years (1 January of the epoch year to 1 January five
// years later); otherwise a line saying so, which model to use instead or how the date is
// computed: "WMM2005 is valid 2005–2010; WMM2025 gives today's variation".
std::string MagValidityNotice(MagModel model, const CalendarDate& date);

// The variation as the screens show it: magnitude with the mask "0.0" followed by "E" (zero or
// east) or "W" (west): 2.3E, 11.0W.
std::string MagVarText(double variation);

}  // namespace norvane
