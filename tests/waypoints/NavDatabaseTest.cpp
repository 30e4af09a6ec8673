#include "waypoints/NavDatabase.hpp"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <cmath>
#include <fstream>
#include <random>

#include "support/Golden.hpp"
#include "support/TempDir.hpp"

using namespace norvane;
namespace fs = std::filesystem;

namespace {

struct NavDatabaseFiles : ::testing::Test {
  std::string Write(const std::string& name, const std::vector<uint8_t>& bytes) {
    const fs::path p = dir.path / name;
    std::ofstream(p, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
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

WaypointType TypeNamed(const std::string& name) {
  return name == "VOR"   ? WaypointType::Vor
         : name == "NDB" ? WaypointType::Ndb
         : name == "APT" ? WaypointType::Airport
                         : WaypointType::Intersection;
}

}  // namespace

// The rows of data/navdb.txt: identifier codes, angles and the texts shown for records.
TEST(NavDatabaseFormat, GoldenTable) {
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "ident")) {
    EXPECT_EQ(IdentCode(r[0]), std::stoul(r[1], nullptr, 0)) << r.where;
    EXPECT_EQ(IsValidIdent(r[0]), r[2] == "yes") << r.where;
    if (r[2] == "yes") {
      EXPECT_EQ(IdentFromCode(IdentCode(r[0])), r[0]) << r.where;
    }
  }
  EXPECT_EQ(IdentFromCode(63u << 24), "?");
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "split")) {
    const AngleParts a = SplitAngle(std::stoll(r[0]), r[1] == "yes");
    EXPECT_EQ((std::array{a.deg, a.min, a.sec, a.tenths}),
              (std::array{std::stoi(r[2]), std::stoi(r[3]), std::stoi(r[4]), std::stoi(r[5])}))
        << r.where;
  }
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "line")) {
    const WaypointRecord w =
        MakeRecord(TypeNamed(r[0]), IdentCode(r[1]), std::stoi(r[2]), std::stoi(r[3]), std::stoi(r[4]));
    EXPECT_EQ(LatTenths(w), std::stoi(r[2])) << r.where;
    EXPECT_EQ(RecordFrequency(w), std::stoi(r[4])) << r.where;
    EXPECT_EQ(TypeText(w), r[5]) << r.where;
    EXPECT_EQ(ListLine(w), r[6]) << r.where;
  }
  // 33°52'30" S with frequency 0x1234: the latitude word carries the frequency's high byte.
  const WaypointRecord x = MakeRecord(WaypointType::Ndb, IdentCode("XYZ"), -1219500, 5436000, 0x1234);
  EXPECT_EQ(std::pair(x.lat, x.lon), std::pair(-(1219500 * 256 + 0x12), 5436000 * 256 + 0x34));
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "name")) {
    // The cycle comes from a loaded header (word 2 modulo 65536).
    NavDatabase db;
    ASSERT_TRUE(db.LoadNavDBFromBytes(SerializeNavDB(SampleRecords(), uint32_t(std::stoi(r[1])) + 65536u * 3)));
    db.SetDBPath(r[0]);
    EXPECT_EQ(db.GetDBDisplayName(), r[2]) << r.where;
    EXPECT_EQ(db.GetDBFileName(), r[3]) << r.where;
  }
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "box")) {
    const CoordinateBoxTexts t = CoordinateBoxes(std::stoi(r[0]), true, r[1] == "yes", r[2][0], std::stoi(r[6]));
    EXPECT_TRUE(t.negative);
    EXPECT_EQ((std::array{t.deg, t.min, t.sec}), (std::array{r[3], r[4], r[5]})) << r.where;
  }
  EXPECT_FALSE(CoordinateBoxes(0, true, true, '.', 89).negative);  // the equator is not south
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

  struct Row {
    std::string path;
    NavDBStatus status;
    bool headerOk = false;
  };
  const Row rows[] = {
      {"", NavDBStatus::NoPath},
      {(dir.path / "missing.dat").string(), NavDBStatus::NotFound},
      {Write("good.txt", good), NavDBStatus::NotDatExtension},
      {Write("thirteen.dat", thirteen), NavDBStatus::NoRecords},                      // N = 0
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
  struct Row {
    std::vector<uint8_t> bytes;
    NavDBStatus status;
  };
  const Row rows[] = {{{good.begin(), good.end() - 12}, NavDBStatus::CountMismatch},  // one record shorter
                      {{good.begin(), good.begin() + 100}, NavDBStatus::BadLength},
                      {{}, NavDBStatus::NotFound}};
  for (const Row& r : rows) {
    Write("live.dat", good);
    ASSERT_TRUE(db.CheckNavDB());
    if (r.bytes.empty())
      fs::remove(path);
    else
      Write("live.dat", r.bytes);
    EXPECT_FALSE(db.LoadNavDB());
    EXPECT_EQ(db.Status(), r.status);
    EXPECT_EQ(db.FindIdent("ZULU").first, 0);
  }

  // Replaced by a larger valid database between the check and the load: the load takes the new
  // file whole, count included, and never indexes past its records.
  Write("live.dat", good);
  ASSERT_TRUE(db.CheckNavDB());
  std::vector<WaypointRecord> larger = first;
  for (int i = 0; i < 50; ++i)
    larger.push_back(MakeRecord(WaypointType::Ndb, IdentCode("Z" + std::to_string(i)), i, i, 415));
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
  for (const auto& r : test::ReadGolden("waypoints/data/navdb.txt", "find"))
    EXPECT_EQ(db.FindIdent(r[0]), (IdentMatch{std::stoi(r[1]), std::stoi(r[2])})) << r.where;
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
