#pragma once
// The waypoint database: a binary "*.dat" file of airports, VORs, NDBs and intersections, read
// whole into memory and searched by identifier.
//
// File layout (all integers 32-bit little-endian, the file a sequence of 12-byte records):
//   record 1        header: magic 0x19070549, N (waypoint count), data cycle (used modulo 65536)
//   records 2..13   index: 36 words; word k is the 1-based number of the first waypoint whose
//                   identifier starts with the character of value k + 1 ("0".."9" = 1..10,
//                   "A".."Z" = 11..36), 0 when there is none
//   records 14..    N waypoints sorted by identifier code ascending:
//                   word 0  bits 31-30 type, bits 29-0 identifier code
//                   word 1  sign * (|latitude| in 0.1" * 256 + frequency high byte), north > 0
//                   word 2  sign * (|longitude| in 0.1" * 256 + frequency low byte), east > 0
// So the file length L is a multiple of 12 and N = L / 12 - 13 >= 1.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace norvane {

inline constexpr uint32_t kNavDBMagic = 0x19070549;
inline constexpr int kNavDBIndexSize = 36;
inline constexpr size_t kNavDBRecordBytes = 12;
inline constexpr size_t kNavDBPrefixRecords = 13;  // header and index
// Largest database accepted: 16.7 million waypoints (200 MB). Real world data sets hold well
// under a million; the cap keeps a hostile header or a wrong file from exhausting memory.
inline constexpr int32_t kNavDBMaxRecords = 1 << 24;

enum class WaypointType : uint8_t { Airport = 0, Vor = 1, Ndb = 2, Intersection = 3 };

// One waypoint record exactly as stored (the loader reads the file's records into an array of
// these directly, hence the asserts).
struct WaypointRecord {
  uint32_t word0 = 0;  // type << 30 | identifier code
  int32_t lat = 0;     // sign * (tenths of arc-second * 256 + frequency high byte)
  int32_t lon = 0;     // sign * (tenths of arc-second * 256 + frequency low byte)
  friend bool operator==(const WaypointRecord&, const WaypointRecord&) = default;
};
static_assert(sizeof(WaypointRecord) == kNavDBRecordBytes && std::is_trivially_copyable_v<WaypointRecord>);

inline WaypointType RecordType(const WaypointRecord& r) { return WaypointType(r.word0 >> 30); }
inline uint32_t RecordCode(const WaypointRecord& r) { return r.word0 & 0x3FFFFFFFu; }
// Signed latitude / longitude in tenths of an arc-second (the word divided by 256, truncated
// toward zero, so the sign survives a zero magnitude only through the frequency byte).
int32_t LatTenths(const WaypointRecord& r);
int32_t LonTenths(const WaypointRecord& r);
// The packed frequency: F = (|word 1| mod 256) * 256 + (|word 2| mod 256).
// VOR: F / 100 MHz; NDB: F / 10 kHz; unused for airports and intersections.
uint16_t RecordFrequency(const WaypointRecord& r);

// Packs a record. |latTenths| <= 90*36000 and |lonTenths| <= 180*36000 keep the words in range.
WaypointRecord MakeRecord(WaypointType type, uint32_t code, int32_t latTenths, int32_t lonTenths, uint16_t frequency);

// Identifier code: the identifier padded with blanks to five characters, each character a base-64
// digit (blank 0, "0".."9" 1..10, "A".."Z" 11..36, anything else 0), the first most significant.
// Characters beyond the fifth are ignored. The first character's value is code >> 24.
uint32_t IdentCode(std::string_view id);
// The identifier a code stands for, trailing blanks removed; values above 36 (never written by
// IdentCode) show as "?".
std::string IdentFromCode(uint32_t code);
// True for 1 to 5 characters, each "0".."9" or "A".."Z": the identifiers a code represents
// faithfully.
bool IsValidIdent(std::string_view id);

// An absolute angle in tenths of an arc-second split for display.
struct AngleParts {
  int32_t deg = 0, min = 0, sec = 0, tenths = 0;
};
// With seconds: degrees, minutes, seconds and tenths, all truncated. Without: the minutes are
// rounded (a rest of 30" or more adds one minute, 60 minutes carry into the degrees); sec and
// tenths are 0.
AngleParts SplitAngle(int64_t value, bool withSeconds);

// The texts a screen writes into its degree, minute and second boxes for a coordinate in tenths
// of an arc-second: with a seconds box, whole degrees and minutes and the seconds with their tenth
// ("30" or "30.5", decimalSep between); without, degrees and rounded minutes. maxDegrees is the
// degree box's last value (89, 179): a point on, or rounding to, a pole or the 180th meridian is
// written as the largest value the boxes take (89 59 59.9, or 179 59 without seconds), 0.1" or
// under a minute away, so that it can be calculated. negative selects the S or W option, except
// for a value shown as zero.
struct CoordinateBoxTexts {
  bool negative = false;
  std::string deg, min, sec;
};
CoordinateBoxTexts CoordinateBoxes(int32_t tenths, bool negative, bool withSeconds, char decimalSep, int maxDegrees);

