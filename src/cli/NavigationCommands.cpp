#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "app/Angles.hpp"
#include "app/Units.hpp"
#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "cli/GeodesyBatch.hpp"
#include "navigation/GeoMag.hpp"
#include "navigation/NavCalculations.hpp"

namespace norvane::cli {
namespace {

// The screen takes whole degrees and minutes up to 89°59' of latitude and 179°59' of longitude.
constexpr CoordinateLimits kMagVarLimits{
    kLatitudeDegrees.max + kLatitudeMinutes.max / 60, kLongitudeDegrees.max + kLongitudeMinutes.max / 60,
    "-89.9833 to 89.9833 degrees, 89°59'", "-179.9833 to 179.9833 degrees, 179°59'"};

void RegisterMagVar(CLI::App& app) {
  struct Options {
    std::string at, altitude = "0", date, model = "igrf10";
  };
  auto opt = std::make_shared<Options>();
  CLI::App* cmd =
      app.add_subcommand("magvar", "Magnetic variation at a point, from IGRF-10, WMM2005, WMM2025 or IGRF-14");
  cmd->footer(
      "Magnetic variation (declination) from the IGRF-10 or WMM2005 model (valid 2005-2010) or the "
      "WMM2025 or IGRF-14 model (valid 2025-2030), at a WGS 84 geodetic latitude, longitude and "
      "altitude. Prints \"variation: TEXT\" as the screen shows it (2.3E, 11.0W); with --raw the "
      "signed value in degrees, east positive. A date outside the model's years adds a "
      "\"notice: TEXT\" line saying so.");
  Describer d(cmd, {"variation", "notice"});
  d.text("--at", opt->at, "coordinates", true,
         "Point LAT,LON in signed decimal degrees, north and east positive, or as N51 28,W000 27; latitude -89.9833 to "
         "89.9833 (89°59'), longitude -179.9833 to 179.9833 (179°59')");
  d.number("--altitude", opt->altitude, kGeodeticAltitude, false, "(above the WGS 84 ellipsoid; default 0)");
  d.text("--date", opt->date, "date", false,
         "Date YYYY-MM-DD (default today). Dates before the model's epoch use the epoch field, later "
         "ones extrapolate the secular variation");
  d.choice("--model", opt->model, MagModelOptionNames(), "Geomagnetic model (default igrf10)");
  cmd->callback([opt] {
    const LatLon p = ParseLatLon("--at", opt->at, kMagVarLimits);
    const double feet = ReadQuantity("--altitude", opt->altitude, kGeodeticAltitude);
    const Date d = opt->date.empty() ? Today() : ParseDate("--date", opt->date);

    const MagModel model = MagModelFromOptionName(opt->model);
    const CalendarDate date{d.year, d.month, d.day};
    const double variation = ComputeMagVar(p.lat * kDegToRad, p.lon * kDegToRad, feet * kFt / 1000, date, model);
    ResultPrinter printer;
    printer.Add("variation", MagVarText(variation), variation);
    if (const std::string notice = MagValidityNotice(model, date); !notice.empty()) printer.Add("notice", notice);
    ExitStatus() = printer.Print();
  });
}

// A batch command on standard input with its --method choice: `methods` in the order of the
// method enum, the first the default. `run` takes the method's index and returns the number of
// lines that could not be read.
void AddBatchCommand(CLI::App& app, const std::string& name, const std::string& summary, const std::string& footer,
                     std::vector<std::string> results, const std::vector<std::string>& methods,
                     const std::string& methodHelp, long (*run)(size_t method)) {
  auto method = std::make_shared<std::string>(methods.front());
  CLI::App* cmd = app.add_subcommand(name, summary);
  cmd->footer(footer);
  Describer(cmd, std::move(results)).choice("--method", *method, methods, methodHelp);
  cmd->callback([name, methods, method, run] {
    const auto index = static_cast<size_t>(std::find(methods.begin(), methods.end(), *method) - methods.begin());
    const long failed = run(index);
    if (failed) std::fprintf(stderr, "norvane-cli %s: %ld line(s) could not be read\n", name.c_str(), failed);
    ExitStatus() = failed ? kExitComputation : kExitOk;
  });
}

void RegisterBatch(CLI::App& app) {
  AddBatchCommand(
      app, "inverse", "Batch distance and tracks, one pair of points per line of standard input",
      "Reads lines \"LAT1 LON1 LAT2 LON2\" (signed decimal degrees, north and "
      "east positive, latitude -90 to 90, longitude -180 to 180 or 0 to 360 (-540 to 540 is reduced); blanks or "
      "a comma between) from standard "
      "input and writes one line \"DIST_NM TRK_INI TRK_FIN\" per input line: distance in nautical miles, "
      "initial and final true tracks in degrees, at full precision, ND where undefined. A line that cannot "
      "be read gives \"error: line N: ...\" in its place; the exit status is then 1.",
      {"dist_nm", "trk_ini", "trk_fin"}, {"wgs84", "sphere", "rhumb"},
      "wgs84 (Vincenty geodesic on the WGS 84 ellipsoid, the default), sphere (great circle, "
      "1 minute of arc = 1 NM) or rhumb (rhumb line on that sphere; its constant track fills "
      "both track columns)",
      [](size_t m) { return RunInverseBatch(stdin, stdout, static_cast<InverseMethod>(m)); });
  AddBatchCommand(app, "direct", "Batch point from track and distance, one problem per line of standard input",
                  "Reads lines \"LAT LON TRACK DIST_NM\" (signed decimal degrees, "
                  "latitude -90 to 90, longitude -180 to 180 or 0 to 360 (-540 to 540 is reduced); true track 0 to 360 "
                  "degrees; distance 0 to 21600 NM; "
                  "blanks or a comma between) from standard input and writes one line \"LAT2 LON2\" per input line at "
                  "full precision. A line that cannot be read gives \"error: line N: ...\" in its place; the exit "
                  "status is then 1.",
                  {"lat2", "lon2"}, {"wgs84", "sphere"},
                  "wgs84 (Vincenty direct on the WGS 84 ellipsoid, the default) or sphere (great circle, "
                  "1 minute of arc = 1 NM)",
                  [](size_t m) { return RunDirectBatch(stdin, stdout, static_cast<DirectMethod>(m)); });
}

}  // namespace

void RegisterNavigationCommands(CLI::App& app) {
  RegisterNavScreenCommands(app);
  RegisterMagVar(app);
  RegisterBatch(app);
}

}  // namespace norvane::cli
