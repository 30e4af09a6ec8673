#include "navigation/Geodesy.hpp"

#include <algorithm>
#include <cmath>

#include "app/NumberChars.hpp"
#include "app/TextFormat.hpp"

namespace norvane {
namespace {

constexpr double kF = kWgs84F;
constexpr double kOneMinusF = 0.9966471893352525;

// Entry test shared by the three inverse procedures: the same point, or two points on one pole
// (whatever their longitudes) have no track.
bool SamePoint(double lat1, double lat2, double lon1, double lon2) {
  return lat1 == lat2 && (lon1 == lon2 || std::fabs(lat1) == 90);
}

// Entry test of the sphere and the rhumb line: along a meridian, or from or to a pole, the path
// is a meridian. North is reported as 360.
bool OnMeridian(double lat1, double lat2, double lon1, double lon2) {
  return lon1 == lon2 || std::fabs(lat1) == 90 || std::fabs(lat2) == 90;
}

// Vincenty's A and B series in u^2 = cos^2(alpha) (a^2 - b^2) / b^2.
struct VincentyAB {
  double A, B;
};
VincentyAB SeriesAB(double cos2Alpha) {
  const double u2 = cos2Alpha * (kWgs84A2 - kWgs84B2) / kWgs84B2;
  return {1 + u2 / 16384 * (4096 + u2 * (-768 + u2 * (320 - 175 * u2))),
          u2 / 1024 * (256 + u2 * (-128 + u2 * (74 - 47 * u2)))};
}

double DeltaSigma(double B, double sinSigma, double cosSigma, double cos2SigmaM) {
  const double c2 = cos2SigmaM * cos2SigmaM;
  return B * sinSigma *
         (cos2SigmaM +
          B / 4 * (cosSigma * (-1 + 2 * c2) - B / 6 * cos2SigmaM * (-3 + 4 * sinSigma * sinSigma) * (-3 + 4 * c2)));
}

// Brings a longitude back into [-180, 180] by one turn; exactly +-180 is kept.
double WrapLongitude(double lon) {
  if (lon > 180) return lon - 360;
  if (lon < -180) return lon + 360;
  return lon;
}

// tan(pi/4 + lat/2) as (1 + tan(lat/2)) / (1 - tan(lat/2)). Within 0.1 degree of a pole the
// vanishing factor is rewritten with 1 - t^2 = 2 cos(lat) / (1 + cos(lat)), so it keeps its
// relative accuracy instead of being the difference of two nearly equal numbers.
double StretchedTangent(double latRad, double latDeg) {
  const double t = std::tan(latRad / 2);
  double num = 1 + t, den = 1 - t;
  if (latDeg > 89.9) {
    const double c = std::cos(latRad);
    den = 2 * c / ((c + 1) * (1 + t));
  } else if (latDeg < -89.9) {
    const double c = std::cos(latRad);
    num = 2 * c / ((c + 1) * (1 - t));
  }
  return num / den;
}

}  // namespace

InverseResult GreatCircleSphere(double lat1, double lon1, double lat2, double lon2) {
  if (SamePoint(lat1, lat2, lon1, lon2)) return {0, kUndefined, kUndefined};
  if (OnMeridian(lat1, lat2, lon1, lon2)) {
    const double track = lat2 > lat1 ? 360 : 180;
    return {std::fabs(lat2 - lat1) * 60, track, track};
  }
  if (std::fabs(lon2 - lon1) == 180 && lat2 == -lat1) return {10800, kUndefined, kUndefined};

  const double phi1 = lat1 * kDegToRad, phi2 = lat2 * kDegToRad;
  const double dlonDeg = lon2 - lon1;  // not normalised: sin and cos take care of the turn
  const double dlon = dlonDeg * kDegToRad;
  const double cos1 = std::cos(phi1), cos2 = std::cos(phi2);
  const double sin1 = std::sin(phi1), sin2 = std::sin(phi2);
  const double sinDlon = std::sin(dlon);
  double d;
  if (std::fabs(dlonDeg) <= 135) {
    const double sdlat = std::sin((phi2 - phi1) / 2), sdlon = std::sin(dlon / 2);
    d = 2 * ArcSin(std::sqrt(sdlat * sdlat + cos1 * cos2 * sdlon * sdlon));
  } else {
    // Near the antipode the haversine's arcsine is ill-conditioned; atan2 of the chord's
    // components keeps full accuracy there.
    const double cosDlon = std::cos(dlon);
    const double y1 = cos2 * sinDlon, y2 = cos1 * sin2 - sin1 * cos2 * cosDlon;
    d = ArcTan2(std::sqrt(y1 * y1 + y2 * y2), sin1 * sin2 + cos1 * cos2 * cosDlon);
  }
  const double distance = d * kRadToDeg * 60;
  const double sinD = std::sin(d);
  // Points so close that the central angle underflows to 0 have no track.
  if (sinD == 0) return {distance, kUndefined, kUndefined};

  double ini = ArcSin(sinDlon * cos2 / sinD) * kRadToDeg;
  double fin = ArcSin(sinDlon * cos1 / sinD) * kRadToDeg;
  if (lat2 < lat1) {
    ini = 180 - ini;
    fin = 180 - fin;
  } else {
    if (ini < 0) ini += 360;
    if (fin < 0) fin += 360;
  }
  return {distance, ini, fin};
}

InverseResult GeodesicWGS84(double lat1, double lon1, double lat2, double lon2) {
  if (SamePoint(lat1, lat2, lon1, lon2)) return {0, kUndefined, kUndefined};

  const double L = (lon2 - lon1) * kDegToRad;
  const double U1 = std::atan(kOneMinusF * std::tan(lat1 * kDegToRad));
  const double U2 = std::atan(kOneMinusF * std::tan(lat2 * kDegToRad));
  const double sinU1 = std::sin(U1), cosU1 = std::cos(U1);
  const double sinU2 = std::sin(U2), cosU2 = std::cos(U2);

  double lambda = L, previous = 2 * kPi;
  int rounds = 20;
  double sinLambda = 0, cosLambda = 0, sinSigma = 0, cosSigma = 0, sigma = 0;
  double cos2Alpha = 0, cos2SigmaM = 0;
  while (std::fabs(lambda - previous) > 1e-12 && rounds >= 1) {
    sinLambda = std::sin(lambda);
    cosLambda = std::cos(lambda);
    const double y1 = cosU2 * sinLambda, y2 = cosU1 * sinU2 - sinU1 * cosU2 * cosLambda;
    sinSigma = std::sqrt(y1 * y1 + y2 * y2);
    if (sinSigma == 0) return {0, kUndefined, kUndefined};
    cosSigma = sinU1 * sinU2 + cosU1 * cosU2 * cosLambda;
    sigma = ArcTan2(sinSigma, cosSigma);
    const double sinAlpha = cosU1 * cosU2 * sinLambda / sinSigma;
    cos2Alpha = 1 - sinAlpha * sinAlpha;
    // The one guarded division: an equatorial line has cos^2(alpha) = 0 and keeps the previous
    // cos(2 sigma_m), which starts at 0.
    if (cos2Alpha != 0) cos2SigmaM = cosSigma - 2 * sinU1 * sinU2 / cos2Alpha;
    const double C = kF / 16 * cos2Alpha * (4 + kF * (4 - 3 * cos2Alpha));
    previous = lambda;
    lambda = L + (1 - C) * kF * sinAlpha *
                     (sigma + C * sinSigma * (cos2SigmaM + C * cosSigma * (-1 + 2 * cos2SigmaM * cos2SigmaM)));
    --rounds;
  }
  if (rounds == 0) return {kUndefined, kUndefined, kUndefined};

  const auto [A, B] = SeriesAB(cos2Alpha);
  const double s = kWgs84BKm * A * (sigma - DeltaSigma(B, sinSigma, cosSigma, cos2SigmaM));

  sinLambda = std::sin(lambda);
  cosLambda = std::cos(lambda);
  double ini = ArcTan2(cosU2 * sinLambda, cosU1 * sinU2 - sinU1 * cosU2 * cosLambda) * kRadToDeg;
  double fin = ArcTan2(cosU1 * sinLambda, cosU1 * sinU2 * cosLambda - sinU1 * cosU2) * kRadToDeg;
  if (ini < 0) ini += 360;
  if (fin < 0) fin += 360;
  return {s / kKmPerNm, ini, fin};
}

RhumbResult RhumbLine(double lat1, double lon1, double lat2, double lon2) {
  if (SamePoint(lat1, lat2, lon1, lon2)) return {0, kUndefined};
  if (OnMeridian(lat1, lat2, lon1, lon2)) return {std::fabs(lat2 - lat1) * 60, lat2 > lat1 ? 360.0 : 180.0};

  if (lat1 == lat2) {
    double dlon = lon2 - lon1;
    if (dlon <= -180)
      dlon += 360;
    else if (dlon >= 180)
      dlon -= 360;
    return {std::fabs(dlon) * std::cos(lat1 * kDegToRad) * 60, dlon > 0 ? 90.0 : 270.0};
  }

  const double phi1 = lat1 * kDegToRad, phi2 = lat2 * kDegToRad;
  const double R = StretchedTangent(phi2, lat2) / StretchedTangent(phi1, lat1);
  double dpsi;
  if (std::fabs(1 - R) < 0.001) {
    // ln(R) by its series in x = R - 1, with x formed without the cancellation of R - 1:
    // R - 1 = 2 (tan(lat2/2) - tan(lat1/2)) / ((1 + tan(lat1/2)) (1 - tan(lat2/2))).
    const double x = 2 * std::sin((phi2 - phi1) / 2) /
                     (std::cos(phi1 / 2) * std::cos(phi2 / 2) * (1 + std::tan(phi1 / 2)) * (1 - std::tan(phi2 / 2)));
    dpsi = x * (1 - x * (1.0 / 2 - x * (1.0 / 3 - x * (1.0 / 4 - x / 5))));
  } else {
    dpsi = std::log(R);
  }
  double track = std::atan((lon2 - lon1) * kDegToRad / dpsi) * kRadToDeg;
  const double q = (lat2 - lat1) / std::cos(track * kDegToRad);
  if (q < 0)
    track += 180;
  else if (track < 0)
    track += 360;
  return {std::fabs(q) * 60, track};
}

GeoPoint DirectSphere(double lat1, double lon1, double track, double distance) {
  const double delta = distance / kSphereRadiusNm;
  const double phi1 = lat1 * kDegToRad, theta = track * kDegToRad;
  const double sinPhi1 = std::sin(phi1), cosPhi1 = std::cos(phi1);
  const double sinDelta = std::sin(delta), cosDelta = std::cos(delta);
  const double phi2 = ArcSin(sinPhi1 * cosDelta + cosPhi1 * sinDelta * std::cos(theta));
  const double dlon = ArcTan2(std::sin(theta) * sinDelta * cosPhi1, cosDelta - sinPhi1 * std::sin(phi2));
  return {phi2 * kRadToDeg, WrapLongitude(lon1 + dlon * kRadToDeg)};
}

GeoPoint DirectWGS84(double lat1, double lon1, double track, double distance) {
  const double s = distance * kKmPerNm;
  const double alpha1 = track * kDegToRad;
  const double sinAlpha1 = std::sin(alpha1), cosAlpha1 = std::cos(alpha1);
  const double tanU1 = kOneMinusF * std::tan(lat1 * kDegToRad);
  const double cosU1 = 1 / std::sqrt(1 + tanU1 * tanU1), sinU1 = tanU1 * cosU1;
  const double sigma1 = ArcTan2(tanU1, cosAlpha1);
  const double sinAlpha = cosU1 * sinAlpha1;
  const double cos2Alpha = 1 - sinAlpha * sinAlpha;
  const auto [A, B] = SeriesAB(cos2Alpha);

  const double sigma0 = s / (kWgs84BKm * A);
  double sigma = sigma0, previous = 2 * kPi;
  // Each round shrinks the error by about B (< 0.0017), so a handful of rounds reach 1e-12; the
  // bound only matters where sigma is so large that its rounding exceeds 1e-12 and the last bit
  // may flip forever.
  for (int round = 0; std::fabs(sigma - previous) > 1e-12 && round < kDirectMaxRounds; ++round) {
    const double cos2SigmaM = std::cos(2 * sigma1 + sigma);
    previous = sigma;
    sigma = sigma0 + DeltaSigma(B, std::sin(sigma), std::cos(sigma), cos2SigmaM);
  }
  const double sinSigma = std::sin(sigma), cosSigma = std::cos(sigma);
  const double cos2SigmaM = std::cos(2 * sigma1 + sigma);

  const double t = sinU1 * sinSigma - cosU1 * cosSigma * cosAlpha1;
  double phi2 =
      ArcTan2(sinU1 * cosSigma + cosU1 * sinSigma * cosAlpha1, kOneMinusF * std::sqrt(sinAlpha * sinAlpha + t * t));
  if (std::fabs(phi2) < 1e-14) phi2 = 0;
  const double lambda = ArcTan2(sinSigma * sinAlpha1, cosU1 * cosSigma - sinU1 * sinSigma * cosAlpha1);
  const double C = kF / 16 * cos2Alpha * (4 + kF * (4 - 3 * cos2Alpha));
  const double L =
      lambda - (1 - C) * kF * sinAlpha *
                   (sigma + C * sinSigma * (cos2SigmaM + C * cosSigma * (-1 + 2 * cos2SigmaM * cos2SigmaM)));
  return {phi2 * kRadToDeg, WrapLongitude(lon1 + L * kRadToDeg)};
}

std::string FormatSignificant(double value, int digits, int maxDecimals) {
  // The logarithm needs a positive value; the screens never pass anything else, and anything
  // else is shown whole rather than failing.
  if (!(value > 0) || !std::isfinite(value)) return FormatMask(std::isfinite(value) ? value : 0, "0");
  const int n = static_cast<int>(std::floor(std::log10(value)));
  const int decimals = digits - n - 1;
  std::string mask = "0";
  if (decimals > 0) {
    mask += '.';
    mask.append(static_cast<size_t>(std::min(decimals, maxDecimals)), '0');
  }
  return FormatMask(value, mask);
}

std::string FormatLatLong(double value, bool isLongitude) {
  const double v = std::fabs(value);
  double degrees = std::floor(v);
  const double minutesExact = (v - degrees) * 60;
  double minutes = std::floor(minutesExact);
  double seconds = (minutesExact - minutes) * 60;
  // "00.00" would round 59.995 up to "60.00": carry it instead.
  if (seconds >= 59.995) {
    seconds = 0;
    minutes += 1;
  }
  if (minutes >= 60) {
    minutes = 0;
    degrees += 1;
  }
  // The hemisphere of the value as shown: what rounds to 00 00 00.00 is the equator (or the prime
  // meridian), not south of it.
  const bool negative = value < 0 && (degrees > 0 || minutes > 0 || FormatMask(seconds, "00.00") != "00.00");
  std::string text(1, isLongitude ? (negative ? 'W' : 'E') : (negative ? 'S' : 'N'));
  text += FormatMask(degrees, isLongitude ? "000" : "00");
  text += ' ';
  text += FormatMask(minutes, "00");
  text += ' ';
  text += FormatMask(seconds, "00.00");
  return text;
}

std::optional<double> ParseCoordinate(std::string_view text, bool isLongitude) {
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  if (text.empty()) return std::nullopt;
  const auto strictNumber = [](std::string_view t) -> std::optional<double> {
    const bool plus = !t.empty() && t[0] == '+';
    if (plus) t.remove_prefix(1);
    if (t.empty() || (plus && t[0] == '-')) return std::nullopt;
    const auto v = ParseDouble(t, /*exponent*/ false);
    if (!v || !std::isfinite(*v)) return std::nullopt;
    return v;
  };
  const char positive = isLongitude ? 'E' : 'N', negative = isLongitude ? 'W' : 'S';
  const auto letter = [&](char c) { return c == positive || c == negative; };
  char hemisphere = 0;
  if (letter(text.front())) {
    hemisphere = text.front();
    text.remove_prefix(1);
  } else if (letter(text.back())) {
    hemisphere = text.back();
    text.remove_suffix(1);
  }
  if (!hemisphere) return strictNumber(text);

  // Degrees, minutes, seconds: runs of digits and a point, anything between them a separator.
  double parts[3] = {0, 0, 0};
  int n = 0;
  bool fraction = false;
  size_t i = 0;
  while (i < text.size()) {
    const auto digit = [&](size_t k) { return (text[k] >= '0' && text[k] <= '9') || text[k] == '.'; };
    if (!digit(i)) {
      // Blanks and the marks of degrees (UTF-8 or Latin-1 degree sign), minutes and seconds.
      const std::string_view rest = text.substr(i);
      if (blank(text[i]) || text[i] == '\'' || text[i] == '"' || text[i] == '\xB0')
        ++i;
      else if (rest.substr(0, 2) == "\xC2\xB0")
        i += 2;
      else
        return std::nullopt;
      continue;
    }
    size_t end = i;
    while (end < text.size() && digit(end)) ++end;
    if (n == 3 || fraction) return std::nullopt;  // a fourth part, or a part after decimals
    const std::string_view part = text.substr(i, end - i);
    fraction = part.find('.') != std::string_view::npos;
    const auto v = strictNumber(part);
    if (!v) return std::nullopt;
    parts[n++] = *v;
    i = end;
  }
  if (n == 0 || parts[1] >= 60 || parts[2] >= 60) return std::nullopt;
  const double value = parts[0] + parts[1] / 60 + parts[2] / 3600;
  return hemisphere == negative ? -value : value;
}

double FloorMod(double a, double b) { return a - std::floor(a / b) * b; }

std::string TrackText(double track) { return IsUndefined(track) ? "ND" : FormatMask(track, "000.0"); }

std::string DistanceText(double distance) {
  if (IsUndefined(distance)) return "ND";
  if (distance == 0) return "0";
  return FormatSignificant(distance, 4, 3);
}

}  // namespace norvane
