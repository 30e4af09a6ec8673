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
  const auto box = [](const test::GoldenRow& r, size_t i) {
    return r[i] == "-" ? std::nullopt : std::optional<double>(r.Num(i));
  };
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/degrees.txt")) {
    const DegreeFormat format = r[0] == "D" ? DegreeFormat::D : r[0] == "DM" ? DegreeFormat::DM : DegreeFormat::DMS;
    const DegreeTexts t = ConvertDegrees(format, DegreesTotal(format, r.Num(1), box(r, 2), box(r, 3)));
    EXPECT_EQ(std::pair(t.first, t.second), std::pair(r[4], r[5])) << r.where;
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
