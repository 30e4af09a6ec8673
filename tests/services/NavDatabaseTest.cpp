#include "services/NavDatabase.hpp"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <cmath>
#include <fstream>
#include <random>

#include "support/TempDir.hpp"


using namespace norvane;
namespace fs = std::filesystem;

namespace {

struct NavDatabaseFiles : ::testing::Test {
  std::string Write(const std::string& name, const std::vector<uint8_t>& bytes) {
    const fs::path p = dir.path / name;
    std::ofstream(p, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return p.string();
  }
  test::TempDir dir;
};

void PutWord(std::vector<uint8_t>& b, size_t word, uint32_t v) {
  for (int i = 0; i < 4; ++i) b[4 * word + size_t(i)] = uint8_t(v >> (8 * i));
}

std::vector<WaypointRecord> SampleRecords() {
  std::vector<WaypointRecord> r = {
      MakeRecord(WaypointType::Vor, IdentCode("ABCD"), 100, 200, 11390),
      MakeRecord(WaypointType::Airport, IdentCode("ABCD"), -300, -400, 0),
      MakeRecord(WaypointType::Ndb, IdentCode("AB1"), 500, 600, 4150),
      MakeRecord(WaypointType::Intersection, IdentCode("ZULU"), 700, 800, 0),
      MakeRecord(WaypointType::Airport, IdentCode("0K7"), 900, 1000, 0),
  };
  SortRecords(r);
  return r;
}

}  // namespace

TEST(NavDatabaseFormat, IdentifierCodesAreBase64DigitsOfTheBlankPaddedIdentifier) {
  struct Row { const char* id; uint32_t code; };
  const Row rows[] = {
      {"", 0},
      {"A", 11u << 24},                            // "A" has value 11
      {"ABCDE", (11u << 24) | (12u << 18) | (13u << 12) | (14u << 6) | 15u},
      {"9Z9Z9", (10u << 24) | (36u << 18) | (10u << 12) | (36u << 6) | 10u},
      {"ab", 0},                                   // small letters count as blanks
      {"A-B", (11u << 24) | (12u << 12)},          // "-" counts as a blank
      {"ABCDEF", IdentCode("ABCDE")},              // a sixth character is ignored
  };
  for (const Row& r : rows) EXPECT_EQ(IdentCode(r.id), r.code) << r.id;
  EXPECT_EQ(IdentFromCode(IdentCode("EGLL")), "EGLL");
  EXPECT_EQ(IdentFromCode(63u << 24), "?");
  EXPECT_TRUE(IsValidIdent("LAM"));
  for (const char* id : {"ABCDEF", "US-01", "lam"}) EXPECT_FALSE(IsValidIdent(id)) << id;
}

TEST(NavDatabaseFormat, SouthernLatitudeWordCarriesTheFrequencyHighByte) {
  // 33°52.5' S stored with frequency byte 0x12: word 1 = -((33*36000 + 52*600 + 300) * 256 + 0x12).
  const int32_t tenths = 33 * 36000 + 52 * 600 + 300;
  const WaypointRecord r = MakeRecord(WaypointType::Ndb, IdentCode("XYZ"), -tenths, 151 * 36000, 0x1234);
  EXPECT_EQ(r.lat, -(tenths * 256 + 0x12));
  EXPECT_EQ(r.lon, 151 * 36000 * 256 + 0x34);
  EXPECT_EQ(LatTenths(r), -tenths);
  EXPECT_EQ(RecordFrequency(r), 0x1234);
  EXPECT_EQ(RecordType(r), WaypointType::Ndb);
  EXPECT_EQ(RecordCode(r), IdentCode("XYZ"));
}

TEST(NavDatabaseFormat, SplitAngleRoundsMinutesOnlyWithoutSeconds) {
  struct Row { int64_t value; bool withSeconds; std::array<int32_t, 4> parts; };
  const Row rows[] = {
      {36000 * 45 + 600 * 12 + 10 * 34 + 7, true, {45, 12, 34, 7}},
      {36000 * 45 + 600 * 12 + 10 * 34 + 7, false, {45, 13, 0, 0}},   // 34.7" rounds up
      {36000 * 45 + 600 * 12 + 299, false, {45, 12, 0, 0}},           // 29.9" rounds down
      {36000 * 10 + 600 * 59 + 300, false, {11, 0, 0, 0}},            // 59'30" carries a degree
      {36000 * 33 + 600 * 52 + 300, true, {33, 52, 30, 0}},
  };
  for (const Row& r : rows) {
    const AngleParts a = SplitAngle(r.value, r.withSeconds);
    EXPECT_EQ((std::array{a.deg, a.min, a.sec, a.tenths}), r.parts) << r.value;
  }
}

TEST(NavDatabaseFormat, TypeTextsAndListLines) {
  // Lambourne VOR, 51.646099 N 0.151667 E: 51°38'46" and 0°09'06" shown with rounded minutes.
  const auto tenths = [](double deg) { return int32_t(std::lround(deg * 36000)); };
  struct Row { WaypointRecord r; const char* type; const char* line; };
  const Row rows[] = {
      {MakeRecord(WaypointType::Vor, IdentCode("LAM"), tenths(51.64609909057617), tenths(0.15166699886322021), 11560),
       "VOR - Frequency 115.60", "LAM  VORN51\xC2\xB0" "39' E000\xC2\xB0" "09' "},
      // 52'30" is the rounding threshold: 53 minutes. 0x1234 = 4660 tenths of a kHz.
      {MakeRecord(WaypointType::Ndb, IdentCode("XYZ"), -(33 * 36000 + 52 * 600 + 300), 151 * 36000, 0x1234),
       "NDB - Frequency 466.0", "XYZ  NDBS33\xC2\xB0" "53' E151\xC2\xB0" "00' "},
      {MakeRecord(WaypointType::Airport, IdentCode("KLAX"), tenths(33.94250107), tenths(-118.4079971), 0), "Airport",
       "KLAX  APTN33\xC2\xB0" "57' W118\xC2\xB0" "24' "},
      {MakeRecord(WaypointType::Intersection, IdentCode("EQ"), -250, -10, 0), "Intersection",  // rounds to zero: N, E
       "EQ  INTN00\xC2\xB0" "00' E000\xC2\xB0" "00' "},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(TypeText(r.r), r.type);
    EXPECT_EQ(ListLine(r.r), r.line);
  }
}

// Each reason to refuse a file, found by the header check (before loading) or by the load.
TEST_F(NavDatabaseFiles, RefusalReasons) {
  const std::vector<uint8_t> good = SerializeNavDB(SampleRecords(), 901);
  const auto changed = [&](size_t word, uint32_t v, size_t size = 0) {
    std::vector<uint8_t> b = good;
    b.resize(size ? size : good.size());
    if (word != 0 || v != 0) PutWord(b, word, v);
    return b;
  };
  std::vector<uint8_t> thirteen(13 * 12, 0);
  PutWord(thirteen, 0, kNavDBMagic);
  std::vector<uint8_t> unsorted = good;  // the first and last records swapped
  for (size_t i = 0; i < 12; ++i) std::swap(unsorted[13 * 12 + i], unsorted[17 * 12 + i]);

  struct Row { std::string path; NavDBStatus status; bool headerOk = false; };
  const Row rows[] = {
      {"", NavDBStatus::NoPath},
      {(dir.path / "missing.dat").string(), NavDBStatus::NotFound},
      {Write("good.txt", good), NavDBStatus::NotDatExtension},
      {Write("thirteen.dat", thirteen), NavDBStatus::NoRecords},  // N = 0
      {Write("ragged.dat", changed(0, 0, good.size() + 5)), NavDBStatus::BadLength},  // not a multiple of 12
      {Write("count.dat", changed(1, 6)), NavDBStatus::CountMismatch},
      {Write("extra.dat", changed(0, 0, good.size() + 12)), NavDBStatus::CountMismatch},  // a record more
      {Write("magic.dat", changed(0, 0x19070548)), NavDBStatus::BadMagic},
      {Write("index.dat", changed(3 + 10, 6)), NavDBStatus::BadIndex, true},  // "A" points past the records
      {Write("negative.dat", changed(3 + 35, 0xFFFFFFFFu)), NavDBStatus::BadIndex, true},
      {Write("unsorted.dat", unsorted), NavDBStatus::NotSorted, true},
      {Write("lat.dat", changed(13 * 3 + 1, uint32_t((90 * 36000 + 1) * 256))), NavDBStatus::BadCoordinate, true},
      {Write("lon.dat", changed(13 * 3 + 2, 0x80000000u)), NavDBStatus::BadCoordinate, true},  // INT32_MIN
      {Write("X.DAT", good), NavDBStatus::Ok, true},  // the extension test ignores case
  };
  for (const Row& r : rows) {
    NavDatabase db;
    db.SetDBPath(r.path);
    EXPECT_EQ(db.CheckNavDB(), r.headerOk) << r.path;
    if (r.headerOk) {
      EXPECT_EQ(db.LoadNavDB(), r.status == NavDBStatus::Ok) << r.path;
    }
    EXPECT_EQ(db.Status(), r.status) << r.path << ": " << db.StatusText();
    EXPECT_EQ(db.DBError(), r.status != NavDBStatus::Ok) << r.path;
    if (r.status == NavDBStatus::Ok) {
      EXPECT_EQ(db.DBCount(), 5);
      EXPECT_EQ(db.DBCycle(), 901);
    } else {
      EXPECT_TRUE(db.Records().empty());
      EXPECT_EQ(db.FindIdent("ABCD").first, 0);
    }
  }
}

// A file changed between the check and the load is judged again whole; one changed after the load
// does not reach the loaded copy.
TEST_F(NavDatabaseFiles, FileChangingUnderTheReader) {
  const std::vector<WaypointRecord> first = SampleRecords();
  const std::vector<uint8_t> good = SerializeNavDB(first, 1);
  const std::string path = Write("live.dat", good);
  NavDatabase db;
  db.SetDBPath(path);
  struct Row { std::vector<uint8_t> bytes; NavDBStatus status; };
  const Row rows[] = {{{good.begin(), good.end() - 12}, NavDBStatus::CountMismatch},  // one record shorter
                      {{good.begin(), good.begin() + 100}, NavDBStatus::BadLength},
                      {{}, NavDBStatus::NotFound}};
  for (const Row& r : rows) {
    Write("live.dat", good);
    ASSERT_TRUE(db.CheckNavDB());
    if (r.bytes.empty()) fs::remove(path);
    else Write("live.dat", r.bytes);
    EXPECT_FALSE(db.LoadNavDB());
    EXPECT_EQ(db.Status(), r.status);
    EXPECT_EQ(db.FindIdent("ZULU").first, 0);
  }

  // Replaced by a larger valid database between the check and the load: the load takes the new
  // file whole, count included, and never indexes past its records.
  Write("live.dat", good);
  ASSERT_TRUE(db.CheckNavDB());
  std::vector<WaypointRecord> larger = first;
  for (int i = 0; i < 50; ++i) larger.push_back(MakeRecord(WaypointType::Ndb, IdentCode("Z" + std::to_string(i)), i, i, 415));
  SortRecords(larger);
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB(larger, 2)), "");
  EXPECT_FALSE(fs::exists(path + ".tmp"));
  ASSERT_TRUE(db.LoadNavDB());
  EXPECT_EQ(db.DBCount(), int32_t(larger.size()));
  EXPECT_EQ(db.DBCycle(), 2);
  const IdentMatch z0 = db.FindIdent("Z0");
  ASSERT_NE(z0.first, 0);
  EXPECT_EQ(RecordType(db.Record(z0.first)), WaypointType::Ndb);

  // Replaced by another valid database, cut to a few bytes, then deleted: the loaded copy stays.
  const IdentMatch before = db.FindIdent("ZULU");
  const WaypointRecord zulu = db.Record(before.first);
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB(first, 7)), "");
  Write("live.dat", std::vector<uint8_t>(30, 0xFF));
  fs::remove(path);
  EXPECT_EQ(db.FindIdent("ZULU"), before);
  EXPECT_EQ(db.Record(before.first), zulu);
  EXPECT_EQ(db.DBCount(), int32_t(larger.size()));
}

