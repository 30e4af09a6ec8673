#include "services/NavDatabase.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "services/NavDBBuilder.hpp"

using namespace norvane;
namespace fs = std::filesystem;

namespace {

// A scratch folder per test, removed afterwards.
class NavDatabaseFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("norvane-navdb-" + std::to_string(::getpid()) + "-" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string Write(const std::string& name, const std::vector<uint8_t>& bytes) {
    const fs::path p = dir_ / name;
    std::ofstream(p, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return p.string();
  }
  fs::path dir_;
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
  for (const Row& r : rows) {
    EXPECT_EQ(IdentCode(r.id), r.code) << r.id;
  }
  EXPECT_EQ(IdentFromCode(IdentCode("EGLL")), "EGLL");
  EXPECT_EQ(IdentFromCode(63u << 24), "?");
  EXPECT_TRUE(IsValidIdent("LAM"));
  EXPECT_FALSE(IsValidIdent("ABCDEF"));
  EXPECT_FALSE(IsValidIdent("US-01"));
  EXPECT_FALSE(IsValidIdent("lam"));
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
  const AngleParts exact = SplitAngle(tenths, true);
  EXPECT_EQ(exact.deg, 33);
  EXPECT_EQ(exact.min, 52);
  EXPECT_EQ(exact.sec, 30);
  EXPECT_EQ(exact.tenths, 0);
  // 52'30" is the rounding threshold: the list shows 53 minutes.
  EXPECT_EQ(ListLine(r), "XYZ  NDBS33\xC2\xB0" "53' E151\xC2\xB0" "00' ");
  EXPECT_EQ(TypeText(r), "NDB - Frequency 466.0");  // 0x1234 = 4660 tenths of a kHz
}

TEST(NavDatabaseFormat, SplitAngleRoundsMinutesOnlyWithoutSeconds) {
  struct Row { int64_t value; bool withSeconds; AngleParts parts; };
  const Row rows[] = {
      {36000 * 45 + 600 * 12 + 10 * 34 + 7, true, {45, 12, 34, 7}},
      {36000 * 45 + 600 * 12 + 10 * 34 + 7, false, {45, 13, 0, 0}},   // 34.7" rounds up
      {36000 * 45 + 600 * 12 + 299, false, {45, 12, 0, 0}},           // 29.9" rounds down
      {36000 * 10 + 600 * 59 + 300, false, {11, 0, 0, 0}},            // 59'30" carries a degree
  };
  for (const Row& r : rows) {
    const AngleParts a = SplitAngle(r.value, r.withSeconds);
    EXPECT_EQ(a.deg, r.parts.deg) << r.value;
    EXPECT_EQ(a.min, r.parts.min) << r.value;
    EXPECT_EQ(a.sec, r.parts.sec) << r.value;
    EXPECT_EQ(a.tenths, r.parts.tenths) << r.value;
  }
}

TEST(NavDatabaseFormat, TypeTextsAndListLines) {
  EXPECT_EQ(TypeText(MakeRecord(WaypointType::Vor, IdentCode("LAM"), 0, 0, 11560)), "VOR - Frequency 115.60");
  EXPECT_EQ(TypeText(MakeRecord(WaypointType::Ndb, IdentCode("WOD"), 0, 0, 3525)), "NDB - Frequency 352.5");
  // Lambourne VOR, 51.646099 N 0.151667 E: 51°38'46" and 0°09'06" shown with rounded minutes.
  const auto tenths = [](double deg) { return int32_t(std::lround(deg * 36000)); };
  EXPECT_EQ(ListLine(MakeRecord(WaypointType::Vor, IdentCode("LAM"), tenths(51.64609909057617),
                                tenths(0.15166699886322021), 11560)),
            "LAM  VORN51\xC2\xB0" "39' E000\xC2\xB0" "09' ");
  EXPECT_EQ(ListLine(MakeRecord(WaypointType::Airport, IdentCode("KLAX"), tenths(33.94250107), tenths(-118.4079971), 0)),
            "KLAX  APTN33\xC2\xB0" "57' W118\xC2\xB0" "24' ");
  EXPECT_EQ(ListLine(MakeRecord(WaypointType::Intersection, IdentCode("EQ"), -250, -10, 0)),  // rounds to zero: N, E
            "EQ  INTN00\xC2\xB0" "00' E000\xC2\xB0" "00' ");
}

TEST_F(NavDatabaseFiles, CheckRejectsMalformedFilesAndAcceptsUpperCaseExtension) {
  const std::vector<uint8_t> good = SerializeNavDB(SampleRecords(), 901);
  std::vector<uint8_t> thirteen(13 * 12, 0);
  PutWord(thirteen, 0, kNavDBMagic);
  std::vector<uint8_t> ragged = good;
  ragged.resize(good.size() + 5);
  std::vector<uint8_t> wrongCount = good;
  PutWord(wrongCount, 1, 6);
  std::vector<uint8_t> wrongMagic = good;
  PutWord(wrongMagic, 0, 0x19070548);
  std::vector<uint8_t> extraRecord = good;  // a record more than the header says
  extraRecord.resize(good.size() + 12);

  struct Row { std::string path; NavDBStatus status; };
  const Row rows[] = {
      {"", NavDBStatus::NoPath},
      {(dir_ / "missing.dat").string(), NavDBStatus::NotFound},
      {Write("good.txt", good), NavDBStatus::NotDatExtension},
      {Write("thirteen.dat", thirteen), NavDBStatus::NoRecords},  // N = 0
      {Write("ragged.dat", ragged), NavDBStatus::BadLength},      // not a multiple of 12
      {Write("count.dat", wrongCount), NavDBStatus::CountMismatch},
      {Write("extra.dat", extraRecord), NavDBStatus::CountMismatch},
      {Write("magic.dat", wrongMagic), NavDBStatus::BadMagic},
      {Write("X.DAT", good), NavDBStatus::Ok},                    // the extension test ignores case
      {Write("europe.dat", good), NavDBStatus::Ok},
  };
  for (const Row& r : rows) {
    NavDatabase db;
    db.SetDBPath(r.path);
    EXPECT_EQ(db.CheckNavDB(), r.status == NavDBStatus::Ok) << r.path;
    EXPECT_EQ(db.Status(), r.status) << r.path << ": " << db.StatusText();
    EXPECT_EQ(db.DBError(), r.status != NavDBStatus::Ok) << r.path;
    if (r.status == NavDBStatus::Ok) {
      EXPECT_EQ(db.DBCount(), 5);
      EXPECT_EQ(db.DBCycle(), 901);
    }
  }
}

TEST_F(NavDatabaseFiles, LoadRefusesBadIndexUnsortedRecordsAndWildCoordinates) {
  const std::vector<uint8_t> good = SerializeNavDB(SampleRecords(), 1);
  std::vector<uint8_t> indexBeyond = good;
  PutWord(indexBeyond, 3 + 10, 6);  // entry of "A" points past the 5 records
  std::vector<uint8_t> indexNegative = good;
  PutWord(indexNegative, 3 + 35, 0xFFFFFFFFu);
  std::vector<uint8_t> unsorted = good;  // swap the first and last records
  for (size_t i = 0; i < 12; ++i) std::swap(unsorted[13 * 12 + i], unsorted[17 * 12 + i]);
  std::vector<uint8_t> badLatitude = good;
  PutWord(badLatitude, 13 * 3 + 1, uint32_t((90 * 36000 + 1) * 256));
  std::vector<uint8_t> badLongitude = good;
  PutWord(badLongitude, 13 * 3 + 2, uint32_t(int32_t(0x80000000u)));  // INT32_MIN: no overflow on abs

  struct Row { std::string path; NavDBStatus status; };
  const Row rows[] = {
      {Write("index.dat", indexBeyond), NavDBStatus::BadIndex},
      {Write("negative.dat", indexNegative), NavDBStatus::BadIndex},
      {Write("unsorted.dat", unsorted), NavDBStatus::NotSorted},
      {Write("lat.dat", badLatitude), NavDBStatus::BadCoordinate},
      {Write("lon.dat", badLongitude), NavDBStatus::BadCoordinate},
      {Write("good.dat", good), NavDBStatus::Ok},
  };
  for (const Row& r : rows) {
    NavDatabase db;
    db.SetDBPath(r.path);
    EXPECT_TRUE(db.CheckNavDB()) << r.path;  // the header alone looks fine
    EXPECT_EQ(db.LoadNavDB(), r.status == NavDBStatus::Ok) << r.path;
    EXPECT_EQ(db.Status(), r.status) << r.path << ": " << db.StatusText();
    if (r.status != NavDBStatus::Ok) {
      EXPECT_TRUE(db.DBError());
      EXPECT_TRUE(db.Records().empty());
      EXPECT_EQ(db.FindIdent("ABCD").first, 0);
    }
  }
}

TEST_F(NavDatabaseFiles, FileTruncatedBetweenCheckAndLoadIsRefused) {
  const std::vector<uint8_t> good = SerializeNavDB(SampleRecords(), 1);
  const std::string path = Write("live.dat", good);
  NavDatabase db;
  db.SetDBPath(path);
  ASSERT_TRUE(db.CheckNavDB());
  Write("live.dat", std::vector<uint8_t>(good.begin(), good.end() - 12));  // one record shorter
  EXPECT_FALSE(db.LoadNavDB());
  EXPECT_EQ(db.Status(), NavDBStatus::CountMismatch);
  EXPECT_EQ(db.FindIdent("ZULU").first, 0);
  Write("live.dat", std::vector<uint8_t>(good.begin(), good.begin() + 100));
  EXPECT_FALSE(db.LoadNavDB());
  EXPECT_EQ(db.Status(), NavDBStatus::BadLength);
  fs::remove(path);
  EXPECT_FALSE(db.LoadNavDB());
  EXPECT_EQ(db.Status(), NavDBStatus::NotFound);
}

TEST_F(NavDatabaseFiles, LoadedDatabaseAnswersFromMemoryWhileItsFileChanges) {
  const std::vector<WaypointRecord> first = SampleRecords();
  const std::string path = Write("live.dat", SerializeNavDB(first, 1));
  NavDatabase db;
  db.SetDBPath(path);
  ASSERT_TRUE(db.CheckNavDB() && db.LoadNavDB());
  const IdentMatch before = db.FindIdent("ZULU");
  ASSERT_NE(before.first, 0);
  const WaypointRecord zulu = db.Record(before.first);

  // Replaced by another valid database, cut to a few bytes, then deleted: the loaded copy stays.
  std::vector<WaypointRecord> other = {MakeRecord(WaypointType::Vor, IdentCode("ALPHA"), 100, 200, 11390)};
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB(other, 7)), "");
  EXPECT_EQ(db.FindIdent("ZULU"), before);
  Write("live.dat", std::vector<uint8_t>(30, 0xFF));
  EXPECT_EQ(db.FindIdent("ZULU"), before);
  fs::remove(path);
  EXPECT_EQ(db.FindIdent("ZULU"), before);
  EXPECT_EQ(db.Record(before.first), zulu);
  EXPECT_EQ(db.DBCount(), int32_t(first.size()));

