// Time zones in the page: the browser's own tz database (Intl) replaces QTimeZone (TimeZone.cpp),
// with the same rule: the offset at 12:00 UTC of the date, daylight saving included.
#include <emscripten/emscripten.h>

#include "cli/TimeZone.hpp"

namespace {
constexpr int kUnknownZone = -100000;
}  // namespace

// Minutes east of UTC of `zone` at 12:00 UTC of the date, or kUnknownZone.
EM_JS(int, norvane_zone_offset, (const char* zone, int year, int month, int day), {
  try {
    const noon = Date.UTC(year, month - 1, day, 12);
    const format = new Intl.DateTimeFormat('en-US', {
      timeZone : UTF8ToString(zone),
      hourCycle : 'h23',
      year : 'numeric',
      month : 'numeric',
      day : 'numeric',
      hour : 'numeric',
      minute : 'numeric'
    });
    const at = {};
    for (const part of format.formatToParts(new Date(noon))) at[part.type] = Number(part.value);
    return Math.round((Date.UTC(at.year, at.month - 1, at.day, at.hour, at.minute) - noon) / 60000);
  } catch (e) {
    return -100000;
  }
});

namespace norvane::cli {

std::optional<int> ZoneOffsetMinutes(const std::string& zone, int year, int month, int day) {
  const int minutes = norvane_zone_offset(zone.c_str(), year, month, day);
  if (minutes == kUnknownZone) return std::nullopt;
  return minutes;
}

}  // namespace norvane::cli
