#include "tools/FlightComputer.hpp"

#include <cmath>
#include <cstdlib>

#include "app/TextFormat.hpp"
#include "tools/UnitConversion.hpp"

namespace norvane {

std::string_view FuelUnitName(FuelUnit unit) { return kTsdFuelOnBoard[static_cast<size_t>(unit)].unit; }

double ConvertFuel(double value, FuelUnit from, FuelUnit to, FuelType fuel) {
  // The unit conversion screen's two fuel types hold the densities, under these names.
  constexpr std::string_view kTypes[2] = {"Fuel (AVGAS)", "Fuel (JetA1)"};
  constexpr std::string_view kUnits[4] = {"L", "USG", "kg", "lb"};
  const int type = FindUnitType(kTypes[static_cast<int>(fuel)]).value_or(-1);
  const auto index = [type, &kUnits](FuelUnit u) { return FindUnit(type, kUnits[static_cast<int>(u)]).value_or(-1); };
  return ConvertUnits(type, index(from), index(to), value);
}

std::string FormatHoursMinutes(double minutes) {
  const double rounded = std::round(minutes);  // half away from zero: 59.5 minutes make 1:00
  if (!std::isfinite(rounded)) return "ND";
  const long long m = std::llabs(static_cast<long long>(rounded));
  const std::string mm = std::to_string(m % 60);
  return (rounded < 0 ? "-" : "") + std::to_string(m / 60) + (mm.size() < 2 ? ":0" : ":") + mm;
}

TsdTexts ComputeTsdTexts(const TsdInput& in) {
  TsdTexts t;
  // Time in minutes: d * 60 / gs is exact wherever the quotient is, so that exactly half a minute
  // is seen as such by the rounding.
  double gs = in.groundSpeed, minutes = in.hours * 60, nm = in.distance;
  const Quantity* found = &kTsdDistance;
  double foundValue = 0;
  switch (in.find) {
    case TsdFind::GroundSpeed:
      gs = foundValue = nm * 60 / minutes;
      found = &kTsdGroundSpeed;
      break;
    case TsdFind::Time:
      minutes = nm * 60 / gs;
      foundValue = minutes / 60;
      found = &kTsdTime;
      break;
    case TsdFind::Distance:
      nm = foundValue = gs * minutes / 60;
      break;
  }
  // Zero speed or time leave the quotient infinite or undefined: out of range as well.
  if (!Admits(*found, foundValue)) {
    t.message = std::string(found->caption) + " out of range (" + RangeText(*found) + ")";
    t.failed = true;
    return t;
  }
  const auto put = [&t](TsdResult r, double v, std::string text) {
    t.value[r] = v;
    t.text[r] = std::move(text);
  };
  const auto putTime = [&put](TsdResult r, double m) {
    put(r, m, FormatHoursMinutes(m));
    put(static_cast<TsdResult>(r + 1), m / 60, FormatMask(m / 60, "0.00"));
  };
  put(kTsdGroundSpeedResult, gs, FormatMask(gs, "0"));
  putTime(kTsdTimeResult, minutes);
  put(kTsdDistanceResult, nm, FormatMask(nm, "0.0"));
  if (!in.fuelFlow || !(*in.fuelFlow > 0)) return t;

  // Fuel used in the volume and the mass unit of the input's unit system.
  const double used = *in.fuelFlow * minutes / 60;
  const bool us = in.unit == FuelUnit::UsGallon || in.unit == FuelUnit::Pound;
  const double volume = ConvertFuel(used, in.unit, FuelUnitOf(us, false), in.fuel);
  const double mass = ConvertFuel(used, in.unit, FuelUnitOf(us, true), in.fuel);
  put(kTsdFuelVolumeResult, volume, FormatMask(volume, "0.0"));
  put(kTsdFuelMassResult, mass, FormatMask(mass, "0.0"));
  if (!in.fuelOnBoard) return t;

  const double endurance = *in.fuelOnBoard * 60 / *in.fuelFlow;
  const double usable = endurance - in.reserveMinutes.value_or(0);
  putTime(kTsdEnduranceResult, endurance);
  putTime(kTsdUsableResult, usable);
  if (minutes > usable) t.message = kTsdTripTooLong;
  return t;
}

}  // namespace norvane
