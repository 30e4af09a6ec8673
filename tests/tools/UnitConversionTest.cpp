#include "tools/UnitConversion.hpp"

#include <tuple>

#include <gtest/gtest.h>

#include "support/Golden.hpp"

namespace norvane {
namespace {

int Type(const char* name) { return FindUnitType(name).value(); }
int Unit(int type, const char* name) { return FindUnit(type, name).value(); }

TEST(UnitConversion, ConvertsAndShowsTheResult) {
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/unit-conversions.txt")) {
    const int type = Type(r[0].c_str());
    const double v = ConvertUnits(type, Unit(type, r[1].c_str()), Unit(type, r[2].c_str()), r.Num(3));
    SCOPED_TRACE(r.where);
    EXPECT_NEAR(v, r.Num(4), r.Num(5));
    EXPECT_EQ(FormatConversionResult(v), r[6]);
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
      {123456.7, "123456.7"},
      {99999999.4, "99999999"},
      {-0.5, "-0.5"},  // Int(-0.5) is -1: two characters, one decimal fewer
      {-1234.5678, "-1234.57"},
      {0.0001, "0.0001"},
      {9.95e-5, "0.0001"},
      {9.94e-5, "9.94 E-5"},  // lower edge of the fixed form
      {99999999.5, "1.00 E+8"},
      {123456789, "1.23 E+8"},  // upper edge
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
      {DegreeFormat::D, 45, 30, 30, "45 0.000000", "45 0 0.0000"},    // hidden boxes are not read
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
  // The checks stop below 60, the captions say 60: a value that rounds to 60 cannot be typed.
  struct Row {
    DegreeFormat format;
    DegreePart part;
    bool shown, whole;
    double max;
    const char* caption;
  } rows[] = {
      {DegreeFormat::D, DegreePart::Degrees, true, false, 180, "Decimal degrees (0 to 180)"},
      {DegreeFormat::DM, DegreePart::Degrees, true, true, 180, "Degrees (0 to 180)"},
      {DegreeFormat::DM, DegreePart::Minutes, true, false, 59.999999, "Decimal minutes (0 to 60)"},
      {DegreeFormat::DMS, DegreePart::Minutes, true, true, 59, "Minutes (0 to 59)"},
      {DegreeFormat::DMS, DegreePart::Seconds, true, false, 59.99, "Decimal seconds (0 to 60)"},
      {DegreeFormat::D, DegreePart::Minutes, false, false, 59.999999, "Decimal minutes (0 to 60)"},
  };
  for (const Row& r : rows) {
    const DegreeBox box = DegreeBoxFor(r.format, r.part);
    const Quantity& q = box.quantity;
    EXPECT_EQ(std::tuple(box.shown, q.whole, q.min, q.max, q.optional, ToolTipText(q)),
              std::tuple(r.shown, r.whole, 0.0, r.max, r.part != DegreePart::Degrees, std::string(r.caption)))
        << int(r.format) << " " << int(r.part);
  }
}

}  // namespace
}  // namespace norvane