  // Replaced by a larger valid database between the check and the load: the load takes the new
  // file whole, count included, and never indexes past its records.
  Write("live.dat", SerializeNavDB(first, 1));
  ASSERT_TRUE(db.CheckNavDB());
  std::vector<WaypointRecord> larger = first;
  for (int i = 0; i < 50; ++i) larger.push_back(MakeRecord(WaypointType::Ndb, IdentCode("Z" + std::to_string(i)), i, i, 415));
  SortRecords(larger);
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB(larger, 2)), "");
  ASSERT_TRUE(db.LoadNavDB());
  EXPECT_EQ(db.DBCount(), int32_t(larger.size()));
  EXPECT_EQ(db.DBCycle(), 2);
  const IdentMatch z0 = db.FindIdent("Z0");
  ASSERT_NE(z0.first, 0);
  EXPECT_EQ(RecordType(db.Record(z0.first)), WaypointType::Ndb);
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

TEST_F(NavDatabaseFiles, RoundTripOfTheSampleDataThroughBuildCheckLoadFind) {
  NavDBBuilder builder;
  ASSERT_EQ(builder.AddFile(NORVANE_SOURCE_DIR "/data/waypoints/airports.csv"), "");
  ASSERT_EQ(builder.AddFile(NORVANE_SOURCE_DIR "/data/waypoints/navaids.csv"), "");
  const auto records = builder.Build();
  EXPECT_EQ(builder.Stats().airports, 7179);
  EXPECT_EQ(builder.Stats().otherTypes, 5);  // DME and TACAN rows
  const std::string path = (dir_ / "sample.dat").string();
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB(records, 1)), "");
  EXPECT_FALSE(fs::exists(path + ".tmp"));

  NavDatabase db;
  db.SetDBPath(path);
  ASSERT_TRUE(db.CheckNavDB());
  ASSERT_TRUE(db.LoadNavDB());
  EXPECT_EQ(size_t(db.DBCount()), records.size());
  EXPECT_EQ(db.GetDBDisplayName(), "sample (0001)");

  // LAM: Lamerd VOR, Lambourne VOR, Lamerd NDB; sorted by type, then latitude.
  const IdentMatch lam = db.FindIdent("LAM");
  ASSERT_EQ(lam.last - lam.first, 2);
  EXPECT_EQ(ListLine(db.Record(lam.first + 1)), "LAM  VORN51\xC2\xB0" "39' E000\xC2\xB0" "09' ");
  EXPECT_EQ(TypeText(db.Record(lam.first + 1)), "VOR - Frequency 115.60");
  EXPECT_EQ(TypeText(db.Record(lam.last)), "NDB - Frequency 346.0");

  // EGLL: 51.4706 N, 0.461941 W in the CSV, to a tenth of an arc-second.
  const IdentMatch egll = db.FindIdent("EGLL");
  ASSERT_EQ(egll.first, egll.last);
  ASSERT_NE(egll.first, 0);
  EXPECT_EQ(LatTenths(db.Record(egll.first)), std::lround(51.4706 * 36000));
  EXPECT_EQ(LonTenths(db.Record(egll.first)), std::lround(-0.461941 * 36000));
  EXPECT_EQ(db.FindIdent("EGL").first, 0);

  // Every waypoint is found by its own identifier, by search and by scan alike.
  for (int32_t i = 1; i <= db.DBCount(); i += 37) {
    const std::string id = IdentFromCode(RecordCode(db.Record(i)));
    const IdentMatch m = db.FindIdent(id);
    EXPECT_LE(m.first, i);
    EXPECT_GE(m.last, i);
    EXPECT_EQ(m, db.FindIdentLinear(id));
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
