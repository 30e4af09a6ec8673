// norvane-cli atmosphere, speed, changeover, density-altitude, stall and descent: the atmosphere
// and airspeed screens without a window.
#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "atmosphere/Descent.hpp"
#include "atmosphere/StandardAtmosphere.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {
namespace {

std::string RangeText(const InputRange& r, std::string_view unit) {
  std::string s = Shortest(r.min) + " to " + Shortest(r.max);
  if (!unit.empty()) s += " " + std::string(unit);
  return s;
}

double Number(const std::string& option, const std::string& text, const InputRange& r, std::string_view unit) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(option + ": expected a number, got \"" + text + "\"");
  RequireRange(option, *v, r.min, r.max, unit);
  return *v;
}

double WholeNumber(const std::string& option, const std::string& text, const InputRange& r, std::string_view unit) {
  const double v = Number(option, text, r, unit);
  if (v != std::floor(v))
    throw UsageError(option + ": " + text + " is not a whole number (" + RangeText(r, unit) + ")");
  return v;
}

void Add(ResultPrinter& out, const char* key, const ShownValue& v) { out.Add(key, v.text, v.value); }

// ---- atmosphere ------------------------------------------------------------------------------

struct AtmosphereArgs {
  std::string altitude, disa, mslp;
  bool feet = false, geopotential = false, us = false, scientific = false;
};

void RegisterAtmosphere(CLI::App& app) {
  auto a = std::make_shared<AtmosphereArgs>();
  CLI::App* cmd = app.add_subcommand(
      "atmosphere",
      "ISA atmosphere model data up to 84852 m (geopotential altitude): temperature, pressure, density, "
      "speed of sound and the standard ratios, in the standard atmosphere or with a temperature offset "
      "and sea-level pressure of your own.\n"
      "Prints temperature pressure density sound theta delta sigma (metric: C, hPa, kg/m3, km/h; "
      "--us: F, inHg, slug/ft3, kt).");
  cmd->fallthrough();
  cmd->add_option("--altitude", a->altitude,
                  "Altitude: metres " + RangeText(AtmosphereAltitudeRange(false, false), "") +
                      " geometric, " + RangeText(AtmosphereAltitudeRange(false, true), "") +
                      " geopotential; with --feet " + RangeText(AtmosphereAltitudeRange(true, false), "") +
                      " geometric, " + RangeText(AtmosphereAltitudeRange(true, true), "") + " geopotential")
      ->type_name("V")
      ->required();
  cmd->add_flag("--feet", a->feet, "Altitude in feet (default metres)");
  cmd->add_flag("--geopotential", a->geopotential, "Altitude is geopotential (default geometric, true altitude)");
  cmd->add_option("--disa", a->disa,
                  "Temperature offset from the standard atmosphere, whole degrees C, " + RangeText(kDisaRange, "") +
                      " (default 0)")
      ->type_name("DEG");
  cmd->add_option("--mslp", a->mslp,
                  "Mean sea-level pressure, hPa " + RangeText(MslpRange(false), "") + ", or inHg " +
                      RangeText(MslpRange(true), "") + " with --us (default standard, 1013.25 hPa)")
      ->type_name("V");
  cmd->add_flag("--us", a->us, "US units: F, inHg, slug/ft3, kt (default metric)");
  cmd->add_flag("--scientific", a->scientific,
                "Scientific format (0.0000E+0) for pressure, density and the ratios");
  cmd->callback([a] {
    AtmosphereDataInput in;
    in.feet = a->feet;
    in.geopotential = a->geopotential;
    in.us = a->us;
    in.scientific = a->scientific;
    const std::string unit = std::string(a->feet ? "ft" : "m") + (a->geopotential ? ", geopotential" : ", geometric");
    in.altitude = Number("--altitude", a->altitude, AtmosphereAltitudeRange(a->feet, a->geopotential), unit);
    if (!a->disa.empty()) in.disa = WholeNumber("--disa", a->disa, kDisaRange, "degrees C");
    if (!a->mslp.empty()) {
      const double v = Number("--mslp", a->mslp, MslpRange(a->us), a->us ? "inHg" : "hPa");
      in.mslpHpa = a->us ? v * kInHg : v;
    }
    const AtmosphereDataResult r = ComputeAtmosphereData(in);
    static const char* const keys[kAtmosphereResults] = {"temperature", "pressure", "density", "sound",
                                                         "theta",       "delta",    "sigma"};
    ResultPrinter out;
    for (int i = 0; i < kAtmosphereResults; ++i) Add(out, keys[i], r.results[i]);
    ExitStatus() = out.Print();
  });
}