TEST(NavDatabaseSearch, WholePaddedIdentifierMustMatchAndIndexZeroMeansNone) {
  std::vector<uint8_t> bytes = SerializeNavDB(SampleRecords(), 1);
  NavDatabase db;
  ASSERT_TRUE(db.LoadNavDBFromBytes(bytes));
  // Sorted: 0K7, AB1, ABCD (APT), ABCD (VOR), ZULU.
  EXPECT_EQ(db.FindIdent("ABCD"), (IdentMatch{3, 4}));
  EXPECT_EQ(db.FindIdent("AB"), (IdentMatch{0, 0}));  // "AB" does not find "ABCD"
  EXPECT_EQ(db.FindIdent("AB1"), (IdentMatch{2, 2}));
  EXPECT_EQ(db.FindIdent("0K7"), (IdentMatch{1, 1}));
  EXPECT_EQ(db.FindIdent("ZULU"), (IdentMatch{5, 5}));
  EXPECT_EQ(db.FindIdent("ZULUX"), (IdentMatch{0, 0}));
  EXPECT_EQ(db.FindIdent("B"), (IdentMatch{0, 0}));
  EXPECT_EQ(db.FindIdent(""), (IdentMatch{0, 0}));
  EXPECT_EQ(RecordType(db.Record(3)), WaypointType::Airport);
  EXPECT_EQ(RecordType(db.Record(4)), WaypointType::Vor);

  // With the index entry of "A" set to 0 the A-records are not searched at all, although they exist.
  PutWord(bytes, 3 + 10, 0);
  ASSERT_TRUE(db.LoadNavDBFromBytes(bytes));
  EXPECT_EQ(db.FindIdent("ABCD"), (IdentMatch{0, 0}));
  EXPECT_EQ(db.FindIdentLinear("ABCD"), (IdentMatch{0, 0}));
  EXPECT_EQ(db.FindIdent("ZULU"), (IdentMatch{5, 5}));
}

