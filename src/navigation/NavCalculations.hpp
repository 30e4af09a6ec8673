#pragma once
// The computations and result texts of the four navigation screens ("Tracks and distance",
// "Point from track-distance", "Radial intersection", "Magnetic variation"), Qt-free so that the
// screens and norvane-cli show the same texts.

#include <array>
#include <optional>
#include <string>

#include "app/Quantity.hpp"
#include "navigation/GeoMag.hpp"
#include "navigation/Geodesy.hpp"

namespace norvane {

// Distance units of the navigation screens, in the order of their option buttons.
enum class DistanceUnit { Nm = 0, Km = 1, M = 2, Ft = 3 };

// NM into the unit: km = NM * 1.852, m = NM * 1852, ft = NM * 1852 / 0.3048. kUndefined stays.
double NmToUnit(double nm, DistanceUnit unit);
// The unit into NM: km / 1.852, m / 1852, ft * (0.3048 / 1852).
double UnitToNm(double value, DistanceUnit unit);

// The distance of "Point from track-distance": up to 5400 NM, or up to 10000 in the other units.
constexpr Quantity PointDistance(DistanceUnit unit) {
  Quantity q{.caption = "Distance from origin", .min = 0, .max = 5400, .unit = "NM", .maxLength = 7, .upTo = true};
  if (unit == DistanceUnit::Nm) return q;
  q.max = 10000;
  q.unit = unit == DistanceUnit::Km ? "km" : unit == DistanceUnit::M ? "m" : "ft";
  return q;
}
// True tracks from a point, 360 taken as 0.
inline constexpr Quantity kTrackFromOrigin{.caption = "Track from origin",
                                           .min = 0,
                                           .max = 360,
                                           .unit = "\u00b0",
                                           .rangeDecimals = 1,
                                           .maxLength = 5,
                                           .cliUnit = "degrees"};
inline constexpr Quantity kTrackFromFirstPoint = kTrackFromOrigin.withCaption("Track from 1st point");
inline constexpr Quantity kTrackFromSecondPoint = kTrackFromOrigin.withCaption("Track from 2nd point");
// A magnetic variation, east positive; an empty box takes the model's.
inline constexpr Quantity kMagneticVariation{.caption = "Magnetic variation",
                                             .min = -180,
                                             .max = 180,
                                             .unit = "\u00b0",
                                             .maxLength = 6,
                                             .optional = true,
                                             .note = "E is positive ; ",
                                             .after = " - Leave blank for automatic calculation",
                                             .cliUnit = "degrees"};
inline constexpr Quantity kVariationAtFirstPoint = kMagneticVariation.withCaption("Magnetic variation at 1st point");
inline constexpr Quantity kVariationAtSecondPoint = kMagneticVariation.withCaption("Magnetic variation at 2nd point");
// The altitude of "Magnetic variation": whole feet above the WGS-84 ellipsoid.
inline constexpr Quantity kGeodeticAltitude{
    .caption = "Geodetic altitude", .min = 0, .max = 65000, .unit = "ft", .whole = true};

// Signed decimal degrees from degrees, minutes and seconds: south and west negative.
double DmsToDegrees(double deg, double min, double sec, bool southOrWest);

// Settings the magnetic tracks use: 1 January of `year` with `model`.
struct MagSettings {
  int year = 2005;
  MagModel model = MagModel::IGRF10;
};
// The years offered for a model: its epoch year to the fourth after it.
constexpr Quantity MagYear(MagModel model) {
  return Quantity{.caption = "Magnetic variation year (1 January)", .whole = true}.withRange(MagModelEpoch(model),
                                                                                             MagModelLastYear(model));
}
// The model and year of the settings as the screens name them: "WMM2025, 2026".
std::string MagSettingsText(const MagSettings& m);

// "Tracks and distance": geodesic (GC row), rhumb line (RL) and sphere (SPH) between two points.
struct TracksResult {
  InverseResult gc, sph;
  RhumbResult rl;
  // Tracks as shown (true, or magnetic when asked): [row][0 ini, 1 fin], rows GC, RL, SPH.
  double tracks[3][2] = {};
  bool magnetic = false;
  double variationOrigin = 0, variationDestination = 0;  // east positive, when magnetic
};
// Magnetic tracks subtract the variation at the origin from each defined initial track and the
// variation at the destination from each defined final track, brought into 0..360 by Norm360; the
// rhumb line's one track is shown under both columns, each corrected with its end's variation.
TracksResult ComputeTracks(double lat1, double lon1, double lat2, double lon2, const MagSettings* magnetic);
// The nine texts in the order GC dist, ini, fin, RL dist, ini, fin, SPH dist, ini, fin; distances
// in `unit` with four significant figures ("0" for none, "ND" undefined), tracks "000.0" or "ND".
std::array<std::string, 9> TracksTexts(const TracksResult& r, DistanceUnit unit);
// The distances of the rows in NM (kUndefined where the geodesic did not converge).
std::array<double, 3> TracksDistances(const TracksResult& r);

// The model's variation at a point (TrackMagVar) rounded to the tenth of a degree that the
// variation box shows ("0.0"): a result computed with it is what a second Calculate, reading the
// box back, gives again.
double ShownVariation(double latDeg, double lonDeg, const MagSettings& mag);

// A magnetic track made true: track + variation (east positive), brought into 0..360 by Norm360.
double MagneticToTrue(double track, double variation);

// "Point from track-distance".
struct PointResult {
  GeoPoint point;
  double trueTrack = 0;
  std::optional<double> variation;  // used for a magnetic track (given or computed)
  bool variationComputed = false;
};
// track 0..360 (360 is 0), distance in NM. With `magnetic`, the track is magnetic and the true
// track is track + variation (Norm360), the variation being `variation` or, when absent, the
// model's at the origin as shown (ShownVariation).
PointResult ComputePointFromTrack(double lat, double lon, double track, double distanceNm, bool wgs84,
                                  const MagSettings* magnetic, std::optional<double> variation);

// "Radial intersection" on the navigator's sphere (after E. Williams, Aviation Formulary,
// "Intersection of two radials"): the point where the great circle leaving point 1 on true track
// crs13 meets the great circle leaving point 2 on crs23, all in degrees. Both coordinates are
// kUndefined when the radials do not meet (parallel, both along the line of the points, or
// diverging) or the points coincide; the longitude alone is kUndefined when the intersection is a
// pole.
GeoPoint RadialIntersection(double lat1, double lon1, double crs13, double lat2, double lon2, double crs23);
// FormatLatLong of a coordinate, or "Not calculable".
std::string IntersectionText(double value, bool isLongitude);

}  // namespace norvane
