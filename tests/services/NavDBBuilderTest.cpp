#include "services/NavDBBuilder.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

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

TEST(NavDBBuilder, OurAirportsCsvWithQuotesCommasAndNewlinesInFields) {
  // Columns in another order than the export, a byte order mark, quoted fields holding commas,
  // doubled quotes and a line break, CR LF line ends.
  const std::string csv =
      "\xEF\xBB\xBF" "\"id\",\"ident\",\"type\",\"name\",\"longitude_deg\",\"latitude_deg\"\r\n"
      "1,\"EDBM\",\"small_airport\",\"Magdeburg \"\"City\"\" Airport\",11.626389,52.073612\r\n"
      "2,\"ENEV\",\"medium_airport\",\"Harstad/Narvik Airport, Evenes\",16.678100585938,68.491302490234\r\n"
      "3,\"KXYZ\",\"closed\",\"Gone\",-100,40\r\n"
      "4,\"US-0001\",\"heliport\",\"Too long\",-100,40\r\n"
      "5,\"AB\",\"small_airport\",\"Two\nlines\",-0.5,-45.25\r\n"
      "6,\"ab\",\"small_airport\",\"small letters\",1,1\r\n"
      "7,\"BAD1\",\"small_airport\",\"no position\",,\r\n";
  NavDBBuilder b;
  ASSERT_EQ(b.AddText(csv, "airports.csv"), "");
  const auto records = b.Build();
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(Stats(b), (Counts{3, 0, 0, 0, 2, 0, 1, 1}));  // US-0001 and ab; closed; BAD1
  // Sorted by code: AB, EDBM, ENEV.
  EXPECT_EQ(IdentFromCode(RecordCode(records[0])), "AB");
  EXPECT_EQ(LatTenths(records[0]), Tenths(-45.25));
  EXPECT_EQ(LonTenths(records[0]), Tenths(-0.5));
  EXPECT_LT(records[0].lon, 0);  // the sign of a longitude smaller than a degree survives
  EXPECT_EQ(IdentFromCode(RecordCode(records[1])), "EDBM");
  EXPECT_EQ(LatTenths(records[1]), Tenths(52.073612));
  EXPECT_EQ(RecordFrequency(records[1]), 0);
}

TEST(NavDBBuilder, NavaidTypesAndFrequencies) {
  const std::string csv =
      "ident,name,type,frequency_khz,latitude_deg,longitude_deg\n"
      "LAM,Lambourne,VOR-DME,115600,51.64609909057617,0.15166699886322021\n"
      "LAX,Los Angeles,VORTAC,113600,33.933101654052734,-118.43199920654297\n"
      "LAR,La Rioja,VOR,113500,-29.388599395751953,-66.80359649658203\n"
      "LAM,Lamerd,NDB,346,27.36709976196289,53.1952018737793\n"
      "PEP,Prilep,NDB-DME,297.5,41.337799072265625,21.44860076904297\n"
      "LAB,Landsberg,TACAN,112150,48.06529998779297,10.880800247192383\n"
      "1CD,Nanaimo,DME,111450,49.05720138549805,-123.87200164794922\n"
      "XX,No frequency,NDB,,10,10\n";
  NavDBBuilder b;
  ASSERT_EQ(b.AddText(csv, "navaids.csv"), "");
  const auto records = b.Build();
  EXPECT_EQ(Stats(b), (Counts{0, 3, 3, 0, 0, 0, 2, 0}));
  const auto lam = Find(records, "LAM");
  ASSERT_EQ(lam.size(), 2u);
  EXPECT_EQ(TypeText(lam[0]), "VOR - Frequency 115.60");
  EXPECT_EQ(TypeText(lam[1]), "NDB - Frequency 346.0");
  EXPECT_EQ(TypeText(Find(records, "PEP").at(0)), "NDB - Frequency 297.5");
  EXPECT_EQ(RecordFrequency(Find(records, "XX").at(0)), 0);  // kept, frequency unknown
  EXPECT_EQ(LatTenths(Find(records, "LAR").at(0)), Tenths(-29.388599395751953));
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
  b.Add(WaypointType::Intersection, "POLE", 89.99, 10.0, 0);    // 0.6' south, the last row of cells
  b.Add(WaypointType::Intersection, "TOOLONG", 0.0, 0.0, 0);
  b.Add(WaypointType::Airport, "ABCD", 91.0, 0.0, 0);
  const auto records = b.Build();
  EXPECT_EQ(Stats(b), (Counts{0, 3, 1, 3, 1, 4, 0, 1}));
  const auto abc = Find(records, "ABC");
  ASSERT_EQ(abc.size(), 4u);
  // The first one read is kept, with its frequency.
  EXPECT_EQ(std::count_if(abc.begin(), abc.end(), [](const WaypointRecord& r) { return RecordFrequency(r) == 11200; }), 0);
  EXPECT_EQ(Find(records, "EDGE").size(), 2u);
  EXPECT_EQ(Find(records, "POLE").size(), 1u);
}

