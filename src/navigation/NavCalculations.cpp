#include "navigation/NavCalculations.hpp"

#include <cmath>
#include <string>

#include "app/Angles.hpp"
#include "app/NumberChars.hpp"
#include "app/TextFormat.hpp"
#include "app/Units.hpp"

namespace norvane {

double NmToUnit(double nm, DistanceUnit unit) {
  if (IsUndefined(nm)) return nm;
  switch (unit) {
    case DistanceUnit::Nm:
      return nm;
    case DistanceUnit::Km:
      return nm * kKmPerNm;
    case DistanceUnit::M:
      return nm * kNm;
    case DistanceUnit::Ft:
      return nm * kNm / kFt;
  }
  return nm;
}

double UnitToNm(double value, DistanceUnit unit) {
  switch (unit) {
    case DistanceUnit::Nm:
      return value;
    case DistanceUnit::Km:
      return value / kKmPerNm;
    case DistanceUnit::M:
      return value / kNm;
    case DistanceUnit::Ft:
      return value * (kFt / kNm);
  }
  return value;
}

double DmsToDegrees(double deg, double min, double sec, bool southOrWest) {
  const double v = deg + min / 60 + sec / 3600;
  return southOrWest ? -v : v;
}

double ShownVariation(double latDeg, double lonDeg, const MagSettings& mag) {
  const std::string text = FormatMask(TrackMagVar(latDeg, lonDeg, mag.year, mag.model), "0.0");
  return ParseDouble(text).value_or(0);
}

std::string MagSettingsText(const MagSettings& m) {
  return std::string(MagModelName(m.model)) + ", " + std::to_string(m.year);
}

double MagneticToTrue(double track, double variation) { return Norm360(track + variation); }

TracksResult ComputeTracks(double lat1, double lon1, double lat2, double lon2, const MagSettings* magnetic) {
  TracksResult r;
  r.gc = GeodesicWGS84(lat1, lon1, lat2, lon2);
  r.rl = RhumbLine(lat1, lon1, lat2, lon2);
  r.sph = GreatCircleSphere(lat1, lon1, lat2, lon2);
  r.tracks[0][0] = r.gc.trackIni;
  r.tracks[0][1] = r.gc.trackFin;
  r.tracks[1][0] = r.tracks[1][1] = r.rl.track;
  r.tracks[2][0] = r.sph.trackIni;
  r.tracks[2][1] = r.sph.trackFin;
  if (magnetic) {
    r.magnetic = true;
    r.variationOrigin = TrackMagVar(lat1, lon1, magnetic->year, magnetic->model);
    r.variationDestination = TrackMagVar(lat2, lon2, magnetic->year, magnetic->model);
    for (auto& row : r.tracks) {
      if (!IsUndefined(row[0])) row[0] = Norm360(row[0] - r.variationOrigin);
      if (!IsUndefined(row[1])) row[1] = Norm360(row[1] - r.variationDestination);
    }
  }
  return r;
}

std::array<double, 3> TracksDistances(const TracksResult& r) { return {r.gc.distance, r.rl.distance, r.sph.distance}; }

std::array<std::string, 9> TracksTexts(const TracksResult& r, DistanceUnit unit) {
  std::array<std::string, 9> t;
  const auto distances = TracksDistances(r);
  for (int row = 0; row < 3; ++row) {
    t[size_t(row * 3)] = DistanceText(NmToUnit(distances[size_t(row)], unit));
    t[size_t(row * 3 + 1)] = TrackText(r.tracks[row][0]);
    t[size_t(row * 3 + 2)] = TrackText(r.tracks[row][1]);
  }
  return t;
}

PointResult ComputePointFromTrack(double lat, double lon, double track, double distanceNm, bool wgs84,
                                  const MagSettings* magnetic, std::optional<double> variation) {
  PointResult r;
  if (track == 360) track = 0;
  r.trueTrack = track;
  if (magnetic) {
    if (!variation) {
      variation = ShownVariation(lat, lon, *magnetic);
      r.variationComputed = true;
    }
    r.variation = variation;
    r.trueTrack = MagneticToTrue(track, *variation);
  }
  r.point = wgs84 ? DirectWGS84(lat, lon, r.trueTrack, distanceNm) : DirectSphere(lat, lon, r.trueTrack, distanceNm);
  return r;
}

GeoPoint RadialIntersection(double lat1, double lon1, double crs13, double lat2, double lon2, double crs23) {
  const GeoPoint none{kUndefined, kUndefined};
  if (crs13 == 360) crs13 = 0;
  if (crs23 == 360) crs23 = 0;
  // Radians; the formulary's longitudes are positive west.
  const double la1 = lat1 * kDegToRad, la2 = lat2 * kDegToRad;
  const double lo1 = -lon1 * kDegToRad, lo2 = -lon2 * kDegToRad;
  const double c13 = crs13 * kDegToRad, c23 = crs23 * kDegToRad;

  const double s1 = std::sin((la1 - la2) / 2), s2 = std::sin((lo1 - lo2) / 2);
  const double dst12 = 2 * ArcSin(std::sqrt(s1 * s1 + std::cos(la1) * std::cos(la2) * s2 * s2));
  const double q1 = (std::sin(la2) - std::sin(la1) * std::cos(dst12)) / (std::sin(dst12) * std::cos(la1));
  const double q2 = (std::sin(la1) - std::sin(la2) * std::cos(dst12)) / (std::sin(dst12) * std::cos(la2));
  // Coincident points leave the line between them undefined (0 / 0).
  if (!std::isfinite(q1) || !std::isfinite(q2)) return none;
  double crs12, crs21;
  if (std::sin(lo2 - lo1) < 0) {
    crs12 = ArcCos(q1);
    crs21 = kTwoPi - ArcCos(q2);
  } else {
    crs12 = kTwoPi - ArcCos(q1);
    crs21 = ArcCos(q2);
  }
  double ang1 = FloorMod(c13 - crs12 + kPi, kTwoPi) - kPi;
  double ang2 = FloorMod(crs21 - c23 + kPi, kTwoPi) - kPi;
  // Infinitely many intersections (both radials along the line of the points), or none (the
  // radials leave on opposite sides of that line).
  if ((std::sin(ang1) == 0 && std::sin(ang2) == 0) || std::sin(ang1) * std::sin(ang2) < 0) return none;
  ang1 = std::fabs(ang1);
  ang2 = std::fabs(ang2);
  const double ang3 = ArcCos(-std::cos(ang1) * std::cos(ang2) + std::sin(ang1) * std::sin(ang2) * std::cos(dst12));
  const double dst13 =
      ArcTan2(std::sin(dst12) * std::sin(ang1) * std::sin(ang2), std::cos(ang2) + std::cos(ang1) * std::cos(ang3));
  const double lat3 = ArcSin(std::sin(la1) * std::cos(dst13) + std::cos(la1) * std::sin(dst13) * std::cos(c13));
  GeoPoint p{lat3 * kRadToDeg, kUndefined};
  if (!std::isfinite(p.lat)) return none;
  if (std::fabs(std::fabs(p.lat) - 90) <= 1.38e-6) return p;  // a pole: every longitude
  const double dlon =
      ArcTan2(std::sin(c13) * std::sin(dst13) * std::cos(la1), std::cos(dst13) - std::sin(la1) * std::sin(lat3));
  // East positive, one turn below the wanted value; brought back by the rule below.
  double lon3 = (-FloorMod(lo1 - dlon + kPi, kTwoPi) - kPi) * kRadToDeg;
  if (lon3 > 180)
    lon3 -= 360;
  else if (lon3 < -180)
    lon3 += 360;
  p.lon = lon3;
  return p;
}

std::string IntersectionText(double value, bool isLongitude) {
  return IsUndefined(value) ? "Not calculable" : FormatLatLong(value, isLongitude);
}

}  // namespace norvane
