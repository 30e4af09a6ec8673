#include "tools/UnitConversion.hpp"

#include <gtest/gtest.h>

namespace norvane {
namespace {

int Type(const char* name) { return FindUnitType(name).value(); }
int Unit(int type, const char* name) { return FindUnit(type, name).value(); }

TEST(UnitConversion, TableHoldsTheTwelveTypesInListOrder) {
  ASSERT_EQ(UnitTable().size(), 12u);
  for (size_t i = 1; i < UnitTable().size(); ++i) EXPECT_LT(UnitTable()[i - 1].name, UnitTable()[i].name);
  EXPECT_EQ(Type("Temperature"), kTemperatureType);
}

// Conversions against published definitions (NIST SP 811 exact factors, ICAO Annex 5) and the
// texts a user sees.
TEST(UnitConversion, ConvertsAndShowsTheResult) {
  struct Row {
    const char *type, *from, *to;
    double value, expected, tolerance;
    const char* text;
  } rows[] = {
      {"Speed", "kt", "km/h", 100, 185.2, 1e-12, "185.2"},
      {"Length-Distance", "sm", "ft", 1, 5280, 1e-9, "5280.0"},
      {"Length-Distance", "m", "km", 0.01, 0.00001, 1e-18, "1.00 E-5"},
      {"Speed", "m/s", "kt", 1, 3600.0 / 1852, 1e-12, "1.943844"},
      {"Speed", "ft/s", "kt", 1, 0.592483801295896, 1e-12, "0.592484"},
      {"Acceleration", "g-unit", "ft/s2", 1, 32.17404855643, 1e-9, "32.17405"},
      {"Area", "ft2", "in2", 1, 144, 1e-9, "144.0"},
      {"Density", "sl/ft3", "lb/ft3", 1, 32.17404855643, 1e-6, "32.17405"},
      {"Angles", "rad", "deg", 1, 57.2957795130823, 1e-9, "57.29578"},
      {"Power", "HP", "W", 1, 745.69987158227, 1e-9, "745.6999"},
      {"Pressure", "inHg", "hPa", 29.92, 1013.2076, 1e-4, "1013.208"},
      {"Pressure", "psi", "hPa", 1, 68.9475729317, 1e-9, "68.94757"},
      {"Weight", "kg", "lb", 1, 2.20462262184878, 1e-12, "2.204623"},
      {"Fuel (AVGAS)", "USG", "lb", 100, 602.0, 0.1, "602.0"},  // about 6.02 lb per US gallon
      {"Fuel (JetA1)", "USG", "kg", 100, 303.9, 0.1, "303.9069"},   // about 0.803 kg per litre
      {"Temperature", "\u00B0C", "\u00B0F", 0, 32, 1e-12, "32.0"},
      {"Temperature", "\u00B0K", "\u00B0C", 0, -273.15, 1e-12, "-273.15"},
      {"Temperature", "\u00B0F", "\u00B0K", 32, 273.15, 1e-12, "273.15"},
      {"Temperature", "\u00B0K", "\u00B0F", 0, -459.67, 1e-9, "-459.67"},
      {"Temperature", "\u00B0F", "\u00B0F", -40, -40, 0, "-40.0"},
      {"Weight", "kg", "kg", 0, 0, 0, "0"},
  };
  for (const Row& r : rows) {
    const int type = Type(r.type);
    const double v = ConvertUnits(type, Unit(type, r.from), Unit(type, r.to), r.value);
    SCOPED_TRACE(std::string(r.type) + " " + r.from + " -> " + r.to);
    EXPECT_NEAR(v, r.expected, r.tolerance);
    EXPECT_EQ(FormatConversionResult(v), r.text);
  }
}

TEST(UnitConversion, ResultTextKeepsSevenSignificantDigits) {
  struct Row {
    double v;
    const char* text;
  } rows[] = {
      {0, "0"},
      {1234.5678, "1234.568"},
      {1234567.8, "1234568"},
      {-0.5, "-0.5"},  // Int(-0.5) is -1: two characters, one decimal fewer
      {-1234.5678, "-1234.57"},
      {123456.7, "123456.7"},
      {99999999.4, "99999999"},
      {0.0001, "0.0001"},
      {9.95e-5, "0.0001"},  // lower edge of the fixed form
      {9.94e-5, "9.94 E-5"},
      {99999999.5, "1.00 E+8"},  // upper edge
      {123456789, "1.23 E+8"},
      {1e-20, "1.00 E-20"},
  };
  for (const Row& r : rows) EXPECT_EQ(FormatConversionResult(r.v), r.text) << r.v;
}

TEST(UnitConversion, NamesAreFoundExactlyThenIgnoringCase) {
  EXPECT_EQ(FindUnitType("length-distance"), 6);
  EXPECT_EQ(FindUnit(6, "NM"), 3);
  EXPECT_EQ(FindUnit(6, "nm"), 3);
  EXPECT_EQ(FindUnit(kTemperatureType, "\u00B0c"), kCelsius);
  EXPECT_FALSE(FindUnitType("Volume"));
  EXPECT_FALSE(FindUnit(11, "st"));
  EXPECT_FALSE(FindUnit(12, "kg"));
  EXPECT_EQ(ConvertUnits(99, 0, 1, 5.0), 5.0);  // out-of-range indices leave the value alone
}

TEST(DegreeConversion, ShowsTheTwoFormsThatAreNotTheInput) {
  struct Row {
    DegreeFormat format;
    double deg;
    std::optional<double> min, sec;
    const char *first, *second;
  } rows[] = {
      {DegreeFormat::DM, 45, 30, {}, "45.50000000", "45 30 0.0000"},
      {DegreeFormat::D, 45.5, {}, {}, "45 30.000000", "45 30 0.0000"},
      {DegreeFormat::DMS, 10, 20, 30.5, "10.34180556", "10 20.508333"},
      {DegreeFormat::DMS, 180, 59, 59.99, "180.99999722", "180 59.999833"},
      {DegreeFormat::DM, 45, {}, {}, "45.00000000", "45 0 0.0000"},   // empty minutes add nothing
      {DegreeFormat::DMS, 45, {}, 36, "45.01000000", "45 0.600000"},  // empty minutes, seconds kept
      {DegreeFormat::D, 45, 30, 30, "45 0.000000", "45 0 0.0000"},     // hidden boxes are not read
      // 7 + 1/60 is 7.01666...66 in binary; the seconds came out 59.9999999999998 and read
      // "7 0 60.0000" before the carry.
      {DegreeFormat::DM, 7, 1, {}, "7.01666667", "7 1 0.0000"},
      {DegreeFormat::D, 45.99999999999, {}, {}, "46 0.000000", "46 0 0.0000"},
  };
  for (const Row& r : rows) {
    const DegreeTexts t = ConvertDegrees(r.format, DegreesTotal(r.format, r.deg, r.min, r.sec));
    EXPECT_EQ(t.first, r.first) << r.deg;
    EXPECT_EQ(t.second, r.second) << r.deg;
  }
}

TEST(DegreeConversion, BoxChecksFollowTheInputFormat) {
  // Captions say "0 to 60" while the checks stop below 60: a rounded 60 cannot be typed.
  struct Row {
    DegreeFormat format;
    int box;
    bool shown, integer;
    double max;
    const char* caption;
  } rows[] = {
      {DegreeFormat::D, 0, true, false, 180, "Decimal degrees (0 to 180)"},
      {DegreeFormat::DM, 0, true, true, 180, "Degrees (0 to 180)"},
      {DegreeFormat::DM, 1, true, false, 59.999999, "Decimal minutes (0 to 60)"},
      {DegreeFormat::DMS, 1, true, true, 59, "Minutes (0 to 59)"},
      {DegreeFormat::DMS, 2, true, false, 59.99, "Decimal seconds (0 to 60)"},
      {DegreeFormat::D, 1, false, false, 59.999999, "Decimal minutes (0 to 60)"},
      {DegreeFormat::DM, 2, false, false, 59.99, "Decimal seconds (0 to 60)"},
  };
  for (const Row& r : rows) {
    const DegreeBoxRule rule = DegreeBoxRuleFor(r.format, r.box);
    SCOPED_TRACE(r.caption);
    EXPECT_EQ(rule.shown, r.shown);
    EXPECT_EQ(rule.integer, r.integer);
    EXPECT_EQ(rule.min, 0);
    EXPECT_EQ(rule.max, r.max);
    EXPECT_EQ(rule.allowEmpty, r.box != 0);
    EXPECT_EQ(rule.caption, r.caption);
  }
}

}  // namespace
}  // namespace norvane