// ---- speed -----------------------------------------------------------------------------------

struct SpeedArgs {
  std::string fl, cas, tas, mach, disa;
  bool us = false;
};

void RegisterSpeed(CLI::App& app) {
  auto a = std::make_shared<SpeedArgs>();
  CLI::App* cmd = app.add_subcommand(
      "speed",
      "CAS, TAS, Mach number and EAS from one of them at a flight level, with total air temperature and "
      "dynamic pressure. CAS is IAS corrected for pitot position and measurement errors and compressibility; "
      "EAS is not defined for supersonic speeds (NA).\n"
      "Prints cas tas mach eas tat q (kt; TAT in C and q in Pa, with --us in F and lb/ft2).");
  cmd->fallthrough();
  cmd->add_option("--fl", a->fl, "Flight level, whole number " + RangeText(kFlightLevelRange, ""))
      ->type_name("N")
      ->required();
  auto* cas = cmd->add_option("--cas", a->cas,
                              "Calibrated air speed, kt, " + RangeText(SpeedInputRange(SpeedInput::CAS), ""));
  cas->type_name("V");
  auto* tas = cmd->add_option("--tas", a->tas,
                              "True air speed, kt, " + RangeText(SpeedInputRange(SpeedInput::TAS), ""));
  tas->type_name("V");
  auto* mach = cmd->add_option("--mach", a->mach,
                               "Mach number, " + RangeText(SpeedInputRange(SpeedInput::Mach), ""));
  mach->type_name("M");
  cas->excludes(tas)->excludes(mach);
  tas->excludes(mach);
  cmd->add_option("--disa", a->disa,
                  "Temperature offset from the standard atmosphere, whole degrees C, " + RangeText(kDisaRange, "") +
                      " (default 0)")
      ->type_name("DEG");
  cmd->add_flag("--us", a->us, "TAT in degrees F and q in lb/ft2 (default C and Pa)");
  cmd->callback([a] {
    SpeedCalculationInput in;
    in.us = a->us;
    in.flightLevel = WholeNumber("--fl", a->fl, kFlightLevelRange, "");
    if (!a->cas.empty()) {
      in.kind = SpeedInput::CAS;
      in.speed = Number("--cas", a->cas, SpeedInputRange(in.kind), "kt");
    } else if (!a->tas.empty()) {
      in.kind = SpeedInput::TAS;
      in.speed = Number("--tas", a->tas, SpeedInputRange(in.kind), "kt");
    } else if (!a->mach.empty()) {
      in.kind = SpeedInput::Mach;
      in.speed = Number("--mach", a->mach, SpeedInputRange(in.kind), "");
    } else {
      throw UsageError("one of --cas, --tas or --mach is required");
    }
    if (!a->disa.empty()) in.disa = WholeNumber("--disa", a->disa, kDisaRange, "degrees C");
    const SpeedCalculationResult r = ComputeSpeeds(in);
    ResultPrinter out;
    Add(out, "cas", r.cas);
    Add(out, "tas", r.tas);
    Add(out, "mach", r.mach);
    Add(out, "eas", r.eas);
    Add(out, "tat", r.tat);
    Add(out, "q", r.q);
    ExitStatus() = out.Print();
  });
}

// ---- changeover ------------------------------------------------------------------------------

struct ChangeoverArgs {
  std::string ias, mach;
};

