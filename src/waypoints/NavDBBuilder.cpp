#include "waypoints/NavDBBuilder.hpp"

#include <csv.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <array>
#include <functional>

#include "app/TextFormat.hpp"

namespace norvane {
namespace {

constexpr int32_t kSamePlaceTenths = 600;  // one arc-minute
constexpr int32_t kFullCircleTenths = 360 * 36000;

std::string_view Trim(std::string_view s) {
  const size_t b = s.find_first_not_of(" \t\r\n");
  if (b == std::string_view::npos) return {};
  return s.substr(b, s.find_last_not_of(" \t\r\n") - b + 1);
}

std::string Lower(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), [](char c) { return char(c >= 'A' && c <= 'Z' ? c + 32 : c); });
  return out;
}

bool ParseDouble(std::string_view s, double& v) {
  s = Trim(s);
  if (!s.empty() && s.front() == '+') s.remove_prefix(1);
  if (s.empty()) return false;
  const auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
  return ec == std::errc() && ptr == s.data() + s.size() && std::isfinite(v);
}

// Splits text into lines without copying; a final line without newline counts.
template <typename F>
void ForEachLine(std::string_view text, F&& f) {
  size_t pos = 0, lineNo = 0;
  while (pos < text.size()) {
    size_t end = text.find('\n', pos);
    if (end == std::string_view::npos) end = text.size();
    f(text.substr(pos, end - pos), ++lineNo);
    pos = end + 1;
  }
}

std::vector<std::string_view> Tokens(std::string_view line) {
  std::vector<std::string_view> out;
  size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
    size_t j = i;
    while (j < line.size() && line[j] != ' ' && line[j] != '\t' && line[j] != '\r') ++j;
    if (j > i) out.push_back(line.substr(i, j - i));
    i = j;
  }
  return out;
}

// The frequency word of a navaid from its frequency in kHz: VOR F / 100 MHz, NDB F / 10 kHz.
// 0 when missing or not representable.
uint16_t PackedFrequency(WaypointType type, double khz) {
  const double f = type == WaypointType::Vor ? khz / 10.0 : khz * 10.0;
  if (!(f >= 0.5 && f < 65535.5)) return 0;
  return uint16_t(std::lround(f));
}

// libcsv delivers fields and row ends through callbacks. Rows are handled as they end and only
// the columns the database needs are kept, so memory does not grow with the file's rows or with
// its other columns.
struct CsvRows {
  enum Column { Ident, Latitude, Longitude, Type, Frequency, kColumns };
  static constexpr const char* kNames[kColumns] = {"ident", "latitude_deg", "longitude_deg", "type", "frequency_khz"};
  static constexpr size_t kAbsent = size_t(-1);
  std::array<size_t, kColumns> column{kAbsent, kAbsent, kAbsent, kAbsent, kAbsent};
  std::array<std::string, kColumns> value;
  size_t rows = 0, field = 0;
  bool blank = true;  // every field of the row so far is blank
  std::function<void(CsvRows&)> onRow;

  bool Has(Column c) const { return column[c] != kAbsent; }
  static void Field(void* data, size_t len, void* self) {
    auto* me = static_cast<CsvRows*>(self);
    const std::string_view text(static_cast<const char*>(data), len);
    me->blank = me->blank && Trim(text).empty();
    for (int c = 0; c < kColumns; ++c) {
      if (me->rows == 0 && me->column[c] == kAbsent && Lower(Trim(text)) == kNames[c])
        me->column[c] = me->field;
      else if (me->rows > 0 && me->column[c] == me->field)
        me->value[c].assign(text);
    }
    ++me->field;
  }
  static void RowEnd(int, void* self) {
    auto* me = static_cast<CsvRows*>(self);
    if (me->rows++ > 0 && !(me->field == 1 && me->blank)) me->onRow(*me);  // header, blank line
    for (std::string& v : me->value) v.clear();
    me->field = 0;
    me->blank = true;
  }
};

}  // namespace

void NavDBBuilder::Add(WaypointType type, std::string_view ident, double latDeg, double lonDeg, uint16_t frequency) {
  ident = Trim(ident);
  if (!IsValidIdent(ident)) {
    ++stats_.badIdentifiers;
    return;
  }
  if (!std::isfinite(latDeg) || !std::isfinite(lonDeg) || std::fabs(latDeg) > 90 || std::fabs(lonDeg) > 180) {
    ++stats_.unreadableRows;
    return;
  }
  const auto lat = int32_t(std::lround(latDeg * 36000.0));
  const auto lon = int32_t(std::lround(lonDeg * 36000.0));
  if (type == WaypointType::Airport || type == WaypointType::Intersection) frequency = 0;
  candidates_.push_back(MakeRecord(type, IdentCode(ident), lat, lon, frequency));
}