TEST(NavDatabaseSearch, BinarySearchAgreesWithTheScanOnRandomDatabases) {
  // Few distinct identifiers and many repeats, with index entries both right and deliberately
  // early (an early entry is still a valid start for the scan).
  std::mt19937 rng(20240601);
  const char alphabet[] = "0AB9Z";
  for (int round = 0; round < 200; ++round) {
    std::vector<WaypointRecord> records;
    const int n = 1 + int(rng() % 60);
    for (int i = 0; i < n; ++i) {
      std::string id;
      for (int k = 0, len = 1 + int(rng() % 3); k < len; ++k) id += alphabet[rng() % 5];
      records.push_back(MakeRecord(WaypointType(rng() % 4), IdentCode(id), int32_t(rng() % 1000), 0, 0));
    }
    SortRecords(records);
    std::vector<uint8_t> bytes = SerializeNavDB(records, 0);
    if (round % 2) PutWord(bytes, 3 + 10, 1);  // "A" starts the search at record 1
    NavDatabase db;
    ASSERT_TRUE(db.LoadNavDBFromBytes(bytes));
    for (const char* id : {"0", "A", "AB", "A0", "B", "9", "Z", "ZZ", "0A0", "AAA", "ZZZ", "Q"})
      EXPECT_EQ(db.FindIdent(id), db.FindIdentLinear(id)) << id << " round " << round;
  }
}

