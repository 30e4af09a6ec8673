// norvane-cli wind, turn, holding and racetrack: the wind, turn parameters, holding entry and
// racetrack screens.
#include <CLI/CLI.hpp>

#include <cmath>
#include <memory>
#include <string>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "app/TextFormat.hpp"
#include "manoeuvres/Holding.hpp"
#include "manoeuvres/Racetrack.hpp"
#include "manoeuvres/Turn.hpp"
#include "manoeuvres/Wind.hpp"

namespace norvane::cli {
namespace {

// The screens take whole knots and whole degrees in these boxes.
int WholeNumber(const std::string& option, const std::string& text, int min, int max, std::string_view unit) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(option + ": expected a number, got \"" + text + "\"");
  RequireRange(option, *v, min, max, unit);
  if (*v != std::floor(*v))
    throw UsageError(option + ": " + text + " is not a whole number (" + std::to_string(min) + " to " +
                     std::to_string(max) + " " + std::string(unit) + ")");
  return static_cast<int>(*v);
}

double Number(const std::string& option, const std::string& text, double min, double max, std::string_view unit) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(option + ": expected a number, got \"" + text + "\"");
  RequireRange(option, *v, min, max, unit);
  return *v;
}

int PrintWind(const WindTexts& t, const char* const keys[], int keyCount) {
  ResultPrinter out;
  if (!t.message.empty()) {
    out.Message(t.message);
    out.SetFailed();
  } else {
    for (int i = 0; i < keyCount && i < t.count; ++i) out.Add(keys[i], t.text[i], t.value[i]);
  }
  return out.Print();
}

struct WindArgs {
  std::string tas, gs, track, heading, windSpeed, windDir, runway;
};

