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

DegreeFormat FormatNamed(const std::string& name) {
  return name == "D" ? DegreeFormat::D : name == "DM" ? DegreeFormat::DM : DegreeFormat::DMS;
}

TEST(DegreeConversion, ShowsTheTwoFormsThatAreNotTheInput) {
  const auto box = [](const test::GoldenRow& r, size_t i) {
    return r[i] == "-" ? std::nullopt : std::optional<double>(r.Num(i));
  };
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/degrees.txt", "convert")) {
    const DegreeFormat format = FormatNamed(r[0]);
    const DegreeTexts t = ConvertDegrees(format, DegreesTotal(format, r.Num(1), box(r, 2), box(r, 3)));
    EXPECT_EQ(std::pair(t.first, t.second), std::pair(r[4], r[5])) << r.where;
  }
}

TEST(DegreeConversion, BoxChecksFollowTheInputFormat) {
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/degrees.txt", "box")) {
    const DegreePart part = r[1] == "degrees"   ? DegreePart::Degrees
                            : r[1] == "minutes" ? DegreePart::Minutes
                                                : DegreePart::Seconds;
    const DegreeBox box = DegreeBoxFor(FormatNamed(r[0]), part);
    const Quantity& q = box.quantity;
    EXPECT_EQ(std::tuple(box.shown, q.whole, q.min, q.max, q.optional, ToolTipText(q)),
              std::tuple(r[2] == "yes", r[3] == "yes", 0.0, r.Num(4), part != DegreePart::Degrees, r[5]))
        << r.where;
  }
}

}  // namespace
}  // namespace norvane