TEST(NavDatabaseNames, DisplayNameCutsLongNamesAndShowsTheCycle) {
  struct Row { const char* path; int cycle; const char* display; const char* file; };
  const Row rows[] = {
      {"/data/europe.dat", 901, "europe (0901)", "europe.dat"},
      {"/x/world_2024_full.dat", 2401, "world_2024.. (2401)", "world_2024_full.dat"},
      {"/x/abcdefghij.dat", 12345, "abcdefghij (12345)", "abcdefghij.dat"},
      {"/x/\xC3\xA9" "tude-a\xC3\xA9roports.dat", 7, "\xC3\xA9" "tude-a\xC3\xA9ro.. (0007)", nullptr},
  };
  for (const Row& r : rows) {
    // The cycle comes from a loaded header (word 2 modulo 65536).
    std::vector<WaypointRecord> one = {MakeRecord(WaypointType::Airport, IdentCode("A"), 0, 0, 0)};
    NavDatabase db;
    ASSERT_TRUE(db.LoadNavDBFromBytes(SerializeNavDB(one, uint32_t(r.cycle) + 65536u * 3)));
    db.SetDBPath(r.path);
    EXPECT_EQ(db.GetDBDisplayName(), r.display) << r.path;
    if (r.file) {
      EXPECT_EQ(db.GetDBFileName(), r.file);
    }
  }
}

TEST(NavDatabaseFormat, CoordinateBoxTextsForTheScreens) {
  struct Row { int32_t tenths; bool withSeconds; char sep; const char* deg; const char* min; const char* sec; int max = 179; };
  const Row rows[] = {
      {51 * 36000 + 28 * 600 + 142, true, '.', "51", "28", "14.2"},
      {51 * 36000 + 28 * 600 + 142, true, ',', "51", "28", "14,2"},
      {51 * 36000 + 28 * 600 + 142, false, '.', "51", "28", ""},     // 14.2" rounds down
      {0 * 36000 + 27 * 600 + 430, false, '.', "0", "28", ""},       // 43" rounds up
      {10 * 36000 + 59 * 600 + 599, false, '.', "11", "0", ""},      // carries into the degrees
      // On or rounding to the 180th meridian or a pole: the largest value the boxes take (was a red "180").
      {179 * 36000 + 59 * 600 + 599, false, '.', "179", "59", ""}, {180 * 36000, true, '.', "179", "59", "59.9"},
      {90 * 36000, false, '.', "89", "59", "", 89},
  };
  for (const Row& r : rows) {
    const CoordinateBoxTexts t = CoordinateBoxes(r.tenths, true, r.withSeconds, r.sep, r.max);
    EXPECT_TRUE(t.negative);
    EXPECT_EQ(t.deg, r.deg) << r.tenths;
    EXPECT_EQ(t.min, r.min) << r.tenths;
    EXPECT_EQ(t.sec, r.sec) << r.tenths;
  }
  EXPECT_FALSE(CoordinateBoxes(0, true, true, '.', 89).negative);  // the equator is not south
}
