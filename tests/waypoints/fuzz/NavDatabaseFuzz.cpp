// libFuzzer target: the waypoint database reader on arbitrary bytes, in memory and from a file
// (CheckNavDB, then LoadNavDB reading the records straight into place). Both paths must reach the
// same verdict and records; a database that loads must answer every lookup within its records,
// and the binary search must agree with the scan.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "support/FuzzSupport.hpp"
#include "waypoints/NavDatabase.hpp"

using namespace norvane;
using norvane::fuzz::Require;

namespace {
// The same bytes as a file, read by the file path; its verdict must be the in-memory one.
void RequireSameFromFile(const uint8_t* data, size_t size, const NavDatabase& memory) {
  static const std::string path =
      (std::filesystem::temp_directory_path() / ("norvane-fuzz-" + std::to_string(::getpid()) + ".dat")).string();
  std::FILE* f = std::fopen(path.c_str(), "wb");
  Require(f != nullptr && std::fwrite(data, 1, size, f) == size && std::fclose(f) == 0);
  NavDatabase file;
  file.SetDBPath(path);
  const bool checked = file.CheckNavDB();
  const bool loaded = file.LoadNavDB();
  Require(loaded == !memory.DBError() && (checked || !loaded));  // what loads passes the check
  Require(file.Status() == memory.Status() && file.StatusText() == memory.StatusText());
  Require(file.Records() == memory.Records() && file.DBCycle() == memory.DBCycle());
  std::remove(path.c_str());
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  NavDatabase db;
  db.SetDBPath("fuzz/input.dat");
  const bool memoryLoaded = db.LoadNavDBFromBytes({data, size});
  RequireSameFromFile(data, size, db);
  if (!memoryLoaded) {
    Require(db.DBError() && db.Records().empty() && db.FindIdent("A").first == 0);
    return 0;
  }
  Require(size_t(db.DBCount()) == db.Records().size());
  (void)db.GetDBDisplayName();
  // Identifiers to look up: those of a few records, and one made of the input's first bytes.
  std::string probe(reinterpret_cast<const char*>(data), size < 5 ? size : 5);
  const int32_t n = db.DBCount();
  const int32_t picks[] = {1, n / 2 + 1, n};
  for (int32_t pick : picks) {
    const WaypointRecord& r = db.Record(pick);
    (void)ListLine(r);
    (void)TypeText(r);
    const std::string ids[] = {IdentFromCode(RecordCode(r)), probe};
    for (const std::string& id : ids) {
      const IdentMatch m = db.FindIdent(id);
      Require(m == db.FindIdentLinear(id));
      if (m.first != 0) {
        Require(m.first >= 1 && m.first <= m.last && m.last <= n);
        for (int32_t i = m.first; i <= m.last; ++i) Require(RecordCode(db.Record(i)) == IdentCode(id));
      }
    }
  }
  return 0;
}
