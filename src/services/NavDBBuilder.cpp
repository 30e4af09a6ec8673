#include "services/NavDBBuilder.hpp"

#include <csv.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

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

// libcsv delivers fields and row ends through callbacks.
struct CsvRows {
  std::vector<std::string> row;
  std::vector<std::vector<std::string>> rows;
  static void Field(void* data, size_t len, void* self) {
    static_cast<CsvRows*>(self)->row.emplace_back(static_cast<const char*>(data), len);
  }
  static void RowEnd(int, void* self) {
    auto* me = static_cast<CsvRows*>(self);
    me->rows.push_back(std::move(me->row));
    me->row.clear();
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
  candidates_.push_back({MakeRecord(type, IdentCode(ident), lat, lon, frequency), candidates_.size()});
}

std::string NavDBBuilder::AddFile(const std::string& path) {
  const std::filesystem::path p(std::u8string(path.begin(), path.end()));
  std::ifstream in(p, std::ios::binary);
  if (!in) return path + ": cannot open the file";
  std::ostringstream buffer;
  buffer << in.rdbuf();
  if (in.bad()) return path + ": cannot read the file";
  return AddText(buffer.str(), path);
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
  const size_t used = csv_parse(&parser, text.data(), text.size(), CsvRows::Field, CsvRows::RowEnd, &rows);
  const bool parsed = used == text.size();
  const bool finished = parsed && csv_fini(&parser, CsvRows::Field, CsvRows::RowEnd, &rows) == 0;
  const int error = csv_error(&parser);
  csv_free(&parser);
  if (!parsed) {
    const std::string_view done = text.substr(0, std::min(used, text.size()));
    const auto line = std::count(done.begin(), done.end(), '\n') + 1;
    return std::string(name) + ": CSV " + (error == CSV_EPARSE ? "syntax error" : csv_strerror(error)) +
           " near line " + std::to_string(line);
  }
  if (!finished) return std::string(name) + ": CSV syntax error: a quoted field is not closed";
  if (rows.rows.empty()) return std::string(name) + ": empty file";

  std::map<std::string, size_t> column;
  for (size_t i = 0; i < rows.rows[0].size(); ++i) column.emplace(Lower(Trim(rows.rows[0][i])), i);
  const auto has = [&](const char* c) { return column.count(c) != 0; };
  if (!has("ident") || !has("latitude_deg") || !has("longitude_deg"))
    return std::string(name) +
           ": not a recognised input (expected OurAirports CSV columns ident, latitude_deg, longitude_deg, "
           "or an X-Plane earth_fix.dat / earth_nav.dat file)";
  const bool navaids = has("frequency_khz") && has("type");
  const auto field = [&](const std::vector<std::string>& row, const char* c) -> std::string_view {
    const auto it = column.find(c);
    return it != column.end() && it->second < row.size() ? std::string_view(row[it->second]) : std::string_view();
  };

  for (size_t r = 1; r < rows.rows.size(); ++r) {
    const auto& row = rows.rows[r];
    if (row.size() == 1 && Trim(row[0]).empty()) continue;  // blank line
    WaypointType type = WaypointType::Airport;
    double khz = 0;
    if (navaids) {
      const std::string kind = Lower(Trim(field(row, "type")));
      if (kind == "vor" || kind == "vor-dme" || kind == "vortac") type = WaypointType::Vor;
      else if (kind == "ndb" || kind == "ndb-dme") type = WaypointType::Ndb;
      else {
        ++stats_.otherTypes;
        continue;
      }
      if (!ParseDouble(field(row, "frequency_khz"), khz)) khz = 0;
    } else if (has("type") && Lower(Trim(field(row, "type"))) == "closed") {
      ++stats_.otherTypes;
      continue;
    }
    double lat = 0, lon = 0;
    if (!ParseDouble(field(row, "latitude_deg"), lat) || !ParseDouble(field(row, "longitude_deg"), lon)) {
      if (IsValidIdent(Trim(field(row, "ident")))) ++stats_.unreadableRows;
      else ++stats_.badIdentifiers;
      continue;
    }
    Add(type, field(row, "ident"), lat, lon, type == WaypointType::Airport ? 0 : PackedFrequency(type, khz));
  }
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
  // Group by identifier and type keeping the reading order inside each group.
  std::stable_sort(candidates_.begin(), candidates_.end(), [](const Candidate& a, const Candidate& b) {
    if (RecordCode(a.record) != RecordCode(b.record)) return RecordCode(a.record) < RecordCode(b.record);
    if (RecordType(a.record) != RecordType(b.record)) return RecordType(a.record) < RecordType(b.record);
    return a.order < b.order;
  });
  std::vector<WaypointRecord> out;
  out.reserve(candidates_.size());
  size_t groupStart = 0;
  for (size_t i = 0; i < candidates_.size(); ++i) {
    const WaypointRecord& r = candidates_[i].record;
    if (i > 0 && (candidates_[i - 1].record.word0 != r.word0)) groupStart = out.size();
    const bool duplicate = std::any_of(out.begin() + std::ptrdiff_t(groupStart), out.end(), [&](const WaypointRecord& k) {
      const int32_t dlat = std::abs(LatTenths(k) - LatTenths(r));
      int32_t dlon = std::abs(LonTenths(k) - LonTenths(r));
      dlon = std::min(dlon, kFullCircleTenths - dlon);
      return dlat <= kSamePlaceTenths && dlon <= kSamePlaceTenths;
    });
    if (duplicate) {
      ++stats_.duplicates;
      continue;
    }
    out.push_back(r);
  }
  candidates_.clear();
  SortRecords(out);
  stats_.airports = stats_.vors = stats_.ndbs = stats_.intersections = 0;
  for (const WaypointRecord& r : out) {
    switch (RecordType(r)) {
      case WaypointType::Airport: ++stats_.airports; break;
      case WaypointType::Vor: ++stats_.vors; break;
      case WaypointType::Ndb: ++stats_.ndbs; break;
      case WaypointType::Intersection: ++stats_.intersections; break;
    }
  }
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