void RegisterChangeover(CLI::App& app) {
  auto a = std::make_shared<ChangeoverArgs>();
  CLI::App* cmd = app.add_subcommand(
      "changeover",
      "Altitude and FL at which IAS and Mach number match (switch from IAS to Mach during climb and Mach to "
      "IAS during descent).\n"
      "Prints altitude (pressure altitude, ft) and flight_level; \">65000\" and \">650\" above the computable "
      "range; \"NA\" and a message when there is no changeover level (exit status 1).");
  cmd->fallthrough();
  cmd->add_option("--ias", a->ias, "Indicated air speed, kt, " + RangeText(kChangeoverIasRange, ""))
      ->type_name("V")
      ->required();
  cmd->add_option("--mach", a->mach, "Mach number, " + RangeText(kChangeoverMachRange, ""))
      ->type_name("M")
      ->required();
  cmd->callback([a] {
    const double ias = Number("--ias", a->ias, kChangeoverIasRange, "kt");
    const double mach = Number("--mach", a->mach, kChangeoverMachRange, "");
    const ChangeoverResult r = ComputeChangeover(ias, mach);
    ResultPrinter out;
    Add(out, "altitude", r.altitude);
    Add(out, "flight_level", r.flightLevel);
    if (!r.error.empty()) {
      out.Message(r.error);
      out.SetFailed();
    }
    ExitStatus() = out.Print();
  });
}

// ---- density-altitude ------------------------------------------------------------------------

struct DensityArgs {
  std::string qnh, temperature, dewpoint, elevation;
  bool us = false;
};

void RegisterDensityAltitude(CLI::App& app) {
  auto a = std::make_shared<DensityArgs>();
  CLI::App* cmd = app.add_subcommand(
      "density-altitude",
      "Station pressure, relative humidity and density altitude of an aerodrome, water vapour included. "
      "The altimeter setting is the value of the Kollsman window when the altimeter is adjusted to read the "
      "correct altitude (local QNH).\n"
      "Prints pressure (hPa, or inHg with --us), humidity (%) and density_altitude (ft).");
  cmd->fallthrough();
  cmd->add_option("--qnh", a->qnh,
                  "Altimeter setting, hPa " + RangeText(QnhRange(false), "") + ", or inHg " +
                      RangeText(QnhRange(true), "") + " with --us")
      ->type_name("V")
      ->required();
  cmd->add_option("--temperature", a->temperature,
                  "Air temperature, degrees C " + RangeText(AirTemperatureRange(false), "") + ", or F " +
                      RangeText(AirTemperatureRange(true), "") + " with --us")
      ->type_name("T")
      ->required();
  cmd->add_option("--dewpoint", a->dewpoint,
                  "Dew point, same unit and range as the temperature; a dew point above the temperature is "
                  "taken as the temperature")
      ->type_name("D")
      ->required();
  cmd->add_option("--elevation", a->elevation,
                  "Aerodrome elevation, ft, geometric, " + RangeText(kElevationRange, ""))
      ->type_name("FT")
      ->required();
  cmd->add_flag("--us", a->us, "Altimeter setting in inHg and temperatures in degrees F (default hPa and C)");
  cmd->callback([a] {
    DensityAltitudeInput in;
    in.us = a->us;
    const char* tUnit = a->us ? "degrees F" : "degrees C";
    in.qnh = Number("--qnh", a->qnh, QnhRange(a->us), a->us ? "inHg" : "hPa");
    in.temperature = Number("--temperature", a->temperature, AirTemperatureRange(a->us), tUnit);
    in.dewPoint = Number("--dewpoint", a->dewpoint, AirTemperatureRange(a->us), tUnit);
    in.elevationFt = Number("--elevation", a->elevation, kElevationRange, "ft");
    const DensityAltitudeResult r = ComputeDensityAltitude(in);
    if (r.dewPointLowered)
      std::fprintf(stderr, "note: the dew point is above the temperature; the temperature is used as dew point\n");
    ResultPrinter out;
    Add(out, "pressure", r.pressure);
    Add(out, "humidity", r.humidity);
    Add(out, "density_altitude", r.densityAltitude);
    ExitStatus() = out.Print();
  });
}

// ---- stall -----------------------------------------------------------------------------------

struct StallArgs {
  std::string clmax, area, vs, mtow, weight, altitude, bank;
  bool us = false;
};