std::string NavDBBuilder::AddFile(const std::string& path) {
  const std::filesystem::path p(std::u8string(path.begin(), path.end()));
  std::ifstream in(p, std::ios::binary | std::ios::ate);
  if (!in) return path + ": cannot open the file";
  // One copy of the file in memory, read in one go.
  const std::streamoff size = in.tellg();
  std::string text(size_t(std::max<std::streamoff>(size, 0)), '\0');
  if (size < 0 || !in.seekg(0) || !in.read(text.data(), std::streamsize(text.size())))
    return path + ": cannot read the file";
  return AddText(text, path);
}

std::string NavDBBuilder::AddText(std::string_view text, std::string_view name) {
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);  // UTF-8 byte order mark
  // X-Plane data files open with a line "I" (PC) or "A" (Mac), then a version line.
  const size_t eol = text.find('\n');
  const std::string_view first = Trim(text.substr(0, eol));
  if (first == "I" || first == "A") return AddXPlane(text, name);
  return AddCsv(text, name);
}

std::string NavDBBuilder::AddCsv(std::string_view text, std::string_view name) {
  csv_parser parser;
  if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0) return std::string(name) + ": out of memory";
  CsvRows rows;
  const auto recognised = [&rows] {
    return rows.Has(CsvRows::Ident) && rows.Has(CsvRows::Latitude) && rows.Has(CsvRows::Longitude);
  };
  rows.onRow = [&](CsvRows& r) {
    using C = CsvRows;
    if (!recognised()) return;
    const bool navaids = r.Has(C::Frequency) && r.Has(C::Type);
    WaypointType type = WaypointType::Airport;
    double khz = 0;
    if (navaids) {
      const std::string kind = Lower(Trim(r.value[C::Type]));
      if (kind == "vor" || kind == "vor-dme" || kind == "vortac")
        type = WaypointType::Vor;
      else if (kind == "ndb" || kind == "ndb-dme")
        type = WaypointType::Ndb;
      else {
        ++stats_.otherTypes;
        return;
      }
      if (!ParseDouble(r.value[C::Frequency], khz)) khz = 0;
    } else if (r.Has(C::Type) && Lower(Trim(r.value[C::Type])) == "closed") {
      ++stats_.otherTypes;
      return;
    }
    double lat = 0, lon = 0;
    if (!ParseDouble(r.value[C::Latitude], lat) || !ParseDouble(r.value[C::Longitude], lon)) {
      if (IsValidIdent(Trim(r.value[C::Ident])))
        ++stats_.unreadableRows;
      else
        ++stats_.badIdentifiers;
      return;
    }
    Add(type, r.value[C::Ident], lat, lon, type == WaypointType::Airport ? 0 : PackedFrequency(type, khz));
  };
  // A file refused half-way adds nothing.
  const size_t candidatesBefore = candidates_.size();
  const NavDBBuildStats statsBefore = stats_;
  const auto refuse = [&](std::string why) {
    candidates_.resize(candidatesBefore);
    stats_ = statsBefore;
    return std::string(name) + ": " + why;
  };
  const size_t used = csv_parse(&parser, text.data(), text.size(), CsvRows::Field, CsvRows::RowEnd, &rows);
  const bool parsed = used == text.size();
  const bool finished = parsed && csv_fini(&parser, CsvRows::Field, CsvRows::RowEnd, &rows) == 0;
  const int error = csv_error(&parser);
  csv_free(&parser);
  if (!parsed) {
    const std::string_view done = text.substr(0, std::min(used, text.size()));
    const auto line = std::count(done.begin(), done.end(), '\n') + 1;
    return refuse(std::string("CSV ") + (error == CSV_EPARSE ? "syntax error" : csv_strerror(error)) + " near line " +
                  std::to_string(line));
  }
  if (!finished) return refuse("CSV syntax error: a quoted field is not closed");
  if (rows.rows == 0) return refuse("empty file");
  if (!recognised())
    return refuse(
        "not a recognised input (expected OurAirports CSV columns ident, latitude_deg, longitude_deg, "
        "or an X-Plane earth_fix.dat / earth_nav.dat file)");
  return {};
}

std::string NavDBBuilder::AddXPlane(std::string_view text, std::string_view name) {
  // Line 1 "I"/"A", line 2 the version and copyright; rows until "99". earth_fix.dat rows are
  // "lat lon ident ..."; earth_nav.dat rows "code lat lon elevation frequency range magvar ident
  // ...", with NDB frequencies in kHz and VOR frequencies in units of 10 kHz.
  enum { Unknown, Fix, Nav } kind = Unknown;
  bool ended = false;
  ForEachLine(text, [&](std::string_view line, size_t lineNo) {
    if (ended || lineNo <= 2) return;
    const auto t = Tokens(line);
    if (t.empty()) return;
    if (t[0] == "99" && t.size() == 1) {
      ended = true;
      return;
    }
    if (kind == Unknown) kind = t[0].find('.') != std::string_view::npos ? Fix : Nav;
    double lat = 0, lon = 0;
    if (kind == Fix) {
      if (t.size() < 3 || !ParseDouble(t[0], lat) || !ParseDouble(t[1], lon)) {
        ++stats_.unreadableRows;
        return;
      }
      Add(WaypointType::Intersection, t[2], lat, lon, 0);
      return;
    }
    if (t[0] != "2" && t[0] != "3") {
      ++stats_.otherTypes;
      return;
    }
    double freq = 0;
    if (t.size() < 8 || !ParseDouble(t[1], lat) || !ParseDouble(t[2], lon) || !ParseDouble(t[4], freq)) {
      ++stats_.unreadableRows;
      return;
    }
    const WaypointType type = t[0] == "2" ? WaypointType::Ndb : WaypointType::Vor;
    Add(type, t[7], lat, lon, PackedFrequency(type, type == WaypointType::Vor ? freq * 10.0 : freq));
  });
  if (kind == Unknown) return std::string(name) + ": no data rows in the X-Plane file";
  return {};
}