// Display texts of the search dialog.
const char* TypeCode(WaypointType type);  // "APT", "VOR", "NDB", "INT"
// "Airport", "Intersection", "VOR - Frequency 113.90", "NDB - Frequency 415.0".
std::string TypeText(const WaypointRecord& r);
// One line of the match list: identifier, two blanks, type code, then the latitude as N/S,
// degrees "00", "°", minutes "00", "' " and the longitude as E/W, degrees "000", "°", minutes
// "00", "' " (minutes rounded). Example: "LAM  VORN51°39' E000°09' ". UTF-8.
std::string ListLine(const WaypointRecord& r);

// First and last record number (1-based) of the identifier's matches; first = 0 when none.
struct IdentMatch {
  int32_t first = 0;
  int32_t last = 0;
  friend bool operator==(const IdentMatch&, const IdentMatch&) = default;
};

// Outcome of checking or loading, with the reason shown by "navdb info".
enum class NavDBStatus {
  Ok,
  NoPath,
  NotFound,
  NotDatExtension,
  ReadError,
  BadLength,  // not a multiple of 12
  NoRecords,  // N < 1
  TooLarge,
  BadMagic,
  CountMismatch,  // header N differs from the length
  BadIndex,       // an index entry beyond N
  NotSorted,
  BadCoordinate,  // a latitude beyond 90° or a longitude beyond 180°
};

// The database module: the active file's name, its validity, count, cycle, index and records.
class NavDatabase {
 public:
  void SetDBPath(std::string path) { dbPath_ = std::move(path); }
  const std::string& DBPath() const { return dbPath_; }

  // Checks the file named by DBPath(): not empty and existing, extension ".dat" in any case,
  // length a multiple of 12 with N >= 1, magic and count in the header. Sets DBError(), DBCount()
  // and DBCycle(); the records are not read. Returns !DBError().
  bool CheckNavDB();
  // Reads the whole file in one read and validates it all (length, magic, count, every index
  // entry within 0..N, records sorted, coordinates within range) before taking it. On failure the
  // database is empty and DBError() is true; a file changed or truncated since CheckNavDB() is
  // caught here. Returns !DBError().
  bool LoadNavDB();
  // The same validation on bytes already in memory (the fuzz target enters here).
  bool LoadNavDBFromBytes(std::span<const uint8_t> bytes);
  // Forgets the database (DBError() true, no records), keeping the path.
  void Clear();

  // The part of DBPath() after its last "/" or "\".
  std::string GetDBFileName() const;
  // File name without its last 4 characters, cut to 10 characters plus ".." when longer, then
  // " (" cycle "0000" ")": europe.dat of cycle 901 gives "europe (0901)".
  std::string GetDBDisplayName() const;

  // Records of the identifier. O(log N): a binary search from the first character's index entry
  // to the end, which on a sorted file gives the same answer as the linear scan
  // FindIdentLinear().
  IdentMatch FindIdent(std::string_view id) const;
  // The reference scan: from the first character's index entry upward until a greater code.
  IdentMatch FindIdentLinear(std::string_view id) const;

  bool DBError() const { return dbError_; }
  bool Loaded() const { return !dbError_ && !records_.empty(); }
  int32_t DBCount() const { return dbCount_; }
  int32_t DBCycle() const { return dbCycle_; }
  NavDBStatus Status() const { return status_; }
  // A one-line English reason for Status(), e.g. "file length 100 is not a multiple of 12".
  const std::string& StatusText() const { return statusText_; }
  // Record n, 1 <= n <= DBCount() of a loaded database.
  const WaypointRecord& Record(int32_t n) const { return records_[size_t(n - 1)]; }
  const std::vector<WaypointRecord>& Records() const { return records_; }

 private:
  bool Fail(NavDBStatus status, std::string text);
  // The waypoint count that a file of `length` bytes holds, or -1 after Fail() when the length
  // is not whole records, holds no waypoint or passes the cap.
  int32_t CheckLength(uintmax_t length);
  // Magic and count of the header record at p against the n waypoints of the length.
  bool CheckHeader(const uint8_t* p, int32_t n);
  // Length, header and index of a file of `length` bytes whose header and index are at p (read
  // only once the length admits them). Fills index; on failure Fail() has been called.
  bool CheckPrefix(const uint8_t* p, size_t length, std::array<int32_t, kNavDBIndexSize>& index);
  // Checks the records' order and coordinates, then makes them the database.
  bool TakeRecords(std::vector<WaypointRecord> records, uint32_t cycle,
                   const std::array<int32_t, kNavDBIndexSize>& index);
  // The first record number to search for code c, 0 when the index says there is none.
  int32_t StartRecord(uint32_t c) const;

  std::string dbPath_;
  bool dbError_ = true;
  int32_t dbCount_ = 0;
  int32_t dbCycle_ = 0;
  NavDBStatus status_ = NavDBStatus::NoPath;
  std::string statusText_ = "no database file chosen";
  std::array<int32_t, kNavDBIndexSize> index_{};
  std::vector<WaypointRecord> records_;
};

// The serialised file: header, index built from the records, records. The records must already
// be sorted by code (SortRecords()).
std::vector<uint8_t> SerializeNavDB(const std::vector<WaypointRecord>& sortedRecords, uint32_t cycle);
// Stable order by identifier code, then type, latitude and longitude (a deterministic file).
void SortRecords(std::vector<WaypointRecord>& records);
// Writes bytes to path through a temporary file renamed into place, so that a reader never sees a
// half-written database. Returns an empty string or the error text.
std::string WriteFileAtomically(const std::string& path, std::span<const uint8_t> bytes);

}  // namespace norvane
