#pragma once
// Earth models shared by the navigation screens and norvane-cli: the inverse problem (distance and
// tracks between two points) on the sphere, on the WGS-84 ellipsoid and along a rhumb line; the
// direct problem (point reached along a track for a distance) on the sphere and the ellipsoid; the
// coordinate and distance texts the screens show.
//
// Conventions of every routine here:
//   - angles at the interface are decimal degrees: latitude north positive, longitude east
//     positive, tracks true, clockwise from north; radians only inside the formulas;
//   - distances are nautical miles;
//   - tracks are returned in (0, 360] (the sphere and rhumb-line meridian cases report north as
//     360) or [0, 360) (the ellipsoid), or kUndefined where a track has no meaning.
//
// The sphere is the navigator's sphere on which one minute of arc is one nautical mile (radius
// 10800 / pi NM). The ellipsoid is WGS-84 written in kilometres, as used by Vincenty:
//   T. Vincenty, "Direct and inverse solutions of geodesics on the ellipsoid with application of
//   nested equations", Survey Review 23(176), 88-93 (1975).

#include <optional>
#include <string>
#include <string_view>

#include "app/Angles.hpp"
#include "app/Units.hpp"

namespace norvane {

// Marker of an undefined result: a track with no meaning (coincident points, antipodes) or a
// geodesic that did not converge. Screens show it as "ND".
inline constexpr double kUndefined = -1E+32;
inline constexpr bool IsUndefined(double v) { return v == kUndefined; }

// One minute of arc is one nautical mile: radius 10800 / pi = 3437.7467707849396 NM.
inline constexpr double kSphereRadiusNm = 10800 / kPi;

// WGS-84 in kilometres (semi-minor axis rounded to 0.1 mm as Vincenty's users write it).
inline constexpr double kWgs84AKm = 6378.137;
inline constexpr double kWgs84BKm = 6356.7523142;
inline constexpr double kWgs84F = 0.0033528106647474805;  // 1 / 298.257223563
inline constexpr double kWgs84A2 = 40680631.59076899;     // a^2, km^2
inline constexpr double kWgs84B2 = 40408299.98408706;     // b^2, km^2

// Distance and the two tracks of an inverse problem. distance in NM; trackIni is the track
// leaving point 1, trackFin the track arriving at point 2; kUndefined where undefined.
struct InverseResult {
  double distance = 0;
  double trackIni = kUndefined;
  double trackFin = kUndefined;
};

// Distance and the constant track of a rhumb line (loxodrome).
struct RhumbResult {
  double distance = 0;
  double track = kUndefined;
};

struct GeoPoint {
  double lat = 0;  // degrees, north positive
  double lon = 0;  // degrees, east positive, in [-180, 180]
};

// Great circle on the sphere of radius 10800 / pi NM.
//   Entry tests, in order: the same point, or both points on the same pole: distance 0, tracks
//   undefined. Equal longitudes, or a point on a pole: a meridian, distance |lat2 - lat1| * 60,
//   tracks 360 northbound (never 0) and 180 southbound. Exact antipodes (|lon2 - lon1| = 180 and
//   lat2 = -lat1): 10800 NM, tracks undefined.
//   Central angle by the haversine for |lon2 - lon1| <= 135 degrees, by the atan2 form beyond,
//   where the haversine would lose accuracy near the antipode; the distance agrees with an exact
//   spherical geodesic to better than a micrometre.
//   Tracks come from arcsines, put into a quadrant by the latitude order of the two points only:
//   where the great circle's vertex lies between the points the track differs from the
//   geometric azimuth (0 N 0 E to 10 N 100 E: final track 88.25 where the azimuth is 91.75).
//   This rule is the calculator's established behaviour and is kept.
InverseResult GreatCircleSphere(double lat1, double lon1, double lat2, double lon2);

// Geodesic on the WGS-84 ellipsoid by Vincenty's inverse formula.
//   Same point or same pole: distance 0, tracks undefined. No meridian shortcut: a northbound
//   meridian has track 0 here. Lambda is iterated to 1e-12 rad for at most 20 rounds; nearly
//   antipodal pairs that do not converge return kUndefined for the distance and both tracks.
//   Where it converges the distance agrees with the exact geodesic to 0.15 mm and the tracks to
//   about 1e-6 degree (lines shorter than a metre aside). Tracks in [0, 360).
InverseResult GeodesicWGS84(double lat1, double lon1, double lat2, double lon2);

// Rhumb line on the sphere of radius 10800 / pi NM.
//   Entry tests as GreatCircleSphere (same point / pole, then meridians: track 360 or 180).
//   On one parallel the longitude difference is taken the short way (200 degrees becomes -160,
//   track 270) and the track is 90 or 270. Otherwise the longitude difference is used as given,
//   so a line with |lon2 - lon1| > 180 goes the long way round (40 N 170 E to 45 N 170 W: track
//   271.1, 15031 NM). The stretched-latitude difference avoids cancellation within 0.1 degree of
//   a pole and uses a series when the two latitudes nearly coincide. Nearly east-west lines lose
//   relative accuracy as 1 / cos(track) (the distance is dlat / cos(track)).
RhumbResult RhumbLine(double lat1, double lon1, double lat2, double lon2);

// Point reached from (lat1, lon1) along a great circle of the sphere with initial track `track`
// for `distance` NM. Longitudes beyond +-180 are brought back once; exactly +-180 is kept.
GeoPoint DirectSphere(double lat1, double lon1, double track, double distance);

// Point reached along the WGS-84 geodesic (Vincenty's direct formula). sigma is iterated to
// 1e-12 rad; the iteration contracts by a factor of about 0.002 a round and ends within a few
// rounds, but it is also bounded (kDirectMaxRounds) so that distances so large that sigma can no
// longer be resolved to 1e-12 still end. Agrees with the exact geodesic to 0.3 mm over a whole
// meridian (mostly the semi-minor axis being rounded to 0.1 mm). A latitude within 1e-14 rad of
// the equator is returned as exactly 0. Longitudes are brought back by one turn, enough for
// distances up to three times round the earth.
inline constexpr int kDirectMaxRounds = 200;
GeoPoint DirectWGS84(double lat1, double lon1, double track, double distance);

// A positive distance with `digits` significant figures and at most maxDecimals decimals:
// FormatSignificant(1234.567, 4, 3) = "1235", (12.3456, 4, 3) = "12.35", (0.012345, 4, 3) =
// "0.012". value must be > 0 (a value of 0 or below, or not finite, is shown with the mask "0").
std::string FormatSignificant(double value, int digits, int maxDecimals);

// Coordinate text: hemisphere letter (N/S, E/W; zero counts as N or E), degrees ("00" latitude,
// "000" longitude), minutes "00" and seconds "00.00": "N45 30 00.00", "W073 59 02.40".
// Degrees and minutes are truncated; seconds of 59.995 or more carry into the minutes, and 60
// minutes into the degrees.
std::string FormatLatLong(double value, bool isLongitude);

// A coordinate typed as text, in signed decimal degrees ("-0.4613") or in the hemisphere forms
// pilots write, the letter first or last: "N51 28 39", "51 28 39.5N", "W000 27 41", "S33 52.5",
// "E151.2". Degrees, minutes and seconds are separated by blanks or marked with the degree sign,
// ' and "; only the last part may have decimals and minutes and seconds stay below 60. N/S belong
// to a latitude, E/W to a longitude. nullopt when malformed; the range is the caller's to check.
std::optional<double> ParseCoordinate(std::string_view text, bool isLongitude);

// a - floor(a / b) * b: for b > 0 the result lies in [0, b).
double FloorMod(double a, double b);

// Texts of the "Tracks and distance" results, shared by the screen and norvane-cli:
// a track with the mask "000.0" or "ND"; a distance (any unit) by FormatSignificant(v, 4, 3),
// "0" for exactly 0 and "ND" for kUndefined.
std::string TrackText(double track);
std::string DistanceText(double distance);

}  // namespace norvane
