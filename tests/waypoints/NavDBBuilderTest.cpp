#include "waypoints/NavDBBuilder.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>

#include "support/Golden.hpp"

using namespace norvane;

namespace {

int32_t Tenths(double deg) { return int32_t(std::lround(deg * 36000)); }

// airports, VORs, NDBs, intersections, bad identifiers, duplicates, other types, unreadable rows
using Counts = std::array<int64_t, 8>;
Counts Stats(const NavDBBuilder& b) {
  const NavDBBuildStats& s = b.Stats();
  return {s.airports, s.vors, s.ndbs, s.intersections, s.badIdentifiers, s.duplicates, s.otherTypes, s.unreadableRows};
}

std::vector<WaypointRecord> Find(const std::vector<WaypointRecord>& records, const char* id) {
  std::vector<WaypointRecord> out;
  for (const WaypointRecord& r : records)
    if (RecordCode(r) == IdentCode(id)) out.push_back(r);
  return out;
}

}  // namespace

// The rows of data/builder.txt: each builds the files it names and checks the result.
TEST(NavDBBuilder, GoldenTable) {
  const std::string dir = NORVANE_SOURCE_DIR "/tests/waypoints/data/builder/";
  const auto build = [&](const std::string& files, NavDBBuilder& b) {
    std::istringstream names(files);
    for (std::string name; names >> name;) EXPECT_EQ(b.AddFile(dir + name), "") << name;
    return b.Build();
  };
  for (const auto& r : test::ReadGolden("waypoints/data/builder.txt", "stats")) {
    NavDBBuilder b;
    build(r[0], b);
    Counts want{};
    for (size_t i = 0; i < want.size(); ++i) want[i] = std::stoll(r[i + 1]);
    EXPECT_EQ(Stats(b), want) << r.where;
  }
  for (const auto& r : test::ReadGolden("waypoints/data/builder.txt", "find")) {
    NavDBBuilder b;
    const auto found = Find(build(r[0], b), r[1].c_str());
    if (r[2] == "none") {
      EXPECT_TRUE(found.empty()) << r.where;
      continue;
    }
    ASSERT_GT(found.size(), std::stoul(r[2])) << r.where;
    const WaypointRecord& w = found[std::stoul(r[2])];
    EXPECT_EQ(TypeText(w), r[3]) << r.where;
    EXPECT_EQ(LatTenths(w), Tenths(r.Num(4))) << r.where;
    EXPECT_EQ(LonTenths(w), Tenths(r.Num(5))) << r.where;
    EXPECT_EQ(w.lon < 0, r.Num(5) < 0) << r.where;
  }
  for (const auto& r : test::ReadGolden("waypoints/data/builder.txt", "error")) {
    NavDBBuilder b;
    const std::string want = dir + r[0] + ": " + r[1];
    EXPECT_EQ(b.AddFile(dir + r[0]).substr(0, want.size()), want) << r.where;
    EXPECT_TRUE(b.Build().empty()) << r.where;
  }
}

TEST(NavDBBuilder, DuplicatesOfIdentifierAndTypeAtTheSamePlaceAreDropped) {
  NavDBBuilder b;
  b.Add(WaypointType::Vor, "ABC", 50.0, 8.0, 11000);
  b.Add(WaypointType::Vor, "ABC", 50.0 + 0.9 / 60, 8.0 - 0.9 / 60, 11200);  // within 1': dropped
  b.Add(WaypointType::Ndb, "ABC", 50.0, 8.0, 3000);                         // other type: kept
  b.Add(WaypointType::Vor, "ABC", 50.0 + 1.5 / 60, 8.0, 11000);             // 1.5' away: kept
  b.Add(WaypointType::Vor, "ABC", -20.0, 8.0, 11000);                       // elsewhere: kept
  b.Add(WaypointType::Intersection, "EDGE", 0.0, 179.995, 0);
  b.Add(WaypointType::Intersection, "EDGE", 0.0, -179.995, 0);  // 0.6' across the date line
  b.Add(WaypointType::Intersection, "EDGE", 0.0, 179.985, 0);   // 0.6' west of the first
  b.Add(WaypointType::Intersection, "EDGE", 0.0, -179.97, 0);   // 2.1' east of it: kept
  b.Add(WaypointType::Intersection, "POLE", 90.0, 10.0, 0);
  b.Add(WaypointType::Intersection, "POLE", 89.99, 10.0, 0);  // 0.6' south, the last row of cells
  b.Add(WaypointType::Intersection, "TOOLONG", 0.0, 0.0, 0);
  b.Add(WaypointType::Airport, "ABCD", 91.0, 0.0, 0);
  const auto records = b.Build();
  EXPECT_EQ(Stats(b), (Counts{0, 3, 1, 3, 1, 4, 0, 1}));
  const auto abc = Find(records, "ABC");
  ASSERT_EQ(abc.size(), 4u);
  // The first one read is kept, with its frequency.
  EXPECT_EQ(std::count_if(abc.begin(), abc.end(), [](const WaypointRecord& r) { return RecordFrequency(r) == 11200; }),
            0);
  EXPECT_EQ(Find(records, "EDGE").size(), 2u);
  EXPECT_EQ(Find(records, "POLE").size(), 1u);
}

TEST(NavDBBuilder, SummaryLine) {
  NavDBBuildStats s;
  s.airports = 7179;
  s.vors = 1;
  s.ndbs = 2;
  s.badIdentifiers = 3;
  s.duplicates = 1;
  EXPECT_EQ(BuildSummary("sample.dat", s, 65537),
            "wrote sample.dat: 7182 waypoints (7179 airports, 1 VOR, 2 NDBs, 0 intersections), cycle 0001; "
            "skipped 3 bad identifiers, 1 duplicate, 0 rows of other types, 0 unreadable rows");
}