void RegisterWind(CLI::App& app) {
  CLI::App* wind = app.add_subcommand("wind", "Wind triangle and runway wind (speeds in kt, angles in whole "
                                              "degrees, tracks, headings and wind directions all true or all "
                                              "magnetic; head wind negative, right positive)");
  wind->require_subcommand(1);
  wind->fallthrough();
  auto args = std::make_shared<WindArgs>();

  const std::string tasHelp = "True air speed, kt, whole number 50 to 1500";
  const std::string trackHelp = "Route track, degrees, whole number 0 to 360";
  const std::string wsHelp = "Wind speed, kt, whole number 0 to 150";
  const std::string wdHelp = "Direction the wind blows from, degrees, whole number 0 to 360";

  CLI::App* known = wind->add_subcommand("known", "Heading and ground speed to fly a track in a known wind.\n"
                                                  "Prints ground_speed heading wca head_tail.");
  known->fallthrough();
  known->add_option("--tas", args->tas, tasHelp)->type_name("KT")->required();
  known->add_option("--track", args->track, trackHelp)->type_name("DEG")->required();
  known->add_option("--wind-speed", args->windSpeed, wsHelp)->type_name("KT")->required();
  known->add_option("--wind-dir", args->windDir, wdHelp)->type_name("DEG")->required();
  known->callback([args] {
    const int tas = WholeNumber("--tas", args->tas, kWindAirSpeedMin, kWindAirSpeedMax, "kt");
    const int track = WholeNumber("--track", args->track, kWindAngleMin, kWindAngleMax, "degrees");
    const int ws = WholeNumber("--wind-speed", args->windSpeed, kWindSpeedMin, kWindSpeedMax, "kt");
    const int wd = WholeNumber("--wind-dir", args->windDir, kWindAngleMin, kWindAngleMax, "degrees");
    static const char* const keys[] = {"ground_speed", "heading", "wca", "head_tail"};
    ExitStatus() = PrintWind(KnownWindTexts(tas, track, ws, wd), keys, 4);
  });

  CLI::App* unknown = wind->add_subcommand("unknown", "Wind from the flown heading and TAS and the measured "
                                                      "track and ground speed.\n"
                                                      "Prints wind_speed wind_direction wca head_tail.");
  unknown->fallthrough();
  unknown->add_option("--tas", args->tas, tasHelp)->type_name("KT")->required();
  unknown->add_option("--gs", args->gs, "Ground speed, kt, whole number 50 to 1500")->type_name("KT")->required();
  unknown->add_option("--track", args->track, trackHelp)->type_name("DEG")->required();
  unknown->add_option("--heading", args->heading, "Aircraft heading, degrees, whole number 0 to 360")
      ->type_name("DEG")
      ->required();
  unknown->callback([args] {
    const int tas = WholeNumber("--tas", args->tas, kWindAirSpeedMin, kWindAirSpeedMax, "kt");
    const int gs = WholeNumber("--gs", args->gs, kWindAirSpeedMin, kWindAirSpeedMax, "kt");
    const int track = WholeNumber("--track", args->track, kWindAngleMin, kWindAngleMax, "degrees");
    const int heading = WholeNumber("--heading", args->heading, kWindAngleMin, kWindAngleMax, "degrees");
    static const char* const keys[] = {"wind_speed", "wind_direction", "wca", "head_tail"};
    ExitStatus() = PrintWind(UnknownWindTexts(tas, gs, track, heading), keys, 4);
  });

  CLI::App* runway = wind->add_subcommand("runway", "Crosswind and head/tail wind on a runway.\n"
                                                    "Prints crosswind head_tail.");
  runway->fallthrough();
  runway->add_option("--runway", args->runway, "Runway heading, degrees, whole number 0 to 360")
      ->type_name("DEG")
      ->required();
  runway->add_option("--wind-speed", args->windSpeed, wsHelp)->type_name("KT")->required();
  runway->add_option("--wind-dir", args->windDir, wdHelp)->type_name("DEG")->required();
  runway->callback([args] {
    const int rwy = WholeNumber("--runway", args->runway, kWindAngleMin, kWindAngleMax, "degrees");
    const int ws = WholeNumber("--wind-speed", args->windSpeed, kWindSpeedMin, kWindSpeedMax, "kt");
    const int wd = WholeNumber("--wind-dir", args->windDir, kWindAngleMin, kWindAngleMax, "degrees");
    static const char* const keys[] = {"crosswind", "head_tail"};
    ExitStatus() = PrintWind(RunwayWindTexts(rwy, ws, wd), keys, 2);
  });
}

struct TurnArgs {
  std::string tas, intercept, distance;
  std::string maxBank = "30", rate = "3", radiusUnit = "nm";
};

