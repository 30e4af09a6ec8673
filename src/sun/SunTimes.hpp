#pragma once
// Sunrise, sunset and twilight from the NOAA / Meeus low-precision solar formulas
// (J. Meeus, Astronomical Algorithms, 2nd ed., ch. 7, 22, 25 and 28). Each event time comes from
// the hour-angle equation, evaluated once at 0h UTC and refined once at the first estimate.
// Accuracy: about one minute of time below 60 degrees of latitude; the error grows towards the
// polar circles, where the sun crosses the horizon at a shallow angle.

#include <cstdint>
#include <string>

#include "app/Quantity.hpp"

namespace norvane {

// Zenith distances of the events, radians.
inline constexpr double kZenithSunriseSunset = 1.5853349194640078;  // 90.833: refraction + semi-diameter
inline constexpr double kZenithCivil = 1.6755160819145547;          // 96
inline constexpr double kZenithNautical = 1.7802358370342144;       // 102
inline constexpr double kZenithAstronomical = 1.884955592153874;    // 108

// The twilight kinds in the order of the screen's list.
inline constexpr const char* kTwilightNames[] = {"Civil time (aero)", "Nautical time", "Astronomical time"};

// Zenith of the twilight list entry `index`: 0 civil, 1 nautical, anything else astronomical.
double TwilightZenith(int index);

// Julian day at 0h UTC of a Gregorian calendar date (Meeus ch. 7).
double GetJulianDay(int16_t day, int16_t month, int16_t year);

struct SunPosition {
  double declination = 0;     // radians
  double equationOfTime = 0;  // minutes of time, apparent minus mean solar time
};
// Apparent declination and equation of time at T Julian centuries from J2000.0 (Meeus ch. 25, 28).
SunPosition GetSunPosition(double T);

struct RiseSetMinutes {
  double rise = 0;  // minutes from 00:00 UTC of the date; may be below 0 or above 1440
  double set = 0;
};
// Times at which the sun's centre reaches `zenith` (radians) in the morning and the evening of the
// given date, at latitude / longitude in radians (north and east positive). When the sun never
// reaches the zenith distance, the clamped arccosine gives an hour angle of 0 (rise = set) or pi
// (set - rise = 1440): callers test for that.
RiseSetMinutes GetRiseDownTime(int16_t day, int16_t month, int16_t year, double latitude, double longitude,
                               double zenith);

// A time of day "HH:MM" from minutes, rounded to whole minutes (halves to even); whole days are
// removed, so a value that rounds to 1440 shows as "00:00".
std::string FormatMinutes(double minutes);

// The local time offset: every civil time zone in whole hours (the Options' setting stays -12..12).
inline constexpr Quantity kLocalTimeOffset{
    .caption = "Local time offset from UTC", .min = -12, .max = 14, .unit = "hours", .whole = true};

// One calculation of the sunrise and sunset screen.
struct SunQuery {
  double latitudeDeg = 0;   // signed decimal degrees, north positive
  double longitudeDeg = 0;  // east positive
  int16_t day = 1, month = 1, year = 2000;
  bool localTime = false;   // false: UTC
  int ltOffsetMinutes = 0;  // applied only with localTime: +330 for India, -150 for Newfoundland in summer
  int twilightIndex = 0;    // list index of the twilight kind
};

// The four result texts and the error / notice label, exactly as the screen shows them.
struct SunTexts {
  std::string sunrise, sunset, dawn, dusk;
  std::string message;      // "", "Permanent day/night", "Sunrise previous day" or "Sunset next day"
  bool calculated = false;  // false when the sun does not cross the horizon ("None" everywhere)
  // Minutes after 00:00 of the displayed day, in the chosen time system (valid when calculated).
  double riseMinutes = 0, setMinutes = 0, dawnMinutes = 0, duskMinutes = 0;
};

inline constexpr const char* kPermanentDayNight = "Permanent day/night";
inline constexpr const char* kSunrisePreviousDay = "Sunrise previous day";
inline constexpr const char* kSunsetNextDay = "Sunset next day";
inline constexpr const char* kNoEvent = "None";

SunTexts CalculateSunTimes(const SunQuery& q);

}  // namespace norvane
