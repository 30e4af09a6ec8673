#pragma once
// Builds a waypoint database from public data sets:
//   - OurAirports CSV exports: airports.csv (ident, latitude_deg, longitude_deg; rows of type
//     "closed" are left out) and navaids.csv (ident, type, frequency_khz, latitude_deg,
//     longitude_deg; types VOR, VOR-DME, VORTAC become VORs, NDB and NDB-DME become NDBs);
//   - X-Plane earth_fix.dat (intersections) and earth_nav.dat (row codes 2 NDB, 3 VOR).
// Identifiers must be 1 to 5 capitals or digits; others are skipped and counted. Waypoints of the
// same identifier and type within one arc-minute (about 1 NM) of one already read are duplicates:
// the first one read is kept.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "waypoints/NavDatabase.hpp"

namespace norvane {

enum class NavDBInputKind { AirportsCsv, NavaidsCsv, XPlaneFix, XPlaneNav };

struct NavDBBuildStats {
  int64_t airports = 0, vors = 0, ndbs = 0, intersections = 0;  // waypoints kept
  int64_t badIdentifiers = 0;  // longer than five characters, or not only capitals and digits
  int64_t duplicates = 0;      // same identifier and type at the same place
  int64_t otherTypes = 0;      // rows of kinds the database does not hold (DME, TACAN, ILS, closed)
  int64_t unreadableRows = 0;  // missing or malformed coordinates
  int64_t Kept() const { return airports + vors + ndbs + intersections; }
};

class NavDBBuilder {
 public:
  // Reads one input file, recognising its kind from its content. Returns "" or an error text
  // naming the file ("navaids.csv: CSV syntax error near line 12").
  std::string AddFile(const std::string& path);
  // The same on text already in memory; name is used in error texts only.
  std::string AddText(std::string_view text, std::string_view name);

  // Adds one waypoint (degrees, north and east positive; frequency packed as in the file).
  // Counts and skips bad identifiers and coordinates.
  void Add(WaypointType type, std::string_view ident, double latDeg, double lonDeg, uint16_t frequency);

  // The records without duplicates, sorted for writing. Updates Stats().
  std::vector<WaypointRecord> Build();
  const NavDBBuildStats& Stats() const { return stats_; }

 private:
  std::string AddCsv(std::string_view text, std::string_view name);
  std::string AddXPlane(std::string_view text, std::string_view name);

  std::vector<WaypointRecord> candidates_;  // in reading order
  NavDBBuildStats stats_;
};

// The summary line of "navdb build":
// "wrote out.dat: 7316 waypoints (7179 airports, 95 VORs, 42 NDBs, 0 intersections), cycle 0001;
//  skipped 3 bad identifiers, 2 duplicates, 12 other types, 0 unreadable rows".
std::string BuildSummary(const std::string& fileName, const NavDBBuildStats& stats, uint32_t cycle);

}  // namespace norvane
