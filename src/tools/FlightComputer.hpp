#pragma once
// The flight computer's first face: time, speed and distance, fuel used and endurance.
//
// Any two of ground speed, time and distance give the third (distance = ground speed * time). A
// fuel flow gives the fuel used over the trip time; with the fuel on board it gives the endurance,
// and the endurance less a reserve is the usable endurance, which the trip time must not exceed.
// Speeds are knots, distances nautical miles, times decimal hours at the inputs; fuel is in one of
// the units of the unit conversion screen, converted between volume and mass with that screen's
// densities of AVGAS and Jet A-1.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "app/Quantity.hpp"

namespace norvane {

// Which of ground speed, time and distance the other two give.
enum class TsdFind : int { GroundSpeed = 0, Time = 1, Distance = 2 };

enum class FuelType : int { Avgas = 0, JetA1 = 1 };
// In option order: volume then mass, metric then US.
enum class FuelUnit : int { Litre = 0, UsGallon = 1, Kilogram = 2, Pound = 3 };

// The unit of the unit system (metric or US) and the measure (volume or mass).
constexpr FuelUnit FuelUnitOf(bool us, bool mass) { return static_cast<FuelUnit>((mass ? 2 : 0) + (us ? 1 : 0)); }

// A found value must lie in the range its box would admit, so that it can be typed back. (Every
// text member is named: GCC's -Wextra wants them all.)
inline constexpr Quantity kTsdGroundSpeed{
    .caption = "Ground speed", .min = 1, .max = 1500, .unit = "kts", .note = "", .after = "", .cliUnit = "kt"};
// Decimal hours: the boxes take digits and one separator, not h:mm.
inline constexpr Quantity kTsdTime{.caption = "Time",
                                   .min = 0.01,
                                   .max = 99.99,
                                   .unit = "h",
                                   .rangeDecimals = 2,
                                   .maxLength = 8,
                                   .note = "",
                                   .after = " - decimal hours: 1.5 for 1:30",
                                   .cliUnit = ""};
inline constexpr Quantity kTsdDistance{.caption = "Distance",
                                       .min = 0.1,
                                       .max = 9999.9,
                                       .unit = "NM",
                                       .rangeDecimals = 1,
                                       .note = "",
                                       .after = "",
                                       .cliUnit = ""};
inline constexpr Quantity kTsdReserve{.caption = "Reserve",
                                      .min = 0,
                                      .max = 300,
                                      .unit = "min",
                                      .whole = true,
                                      .optional = true,
                                      .note = "",
                                      .after = " - empty: none",
                                      .cliUnit = ""};
// Fuel flow and fuel on board in each FuelUnit: one range for all units, wide enough for any
// aeroplane from a microlight to a wide-body.
inline constexpr std::array<Quantity, 4> kTsdFuelFlow = [] {
  constexpr std::string_view units[4] = {"L/h", "US gal/h", "kg/h", "lb/h"};
  std::array<Quantity, 4> q{};
  for (int i = 0; i < 4; ++i)
    q[i] = {.caption = "Fuel flow",
            .min = 1,
            .max = 99999,
            .unit = units[i],
            .maxLength = 8,
            .optional = true,
            .note = "",
            .after = " - empty: no fuel results",
            .cliUnit = ""};
  return q;
}();
inline constexpr std::array<Quantity, 4> kTsdFuelOnBoard = [] {
  constexpr std::string_view units[4] = {"L", "US gal", "kg", "lb"};
  std::array<Quantity, 4> q{};
  for (int i = 0; i < 4; ++i)
    q[i] = {.caption = "Fuel on board",
            .min = 0,
            .max = 999999,
            .unit = units[i],
            .maxLength = 9,
            .optional = true,
            .note = "",
            .after = " - empty: no endurance",
            .cliUnit = ""};
  return q;
}();

// The fuel's unit as the screens write it: "L", "US gal", "kg", "lb".
std::string_view FuelUnitName(FuelUnit unit);

// `value` of `fuel` in `from` expressed in `to`, with the unit conversion screen's factors.
double ConvertFuel(double value, FuelUnit from, FuelUnit to, FuelType fuel);

inline constexpr std::string_view kTsdTripTooLong = "Trip time exceeds the usable endurance";

struct TsdInput {
  TsdFind find = TsdFind::Distance;
  double groundSpeed = 0;                // kt; not read when found
  double hours = 0;                      // decimal hours; not read when found
  double distance = 0;                   // NM; not read when found
  std::optional<double> fuelFlow;        // per hour, in `unit`
  std::optional<double> fuelOnBoard;     // in `unit`; needs the fuel flow
  std::optional<double> reserveMinutes;  // none: no reserve
  FuelUnit unit = FuelUnit::Litre;
  FuelType fuel = FuelType::Avgas;
};

// The results in screen order.
enum TsdResult : int {
  kTsdGroundSpeedResult,  // "0" kt
  kTsdTimeResult,         // "h:mm", rounded to the minute
  kTsdTimeHoursResult,    // "0.00" decimal hours
  kTsdDistanceResult,     // "0.0" NM
  kTsdFuelVolumeResult,   // "0.0" L or US gal (the unit system's volume)
  kTsdFuelMassResult,     // "0.0" kg or lb (the unit system's mass)
  kTsdEnduranceResult,    // "h:mm"
  kTsdEnduranceHoursResult,
  kTsdUsableResult,  // "h:mm", "-0:15" when the reserve is more than the endurance
  kTsdUsableHoursResult,
  kTsdResultCount
};

// What the screen and norvane-cli show. The fuel results are empty without a fuel flow, the
// endurances without the fuel on board too.
struct TsdTexts {
  // An error (a found value out of its range: no results), or the warning that the trip time
  // exceeds the usable endurance (with the results).
  std::string message;
  bool failed = false;  // message is an error; every text is empty
  std::array<std::string, kTsdResultCount> text;
  // The unrounded values behind the texts; times in minutes, the "hours" results in hours.
  std::array<std::optional<double>, kTsdResultCount> value;
};

TsdTexts ComputeTsdTexts(const TsdInput& in);

// "h:mm" of a duration in minutes, rounded to the minute (half away from zero), so that 59.5
// minutes read "1:00"; hours go past 23; a negative duration is written with a minus sign; "ND"
// when not finite.
std::string FormatHoursMinutes(double minutes);

}  // namespace norvane
