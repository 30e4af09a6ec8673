#include "manoeuvres/Holding.hpp"

#include <gtest/gtest.h>

using namespace norvane;

// Outbound course and turn direction -> the limits rows (direct first).
TEST(Holding, EntrySectorLimits) {
  struct Row {
    int outbound;
    bool right;
    const char* rows[3];
  };
  const Row rows[] = {
      {180, true, {"290 -> 110", "110 -> 180", "180 -> 290"}},
      {180, false, {"250 -> 070", "070 -> 180", "180 -> 250"}},
      {0, true, {"110 -> 290", "290 -> 000", "000 -> 110"}},
      {360, true, {"110 -> 290", "290 -> 000", "000 -> 110"}},  // 360 is north
      {70, true, {"180 -> 000", "000 -> 070", "070 -> 180"}},
      {45, true, {"155 -> 335", "335 -> 045", "045 -> 155"}},
      {5, false, {"075 -> 255", "255 -> 005", "005 -> 075"}},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.outbound << (r.right ? " right" : " left"));
    const EntrySectors l = ComputeEntrySectors(r.outbound, r.right);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(EntryLimitsText(l, i), r.rows[i]) << "row " << i;
    // The sectors tile the circle: 180 + 70 + 110 degrees, each starting where the last ended.
    int width = 0;
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(l[(i + 1) % 3], l[i + 3]);
      width += (l[i + 3] - l[i] + 360) % 360;
    }
    EXPECT_EQ(width, 360);
  }
}

// Outbound course, turn direction, track to the fix -> marked rows.
TEST(Holding, MarkEntrySector) {
  struct Row {
    int outbound;
    bool right;
    int track;
    std::array<bool, 3> marks;
    const char* names;
  };
  const Row rows[] = {
      {180, true, 100, {true, false, false}, "Direct"},
      {180, true, 150, {false, true, false}, "Teardrop"},
      {180, true, 200, {false, false, true}, "Parallel"},
      {180, true, 110, {true, true, false}, "Direct and Teardrop"},  // on a limit: both neighbours
      {180, true, 180, {false, true, true}, "Teardrop and Parallel"},
      {180, true, 290, {true, false, true}, "Direct and Parallel"},
      {180, true, 360, {true, false, false}, "Direct"},
      {180, false, 100, {false, true, false}, "Parallel"},
      {180, false, 200, {false, false, true}, "Teardrop"},
      {180, false, 70, {true, true, false}, "Direct and Parallel"},
      // The direct sector 180 -> 000 passes through north; the fixed bound 180 of the split test
      // leaves its own limit 180 out, so only the parallel sector (070 -> 180) is marked.
      {70, true, 180, {false, false, true}, "Parallel"},
      {70, true, 181, {true, false, false}, "Direct"},
      {70, true, 0, {true, true, false}, "Direct and Teardrop"},
      {70, true, 360, {true, false, false}, "Direct"},  // the typed track is not brought to 0
      {110, false, 180, {false, false, true}, "Teardrop"},
      {0, true, 300, {false, true, false}, "Teardrop"},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.outbound << (r.right ? " right, track " : " left, track ") << r.track);
    const auto marks = MarkEntrySector(r.track, ComputeEntrySectors(r.outbound, r.right));
    EXPECT_EQ(marks, r.marks);
    EXPECT_EQ(EntryNamesText(marks, r.right), r.names);
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
