#include "waypoints/NavDatabase.hpp"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "app/Platform.hpp"
#include "app/TextFormat.hpp"

namespace norvane {
namespace {

constexpr const char* kDegree = "\xC2\xB0";  // "°" in UTF-8

uint32_t ReadU32(const uint8_t* p) {
  return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}
int32_t ReadI32(const uint8_t* p) { return int32_t(ReadU32(p)); }
void PutU32(std::vector<uint8_t>& out, uint32_t v) {
  for (int i = 0; i < 4; ++i) out.push_back(uint8_t(v >> (8 * i)));
}

// Paths cross the interface as UTF-8 text.
std::filesystem::path PathFromUtf8(const std::string& s) {
  return std::filesystem::path(std::u8string(s.begin(), s.end()));
}

int64_t Abs64(int32_t v) { return v < 0 ? -int64_t(v) : int64_t(v); }

int CharValue(char c) {
  if (c >= '0' && c <= '9') return c - '0' + 1;
  if (c >= 'A' && c <= 'Z') return c - 'A' + 11;
  return 0;
}

// Number of characters (UTF-8 code points) and a prefix of n code points, so that display names
// never cut a multi-byte character in two.
size_t CodePoints(std::string_view s) {
  return size_t(std::count_if(s.begin(), s.end(), [](char c) { return (uint8_t(c) & 0xC0) != 0x80; }));
}
std::string_view PrefixCodePoints(std::string_view s, size_t n) {
  size_t count = 0;
  for (size_t i = 0; i < s.size(); ++i) {
    if ((uint8_t(s[i]) & 0xC0) != 0x80) {
      if (count == n) return s.substr(0, i);
      ++count;
    }
  }
  return s;
}

// The hemisphere is that of the rounded value shown: what rounds to 00°00' is N or E.
std::string LatLonText(int32_t word, bool isLongitude) {
  const int64_t tenths = Abs64(word) / 256;
  const AngleParts a = SplitAngle(tenths, false);
  const bool negative = word < 0 && (a.deg != 0 || a.min != 0);
  std::string s = isLongitude ? (negative ? "W" : "E") : (negative ? "S" : "N");
  s += FormatMask(a.deg, isLongitude ? "000" : "00");
  s += kDegree;
  s += FormatMask(a.min, "00");
  s += "' ";
  return s;
}

}  // namespace

int32_t LatTenths(const WaypointRecord& r) { return r.lat / 256; }
int32_t LonTenths(const WaypointRecord& r) { return r.lon / 256; }

uint16_t RecordFrequency(const WaypointRecord& r) { return uint16_t((Abs64(r.lat) % 256) * 256 + Abs64(r.lon) % 256); }

WaypointRecord MakeRecord(WaypointType type, uint32_t code, int32_t latTenths, int32_t lonTenths, uint16_t frequency) {
  const auto pack = [](int32_t tenths, int byte) {
    const int64_t magnitude = Abs64(tenths) * 256 + byte;
    return int32_t(tenths < 0 ? -magnitude : magnitude);
  };
  WaypointRecord r;
  r.word0 = uint32_t(type) << 30 | (code & 0x3FFFFFFFu);
  r.lat = pack(latTenths, frequency >> 8);
  r.lon = pack(lonTenths, frequency & 0xFF);
  return r;
}

uint32_t IdentCode(std::string_view id) {
  uint32_t code = 0;
  for (size_t i = 0; i < 5; ++i) code = code * 64 + uint32_t(i < id.size() ? CharValue(id[i]) : 0);
  return code;
}

std::string IdentFromCode(uint32_t code) {
  std::string s(5, ' ');
  for (int i = 4; i >= 0; --i, code >>= 6) {
    const uint32_t v = code & 63;
    s[size_t(i)] = v == 0 ? ' ' : v <= 10 ? char('0' + v - 1) : v <= 36 ? char('A' + v - 11) : '?';
  }
  s.erase(s.find_last_not_of(' ') + 1);
  return s;
}

bool IsValidIdent(std::string_view id) {
  return !id.empty() && id.size() <= 5 && std::all_of(id.begin(), id.end(), [](char c) { return CharValue(c) != 0; });
}

AngleParts SplitAngle(int64_t value, bool withSeconds) {
  AngleParts a;
  a.deg = int32_t(value / 36000);
  const int64_t rest = value % 36000;
  a.min = int32_t(rest / 600);
  const int64_t rest2 = rest % 600;
  if (withSeconds) {
    a.sec = int32_t(rest2 / 10);
    a.tenths = int32_t(rest2 % 10);
  } else {
    if (rest2 >= 300) ++a.min;
    if (a.min == 60) {
      a.min = 0;
      ++a.deg;
    }
  }
  return a;
}

CoordinateBoxTexts CoordinateBoxes(int32_t tenths, bool negative, bool withSeconds, char decimalSep, int maxDegrees) {
  AngleParts a = SplitAngle(Abs64(tenths), withSeconds);
  if (a.deg > maxDegrees) a = {maxDegrees, 59, withSeconds ? 59 : 0, withSeconds ? 9 : 0};
  CoordinateBoxTexts t;
  t.negative = negative && (a.deg != 0 || a.min != 0 || a.sec != 0 || a.tenths != 0);
  t.deg = std::to_string(a.deg);
  t.min = std::to_string(a.min);
  if (withSeconds) {
    t.sec = std::to_string(a.sec);
    if (a.tenths != 0) t.sec += decimalSep + std::to_string(a.tenths);
  }
  return t;
}

const char* TypeCode(WaypointType type) {
  constexpr const char* kCodes[] = {"APT", "VOR", "NDB", "INT"};  // by WaypointType, two bits of a record
  return kCodes[static_cast<size_t>(type)];
}

std::string TypeText(const WaypointRecord& r) {
  switch (RecordType(r)) {
    case WaypointType::Airport:
      return "Airport";
    case WaypointType::Intersection:
      return "Intersection";
    case WaypointType::Vor:
      return "VOR - Frequency " + FormatMask(RecordFrequency(r) / 100.0, "0.00");
    case WaypointType::Ndb:
      return "NDB - Frequency " + FormatMask(RecordFrequency(r) / 10.0, "0.0");
  }
  return {};
}

std::string ListLine(const WaypointRecord& r) {
  return IdentFromCode(RecordCode(r)) + "  " + TypeCode(RecordType(r)) + LatLonText(r.lat, false) +
         LatLonText(r.lon, true);
}

// ---------------------------------------------------------------------------------------------

bool NavDatabase::Fail(NavDBStatus status, std::string text) {
  status_ = status;
  statusText_ = std::move(text);
  dbError_ = true;
  dbCount_ = 0;
  dbCycle_ = 0;
  index_.fill(0);
  records_.clear();
  records_.shrink_to_fit();
  return false;
}

void NavDatabase::Clear() { Fail(NavDBStatus::NoPath, "no database file chosen"); }

bool NavDatabase::CheckNavDB() {
  namespace fs = std::filesystem;
  if (dbPath_.empty()) return Fail(NavDBStatus::NoPath, "no database file chosen");
  std::error_code ec;
  const fs::path path = PathFromUtf8(dbPath_);
  if (!fs::is_regular_file(path, ec)) return Fail(NavDBStatus::NotFound, "file not found");
  std::string ext = dbPath_.size() >= 4 ? dbPath_.substr(dbPath_.size() - 4) : dbPath_;
  std::transform(ext.begin(), ext.end(), ext.begin(), [](char c) { return char(c >= 'A' && c <= 'Z' ? c + 32 : c); });
  if (ext != ".dat") return Fail(NavDBStatus::NotDatExtension, "the file name does not end in .dat");
  const uintmax_t length = fs::file_size(path, ec);
  if (ec) return Fail(NavDBStatus::ReadError, "cannot read the file");
  const int32_t n = CheckLength(length);
  if (n < 0) return false;
  uint8_t header[kNavDBRecordBytes];
  std::ifstream in(path, std::ios::binary);
  if (!in.read(reinterpret_cast<char*>(header), sizeof header))
    return Fail(NavDBStatus::ReadError, "cannot read the file");
  if (!CheckHeader(header, n)) return false;
  records_.clear();
  index_.fill(0);
  dbCount_ = n;
  dbCycle_ = int32_t(ReadU32(header + 8) % 65536);
  dbError_ = false;
  status_ = NavDBStatus::Ok;
  statusText_ = "valid";
  return true;
}

bool NavDatabase::LoadNavDB() {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::path path = PathFromUtf8(dbPath_);
  if (dbPath_.empty()) return Fail(NavDBStatus::NoPath, "no database file chosen");
  if (!fs::is_regular_file(path, ec)) return Fail(NavDBStatus::NotFound, "file not found");
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return Fail(NavDBStatus::ReadError, "cannot read the file");
  const std::streamoff size = in.tellg();
  if (size < 0) return Fail(NavDBStatus::ReadError, "cannot read the file");
  const uint64_t maxBytes = uint64_t(kNavDBPrefixRecords + size_t(kNavDBMaxRecords)) * kNavDBRecordBytes;
  if (uint64_t(size) > maxBytes)
    return Fail(NavDBStatus::TooLarge, "more than " + std::to_string(kNavDBMaxRecords) + " waypoints");
  in.seekg(0);
  const size_t length = size_t(size);
  if (length % kNavDBRecordBytes != 0 || length / kNavDBRecordBytes <= kNavDBPrefixRecords) {
    // Malformed: the byte check names the fault.
    std::vector<uint8_t> bytes(length);
    if (!in.read(reinterpret_cast<char*>(bytes.data()), size))
      return Fail(NavDBStatus::ReadError, "cannot read the file");
    return LoadNavDBFromBytes(bytes);
  }
  // The records are read straight into their final array, whose layout is the file's: no second
  // copy of a large file in memory, no conversion pass. A file shrunk since the size was taken
  // reads short and is refused.
  uint8_t prefix[kNavDBPrefixRecords * kNavDBRecordBytes];
  std::vector<WaypointRecord> records(length / kNavDBRecordBytes - kNavDBPrefixRecords);
  if (!in.read(reinterpret_cast<char*>(prefix), sizeof prefix) ||
      !in.read(reinterpret_cast<char*>(records.data()), std::streamsize(records.size() * sizeof(WaypointRecord))))
    return Fail(NavDBStatus::ReadError, "cannot read the file");
  if constexpr (std::endian::native != std::endian::little) {  // the file is little-endian
    for (WaypointRecord& r : records) {
      r.word0 = ReadU32(reinterpret_cast<const uint8_t*>(&r.word0));
      r.lat = ReadI32(reinterpret_cast<const uint8_t*>(&r.lat));
      r.lon = ReadI32(reinterpret_cast<const uint8_t*>(&r.lon));
    }
  }
  std::array<int32_t, kNavDBIndexSize> index{};
  if (!CheckPrefix(prefix, length, index)) return false;
  return TakeRecords(std::move(records), ReadU32(prefix + 8), index);
}

bool NavDatabase::LoadNavDBFromBytes(std::span<const uint8_t> bytes) {
  std::array<int32_t, kNavDBIndexSize> index{};
  if (!CheckPrefix(bytes.data(), bytes.size(), index)) return false;
  std::vector<WaypointRecord> records(bytes.size() / kNavDBRecordBytes - kNavDBPrefixRecords);
  const uint8_t* q = bytes.data() + kNavDBPrefixRecords * kNavDBRecordBytes;
  for (WaypointRecord& r : records) {
    r.word0 = ReadU32(q);
    r.lat = ReadI32(q + 4);
    r.lon = ReadI32(q + 8);
    q += kNavDBRecordBytes;
  }
  return TakeRecords(std::move(records), ReadU32(bytes.data() + 8), index);
}

int32_t NavDatabase::CheckLength(uintmax_t length) {
  if (length % kNavDBRecordBytes != 0) {
    Fail(NavDBStatus::BadLength, "file length " + std::to_string(length) + " is not a multiple of 12");
    return -1;
  }
  if (length / kNavDBRecordBytes <= kNavDBPrefixRecords) {
    Fail(NavDBStatus::NoRecords, "the file holds no waypoint");
    return -1;
  }
  const uintmax_t n = length / kNavDBRecordBytes - kNavDBPrefixRecords;
  if (n > uintmax_t(kNavDBMaxRecords)) {
    Fail(NavDBStatus::TooLarge, "more than " + std::to_string(kNavDBMaxRecords) + " waypoints");
    return -1;
  }
  return int32_t(n);
}

bool NavDatabase::CheckHeader(const uint8_t* p, int32_t n) {
  if (ReadU32(p) != kNavDBMagic) return Fail(NavDBStatus::BadMagic, "not a waypoint database (wrong magic number)");
  const int32_t count = ReadI32(p + 4);
  if (count != n)
    return Fail(NavDBStatus::CountMismatch,
                "the header counts " + std::to_string(count) + " waypoints, the length " + std::to_string(n));
  return true;
}

bool NavDatabase::CheckPrefix(const uint8_t* p, size_t length, std::array<int32_t, kNavDBIndexSize>& index) {
  const int32_t count = CheckLength(length);
  if (count < 0 || !CheckHeader(p, count)) return false;
  for (int k = 0; k < kNavDBIndexSize; ++k) {
    index[size_t(k)] = ReadI32(p + kNavDBRecordBytes + 4 * size_t(k));
    if (index[size_t(k)] < 0 || index[size_t(k)] > count)
      return Fail(NavDBStatus::BadIndex, "index entry " + std::to_string(k) + " (" + std::to_string(index[size_t(k)]) +
                                             ") lies outside the " + std::to_string(count) + " waypoints");
  }
  return true;
}

bool NavDatabase::TakeRecords(std::vector<WaypointRecord> records, uint32_t cycle,
                              const std::array<int32_t, kNavDBIndexSize>& index) {
  uint32_t previous = 0;
  for (size_t i = 0; i < records.size(); ++i) {
    const WaypointRecord& r = records[i];
    // FindIdent relies on the order; an unsorted file would silently hide waypoints.
    if (RecordCode(r) < previous)
      return Fail(NavDBStatus::NotSorted, "waypoint " + std::to_string(i + 1) + " is out of identifier order");
    previous = RecordCode(r);
    if (Abs64(LatTenths(r)) > 90 * 36000 || Abs64(LonTenths(r)) > 180 * 36000)
      return Fail(NavDBStatus::BadCoordinate,
                  "waypoint " + std::to_string(i + 1) + " lies outside the earth's coordinates");
  }
  dbCount_ = int32_t(records.size());
  records_ = std::move(records);
  index_ = index;
  dbCycle_ = int32_t(cycle % 65536);
  dbError_ = false;
  status_ = NavDBStatus::Ok;
  statusText_ = "valid";
  return true;
}

std::string NavDatabase::GetDBFileName() const {
  const size_t slash = dbPath_.find_last_of("/\\");
  return slash == std::string::npos ? dbPath_ : dbPath_.substr(slash + 1);
}

std::string NavDatabase::GetDBDisplayName() const {
  const std::string file = GetDBFileName();
  const size_t chars = CodePoints(file);
  std::string name(PrefixCodePoints(file, chars >= 4 ? chars - 4 : 0));
  if (CodePoints(name) > 10) name = std::string(PrefixCodePoints(name, 10)) + "..";
  return name + " (" + FormatMask(dbCycle_, "0000") + ")";
}

int32_t NavDatabase::StartRecord(uint32_t c) const {
  if (!Loaded()) return 0;
  const uint32_t first = c >> 24;  // value of the first character, 0..36 for IdentCode's codes
  if (first == 0 || first > uint32_t(kNavDBIndexSize)) return 0;
  const int32_t s = index_[first - 1];
  return s >= 1 && s <= dbCount_ ? s : 0;
}

IdentMatch NavDatabase::FindIdentLinear(std::string_view id) const {
  const uint32_t c = IdentCode(id);
  IdentMatch m;
  const int32_t s = StartRecord(c);
  if (s == 0) return m;
  for (int32_t i = s; i <= dbCount_; ++i) {
    const uint32_t code = RecordCode(Record(i));
    if (code == c) {
      if (m.first == 0) m.first = i;
      m.last = i;
    } else if (code > c) {
      break;
    }
  }
  return m;
}

IdentMatch NavDatabase::FindIdent(std::string_view id) const {
  const uint32_t c = IdentCode(id);
  IdentMatch m;
  const int32_t s = StartRecord(c);
  if (s == 0) return m;
  struct ByCode {
    bool operator()(const WaypointRecord& r, uint32_t code) const { return RecordCode(r) < code; }
    bool operator()(uint32_t code, const WaypointRecord& r) const { return code < RecordCode(r); }
  };
  // One search down to the first match, then two short ones around it: half the cache misses of
  // a lower and an upper bound each over the whole range.
  const auto [lower, upper] = std::equal_range(records_.begin() + (s - 1), records_.end(), c, ByCode{});
  if (lower == upper) return m;
  m.first = int32_t(lower - records_.begin()) + 1;
  m.last = int32_t(upper - records_.begin());
  return m;
}

// ---------------------------------------------------------------------------------------------

void SortRecords(std::vector<WaypointRecord>& records) {
  std::stable_sort(records.begin(), records.end(), [](const WaypointRecord& a, const WaypointRecord& b) {
    if (RecordCode(a) != RecordCode(b)) return RecordCode(a) < RecordCode(b);
    if (RecordType(a) != RecordType(b)) return RecordType(a) < RecordType(b);
    if (a.lat != b.lat) return a.lat < b.lat;
    return a.lon < b.lon;
  });
}

std::vector<uint8_t> SerializeNavDB(const std::vector<WaypointRecord>& sortedRecords, uint32_t cycle) {
  std::vector<uint8_t> out;
  out.reserve((kNavDBPrefixRecords + sortedRecords.size()) * kNavDBRecordBytes);
  PutU32(out, kNavDBMagic);
  PutU32(out, uint32_t(sortedRecords.size()));
  PutU32(out, cycle);
  std::array<uint32_t, kNavDBIndexSize> index{};
  for (size_t i = sortedRecords.size(); i-- > 0;) {
    const uint32_t first = RecordCode(sortedRecords[i]) >> 24;
    if (first >= 1 && first <= uint32_t(kNavDBIndexSize)) index[first - 1] = uint32_t(i + 1);
  }
  for (uint32_t w : index) PutU32(out, w);
  for (const WaypointRecord& r : sortedRecords) {
    PutU32(out, r.word0);
    PutU32(out, uint32_t(r.lat));
    PutU32(out, uint32_t(r.lon));
  }
  return out;
}

std::string WriteFileAtomically(const std::string& path, std::span<const uint8_t> bytes) {
  std::string error;
  if (WriteFileAtomic(PathFromUtf8(path), std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()),
                      &error))
    return {};
  return error;
}

}  // namespace norvane