TEST(NavDBBuilder, XPlaneFixAndNavFiles) {
  const std::string fix =
      "I\n"
      "1101 Version - data cycle 1802, build 20180323, metadata FixXP1101.\n"
      "\n"
      "  37.428522222 -122.019305556  ABBEY ENRT K2 2115159\n"
      " -33.859444444  151.209722222  SYDNY ENRT YM 2115159\n"
      "  50.000000000    8.000000000  ABCDEF ENRT ED 0\n"
      "  bad-latitude    8.000000000  OOPS ENRT ED 0\n"
      "99\n"
      "  10.0 10.0 AFTER\n";
  const std::string nav =
      "I\n"
      "1100 Version - data cycle 1802, build 20180323, metadata NavXP1100.\n"
      "\n"
      "2  38.08777778 -077.32361111    0   396  50    0.000 APH  ENRT K6 A P HILL NDB\n"
      "3  47.43538889 -122.30961111  354 11680 130   19.000 SEA  ENRT K1 SEATTLE VORTAC\n"
      "4  47.46388889 -122.31111111  354 11030  18  160.000 ISEA KSEA 16L ILS-cat-III\n"
      "12 47.43538889 -122.30961111  354 11680 130    0.000 SEA  ENRT K1 SEATTLE VORTAC DME\n"
      "99\n";
  NavDBBuilder b;
  ASSERT_EQ(b.AddText(fix, "earth_fix.dat"), "");
  ASSERT_EQ(b.AddText(nav, "earth_nav.dat"), "");
  const auto records = b.Build();
  EXPECT_EQ(Stats(b), (Counts{0, 1, 1, 2, 1, 0, 2, 1}));  // other types: ILS and DME rows
  const auto sydny = Find(records, "SYDNY").at(0);
  EXPECT_EQ(TypeText(sydny), "Intersection");
  EXPECT_EQ(LatTenths(sydny), Tenths(-33.859444444));
  EXPECT_EQ(TypeText(Find(records, "SEA").at(0)), "VOR - Frequency 116.80");
  EXPECT_EQ(TypeText(Find(records, "APH").at(0)), "NDB - Frequency 396.0");
  EXPECT_TRUE(Find(records, "AFTER").empty());  // rows after "99" are not data
}

TEST(NavDBBuilder, UnreadableInputsAreReportedWithTheFileName) {
  NavDBBuilder b;
  EXPECT_EQ(b.AddText("ident,latitude_deg,longitude_deg\nAB,\"1\"x,2\nCD,1,2\n", "broken.csv"),
            "broken.csv: CSV syntax error near line 2");
  EXPECT_EQ(b.AddText("ident,latitude_deg,longitude_deg\nAB,\"1,2\n", "open.csv"),
            "open.csv: CSV syntax error: a quoted field is not closed");
  EXPECT_NE(b.AddText("name,lat,lon\nX,1,2\n", "other.csv").find("other.csv: not a recognised input"),
            std::string::npos);
  EXPECT_EQ(b.AddText("", "empty.csv"), "empty.csv: empty file");
  EXPECT_EQ(b.AddText("I\n1100 Version\n99\n", "earth_fix.dat"), "earth_fix.dat: no data rows in the X-Plane file");
  EXPECT_NE(b.AddFile("/nonexistent/airports.csv").find("cannot open"), std::string::npos);
  EXPECT_TRUE(b.Build().empty());
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
