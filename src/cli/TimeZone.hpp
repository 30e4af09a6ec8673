#pragma once
// Time zones by their IANA names, resolved from the system's tz database at the edge: the sun
// model itself takes only an offset in minutes.

#include <optional>
#include <string>

namespace norvane::cli {

// The offset from UTC of `zone` on the date (at 12:00 UTC, daylight saving included), in minutes:
// 330 for Asia/Kolkata, -150 for America/St_Johns in July. nullopt for an unknown zone.
std::optional<int> ZoneOffsetMinutes(const std::string& zone, int year, int month, int day);

}  // namespace norvane::cli