void RegisterTurn(CLI::App& app) {
  auto args = std::make_shared<TurnArgs>();
  CLI::App* turn = app.add_subcommand(
      "turn", "Rate turn: effective bank, rate, radius and load factor, and the turn anticipation for "
              "intercepting a radial.\nPrints bank rate radius g_load, then anticipation final_distance "
              "when --intercept and --distance are given (\"NA\": the turn cannot be completed inside the "
              "distance; \"past\": it ends beyond the station).");
  turn->fallthrough();
  turn->add_option("--tas", args->tas, "True air speed, kt, whole number 50 to 1500")->type_name("KT")->required();
  turn->add_option("--max-bank", args->maxBank, "Maximum bank, degrees: 20, 25, 30 or ul (unlimited); default 30")
      ->type_name("DEG")
      ->check(CLI::IsMember({"20", "25", "30", "ul"}));
  turn->add_option("--rate", args->rate, "Turn rate, deg/s: 1.5 (half standard) or 3 (standard); default 3")
      ->type_name("DEG/S")
      ->check(CLI::IsMember({"1.5", "3"}));
  CLI::Option* intercept = turn->add_option(
      "--intercept", args->intercept, "Intercept angle, degrees, whole number 10 to 90 (needs --distance)")
      ->type_name("DEG");
  CLI::Option* distance = turn->add_option(
      "--distance", args->distance, "Distance to the station at the start of the turn, NM, 5 to 50 (needs --intercept)")
      ->type_name("NM");
  intercept->needs(distance);
  distance->needs(intercept);
  turn->add_option("--radius-unit", args->radiusUnit, "Unit of the radius: nm, m or ft; default nm")
      ->type_name("UNIT")
      ->check(CLI::IsMember({"nm", "m", "ft"}));
  turn->callback([args, intercept, distance] {
    const int tas = WholeNumber("--tas", args->tas, kTurnTasMin, kTurnTasMax, "kt");
    const int16_t bankIndex = args->maxBank == "20"   ? 0
                              : args->maxBank == "25" ? 1
                              : args->maxBank == "30" ? 2
                                                      : kMaxBankUnlimited;
    const RadiusUnit unit = args->radiusUnit == "m"    ? RadiusUnit::Metres
                            : args->radiusUnit == "ft" ? RadiusUnit::Feet
                                                       : RadiusUnit::NauticalMiles;
    std::optional<double> angle, dist;
    if (*intercept && *distance) {
      angle = WholeNumber("--intercept", args->intercept, kInterceptAngleMin, kInterceptAngleMax, "degrees");
      dist = Number("--distance", args->distance, kInterceptDistanceMin, kInterceptDistanceMax, "NM");
    }
    const TurnTexts t = CalculateTurnTexts(tas, bankIndex, args->rate == "3", unit, angle, dist);
    ResultPrinter out;
    out.Add("bank", t.bank, t.bankValue);
    out.Add("rate", t.rate, t.rateValue);
    out.Add("radius", t.radius, t.radiusValue);
    out.Add("g_load", t.gLoad, t.gLoadValue);
    if (angle) {
      out.Add("anticipation", t.anticipation, t.anticipationValue);
      out.Add("final_distance", t.finalDistance, t.finalDistanceValue);
    }
    ExitStatus() = out.Print();
  });
}

struct HoldingArgs {
  std::string outbound, track;
  bool left = false;
};

void RegisterHolding(CLI::App& app) {
  auto args = std::make_shared<HoldingArgs>();
  CLI::App* holding = app.add_subcommand(
      "holding", "Holding entry sectors as ranges of the track to the fix (clockwise, both ends inclusive).\n"
                 "Prints direct teardrop parallel, then entry (the applicable entries) when --track is given.");
  holding->fallthrough();
  holding->add_option("--outbound", args->outbound, "Holding outbound course, degrees, whole number 0 to 360")
      ->type_name("DEG")
      ->required();
  holding->add_flag("--left", args->left, "Left-hand pattern (default right-hand)");
  CLI::Option* track = holding->add_option(
      "--track", args->track, "The aircraft's track to the fix, degrees, whole number 0 to 360")
      ->type_name("DEG");
  holding->callback([args, track] {
    const int outbound = WholeNumber("--outbound", args->outbound, kHoldingCourseMin, kHoldingCourseMax, "degrees");
    const bool right = !args->left;
    const EntrySectors limits = ComputeEntrySectors(outbound, right);
    // Rows are direct, teardrop, parallel for a right-hand pattern and direct, parallel,
    // teardrop for a left-hand one.
    const int teardrop = right ? 1 : 2, parallel = right ? 2 : 1;
    ResultPrinter out;
    out.Add("direct", EntryLimitsText(limits, 0));
    out.Add("teardrop", EntryLimitsText(limits, teardrop));
    out.Add("parallel", EntryLimitsText(limits, parallel));
    if (*track) {
      const int x = WholeNumber("--track", args->track, kHoldingCourseMin, kHoldingCourseMax, "degrees");
      out.Add("entry", EntryNamesText(MarkEntrySector(x, limits), right));
    }
    ExitStatus() = out.Print();
  });
}

