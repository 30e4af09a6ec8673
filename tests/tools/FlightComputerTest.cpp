#include "tools/FlightComputer.hpp"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/Golden.hpp"
#include "tools/UnitConversion.hpp"

using namespace norvane;

TEST(FlightComputer, Texts) {
  const auto optional = [](const std::string& f) { return f == "-" ? std::nullopt : std::optional(std::stod(f)); };
  for (const test::GoldenRow& r : test::ReadGolden("tools/data/flight-computer.txt")) {
    TsdInput in;
    in.find = r[0] == "speed" ? TsdFind::GroundSpeed : r[0] == "time" ? TsdFind::Time : TsdFind::Distance;
    in.groundSpeed = optional(r[1]).value_or(0);
    in.hours = optional(r[2]).value_or(0);
    in.distance = optional(r[3]).value_or(0);
    in.fuelFlow = optional(r[4]);
    in.fuelOnBoard = optional(r[5]);
    in.reserveMinutes = optional(r[6]);
    const std::string units[4] = {"L", "USG", "kg", "lb"};
    in.unit = static_cast<FuelUnit>(std::find(units, units + 4, r[7]) - units);
    in.fuel = r[8] == "jeta1" ? FuelType::JetA1 : FuelType::Avgas;
    const TsdTexts t = ComputeTsdTexts(in);

    std::vector<std::string> got(t.text.begin(), t.text.end());
    for (std::string& s : got) s = s.empty() ? "-" : s;
    if (!t.message.empty()) got.push_back(t.message);
    std::vector<std::string> want(r.fields.begin() + 9, r.fields.end());
    if (want.size() == 1) want.insert(want.begin(), kTsdResultCount, "-");  // an error: no results
    EXPECT_EQ(got, want) << r.where;
    EXPECT_EQ(t.failed, r.fields.size() == 10) << r.where;
  }
}

// The densities are the unit conversion screen's, for every pair of units and both fuels.
TEST(FlightComputer, FuelConvertsAsTheUnitConversionScreen) {
  const char* const names[4] = {"L", "USG", "kg", "lb"};
  for (const char* type : {"Fuel (AVGAS)", "Fuel (JetA1)"}) {
    const int t = FindUnitType(type).value();
    const FuelType fuel = type[6] == 'A' ? FuelType::Avgas : FuelType::JetA1;
    for (int from = 0; from < 4; ++from)
      for (int to = 0; to < 4; ++to)
        EXPECT_DOUBLE_EQ(ConvertFuel(100, FuelUnit(from), FuelUnit(to), fuel),
                         ConvertUnits(t, FindUnit(t, names[from]).value(), FindUnit(t, names[to]).value(), 100))
            << type << " " << names[from] << " " << names[to];
  }
}
