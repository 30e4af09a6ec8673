#include "sun/SunTimes.hpp"

#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"

namespace norvane {
namespace {

constexpr double kJ2000 = 2451545.0;  // JD of 2000-01-01 12h TT
constexpr double kDaysPerCentury = 36525.0;

double SinDeg(double a) { return std::sin(a * kDegToRad); }

// Hour angle of the event: the clamped arccosine turns "never reaches the zenith distance" into
// 0 (the sun stays below it) or pi (it stays above it).
double HourAngle(double zenith, double declination, double latitude) {
  const double cosH =
      std::cos(zenith) / (std::cos(declination) * std::cos(latitude)) - std::tan(declination) * std::tan(latitude);
  return ArcCos(cosH);
}

struct Event {
  double dec, eqt, H;
};

Event SunAt(double jd, double zenith, double latitude) {
  const SunPosition p = GetSunPosition((jd - kJ2000) / kDaysPerCentury);
  return {p.declination, p.equationOfTime, HourAngle(zenith, p.declination, latitude)};
}

// Minutes after 00:00 UTC at which the hour angle is -H (morning) or +H (evening).
double EventMinutes(double longitude, double signedH, double eqt) {
  return 720 + 4 * (-longitude + signedH) * kRadToDeg - eqt;
}

// Minutes brought into [0, 1440) as FormatMinutes shows them (before its rounding).
double WithinDay(double minutes) {
  while (minutes >= 1440) minutes -= 1440;
  while (minutes < 0) minutes += 1440;
  return minutes;
}

}  // namespace

double TwilightZenith(int index) {
  switch (index) {
    case 0:
      return kZenithCivil;
    case 1:
      return kZenithNautical;
    default:
      return kZenithAstronomical;
  }
}

double GetJulianDay(int16_t day, int16_t month, int16_t year) {
  double Y = year, M = month;
  if (M < 3) {
    Y -= 1;
    M += 12;
  }
  const double A = std::floor(Y / 100);
  const double B = 2 - A + std::floor(A / 4);
  return std::floor(365.25 * (Y + 4716)) + std::floor(30.6001 * (M + 1)) + day + B - 1524.5;
}

SunPosition GetSunPosition(double T) {
  const double M = 357.52911 + T * (35999.05029 - 0.0001537 * T);  // mean anomaly, degrees
  const double C = SinDeg(M) * (1.914602 - T * (0.004817 + 0.000014 * T)) + SinDeg(2 * M) * (0.019993 - 0.000101 * T) +
                   SinDeg(3 * M) * 0.000289;
  double L0 = 280.46646 + T * (36000.76983 + 0.0003032 * T);  // geometric mean longitude
  while (L0 >= 360) L0 -= 360;
  while (L0 < 0) L0 += 360;
  const double trueLongitude = L0 + C;
  const double omega = (125.04 - 1934.136 * T) * kDegToRad;  // longitude of the Moon's node
  const double lambda = trueLongitude - 0.00569 - 0.00478 * std::sin(omega);
  const double S = 21.448 - T * (46.815 + T * (0.00059 - T * 0.001813));
  const double e0 = 23 + (26 + S / 60) / 60;
  const double eps = e0 + 0.00256 * std::cos(omega);

  SunPosition p;
  p.declination = ArcSin(SinDeg(eps) * SinDeg(lambda));

  const double e = 0.016708634 - T * (0.000042037 + 0.0000001267 * T);
  const double y = std::pow(std::tan(eps * kDegToRad / 2), 2);
  const double l0 = L0 * kDegToRad, m = M * kDegToRad;
  const double eqt = y * std::sin(2 * l0) - 2 * e * std::sin(m) + 4 * e * y * std::sin(m) * std::cos(2 * l0) -
                     0.5 * y * y * std::sin(4 * l0) - 1.25 * e * e * std::sin(2 * m);
  p.equationOfTime = 4 * eqt * kRadToDeg;
  return p;
}

RiseSetMinutes GetRiseDownTime(int16_t day, int16_t month, int16_t year, double latitude, double longitude,
                               double zenith) {
  const double jd0 = GetJulianDay(day, month, year);
  const Event first = SunAt(jd0, zenith, latitude);
  RiseSetMinutes r;
  r.rise = EventMinutes(longitude, -first.H, first.eqt);
  r.set = EventMinutes(longitude, first.H, first.eqt);
  // One refinement of each event with the sun's position at the first estimate.
  const Event atRise = SunAt(jd0 + r.rise / 1440, zenith, latitude);
  const Event atSet = SunAt(jd0 + r.set / 1440, zenith, latitude);
  r.rise = EventMinutes(longitude, -atRise.H, atRise.eqt);
  r.set = EventMinutes(longitude, atSet.H, atSet.eqt);
  return r;
}

std::string FormatMinutes(double minutes) {
  int m = RoundToInt16(minutes);
  while (m >= 1440) m -= 1440;
  while (m < 0) m += 1440;  // a late local-time shift of a twilight can leave it before 00:00
  const int hours = m / 60;
  return FormatMask(hours, "00") + ":" + FormatMask(m - 60 * hours, "00");
}

SunTexts CalculateSunTimes(const SunQuery& q) {
  const double lat = q.latitudeDeg * kDegToRad;
  const double lon = q.longitudeDeg * kDegToRad;
  SunTexts out;

  RiseSetMinutes sun = GetRiseDownTime(q.day, q.month, q.year, lat, lon, kZenithSunriseSunset);
  const double span = std::fabs(sun.set - sun.rise);
  if (span <= 1 || span >= 1439) {
    out.sunrise = out.sunset = out.dawn = out.dusk = kNoEvent;
    out.message = kPermanentDayNight;
    return out;
  }

  const double shift = q.localTime ? q.ltOffsetMinutes : 0.0;
  sun.rise += shift;
  sun.set += shift;
  if (sun.rise < 0) {
    sun.rise += 1440;
    out.message = kSunrisePreviousDay;
  }
  if (sun.set >= 1440) {
    sun.set -= 1440;
    out.message = kSunsetNextDay;
  }
  out.sunrise = FormatMinutes(sun.rise);
  out.sunset = FormatMinutes(sun.set);

  // No permanence test for twilight: a sun that never gets that deep gives equal or 24-hour-apart
  // times, shown as they come.
  RiseSetMinutes tw = GetRiseDownTime(q.day, q.month, q.year, lat, lon, TwilightZenith(q.twilightIndex));
  tw.rise += shift;
  tw.set += shift;
  if (tw.rise < 0) tw.rise += 1440;
  if (tw.set >= 1440) tw.set -= 1440;
  out.dawn = FormatMinutes(tw.rise);
  out.dusk = FormatMinutes(tw.set);

  out.riseMinutes = WithinDay(sun.rise);
  out.setMinutes = WithinDay(sun.set);
  out.dawnMinutes = WithinDay(tw.rise);
  out.duskMinutes = WithinDay(tw.set);
  out.calculated = true;
  return out;
}

}  // namespace norvane