struct RacetrackArgs {
  std::string course, tas, wind, leg = "1", maxBank = "25", rate = "3";
  bool left = false;
};

void RegisterRacetrack(CLI::App& app) {
  auto args = std::make_shared<RacetrackArgs>();
  CLI::App* cmd = app.add_subcommand(
      "racetrack", "Headings and outbound time of a holding pattern in wind: the outbound heading and time that "
                   "roll out on the inbound course one inbound leg before the fix.\n"
                   "Prints inbound_heading inbound_gs outbound_heading outbound_correction outbound_time "
                   "outbound_gs bank rate radius pattern_time length width (times m:ss, seconds with --raw; "
                   "radius, length and width in NM).");
  cmd->fallthrough();
  cmd->add_option("--course", args->course, "Inbound course, degrees, whole number 0 to 360")
      ->type_name("DEG")
      ->required();
  cmd->add_option("--tas", args->tas, "True air speed, kt, whole number 50 to 600")->type_name("KT")->required();
  cmd->add_option("--wind", args->wind,
                  "Wind as direction it blows from / speed, whole degrees 0 to 360 / whole kt 0 to 150, e.g. 270/25")
      ->type_name("DIR/SPEED")
      ->required();
  cmd->add_flag("--left", args->left, "Left turns (default right)");
  cmd->add_option("--max-bank", args->maxBank, "Maximum bank, degrees: 20, 25, 30 or ul (unlimited); default 25")
      ->type_name("DEG")
      ->check(CLI::IsMember({"20", "25", "30", "ul"}));
  cmd->add_option("--rate", args->rate, "Turn rate, deg/s: 1.5 (half standard) or 3 (standard); default 3")
      ->type_name("DEG/S")
      ->check(CLI::IsMember({"1.5", "3"}));
  cmd->add_option("--leg", args->leg, "Inbound leg, minutes, 0.5 to 5.0; default 1")->type_name("MIN");
  cmd->callback([args] {
    RacetrackInput in;
    in.course = WholeNumber("--course", args->course, kWindAngleMin, kWindAngleMax, "degrees");
    in.tas = WholeNumber("--tas", args->tas, kRacetrackTasMin, kRacetrackTasMax, "kt");
    const size_t slash = args->wind.find('/');
    if (slash == std::string::npos)
      throw UsageError("--wind: expected DIR/SPEED, got \"" + args->wind + "\"");
    in.windDirection = WholeNumber("--wind", args->wind.substr(0, slash), kWindAngleMin, kWindAngleMax, "degrees");
    in.windSpeed = WholeNumber("--wind", args->wind.substr(slash + 1), kWindSpeedMin, kWindSpeedMax, "kt");
    in.legMinutes = Number("--leg", args->leg, kRacetrackLegMin, kRacetrackLegMax, "min");
    in.right = !args->left;
    in.maxBankIndex = args->maxBank == "20"   ? 0
                      : args->maxBank == "25" ? 1
                      : args->maxBank == "30" ? 2
                                              : kMaxBankUnlimited;
    in.standardRate = args->rate == "3";
    const RacetrackResult r = ComputeRacetrack(in);
    static const char* const keys[kRacetrackResults] = {
        "inbound_heading", "inbound_gs", "outbound_heading", "outbound_correction", "outbound_time", "outbound_gs",
        "bank",            "rate",       "radius",           "pattern_time",        "length",        "width"};
    ResultPrinter out;
    if (!r.error.empty()) {
      out.Message(r.error);
      out.SetFailed();
    } else {
      for (int i = 0; i < kRacetrackResults; ++i) out.Add(keys[i], r.text[i], r.value[i]);
    }
    ExitStatus() = out.Print();
  });
}

}  // namespace

void RegisterManoeuvreCommands(CLI::App& app) {
  RegisterWind(app);
  RegisterTurn(app);
  RegisterHolding(app);
  RegisterRacetrack(app);
}

}  // namespace norvane::cli