std::vector<WaypointRecord> NavDBBuilder::Build() {
  // Kept waypoints are filed by identifier, type and one-arc-minute cell of latitude and
  // longitude. Two waypoints in one cell are always duplicates, so a cell holds at most one kept
  // waypoint and a new one is compared with those of the 3 x 3 cells around its own: expected
  // O(n) time, and a table of two slots per input waypoint. Reading order decides which is kept.
  constexpr int32_t kLatCells = 2 * 90 * 36000 / kSamePlaceTenths + 1;  // -90..90, both ends
  constexpr int32_t kLonCells = kFullCircleTenths / kSamePlaceTenths;   // 180 E and 180 W share one
  const auto cellOf = [](int32_t tenths) { return int32_t(std::floor(double(tenths) / kSamePlaceTenths)); };
  const auto key = [](uint32_t word0, int32_t latCell, int32_t lonCell) {
    return uint64_t(word0) << 30 | uint64_t(latCell) << 15 | uint64_t(lonCell);
  };
  struct Slot {
    uint64_t key = 0;   // key + 1; 0 marks an empty slot
    uint32_t kept = 0;  // index in out
  };
  int bits = 4;
  while ((size_t(1) << bits) < 2 * candidates_.size()) ++bits;
  std::vector<Slot> table(size_t(1) << bits);
  const auto slotOf = [&](uint64_t k) -> Slot& {
    size_t i = size_t((k * 0x9E3779B97F4A7C15ull) >> (64 - bits));
    while (table[i].key != 0 && table[i].key != k + 1) i = (i + 1) & (table.size() - 1);
    return table[i];
  };

  std::vector<WaypointRecord> out;
  out.reserve(candidates_.size());
  for (const WaypointRecord& r : candidates_) {
    const int32_t latCell = cellOf(LatTenths(r)) + kLatCells / 2;
    const int32_t lonCell = (cellOf(LonTenths(r)) % kLonCells + kLonCells) % kLonCells;
    bool duplicate = false;
    for (int32_t dy = -1; dy <= 1 && !duplicate; ++dy) {
      if (latCell + dy < 0 || latCell + dy >= kLatCells) continue;
      for (int32_t dx = -1; dx <= 1 && !duplicate; ++dx) {
        const Slot& s = slotOf(key(r.word0, latCell + dy, (lonCell + dx + kLonCells) % kLonCells));
        if (s.key == 0) continue;
        const WaypointRecord& k = out[s.kept];
        const int32_t dlat = std::abs(LatTenths(k) - LatTenths(r));
        int32_t dlon = std::abs(LonTenths(k) - LonTenths(r));
        dlon = std::min(dlon, kFullCircleTenths - dlon);
        duplicate = dlat <= kSamePlaceTenths && dlon <= kSamePlaceTenths;
      }
    }
    if (duplicate) {
      ++stats_.duplicates;
      continue;
    }
    Slot& s = slotOf(key(r.word0, latCell, lonCell));
    s = {key(r.word0, latCell, lonCell) + 1, uint32_t(out.size())};
    out.push_back(r);
  }
  candidates_.clear();
  SortRecords(out);
  int64_t* const kept[] = {&stats_.airports, &stats_.vors, &stats_.ndbs, &stats_.intersections};  // by WaypointType
  for (int64_t* n : kept) *n = 0;
  for (const WaypointRecord& r : out) ++*kept[static_cast<size_t>(RecordType(r))];
  return out;
}

std::string BuildSummary(const std::string& fileName, const NavDBBuildStats& s, uint32_t cycle) {
  const auto n = [](int64_t v, const char* one, const char* many) {
    return std::to_string(v) + " " + (v == 1 ? one : many);
  };
  return "wrote " + fileName + ": " + n(s.Kept(), "waypoint", "waypoints") + " (" +
         n(s.airports, "airport", "airports") + ", " + n(s.vors, "VOR", "VORs") + ", " + n(s.ndbs, "NDB", "NDBs") +
         ", " + n(s.intersections, "intersection", "intersections") + "), cycle " +
         FormatMask(double(cycle % 65536), "0000") + "; skipped " +
         n(s.badIdentifiers, "bad identifier", "bad identifiers") + ", " + n(s.duplicates, "duplicate", "duplicates") +
         ", " + n(s.otherTypes, "row of another type", "rows of other types") + ", " +
         n(s.unreadableRows, "unreadable row", "unreadable rows");
}

}  // namespace norvane
