// tracks, point, intersection: the "Tracks and distance", "Point from track-distance" and "Radial
// intersection" screens without a window, printing the screens' texts.
#include <CLI/CLI.hpp>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "navigation/NavCalculations.hpp"

namespace norvane::cli {
namespace {

// The screens' boxes stop at 89°59'59.99" of latitude and 179°59'59.99" of longitude.
constexpr CoordinateLimits kScreenLimits{
    kLatitudeDegrees.max + kLatitudeMinutes.max / 60 + kLatitudeSeconds.max / 3600,
    kLongitudeDegrees.max + kLongitudeMinutes.max / 60 + kLongitudeSeconds.max / 3600,
    "-89.999997 to 89.999997 degrees, 89°59'59.99\"", "-179.999997 to 179.999997 degrees, 179°59'59.99\""};
constexpr const char* kPointHelp =
    "LAT,LON in signed decimal degrees, north and east positive, or as N51 28 39,W000 27 41; latitude "
    "-89.999997 to 89.999997 (89°59'59.99\"), longitude -179.999997 to 179.999997 (179°59'59.99\")";
const std::vector<std::string> kUnitNames = {"nm", "km", "m", "ft"};  // DistanceUnit order

LatLon ScreenPoint(const std::string& option, const std::string& text) {
  return ParseLatLon(option, text, kScreenLimits);
}

DistanceUnit UnitFromName(const std::string& name) {
  for (size_t i = 0; i < kUnitNames.size(); ++i)
    if (kUnitNames[i] == name) return DistanceUnit(i);
  return DistanceUnit::Nm;
}

// Options shared by the three commands: the magnetic-variation settings of the Options screen.
struct MagOptions {
  bool magnetic = false;
  std::string year;  // empty: the model's first year
  std::string model = "igrf10";
  // The settings; a year outside the model's years is a usage error.
  MagSettings Settings() const {
    const MagModel m = MagModelFromOptionName(model);
    if (year.empty()) return {MagModelEpoch(m), m};
    return {static_cast<int>(ReadQuantity("--mv-year", year, MagYear(m))), m};
  }
};

// Registers --magnetic (returned, described by `what`), --mv-year and --mv-model.
CLI::Option* AddMagOptions(Describer& d, MagOptions& m, const char* what) {
  CLI::Option* magnetic = d.flag("--magnetic", m.magnetic, what);
  const Quantity recent = MagYear(MagModel::WMM2025);
  d.number("--mv-year", m.year, MagYear(MagModel::IGRF10), false,
           "for igrf10 and wmm2005, " + Shortest(recent.min) + " to " + Shortest(recent.max) +
               " for wmm2025 and igrf14 (default: the model's first year)");
  d.choice("--mv-model", m.model, MagModelOptionNames(), "Geomagnetic model (default igrf10)");
  return magnetic;
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
  static const char* const kRows[] = {"gc", "rl", "sph"};
  std::vector<std::string> results;
  for (const char* row : kRows)
    for (const char* column : {"_dist", "_trk_ini", "_trk_fin"}) results.push_back(std::string(row) + column);
  Describer d(cmd, results);
  d.text("--from", o->from, "coordinates", true, std::string("Origin: ") + kPointHelp);
  d.text("--to", o->to, "coordinates", true, std::string("Destination: ") + kPointHelp);
  d.choice("--unit", o->unit, kUnitNames, "Distance unit (default nm)");
  AddMagOptions(d, o->mag,
                "Magnetic tracks: the variation at the origin is subtracted from the initial tracks, the "
                "variation at the destination from the final tracks");
  cmd->callback([o] {
    const LatLon a = ScreenPoint("--from", o->from), b = ScreenPoint("--to", o->to);
    const MagSettings mag = o->mag.Settings();
    const TracksResult r = ComputeTracks(a.lat, a.lon, b.lat, b.lon, o->mag.magnetic ? &mag : nullptr);
    const DistanceUnit unit = UnitFromName(o->unit);
    const auto texts = TracksTexts(r, unit);
    const auto distances = TracksDistances(r);
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
  Describer d(cmd, {"latitude", "longitude", "variation"});
  d.text("--from", o->from, "coordinates", true, std::string("Origin: ") + kPointHelp);
  d.number("--track", o->track, kTrackFromOrigin, true, "(360 is taken as 0)");
  const Quantity other = PointDistance(DistanceUnit::Km);
  d.number("--distance", o->distance, PointDistance(DistanceUnit::Nm), true,
           "(up to " + Shortest(other.max) + " with --unit km, m or ft)");
  for (const DistanceUnit unit : {DistanceUnit::Km, DistanceUnit::M, DistanceUnit::Ft})
    d.variant({"--unit=" + kUnitNames[size_t(unit)]}, PointDistance(unit));
  d.choice("--unit", o->unit, kUnitNames, "Distance unit (default nm)");
  d.choice("--model", o->model, {"sphere", "wgs84"}, "Earth model (default wgs84)");
  CLI::Option* magnetic = AddMagOptions(d, o->mag, "The track is magnetic: true track = magnetic track + variation");
  d.number("--variation", o->variation, kMagneticVariation, false,
           "(east positive, with --magnetic; default: computed at the origin by the geomagnetic model)")
      ->needs(magnetic);
  cmd->callback([o] {
    const LatLon p = ScreenPoint("--from", o->from);
    const double track = ReadQuantity("--track", o->track, kTrackFromOrigin);
    const DistanceUnit unit = UnitFromName(o->unit);
    const double distance = ReadQuantity("--distance", o->distance, PointDistance(unit));
    std::optional<double> variation;
    if (!o->variation.empty()) variation = ReadQuantity("--variation", o->variation, kMagneticVariation);
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
  Describer d(cmd, {"latitude", "longitude"});
  d.text("--p1", o->p1, "coordinates", true, std::string("1st point: ") + kPointHelp);
  d.number("--track1", o->track1, kTrackFromFirstPoint, true);
  d.text("--p2", o->p2, "coordinates", true, std::string("2nd point: ") + kPointHelp);
  d.number("--track2", o->track2, kTrackFromSecondPoint, true);
  CLI::Option* magnetic =
      AddMagOptions(d, o->mag, "The tracks are magnetic: each true track = magnetic track + its point's variation");
  d.number("--var1", o->var1, kMagneticVariation, false,
           "(at the 1st point, east positive, with --magnetic; default: computed by the geomagnetic model)")
      ->needs(magnetic);
  d.number("--var2", o->var2, kMagneticVariation, false, "(at the 2nd point, as --var1)")->needs(magnetic);
  cmd->callback([o] {
    const LatLon a = ScreenPoint("--p1", o->p1), b = ScreenPoint("--p2", o->p2);
    double t1 = ReadQuantity("--track1", o->track1, kTrackFromFirstPoint);
    double t2 = ReadQuantity("--track2", o->track2, kTrackFromSecondPoint);
    const MagSettings mag = o->mag.Settings();
    if (o->mag.magnetic) {
      const double v1 =
          o->var1.empty() ? ShownVariation(a.lat, a.lon, mag) : ReadQuantity("--var1", o->var1, kMagneticVariation);
      const double v2 =
          o->var2.empty() ? ShownVariation(b.lat, b.lon, mag) : ReadQuantity("--var2", o->var2, kMagneticVariation);
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
