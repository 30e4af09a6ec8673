// norvane-cli atmosphere, speed, changeover, density-altitude, stall and descent: the atmosphere
// and airspeed screens without a window.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "atmosphere/Descent.hpp"
#include "atmosphere/StandardAtmosphere.hpp"
#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {
namespace {

// The results under the command's result keys (those of its catalogue entry), in their order.
void AddResults(ResultPrinter& out, const std::vector<std::string>& keys,
                std::initializer_list<const ShownValue*> values) {
  auto key = keys.begin();
  for (const ShownValue* v : values) out.Add(*key++, v->text, v->value);
}

// "-500 to 84852" for an option's help.
std::string Range(const Quantity& q) { return Shortest(q.min) + " to " + Shortest(q.max); }

// ---- atmosphere ------------------------------------------------------------------------------

struct AtmosphereArgs {
  std::string altitude, disa = "0", mslp;
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
  const std::vector<std::string> keys{"temperature", "pressure", "density", "sound", "theta", "delta", "sigma"};
  Describer d(cmd, keys);
  d.number("--altitude", a->altitude, AtmosphereAltitude(false, false), true,
           "(geopotential " + Range(AtmosphereAltitude(false, true)) + "; with --feet " +
               Range(AtmosphereAltitude(true, false)) + " geometric, " + Range(AtmosphereAltitude(true, true)) +
               " geopotential)")
      ->type_name("V");
  d.variant({"--feet", "--geopotential"}, AtmosphereAltitude(true, true));
  d.variant({"--feet"}, AtmosphereAltitude(true, false));
  d.variant({"--geopotential"}, AtmosphereAltitude(false, true));
  d.flag("--feet", a->feet, "Altitude in feet (default metres)");
  d.flag("--geopotential", a->geopotential, "Altitude is geopotential (default geometric, true altitude)");
  d.number("--disa", a->disa, kDisa, false, "(default 0)")->type_name("DEG");
  d.number("--mslp", a->mslp, Mslp(false), false, "(default standard, 1013.25 hPa)", Mslp(true))->type_name("V");
  d.flag("--us", a->us, "US units: F, inHg, slug/ft3, kt (default metric)");
  d.flag("--scientific", a->scientific, "Scientific format (0.0000E+0) for pressure, density and the ratios");
  cmd->callback([a, keys] {
    AtmosphereDataInput in;
    in.feet = a->feet;
    in.geopotential = a->geopotential;
    in.us = a->us;
    in.scientific = a->scientific;
    in.altitude = ReadQuantity("--altitude", a->altitude, AtmosphereAltitude(a->feet, a->geopotential));
    in.disa = ReadQuantity("--disa", a->disa, kDisa);
    if (!a->mslp.empty()) {
      const double v = ReadQuantity("--mslp", a->mslp, Mslp(a->us));
      in.mslpHpa = a->us ? v * kInHg : v;
    }
    const AtmosphereDataResult r = ComputeAtmosphereData(in);
    ResultPrinter out;
    AddResults(out, keys, {&r.temperature, &r.pressure, &r.density, &r.sound, &r.theta, &r.delta, &r.sigma});
    ExitStatus() = out.Print();
  });
}

// ---- speed -----------------------------------------------------------------------------------

struct SpeedArgs {
  std::string fl, cas, tas, mach, disa = "0";
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
  const std::vector<std::string> keys{"cas", "tas", "mach", "eas", "tat", "q"};
  Describer d(cmd, keys);
  d.number("--fl", a->fl, kFlightLevel, true)->type_name("N");
  auto* cas = d.number("--cas", a->cas, InputSpeed(SpeedInput::CAS), false)->type_name("V");
  auto* tas = d.number("--tas", a->tas, InputSpeed(SpeedInput::TAS), false)->type_name("V");
  auto* mach = d.number("--mach", a->mach, InputSpeed(SpeedInput::Mach), false)->type_name("M");
  cas->excludes(tas)->excludes(mach);
  tas->excludes(mach);
  d.number("--disa", a->disa, kDisa, false, "(default 0)")->type_name("DEG");
  d.flag("--us", a->us, "TAT in degrees F and q in lb/ft2 (default C and Pa)");
  cmd->callback([a, keys] {
    SpeedCalculationInput in;
    in.us = a->us;
    in.flightLevel = ReadQuantity("--fl", a->fl, kFlightLevel);
    const GivenOption speed = OneOf({{"--cas", &a->cas}, {"--tas", &a->tas}, {"--mach", &a->mach}});
    in.kind = static_cast<SpeedInput>(speed.index);  // in SpeedInput order
    in.speed = ReadQuantity(speed.name, speed.text, InputSpeed(in.kind));
    in.disa = ReadQuantity("--disa", a->disa, kDisa);
    const SpeedCalculationResult r = ComputeSpeeds(in);
    ResultPrinter out;
    AddResults(out, keys, {&r.cas, &r.tas, &r.mach, &r.eas, &r.tat, &r.q});
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
  const std::vector<std::string> keys{"altitude", "flight_level"};
  Describer d(cmd, keys);
  d.number("--ias", a->ias, kChangeoverIas, true)->type_name("V");
  d.number("--mach", a->mach, kChangeoverMach, true)->type_name("M");
  cmd->callback([a, keys] {
    const double ias = ReadQuantity("--ias", a->ias, kChangeoverIas);
    const double mach = ReadQuantity("--mach", a->mach, kChangeoverMach);
    const ChangeoverResult r = ComputeChangeover(ias, mach);
    ResultPrinter out;
    AddResults(out, keys, {&r.altitude, &r.flightLevel});
    if (!r.error.empty()) out.Fail(r.error);
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
  const std::vector<std::string> keys{"pressure", "humidity", "density_altitude"};
  Describer d(cmd, keys);
  d.number("--qnh", a->qnh, Qnh(false), true, {}, Qnh(true))->type_name("V");
  d.number("--temperature", a->temperature, AirTemperature(false), true, {}, AirTemperature(true))->type_name("T");
  d.number("--dewpoint", a->dewpoint, DewPoint(false), true, "(one above the temperature is taken as the temperature)",
           DewPoint(true))
      ->type_name("D");
  d.number("--elevation", a->elevation, kFieldElevation, true, "(aerodrome elevation)")->type_name("FT");
  d.flag("--us", a->us, "Altimeter setting in inHg and temperatures in degrees F (default hPa and C)");
  cmd->callback([a, keys] {
    DensityAltitudeInput in;
    in.us = a->us;
    in.qnh = ReadQuantity("--qnh", a->qnh, Qnh(a->us));
    in.temperature = ReadQuantity("--temperature", a->temperature, AirTemperature(a->us));
    in.dewPoint = ReadQuantity("--dewpoint", a->dewpoint, DewPoint(a->us));
    in.elevationFt = ReadQuantity("--elevation", a->elevation, kFieldElevation);
    const DensityAltitudeResult r = ComputeDensityAltitude(in);
    if (r.dewPointLowered)
      std::fprintf(stderr, "note: the dew point is above the temperature; the temperature is used as dew point\n");
    ResultPrinter out;
    AddResults(out, keys, {&r.pressure, &r.humidity, &r.densityAltitude});
    ExitStatus() = out.Print();
  });
}

// ---- stall -----------------------------------------------------------------------------------

struct StallArgs {
  std::string clmax, area, vs, mtow, weight, altitude, bank = "0";
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
  const std::vector<std::string> keys{"vs_ktas", "vs_kcas"};
  Describer d(cmd, keys);
  auto* clmax = d.number("--clmax", a->clmax, kMaxLiftCoefficient, false)->type_name("C");
  auto* area = d.number("--area", a->area, WingArea(false), false, {}, WingArea(true))->type_name("A");
  auto* vs = d.number("--vs", a->vs, kReferenceStallSpeed, false, "(instead of --clmax and --area)")->type_name("V");
  vs->excludes(clmax)->excludes(area);
  clmax->needs(area);
  area->needs(clmax);
  d.number("--mtow", a->mtow, Mtow(false), true, {}, Mtow(true))->type_name("W");
  d.number("--weight", a->weight, CurrentWeight(false), true, {}, CurrentWeight(true))->type_name("W");
  d.number("--altitude", a->altitude, kStallAltitude, true)->type_name("FT");
  d.number("--bank", a->bank, kBankAngle, false, "(default 0)")->type_name("DEG");
  d.flag("--us", a->us, "Wing area in sqft and weights in lb (default m2 and kg)");
  cmd->callback([a, keys] {
    StallSpeedInput in;
    in.us = a->us;
    in.fromVs = !a->vs.empty();
    if (in.fromVs) {
      in.vs = ReadQuantity("--vs", a->vs, kReferenceStallSpeed);
    } else if (!a->clmax.empty()) {
      in.clMax = ReadQuantity("--clmax", a->clmax, kMaxLiftCoefficient);
      in.wingArea = ReadQuantity("--area", a->area, WingArea(a->us));
    } else {
      throw UsageError("either --clmax and --area, or --vs, is required");
    }
    in.mtow = ReadQuantity("--mtow", a->mtow, Mtow(a->us));
    in.weight = ReadQuantity("--weight", a->weight, CurrentWeight(a->us));
    in.altitudeFt = ReadQuantity("--altitude", a->altitude, kStallAltitude);
    in.bankDeg = ReadQuantity("--bank", a->bank, kBankAngle);
    const StallSpeedResult r = ComputeStallSpeed(in);
    ResultPrinter out;
    AddResults(out, keys, {&r.ktas, &r.kcas});
    ExitStatus() = out.Print();
  });
}

// ---- descent ---------------------------------------------------------------------------------

struct DescentArgs {
  std::string from, to, ias, mach, wind = "0", disa = "0", rate, angle, distance;
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
  const std::vector<std::string> keys{"altitude_to_lose", "time",    "distance", "rod_top",    "rod_bottom", "angle",
                                      "gradient",         "mean_gs", "tas_top",  "tas_bottom", "changeover"};
  Describer d(cmd, keys);
  d.number("--from", a->from, kDescentInitial, true)->type_name("FT");
  d.number("--to", a->to, kDescentFinal, true)->type_name("FT");
  d.number("--ias", a->ias, kDescentIas, true)->type_name("KT");
  d.number("--mach", a->mach, kDescentMach, false, "(default: the IAS all the way)")->type_name("M");
  d.number("--wind", a->wind, kDescentWind, false, "(tail wind positive; default 0)")->type_name("KT");
  d.number("--disa", a->disa, kDisa, false, "(default 0)")->type_name("DEG");
  // The given quantity: one of three.
  auto* rate = d.number("--rate", a->rate, DescentGivenValue(DescentGiven::Rate), false)->type_name("FPM");
  auto* angle = d.number("--angle", a->angle, DescentGivenValue(DescentGiven::Angle), false)->type_name("DEG");
  auto* distance = d.number("--distance", a->distance, DescentGivenValue(DescentGiven::Distance), false,
                            "(the constant rate of descent that flies it)")
                       ->type_name("NM");
  rate->excludes(angle)->excludes(distance);
  angle->excludes(distance);
  cmd->callback([a, keys] {
    DescentInput in;
    in.initialFt = ReadQuantity("--from", a->from, kDescentInitial);
    in.finalFt = ReadQuantity("--to", a->to, kDescentFinal);
    in.ias = ReadQuantity("--ias", a->ias, kDescentIas);
    if (!a->mach.empty()) in.mach = ReadQuantity("--mach", a->mach, kDescentMach);
    in.windKt = ReadQuantity("--wind", a->wind, kDescentWind);
    in.disa = ReadQuantity("--disa", a->disa, kDisa);
    const GivenOption given = OneOf({{"--rate", &a->rate}, {"--angle", &a->angle}, {"--distance", &a->distance}});
    in.given = static_cast<DescentGiven>(given.index);  // in DescentGiven order
    in.value = ReadQuantity(given.name, given.text, DescentGivenValue(in.given));
    const DescentResult r = ComputeDescent(in);
    ResultPrinter out;
    if (!r.error.empty()) {
      out.Fail(r.error);
    } else {
      AddResults(out, keys,
                 {&r.altitudeToLose, &r.time, &r.distance, &r.rodTop, &r.rodBottom, &r.angle, &r.gradient, &r.meanGs,
                  &r.tasTop, &r.tasBottom, &r.changeover});
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
