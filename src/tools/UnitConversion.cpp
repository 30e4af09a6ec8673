#include "tools/UnitConversion.hpp"

#include <cmath>

#include "app/TextFormat.hpp"
#include "app/Units.hpp"
#include "atmosphere/StandardAtmosphere.hpp"

namespace norvane {
namespace {

double ConvertTemperature(int from, int to, double v) {
  if (from == to) return v;
  switch (from * 3 + to) {
    case kCelsius * 3 + kFahrenheit:
      return CelsiusToFahrenheit(v);
    case kFahrenheit * 3 + kCelsius:
      return FahrenheitToCelsius(v);
    case kCelsius * 3 + kKelvin:
      return v + kKelvinOffset;
    case kKelvin * 3 + kCelsius:
      return v - kKelvinOffset;
    case kFahrenheit * 3 + kKelvin:
      return FahrenheitToCelsius(v) + kKelvinOffset;
    case kKelvin * 3 + kFahrenheit:
      return CelsiusToFahrenheit(v - kKelvinOffset);
    default:
      return v;
  }
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

template <typename Range, typename Name>
std::optional<int> FindByName(const Range& items, std::string_view name, Name nameOf) {
  for (size_t i = 0; i < items.size(); ++i)
    if (nameOf(items[i]) == name) return static_cast<int>(i);
  for (size_t i = 0; i < items.size(); ++i)
    if (EqualsIgnoringCase(nameOf(items[i]), name)) return static_cast<int>(i);
  return std::nullopt;
}

}  // namespace

std::vector<UnitType> FillUnitTable() {
  return {
      {"Acceleration", {{"ft/s2", kFt}, {"m/s2", 1}, {"g-unit", kG0}}},
      {"Angles", {{"deg", 1}, {"rad", 180 / 3.14159265358979}}},
      {"Area", {{"ft2", 0.09290304}, {"m2", 1}, {"in2", 0.00064516}}},
      {"Density", {{"lb/ft3", 16.0184633739601}, {"kg/m3", 1}, {"sl/ft3", 515.378818393197}}},
      {"Fuel (AVGAS)", {{"USG", 3.785411784}, {"L", 1}, {"lb", 0.628805944186}, {"kg", 1.38627980931}}},
      {"Fuel (JetA1)", {{"USG", 3.785411784}, {"L", 1}, {"lb", 0.564986833433}, {"kg", 1.24558275403}}},
      {"Length-Distance", {{"ft", kFt}, {"m", 1}, {"km", 1000}, {"nm", kNm}, {"sm", kStatuteMile}}},
      {"Power", {{"lb-ft/s", 1.3558179483314}, {"kg-m/s", kG0}, {"W", 1}, {"HP", 745.69987158227}}},
      {"Pressure", {{"hPa", 1}, {"inHg", kInHg}, {"psi", 68.9475729317}, {"mmHg", 1.333224}}},
      {"Speed", {{"kt", kNm}, {"km/h", 1000}, {"ft/s", 1097.28}, {"m/s", 3600}}},
      {"Temperature", {{"\u00B0C", 0}, {"\u00B0F", 0}, {"\u00B0K", 0}}},
      {"Weight", {{"lb", kKgPerLb}, {"kg", 1}}},
  };
}

const std::vector<UnitType>& UnitTable() {
  static const std::vector<UnitType> table = FillUnitTable();
  return table;
}

double ConvertUnits(int type, int from, int to, double value) {
  const auto& table = UnitTable();
  if (type < 0 || type >= static_cast<int>(table.size())) return value;
  const auto& units = table[type].units;
  if (from < 0 || to < 0 || from >= static_cast<int>(units.size()) || to >= static_cast<int>(units.size()))
    return value;
  if (type == kTemperatureType) return ConvertTemperature(from, to, value);
  return value * units[from].factor / units[to].factor;
}

std::string FormatConversionResult(double v) {
  if (v == 0) return "0";
  const double a = std::fabs(v);
  if (a >= 9.95e-5 && a < 99999999.5) {
    // Digits of the integer part (Int rounds toward minus infinity; a minus sign counts).
    const int n = static_cast<int>(std::to_string(static_cast<long long>(std::floor(v))).size());
    const std::string mask = n < 7 ? "0.0" + std::string(6 - n, '#') : "0";
    return FormatMask(v, mask);
  }
  return FormatMask(v, "0.00 E+##");
}

std::optional<int> FindUnitType(std::string_view name) {
  return FindByName(UnitTable(), name, [](const UnitType& t) -> std::string_view { return t.name; });
}

std::optional<int> FindUnit(int type, std::string_view name) {
  const auto& table = UnitTable();
  if (type < 0 || type >= static_cast<int>(table.size())) return std::nullopt;
  return FindByName(table[type].units, name, [](const UnitDef& u) -> std::string_view { return u.name; });
}

// --- Degrees converter ---------------------------------------------------------------------

DegreeBox DegreeBoxFor(DegreeFormat format, DegreePart part) {
  switch (part) {
    case DegreePart::Degrees:
      return {true, format == DegreeFormat::D ? kDecimalDegrees : kWholeDegrees};
    case DegreePart::Minutes:
      return {format != DegreeFormat::D, format == DegreeFormat::DMS ? kWholeMinutes : kDecimalMinutes};
    case DegreePart::Seconds:
      return {format == DegreeFormat::DMS, kDecimalSeconds};
  }
  return {};
}

double DegreesTotal(DegreeFormat format, double degrees, std::optional<double> minutes, std::optional<double> seconds) {
  double total = degrees;
  if (format != DegreeFormat::D && minutes) total += *minutes / 60;
  if (format == DegreeFormat::DMS && seconds) total += *seconds / 3600;
  return total;
}

std::string FormatDegreesD(double total) { return FormatMask(total, "0.00000000"); }

std::string FormatDegreesDM(double total) {
  double d = std::floor(total);
  double m = (total - d) * 60;
  std::string mText = FormatMask(m, "0.000000");
  if (mText.rfind("60.", 0) == 0) {
    d += 1;
    mText = FormatMask(0, "0.000000");
  }
  return FormatMask(d, "0") + " " + mText;
}

std::string FormatDegreesDMS(double total) {
  double d = std::floor(total);
  const double m = (total - d) * 60;
  double mi = std::floor(m);
  const double s = (m - mi) * 60;
  std::string sText = FormatMask(s, "0.0000");
  if (sText.rfind("60.", 0) == 0) {
    sText = FormatMask(0, "0.0000");
    if (++mi == 60) {
      mi = 0;
      d += 1;
    }
  }
  return FormatMask(d, "0") + " " + FormatMask(mi, "0") + " " + sText;
}

DegreeTexts ConvertDegrees(DegreeFormat format, double total) {
  switch (format) {
    case DegreeFormat::D:
      return {FormatDegreesDM(total), FormatDegreesDMS(total)};
    case DegreeFormat::DM:
      return {FormatDegreesD(total), FormatDegreesDMS(total)};
    default:
      return {FormatDegreesD(total), FormatDegreesDM(total)};
  }
}

}  // namespace norvane