void RegisterStall(CLI::App& app) {
  auto a = std::make_shared<StallArgs>();
  CLI::App* cmd = app.add_subcommand(
      "stall",
      "Stall speed at a weight, altitude and bank angle, calculated from Vs at sea level, standard, MTOW or "
      "from aerodynamical data (CL max and reference wing area).\n"
      "Prints vs_ktas and vs_kcas (kt; vs_kcas is NA when the true stall speed is supersonic).");
  cmd->fallthrough();
  auto* clmax = cmd->add_option("--clmax", a->clmax, "Maximum lift coefficient, " + RangeText(kClMaxRange, ""));
  clmax->type_name("C");
  auto* area = cmd->add_option("--area", a->area,
                               "Wing reference area, m2 " + RangeText(WingAreaRange(false), "") + ", or sqft " +
                                   RangeText(WingAreaRange(true), "") + " with --us");
  area->type_name("A");
  auto* vs = cmd->add_option("--vs", a->vs,
                             "Stall speed at sea level and MTOW, CAS, kt, " + RangeText(kReferenceVsRange, "") +
                                 " (instead of --clmax and --area)");
  vs->type_name("V");
  vs->excludes(clmax)->excludes(area);
  clmax->needs(area);
  area->needs(clmax);
  const std::string weightRange =
      "kg " + RangeText(WeightRange(false), "") + ", or lb " + RangeText(WeightRange(true), "") + " with --us";
  cmd->add_option("--mtow", a->mtow, "Maximum takeoff weight, " + weightRange)->type_name("W")->required();
  cmd->add_option("--weight", a->weight, "Current weight, " + weightRange)->type_name("W")->required();
  cmd->add_option("--altitude", a->altitude, "Geometric altitude, ft, " + RangeText(kStallAltitudeRange, ""))
      ->type_name("FT")
      ->required();
  cmd->add_option("--bank", a->bank, "Bank angle, degrees, " + RangeText(kBankRange, "") + ", whole number (default 0)")
      ->type_name("DEG");
  cmd->add_flag("--us", a->us, "Wing area in sqft and weights in lb (default m2 and kg)");
  cmd->callback([a] {
    StallSpeedInput in;
    in.us = a->us;
    in.fromVs = !a->vs.empty();
    if (in.fromVs) {
      in.vs = Number("--vs", a->vs, kReferenceVsRange, "kt");
    } else if (!a->clmax.empty()) {
      in.clMax = Number("--clmax", a->clmax, kClMaxRange, "");
      in.wingArea = Number("--area", a->area, WingAreaRange(a->us), a->us ? "sqft" : "m2");
    } else {
      throw UsageError("either --clmax and --area, or --vs, is required");
    }
    const char* wUnit = a->us ? "lb" : "kg";
    in.mtow = Number("--mtow", a->mtow, WeightRange(a->us), wUnit);
    in.weight = Number("--weight", a->weight, WeightRange(a->us), wUnit);
    in.altitudeFt = Number("--altitude", a->altitude, kStallAltitudeRange, "ft");
    if (!a->bank.empty()) in.bankDeg = WholeNumber("--bank", a->bank, kBankRange, "degrees");
    const StallSpeedResult r = ComputeStallSpeed(in);
    ResultPrinter out;
    Add(out, "vs_ktas", r.ktas);
    Add(out, "vs_kcas", r.kcas);
    ExitStatus() = out.Print();
  });
}

// ---- descent ---------------------------------------------------------------------------------

struct DescentArgs {
  std::string from, to, ias, mach, wind, disa, rate, angle, distance;
};

