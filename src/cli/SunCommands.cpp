#include <algorithm>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "app/Angles.hpp"
#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/TimeZone.hpp"
#include "cli/Commands.hpp"
#include "app/TextFormat.hpp"
#include "sun/SunTimes.hpp"

namespace norvane::cli {
namespace {

// The screen takes whole degrees and minutes up to 89°59' and 179°59'.
constexpr CoordinateLimits kSunLimits{kLatitudeDegrees.max + kLatitudeMinutes.max / 60.0 + 1e-9,
                                      kLongitudeDegrees.max + kLongitudeMinutes.max / 60.0 + 1e-9,
                                      "-89.983333 to 89.983333 degrees", "-179.983333 to 179.983333 degrees"};
// The twilight kinds in the order of the screen's list.
const std::vector<std::string> kTwilightOptions = {"civil", "nautical", "astronomical"};

}  // namespace

void RegisterSunCommands(CLI::App& app) {
  struct Options {
    std::string at, date, twilight = "civil", ltOffset, tz;
  };
  auto opt = std::make_shared<Options>();
  CLI::App* cmd =
      app.add_subcommand("sun",
                         "Sunrise, sunset and twilight (dawn, dusk) for one place and date.\n"
                         "Times are HH:MM in UTC, or in local time with --lt-offset. A rise before 00:00 or a set\n"
                         "after 24:00 is wrapped into the day with a notice; when the sun does not cross the\n"
                         "horizon all four times read \"None\" with \"Permanent day/night\" (exit status 1).\n"
                         "With --raw, times are minutes after 00:00 of the shown day.");
  Describer d(cmd, {"sunrise", "sunset", "dawn", "dusk", "message"});
  d.text("--at", opt->at, "coordinates", true,
         "Position LAT,LON in signed decimal degrees, north and east positive, or as N51 28,W000 27 "
         "(latitude -89.983333 to 89.983333, i.e. up to 89°59'; longitude -179.983333 to "
         "179.983333, i.e. up to 179°59')")
      ->type_name("LAT,LON");
  d.text("--date", opt->date, "date", true, "Date YYYY-MM-DD, 1900-01-01 to 2100-12-31 (the UTC date)")
      ->type_name("DATE");
  d.choice("--twilight", opt->twilight, kTwilightOptions,
           "Twilight kind for dawn and dusk: civil (sun 6° below the horizon, default), "
           "nautical (12°) or astronomical (18°)")
      ->type_name("KIND");
  CLI::Option* offset =
      d.number("--lt-offset", opt->ltOffset, kLocalTimeOffset, false, "(default: times in UTC)")->type_name("HOURS");
  d.text("--tz", opt->tz, "text", false,
         "Local time of an IANA time zone (Asia/Kolkata, America/St_Johns), its offset on the date with daylight "
         "saving")
      ->type_name("ZONE")
      ->excludes(offset);
  cmd->callback([opt] {
    const LatLon pos = ParseLatLon("--at", opt->at, kSunLimits);
    const Date date = ParseDate("--date", opt->date);

    SunQuery q;
    q.latitudeDeg = pos.lat;
    q.longitudeDeg = pos.lon;
    q.day = static_cast<int16_t>(date.day);
    q.month = static_cast<int16_t>(date.month);
    q.year = static_cast<int16_t>(date.year);
    q.twilightIndex = static_cast<int>(std::find(kTwilightOptions.begin(), kTwilightOptions.end(), opt->twilight) -
                                       kTwilightOptions.begin());
    if (!opt->ltOffset.empty()) {
      q.localTime = true;
      q.ltOffsetMinutes = 60 * static_cast<int>(ReadQuantity("--lt-offset", opt->ltOffset, kLocalTimeOffset));
    }
    if (!opt->tz.empty()) {
      const std::optional<int> offset = ZoneOffsetMinutes(opt->tz, date.year, date.month, date.day);
      if (!offset)
        throw UsageError("--tz: unknown time zone \"" + opt->tz +
                         "\" (an IANA name such as Europe/London or Asia/Kolkata)");
      q.localTime = true;
      q.ltOffsetMinutes = *offset;
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
