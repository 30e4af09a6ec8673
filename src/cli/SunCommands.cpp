#include <cmath>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "app/TextFormat.hpp"
#include "sun/SunTimes.hpp"

namespace norvane::cli {
namespace {

// The screen takes whole degrees and minutes up to 89°59' and 179°59'.
constexpr CoordinateLimits kSunLimits{89 + 59 / 60.0 + 1e-9, 179 + 59 / 60.0 + 1e-9, "-89.983333 to 89.983333 degrees",
                                      "-179.983333 to 179.983333 degrees"};
constexpr int kMinLtOffset = -12, kMaxLtOffset = 14;

int ParseTwilight(const std::string& text) {
  for (int i = 0; const char* name : {"civil", "nautical", "astronomical"}) {
    if (text == name) return i;
    ++i;
  }
  throw UsageError("--twilight: \"" + text + "\" is not one of civil, nautical, astronomical");
}

int ParseLtOffset(const std::string& text) {
  const auto v = ParseNumber(text);
  if (!v || *v != std::floor(*v))
    throw UsageError("--lt-offset: expected whole hours from -12 to 14, got \"" + text + "\"");
  RequireRange("--lt-offset", *v, kMinLtOffset, kMaxLtOffset, "hours");
  return static_cast<int>(*v);
}

}  // namespace

void RegisterSunCommands(CLI::App& app) {
  struct Options {
    std::string at, date, twilight = "civil", ltOffset;
  };
  auto opt = std::make_shared<Options>();
  CLI::App* cmd = app.add_subcommand(
      "sun", "Sunrise, sunset and twilight (dawn, dusk) for one place and date.\n"
             "Times are HH:MM in UTC, or in local time with --lt-offset. A rise before 00:00 or a set\n"
             "after 24:00 is wrapped into the day with a notice; when the sun does not cross the\n"
             "horizon all four times read \"None\" with \"Permanent day/night\" (exit status 1).\n"
             "With --raw, times are minutes after 00:00 of the shown day.");
  cmd->add_option("--at", opt->at,
                  "Position LAT,LON in signed decimal degrees, north and east positive, or as N51 28,W000 27 "
                  "(latitude -89.983333 to 89.983333, i.e. up to 89°59'; longitude -179.983333 to "
                  "179.983333, i.e. up to 179°59')")
      ->type_name("LAT,LON")
      ->required();
  cmd->add_option("--date", opt->date, "Date YYYY-MM-DD, 1900-01-01 to 2100-12-31 (the UTC date)")
      ->type_name("DATE")
      ->required();
  cmd->add_option("--twilight", opt->twilight,
                  "Twilight kind for dawn and dusk: civil (sun 6° below the horizon, default), "
                  "nautical (12°) or astronomical (18°)")
      ->type_name("KIND");
  cmd->add_option("--lt-offset", opt->ltOffset,
                  "Show local time: offset from UTC in whole hours, -12 to 14 (default: times in UTC)")
      ->type_name("HOURS");
  cmd->callback([opt] {
    const LatLon pos = ParseLatLon("--at", opt->at, kSunLimits);
    const Date date = ParseDate("--date", opt->date);

    SunQuery q;
    q.latitudeDeg = pos.lat;
    q.longitudeDeg = pos.lon;
    q.day = static_cast<int16_t>(date.day);
    q.month = static_cast<int16_t>(date.month);
    q.year = static_cast<int16_t>(date.year);
    q.twilightIndex = ParseTwilight(opt->twilight);
    if (!opt->ltOffset.empty()) {
      q.localTime = true;
      q.ltOffsetHours = ParseLtOffset(opt->ltOffset);
    }

    const SunTexts t = CalculateSunTimes(q);
    ResultPrinter out;
    const auto raw = [&](double minutes) { return t.calculated ? std::optional<double>(minutes) : std::nullopt; };
    out.Add("sunrise", t.sunrise, raw(t.riseMinutes));
    out.Add("sunset", t.sunset, raw(t.setMinutes));
    out.Add("dawn", t.dawn, raw(t.dawnMinutes));
    out.Add("dusk", t.dusk, raw(t.duskMinutes));
    if (!t.message.empty()) out.Message(t.message);
    if (!t.calculated) out.SetFailed();
    ExitStatus() = out.Print();
  });
}

}  // namespace norvane::cli
