#pragma once
// Unit conversions between units of one physical quantity, and angle text forms (decimal degrees,
// degrees-minutes, degrees-minutes-seconds).

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/Quantity.hpp"

namespace norvane {

struct UnitDef {
  std::string name;   // as shown in the unit combos, e.g. "nm", "°C"
  double factor = 0;  // size of one unit in the type's base unit (unused for temperature)
};

struct UnitType {
  std::string name;  // as shown in the type list, e.g. "Length-Distance"
  std::vector<UnitDef> units;
};

// The value of the unit converter.
inline constexpr Quantity kConvertValue{
    .caption = "Value to convert", .min = -99999999, .max = 99999999, .maxLength = 16};

// Index of the temperature type, converted by cases rather than by factors.
inline constexpr int kTemperatureType = 10;
inline constexpr int kCelsius = 0, kFahrenheit = 1, kKelvin = 2;

// The twelve unit types in the order of the type list, each with its units in combo order.
// Fuel types share the volume units and differ in their mass factors (litres per pound and per
// kilogram of fuel: AVGAS about 0.721 kg/L, Jet A-1 about 0.803 kg/L). Speeds are based on the
// metre per hour so that the knot's factor is 1852.
std::vector<UnitType> FillUnitTable();

// The table built once for the whole program.
const std::vector<UnitType>& UnitTable();

// Converts `value` from unit `from` to unit `to` of unit type `type` (indices into UnitTable()).
// Temperatures go through the Celsius / Fahrenheit / Kelvin relations; every other type through
// value * factor[from] / factor[to]. Indices out of range give the value unchanged.
double ConvertUnits(int type, int from, int to, double value);

// The result text: "0" for zero; seven significant digits at most for 9.95e-5 <= |v| < 99999999.5
// (trailing zeros cut: 185.2, 1234.568, 1234568); "0.00 E+##" outside that range.
std::string FormatConversionResult(double v);

// Index lookups by the texts the screen shows: exact match first, then ignoring ASCII case.
// nullopt when unknown.
std::optional<int> FindUnitType(std::string_view name);
std::optional<int> FindUnit(int type, std::string_view name);

// --- Degrees converter ---------------------------------------------------------------------

enum class DegreeFormat { D = 0, DM = 1, DMS = 2 };

// The degree converter's boxes. The captions say "0 to 60" while the checks stop at 59.999999 and
// 59.99 (the range text rounds them): kept on purpose, so that a rounded 60 cannot be typed.
inline constexpr Quantity kDecimalDegrees{.caption = "Decimal degrees", .min = 0, .max = 180, .maxLength = 12};
inline constexpr Quantity kWholeDegrees{.caption = "Degrees", .min = 0, .max = 180, .whole = true, .maxLength = 3};
inline constexpr Quantity kDecimalMinutes{
    .caption = "Decimal minutes", .min = 0, .max = 59.999999, .maxLength = 12, .optional = true};
inline constexpr Quantity kWholeMinutes{
    .caption = "Minutes", .min = 0, .max = 59, .whole = true, .maxLength = 3, .optional = true};
inline constexpr Quantity kDecimalSeconds{
    .caption = "Decimal seconds", .min = 0, .max = 59.99, .maxLength = 12, .optional = true};

enum class DegreePart { Degrees, Minutes, Seconds };
struct DegreeBox {
  bool shown = true;  // the format takes this part
  Quantity quantity;  // what the box holds (a hidden box keeps a check it passes when empty)
};
DegreeBox DegreeBoxFor(DegreeFormat format, DegreePart part);

// Total decimal degrees from the boxes that the format shows; an empty minutes or seconds box
// (nullopt) adds nothing.
double DegreesTotal(DegreeFormat format, double degrees, std::optional<double> minutes, std::optional<double> seconds);

// The three text forms of a non-negative angle:
//   D   "45.50000000"      (mask "0.00000000")
//   DM  "45 30.000000"     (whole degrees, blank, minutes "0.000000")
//   DMS "45 30 0.0000"     (whole degrees, whole minutes, seconds "0.0000")
// A minutes or seconds part that the mask would round up to 60 is carried into the next unit,
// so that 45.99999999999 reads "46 0.000000", never "45 60.000000".
std::string FormatDegreesD(double total);
std::string FormatDegreesDM(double total);
std::string FormatDegreesDMS(double total);

// The two labels of the converter: the forms that are not the input format, D before DM before
// DMS.
struct DegreeTexts {
  std::string first, second;
};
DegreeTexts ConvertDegrees(DegreeFormat format, double total);

}  // namespace norvane
