// navdb info | find | build: the waypoint database from the command line.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>

#include "app/TextFormat.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "waypoints/NavDBBuilder.hpp"
#include "waypoints/NavDatabase.hpp"

namespace norvane::cli {
namespace {

// Checks and loads a database file as the program does when it is chosen.
bool OpenDatabase(NavDatabase& db, const std::string& file) {
  db.SetDBPath(file);
  return db.CheckNavDB() && db.LoadNavDB();
}

void RunInfo(const std::string& file) {
  NavDatabase db;
  ResultPrinter out;
  db.SetDBPath(file);
  out.Add("file", db.GetDBFileName());
  if (!OpenDatabase(db, file)) {
    out.Add("valid", "no");
    out.Fail(db.StatusText());
    ExitStatus() = out.Print();
    return;
  }
  int64_t counts[4] = {};
  for (const WaypointRecord& r : db.Records()) ++counts[int(RecordType(r))];
  out.Add("valid", "yes");
  out.Add("count", std::to_string(db.DBCount()), db.DBCount());
  out.Add("cycle", FormatMask(db.DBCycle(), "0000"), db.DBCycle());
  out.Add("display_name", db.GetDBDisplayName());
  out.Add("airports", std::to_string(counts[0]), double(counts[0]));
  out.Add("vors", std::to_string(counts[1]), double(counts[1]));
  out.Add("ndbs", std::to_string(counts[2]), double(counts[2]));
  out.Add("intersections", std::to_string(counts[3]), double(counts[3]));
  ExitStatus() = out.Print();
}

void RunFind(const std::string& file, std::string ident) {
  for (char& c : ident)
    if (c >= 'a' && c <= 'z') c = char(c - 32);  // the search box types capitals
  if (!IsValidIdent(ident)) throw UsageError("IDENT: expected 1 to 5 letters or digits, got \"" + ident + "\"");
  NavDatabase db;
  if (!OpenDatabase(db, file)) {
    ResultPrinter out;
    out.Fail(db.StatusText());
    ExitStatus() = out.Print();
    return;
  }
  const IdentMatch m = db.FindIdent(ident);
  if (m.first == 0) {
    ResultPrinter out;
    out.Fail("..Not found..");
    ExitStatus() = out.Print();
    return;
  }
  // One line per match, exactly as the search dialog lists them.
  std::string text;
  if (GlobalOutputMode().json) {
    text = "{\"matches\": [";
    for (int32_t i = m.first; i <= m.last; ++i) text += (i > m.first ? ", " : "") + JsonQuote(ListLine(db.Record(i)));
    text += "]}\n";
  } else {
    for (int32_t i = m.first; i <= m.last; ++i) text += ListLine(db.Record(i)) + "\n";
  }
  WriteOutput(stdout, text);
  ExitStatus() = kExitOk;
}

struct BuildOptions {
  std::string out;
  int cycle = 0;
  std::vector<std::string> inputs;
};

void RunBuild(const BuildOptions& o) {
  if (o.out.size() < 4 || [&] {
        std::string ext = o.out.substr(o.out.size() - 4);
        for (char& c : ext) c = char(c >= 'A' && c <= 'Z' ? c + 32 : c);
        return ext != ".dat";
      }())
    throw UsageError("--out: the file name must end in .dat (the program opens *.dat databases only), got \"" + o.out +
                     "\"");
  NavDBBuilder builder;
  for (const std::string& input : o.inputs) {
    const std::string error = builder.AddFile(input);
    if (!error.empty()) throw UsageError(error);
  }
  const std::vector<WaypointRecord> records = builder.Build();
  ResultPrinter out;
  if (records.empty()) {
    out.Fail("no waypoint to write: the inputs hold no usable row");
  } else if (records.size() > size_t(kNavDBMaxRecords)) {
    out.Fail("too many waypoints: " + std::to_string(records.size()) + " (at most " + std::to_string(kNavDBMaxRecords) +
             ")");
  } else {
    const std::string error = WriteFileAtomically(o.out, SerializeNavDB(records, uint32_t(o.cycle)));
    if (!error.empty()) {
      out.Fail(error);
    } else {
      NavDatabase db;
      db.SetDBPath(o.out);
      out.Message(BuildSummary(db.GetDBFileName(), builder.Stats(), uint32_t(o.cycle)));
    }
  }
  ExitStatus() = out.Print();
}

}  // namespace

void RegisterNavDBCommands(CLI::App& app) {
  CLI::App* navdb = app.add_subcommand("navdb", "Waypoint database (*.dat): inspect, search, build");
  navdb->require_subcommand(1);

  auto file = std::make_shared<std::string>();
  CLI::App* info = navdb->add_subcommand("info", "Check and load a database; print its count, cycle and name");
  info->footer(
      "Prints file, valid, count, cycle, display_name and the counts of airports, VORs, NDBs and "
      "intersections. An invalid file prints valid: no and the reason as 'message:', and exits 1.");
  info->add_option("FILE", *file, "Database file (*.dat)")->required();
  info->callback([file] { RunInfo(*file); });

  auto findFile = std::make_shared<std::string>();
  auto ident = std::make_shared<std::string>();
  CLI::App* find =
      navdb->add_subcommand("find", "Print the waypoints of an identifier as the search dialog lists them");
  find->footer(
      "One line per match: identifier, two blanks, type (APT, VOR, NDB, INT), then latitude and "
      "longitude in degrees and rounded minutes (\"LAM  VORN51\u00b039' E000\u00b009' \"). With --json: "
      "{\"matches\": [...]}. No match prints 'message: ..Not found..' and exits 1.");
  find->add_option("FILE", *findFile, "Database file (*.dat)")->required();
  find->add_option("IDENT", *ident, "Identifier: 1 to 5 letters or digits (the whole identifier must match)")
      ->required();
  find->callback([findFile, ident] { RunFind(*findFile, *ident); });

  auto build = std::make_shared<BuildOptions>();
  CLI::App* b = navdb->add_subcommand("build", "Write a database from OurAirports CSV and X-Plane files");
  b->footer(
      "Reads OurAirports CSV exports (airports.csv: ident, latitude_deg, longitude_deg;\n"
      "navaids.csv: ident, type, frequency_khz, latitude_deg, longitude_deg; VOR, VOR-DME, VORTAC, NDB,\n"
      "NDB-DME rows are kept) and X-Plane earth_fix.dat (intersections) / earth_nav.dat (VOR and NDB rows).\n"
      "Identifiers must be 1 to 5 capitals or digits; others are skipped and counted. A waypoint of the\n"
      "same identifier and type within one arc-minute of one read before is a duplicate and dropped.\n"
      "Prints a one-line summary.");
  b->add_option("--out", build->out, "Database file to write (name ending in .dat); replaced whole")->required();
  b->add_option("--cycle", build->cycle,
                "Data cycle number, 0 to 65535 (by convention the AIRAC cycle YYNN); "
                "default 0")
      ->check(CLI::Range(0, 65535));
  b->add_option("INPUT", build->inputs, "Input files, read in order (the first of duplicates is kept)")
      ->required()
      ->check(CLI::ExistingFile);
  b->callback([build] { RunBuild(*build); });
}

}  // namespace norvane::cli
