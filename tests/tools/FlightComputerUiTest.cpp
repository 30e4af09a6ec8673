// The "Time, speed, distance and fuel" screen's wiring: the box of the value to find is out of
// play, a unit switch converts the fuel boxes and recalculates. The figures are FlightComputerTest's.
#include "support/UiTest.hpp"
#include "tools/FlightComputerScreen.hpp"

using namespace norvane;
using namespace norvane::test;

TEST_F(UiFixture, FlightComputerFindsWhatIsChosen) {
  FlightComputerScreen s;
  Show(s);
  EXPECT_TRUE(Checked(s, "OptFind2"));  // the distance at first
  EXPECT_FALSE(Box(s, 2)->isEnabled());
  Type(s, 0, "120");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 1, "1.5");
  Type(s, 3, "35");
  Type(s, 4, "10");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 6), (std::vector<std::string>{"120", "1:30", "1.50", "180.0", "52.5", "37.9"}));
  EXPECT_EQ(Text(s, "lblError"), "Trip time exceeds the usable endurance");  // 17 minutes less 45

  Click(s, "OptUnits1");  // US units: the same fuel in US gallons, calculated again
  EXPECT_EQ(Text(s, "InBox3"), "9.25");
  EXPECT_EQ(Text(s, "lbldata3"), "Fuel used (US gal / lb)");
  EXPECT_EQ(Text(s, "dataR4"), "13.9");

  Click(s, "OptFind1");  // now the time: its box empties and leaves play, the distance's returns
  EXPECT_EQ(Text(s, "InBox1"), "");
  EXPECT_FALSE(Box(s, 1)->isEnabled());
  EXPECT_EQ(Text(s, "dataR0"), "");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 2, "119");
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 3, 1), (std::vector<std::string>{"1:00", "0.99", "119.0"}));
}
