// norvane-cli wind, turn, holding and racetrack: the wind, turn parameters, holding entry and
// racetrack screens.
#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "manoeuvres/Holding.hpp"
#include "manoeuvres/Racetrack.hpp"
#include "manoeuvres/Turn.hpp"
#include "manoeuvres/Wind.hpp"

namespace norvane::cli {
namespace {

// Prints the results under `keys`, or the screen's error text with the failed status.
template <class Texts, class Values>
int PrintResults(const std::string& error, const std::vector<std::string>& keys, const Texts& text,
                 const Values& value) {
  ResultPrinter out;
  if (!error.empty()) {
    out.Fail(error);
  } else {
    for (size_t i = 0; i < keys.size(); ++i) out.Add(keys[i], text[i], value[i]);
  }
  return out.Print();
}

struct WindArgs {
  std::string tas, gs, track, heading, windSpeed, windDir, runway;
};

// One wind mode: its subcommand with its whole-number options (in the screen's box order), read
// in that order and handed to `texts`, whose results print under `keys`.
struct WindOption {
  const char* name;
  std::string WindArgs::*value;
  const Quantity* quantity;
};
template <class Texts>
void AddWindMode(CLI::App* wind, const std::shared_ptr<WindArgs>& args, const char* name, const char* summary,
                 const std::vector<std::string>& keys, std::vector<WindOption> options, Texts texts) {
  CLI::App* mode = wind->add_subcommand(name, summary);
  mode->fallthrough();
  Describer d(mode, keys);
  for (const WindOption& o : options)
    d.number(o.name, (*args).*o.value, *o.quantity, true)->type_name(o.quantity->unit == "kts" ? "KT" : "DEG");
  mode->callback([args, keys, options, texts] {
    std::vector<double> v;
    for (const WindOption& o : options) v.push_back(ReadQuantity(o.name, (*args).*o.value, *o.quantity));
    const WindTexts t = texts(v);
    ExitStatus() = PrintResults(t.message, keys, t.text, t.value);
  });
}

void RegisterWind(CLI::App& app) {
  CLI::App* wind = app.add_subcommand("wind",
                                      "Wind triangle and runway wind (speeds in kt, angles in whole "
                                      "degrees, tracks, headings and wind directions all true or all "
                                      "magnetic; head wind negative, right positive)");
  wind->require_subcommand(1);
  wind->fallthrough();
  auto args = std::make_shared<WindArgs>();
  const WindOption tas{"--tas", &WindArgs::tas, &kWindTas}, track{"--track", &WindArgs::track, &kWindTrack},
      windSpeed{"--wind-speed", &WindArgs::windSpeed, &kWindSpeed},
      windDir{"--wind-dir", &WindArgs::windDir, &kWindDirection};
  AddWindMode(wind, args, "known",
              "Heading and ground speed to fly a track in a known wind.\nPrints ground_speed heading wca head_tail.",
              {"ground_speed", "heading", "wca", "head_tail"}, {tas, track, windSpeed, windDir},
              [](const std::vector<double>& v) { return KnownWindTexts(v[0], v[1], v[2], v[3]); });
  AddWindMode(
      wind, args, "unknown",
      "Wind from the flown heading and TAS and the measured track and ground speed.\n"
      "Prints wind_speed wind_direction wca head_tail.",
      {"wind_speed", "wind_direction", "wca", "head_tail"},
      {tas, {"--gs", &WindArgs::gs, &kWindGroundSpeed}, track, {"--heading", &WindArgs::heading, &kWindHeading}},
      [](const std::vector<double>& v) { return UnknownWindTexts(v[0], v[1], v[2], v[3]); });
  AddWindMode(wind, args, "runway", "Crosswind and head/tail wind on a runway.\nPrints crosswind head_tail.",
              {"crosswind", "head_tail"}, {{"--runway", &WindArgs::runway, &kRunwayHeading}, windSpeed, windDir},
              [](const std::vector<double>& v) { return RunwayWindTexts(v[0], v[1], v[2]); });
}

// --max-bank and --rate, shared by turn and racetrack; `maxBank` holds the default.
void AddBankAndRate(Describer& d, std::string& maxBank, std::string& rate) {
  d.choice("--max-bank", maxBank, {"20", "25", "30", "ul"},
           "Maximum bank, degrees: 20, 25, 30 or ul (unlimited); default " + maxBank)
      ->type_name("DEG");
  d.choice("--rate", rate, {"1.5", "3"}, "Turn rate, deg/s: 1.5 (half standard) or 3 (standard); default 3")
      ->type_name("DEG/S");
}
// The chosen maximum bank in degrees ("ul", not a number, is no limit) and the rate in deg/s.
std::optional<double> MaxBank(const std::string& choice) { return ParseNumber(choice); }
double Rate(const std::string& choice) { return ParseNumber(choice).value_or(3); }

struct TurnArgs {
  std::string tas, intercept, distance;
  std::string maxBank = "30", rate = "3", radiusUnit = "nm";
};

void RegisterTurn(CLI::App& app) {
  auto args = std::make_shared<TurnArgs>();
  CLI::App* turn =
      app.add_subcommand("turn",
                         "Rate turn: effective bank, rate, radius and load factor, and the turn anticipation for "
                         "intercepting a radial.\nPrints bank rate radius g_load, then anticipation final_distance "
                         "when --intercept and --distance are given (\"NA\": the turn cannot be completed inside the "
                         "distance; \"past\": it ends beyond the station).");
  turn->fallthrough();
  Describer d(turn, {"bank", "rate", "radius", "g_load", "anticipation", "final_distance"});
  d.number("--tas", args->tas, kTurnTas, true)->type_name("KT");
  AddBankAndRate(d, args->maxBank, args->rate);
  CLI::Option* intercept =
      d.number("--intercept", args->intercept, kInterceptAngle, false, "(needs --distance)")->type_name("DEG");
  CLI::Option* distance =
      d.number("--distance", args->distance, kInterceptDistance, false, "(needs --intercept)")->type_name("NM");
  intercept->needs(distance);
  distance->needs(intercept);
  d.choice("--radius-unit", args->radiusUnit, {"nm", "m", "ft"}, "Unit of the radius: nm, m or ft; default nm")
      ->type_name("UNIT");
  turn->callback([args, intercept, distance] {
    const double tas = ReadQuantity("--tas", args->tas, kTurnTas);
    const RadiusUnit unit = args->radiusUnit == "m"    ? RadiusUnit::Metres
                            : args->radiusUnit == "ft" ? RadiusUnit::Feet
                                                       : RadiusUnit::NauticalMiles;
    std::optional<double> angle, dist;
    if (*intercept && *distance) {
      angle = ReadQuantity("--intercept", args->intercept, kInterceptAngle);
      dist = ReadQuantity("--distance", args->distance, kInterceptDistance);
    }
    const TurnTexts t = CalculateTurnTexts(tas, MaxBank(args->maxBank), Rate(args->rate), unit, angle, dist);
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
  CLI::App* holding =
      app.add_subcommand("holding",
                         "Holding entry sectors as ranges of the track to the fix (clockwise, both ends inclusive).\n"
                         "Prints direct teardrop parallel, then entry (the applicable entries) when --track is given.");
  holding->fallthrough();
  Describer d(holding, {"direct", "teardrop", "parallel", "entry"});
  d.number("--outbound", args->outbound, kHoldingOutbound, true)->type_name("DEG");
  d.flag("--left", args->left, "Left-hand pattern (default right-hand)");
  CLI::Option* track = d.number("--track", args->track, kHoldingTrack, false)->type_name("DEG");
  holding->callback([args, track] {
    const int outbound = static_cast<int>(ReadQuantity("--outbound", args->outbound, kHoldingOutbound));
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
      const int x = static_cast<int>(ReadQuantity("--track", args->track, kHoldingTrack));
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
  CLI::App* cmd =
      app.add_subcommand("racetrack",
                         "Headings and outbound time of a holding pattern in wind: the outbound heading and time that "
                         "roll out on the inbound course one inbound leg before the fix.\n"
                         "Prints inbound_heading inbound_gs outbound_heading outbound_correction outbound_time "
                         "outbound_gs bank rate radius pattern_time length width (times m:ss, seconds with --raw; "
                         "radius, length and width in NM).");
  cmd->fallthrough();
  const std::vector<std::string> keys{"inbound_heading",
                                      "inbound_gs",
                                      "outbound_heading",
                                      "outbound_correction",
                                      "outbound_time",
                                      "outbound_gs",
                                      "bank",
                                      "rate",
                                      "radius",
                                      "pattern_time",
                                      "length",
                                      "width"};
  Describer d(cmd, keys);
  d.number("--course", args->course, kRacetrackCourse, true)->type_name("DEG");
  d.number("--tas", args->tas, kRacetrackTas, true)->type_name("KT");
  d.text("--wind", args->wind, "text", true,
         "Wind as direction it blows from / speed, whole degrees 0 to 360 / whole kt 0 to 150, e.g. 270/25")
      ->type_name("DIR/SPEED");
  d.flag("--left", args->left, "Left turns (default right)");
  AddBankAndRate(d, args->maxBank, args->rate);
  d.number("--leg", args->leg, kRacetrackLeg, false, "(default 1)")->type_name("MIN");
  cmd->callback([args, keys] {
    RacetrackInput in;
    in.course = ReadQuantity("--course", args->course, kRacetrackCourse);
    in.tas = ReadQuantity("--tas", args->tas, kRacetrackTas);
    const size_t slash = args->wind.find('/');
    if (slash == std::string::npos) throw UsageError("--wind: expected DIR/SPEED, got \"" + args->wind + "\"");
    in.windDirection = ReadQuantity("--wind", args->wind.substr(0, slash), kRacetrackWindDirection);
    in.windSpeed = ReadQuantity("--wind", args->wind.substr(slash + 1), kWindSpeed);
    in.legMinutes = ReadQuantity("--leg", args->leg, kRacetrackLeg);
    in.right = !args->left;
    in.maxBank = MaxBank(args->maxBank);
    in.rate = Rate(args->rate);
    const RacetrackResult r = ComputeRacetrack(in);
    ExitStatus() = PrintResults(r.error, keys, r.text, r.value);
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
