// tracks, point, intersection: the "Tracks and distance", "Point from track-distance" and "Radial
// intersection" screens without a window, printing the screens' texts.
#include <CLI/CLI.hpp>

#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include "app/TextFormat.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "navigation/NavCalculations.hpp"

namespace norvane::cli {
namespace {

// The screens' boxes stop at 89°59'59.99" of latitude and 179°59'59.99" of longitude.
constexpr CoordinateLimits kScreenLimits{89 + 59 / 60.0 + 59.99 / 3600, 179 + 59 / 60.0 + 59.99 / 3600,
                                         "-89.999997 to 89.999997 degrees, 89°59'59.99\"",
                                         "-179.999997 to 179.999997 degrees, 179°59'59.99\""};
constexpr const char* kPointHelp =
    "LAT,LON in signed decimal degrees, north and east positive, or as N51 28 39,W000 27 41; latitude "
    "-89.999997 to 89.999997 (89°59'59.99\"), longitude -179.999997 to 179.999997 (179°59'59.99\")";

LatLon ScreenPoint(const std::string& option, const std::string& text) { return ParseLatLon(option, text, kScreenLimits); }

double Number(const std::string& option, const std::string& text, double min, double max, const char* unit) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(option + ": expected a number, got \"" + text + "\"");
  RequireRange(option, *v, min, max, unit);
  return *v;
}

DistanceUnit UnitFromName(const std::string& name) {
  return name == "km" ? DistanceUnit::Km : name == "m" ? DistanceUnit::M : name == "ft" ? DistanceUnit::Ft : DistanceUnit::Nm;
}

// Options shared by the three commands: the magnetic-variation settings of the Options screen.
struct MagOptions {
  bool magnetic = false;
  int year = 0;  // 0: the model's first year
  std::string model = "igrf10";
  // The settings; a year outside the model's years is a usage error.
  MagSettings Settings() const {
    const MagModel m = MagModelFromOptionName(model);
    if (year == 0) return {MagModelEpoch(m), m};
    RequireRange("--mv-year", year, MagModelEpoch(m), MagModelLastYear(m));
    return {year, m};
  }
};

void AddMagOptions(CLI::App* cmd, MagOptions& m, const char* what) {
  cmd->add_flag("--magnetic", m.magnetic, what);
  cmd->add_option("--mv-year", m.year,
                  "Magnetic variation year (1 January): 2005 to 2009 for igrf10 and wmm2005, 2025 to 2029 for "
                  "wmm2025 and igrf14 (default: the model's first year)");
  cmd->add_option("--mv-model", m.model, "Geomagnetic model: igrf10, wmm2005, wmm2025 or igrf14 (default igrf10)")
      ->check(CLI::IsMember(MagModelOptionNames()));
}

void RegisterTracks(CLI::App& app) {
  struct Options {
    std::string from, to, unit = "nm";
    MagOptions mag;
  };
  auto o = std::make_shared<Options>();
  CLI::App* cmd = app.add_subcommand("tracks", "Distance and tracks between two points: geodesic, rhumb line, sphere");
  cmd->footer(
      "Distance and initial and final tracks between two points by three methods: GC (geodesic on the WGS 84 "
      "ellipsoid), RL (rhumb line) and SPH (great circle on the sphere, 1 minute of arc = 1 NM). Tracks in "
      "degrees \"000.0\", ND where undefined; distances with 4 significant figures. With --raw: full-precision "
      "numbers.");
  cmd->add_option("--from", o->from, std::string("Origin: ") + kPointHelp)->required();
  cmd->add_option("--to", o->to, std::string("Destination: ") + kPointHelp)->required();
  cmd->add_option("--unit", o->unit, "Distance unit: nm, km, m or ft (default nm)")
      ->check(CLI::IsMember({"nm", "km", "m", "ft"}));
  AddMagOptions(cmd, o->mag,
                "Magnetic tracks: the variation at the origin is subtracted from the initial tracks, the "
                "variation at the destination from the final tracks");
  cmd->callback([o] {
    const LatLon a = ScreenPoint("--from", o->from), b = ScreenPoint("--to", o->to);
    const MagSettings mag = o->mag.Settings();
    const TracksResult r = ComputeTracks(a.lat, a.lon, b.lat, b.lon, o->mag.magnetic ? &mag : nullptr);
    const DistanceUnit unit = UnitFromName(o->unit);
    const auto texts = TracksTexts(r, unit);
    const auto distances = TracksDistances(r);
    static const char* const kRows[] = {"gc", "rl", "sph"};
    ResultPrinter out;
    for (int row = 0; row < 3; ++row) {
      const double d = NmToUnit(distances[size_t(row)], unit);
      const auto raw = [](double v) { return IsUndefined(v) ? std::nullopt : std::optional<double>(v); };
      out.Add(std::string(kRows[row]) + "_dist", texts[size_t(row * 3)], raw(d));
      out.Add(std::string(kRows[row]) + "_trk_ini", texts[size_t(row * 3 + 1)], raw(r.tracks[row][0]));
      out.Add(std::string(kRows[row]) + "_trk_fin", texts[size_t(row * 3 + 2)], raw(r.tracks[row][1]));
    }
    ExitStatus() = out.Print();
  });
}

void RegisterPoint(CLI::App& app) {
  struct Options {
    std::string from, track, distance, unit = "nm", model = "wgs84", variation;
    MagOptions mag;
  };
  auto o = std::make_shared<Options>();
  CLI::App* cmd = app.add_subcommand("point", "Point reached from an origin along a track for a distance");
  cmd->footer(
      "Destination reached from an origin along a track for a distance, on the sphere (GC, 1 minute of arc = "
      "1 NM) or the WGS 84 spheroid. Coordinates as the screen shows them: N45 30 00.00, W073 59 02.40; with "
      "--magnetic also the variation used, \"0.0\" in degrees east positive.");
  cmd->add_option("--from", o->from, std::string("Origin: ") + kPointHelp)->required();
  cmd->add_option("--track", o->track, "Track from the origin, 0 to 360 degrees (360 is taken as 0)")->required();
  cmd->add_option("--distance", o->distance,
                  "Distance from the origin in the chosen unit: up to 5400 NM, or up to 10000 km, m or ft")
      ->required();
  cmd->add_option("--unit", o->unit, "Distance unit: nm, km, m or ft (default nm)")
      ->check(CLI::IsMember({"nm", "km", "m", "ft"}));
  cmd->add_option("--model", o->model, "Earth model: sphere or wgs84 (default wgs84)")
      ->check(CLI::IsMember({"sphere", "wgs84"}));
  AddMagOptions(cmd, o->mag, "The track is magnetic: true track = magnetic track + variation");
  CLI::Option* magnetic = cmd->get_option("--magnetic");
  cmd->add_option("--variation", o->variation,
                  "Magnetic variation in degrees, east positive, -180 to 180 (with --magnetic; default: computed "
                  "at the origin by the geomagnetic model)")
      ->needs(magnetic);
  cmd->callback([o] {
    const LatLon p = ScreenPoint("--from", o->from);
    const double track = Number("--track", o->track, 0, 360, "degrees");
    const DistanceUnit unit = UnitFromName(o->unit);
    const double distance =
        Number("--distance", o->distance, 0, unit == DistanceUnit::Nm ? 5400 : 10000, UnitName(unit));
    std::optional<double> variation;
    if (!o->variation.empty()) variation = Number("--variation", o->variation, -180, 180, "degrees");
    const MagSettings mag = o->mag.Settings();
    const PointResult r = ComputePointFromTrack(p.lat, p.lon, track, UnitToNm(distance, unit), o->model == "wgs84",
                                                o->mag.magnetic ? &mag : nullptr, variation);
    ResultPrinter out;
    out.Add("latitude", FormatLatLong(r.point.lat, false), r.point.lat);
    out.Add("longitude", FormatLatLong(r.point.lon, true), r.point.lon);
    if (r.variation) out.Add("variation", FormatMask(*r.variation, "0.0"), *r.variation);
    ExitStatus() = out.Print();
  });
}

void RegisterIntersection(CLI::App& app) {
  struct Options {
    std::string p1, track1, p2, track2, var1, var2;
    MagOptions mag;
  };
  auto o = std::make_shared<Options>();
  CLI::App* cmd = app.add_subcommand("intersection", "Intersection of two radials on the sphere");
  cmd->footer(
      "Point where the great circle leaving point 1 on track 1 meets the one leaving point 2 on track 2, on "
      "the sphere. \"Not calculable\" when the radials do not meet (exit status 1); at a pole the longitude "
      "alone is \"Not calculable\".");
  cmd->add_option("--p1", o->p1, std::string("1st point: ") + kPointHelp)->required();
  cmd->add_option("--track1", o->track1, "Track from the 1st point, 0 to 360 degrees")->required();
  cmd->add_option("--p2", o->p2, std::string("2nd point: ") + kPointHelp)->required();
  cmd->add_option("--track2", o->track2, "Track from the 2nd point, 0 to 360 degrees")->required();
  AddMagOptions(cmd, o->mag, "The tracks are magnetic: each true track = magnetic track + its point's variation");
  CLI::Option* magnetic = cmd->get_option("--magnetic");
  cmd->add_option("--var1", o->var1,
                  "Magnetic variation at the 1st point, degrees east positive, -180 to 180 (with --magnetic; "
                  "default: computed by the geomagnetic model)")
      ->needs(magnetic);
  cmd->add_option("--var2", o->var2, "Magnetic variation at the 2nd point, as --var1")->needs(magnetic);
  cmd->callback([o] {
    const LatLon a = ScreenPoint("--p1", o->p1), b = ScreenPoint("--p2", o->p2);
    double t1 = Number("--track1", o->track1, 0, 360, "degrees");
    double t2 = Number("--track2", o->track2, 0, 360, "degrees");
    const MagSettings mag = o->mag.Settings();
    if (o->mag.magnetic) {
      const double v1 = o->var1.empty() ? ShownVariation(a.lat, a.lon, mag)
                                        : Number("--var1", o->var1, -180, 180, "degrees");
      const double v2 = o->var2.empty() ? ShownVariation(b.lat, b.lon, mag)
                                        : Number("--var2", o->var2, -180, 180, "degrees");
      t1 = MagneticToTrue(t1 == 360 ? 0 : t1, v1);
      t2 = MagneticToTrue(t2 == 360 ? 0 : t2, v2);
    }
    const GeoPoint p = RadialIntersection(a.lat, a.lon, t1, b.lat, b.lon, t2);
    const auto raw = [](double v) { return IsUndefined(v) ? std::nullopt : std::optional<double>(v); };
    ResultPrinter out;
    out.Add("latitude", IntersectionText(p.lat, false), raw(p.lat));
    out.Add("longitude", IntersectionText(p.lon, true), raw(p.lon));
    if (IsUndefined(p.lat)) out.SetFailed();
    ExitStatus() = out.Print();
  });
}

}  // namespace

void RegisterNavScreenCommands(CLI::App& app) {
  RegisterTracks(app);
  RegisterPoint(app);
  RegisterIntersection(app);
}

}  // namespace norvane::cli
