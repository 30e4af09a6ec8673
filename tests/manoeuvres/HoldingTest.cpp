#include "manoeuvres/Holding.hpp"

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;

TEST(Holding, EntrySectorLimits) {
  for (const test::GoldenRow& r : test::ReadGolden("manoeuvres/data/holding.txt", "limits")) {
    SCOPED_TRACE(r.where);
    const EntrySectors l = ComputeEntrySectors(std::stoi(r[0]), r[1] == "R");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(EntryLimitsText(l, i), r[2 + i]) << "row " << i;
    // The sectors tile the circle: 180 + 70 + 110 degrees, each starting where the last ended.
    int width = 0;
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(l[(i + 1) % 3], l[i + 3]);
      width += (l[i + 3] - l[i] + 360) % 360;
    }
    EXPECT_EQ(width, 360);
  }
}

TEST(Holding, MarkEntrySector) {
  for (const test::GoldenRow& r : test::ReadGolden("manoeuvres/data/holding.txt", "entry")) {
    const bool right = r[1] == "R";
    const auto marks = MarkEntrySector(std::stoi(r[2]), ComputeEntrySectors(std::stoi(r[0]), right));
    const std::string shown{char('0' + marks[0]), char('0' + marks[1]), char('0' + marks[2])};
    EXPECT_EQ(shown, r[3]) << r.where;
    EXPECT_EQ(EntryNamesText(marks, right), r[4]) << r.where;
  }
}

// Every track to the fix gets at least one entry, for every pattern.
TEST(Holding, EveryTrackHasAnEntry) {
  for (int o = 0; o <= 360; ++o)
    for (bool right : {true, false}) {
      const EntrySectors l = ComputeEntrySectors(o, right);
      for (int x = 0; x <= 360; ++x) {
        const auto m = MarkEntrySector(x, l);
        EXPECT_TRUE(m[0] || m[1] || m[2]) << o << " " << right << " " << x;
      }
    }
}