void RegisterDescent(CLI::App& app) {
  auto a = std::make_shared<DescentArgs>();
  CLI::App* cmd = app.add_subcommand(
      "descent",
      "Distance, time and rate of descent from one altitude to another at a Mach/IAS schedule, with "
      "temperature and wind. Altitudes are pressure altitudes; the Mach number is flown above the changeover "
      "altitude, the IAS below it.\n"
      "Prints altitude_to_lose (ft) time (m:ss; seconds with --raw) distance (NM) rod_top rod_bottom (ft/min) "
      "angle (degrees) gradient (ft/NM) mean_gs tas_top tas_bottom (kt) changeover (ft, or None).");
  cmd->fallthrough();
  cmd->add_option("--from", a->from, "Initial altitude, ft, whole number " + RangeText(kDescentInitialRange, ""))
      ->type_name("FT")
      ->required();
  cmd->add_option("--to", a->to, "Final altitude, ft, whole number " + RangeText(kDescentFinalRange, ""))
      ->type_name("FT")
      ->required();
  cmd->add_option("--ias", a->ias, "Indicated air speed, kt, " + RangeText(kDescentIasRange, ""))
      ->type_name("KT")
      ->required();
  cmd->add_option("--mach", a->mach,
                  "Mach number above the changeover, " + RangeText(kDescentMachRange, "") + " (default: the IAS all "
                  "the way)")
      ->type_name("M");
  cmd->add_option("--wind", a->wind,
                  "Wind component, kt, tail wind positive, " + RangeText(kDescentWindRange, "") + " (default 0)")
      ->type_name("KT");
  cmd->add_option("--disa", a->disa,
                  "Temperature offset from the standard atmosphere, whole degrees C, " + RangeText(kDisaRange, "") +
                      " (default 0)")
      ->type_name("DEG");
  auto* rate = cmd->add_option("--rate", a->rate,
                               "Given rate of descent, ft/min, " + RangeText(DescentGivenRange(DescentGiven::Rate), ""));
  rate->type_name("FPM");
  auto* angle = cmd->add_option("--angle", a->angle,
                                "Given flight path angle over the ground, degrees, " +
                                    RangeText(DescentGivenRange(DescentGiven::Angle), ""));
  angle->type_name("DEG");
  auto* distance = cmd->add_option("--distance", a->distance,
                                   "Given distance, NM, " + RangeText(DescentGivenRange(DescentGiven::Distance), "") +
                                       ": the constant rate of descent that flies it");
  distance->type_name("NM");
  rate->excludes(angle)->excludes(distance);
  angle->excludes(distance);
  cmd->callback([a] {
    DescentInput in;
    in.initialFt = WholeNumber("--from", a->from, kDescentInitialRange, "ft");
    in.finalFt = WholeNumber("--to", a->to, kDescentFinalRange, "ft");
    in.ias = Number("--ias", a->ias, kDescentIasRange, "kt");
    if (!a->mach.empty()) in.mach = Number("--mach", a->mach, kDescentMachRange, "");
    if (!a->wind.empty()) in.windKt = Number("--wind", a->wind, kDescentWindRange, "kt");
    if (!a->disa.empty()) in.disa = WholeNumber("--disa", a->disa, kDisaRange, "degrees C");
    if (!a->rate.empty()) {
      in.given = DescentGiven::Rate;
      in.value = Number("--rate", a->rate, DescentGivenRange(in.given), "ft/min");
    } else if (!a->angle.empty()) {
      in.given = DescentGiven::Angle;
      in.value = Number("--angle", a->angle, DescentGivenRange(in.given), "degrees");
    } else if (!a->distance.empty()) {
      in.given = DescentGiven::Distance;
      in.value = Number("--distance", a->distance, DescentGivenRange(in.given), "NM");
    } else {
      throw UsageError("one of --rate, --angle or --distance is required");
    }
    const DescentResult r = ComputeDescent(in);
    ResultPrinter out;
    if (!r.error.empty()) {
      out.Message(r.error);
      out.SetFailed();
    } else {
      const std::pair<const char*, const ShownValue*> results[] = {
          {"altitude_to_lose", &r.altitudeToLose}, {"time", &r.time},          {"distance", &r.distance},
          {"rod_top", &r.rodTop},                   {"rod_bottom", &r.rodBottom}, {"angle", &r.angle},
          {"gradient", &r.gradient},                {"mean_gs", &r.meanGs},      {"tas_top", &r.tasTop},
          {"tas_bottom", &r.tasBottom},             {"changeover", &r.changeover}};
      for (const auto& [key, value] : results) Add(out, key, *value);
    }
    ExitStatus() = out.Print();
  });
}

}  // namespace

void RegisterAtmosphereCommands(CLI::App& app) {
  RegisterAtmosphere(app);
  RegisterSpeed(app);
  RegisterChangeover(app);
  RegisterDensityAltitude(app);
  RegisterStall(app);
  RegisterDescent(app);
}

}  // namespace norvane::cli
