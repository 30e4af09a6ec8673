#pragma once
// Fetching a station file from the weather server (NORVANE_WEATHER_URL or NOAA's tgftp).

#include <cstdint>
#include <string>

#include "weather/WeatherReport.hpp"

namespace norvane {

// A station file is a few hundred bytes; anything beyond this is not one.
inline constexpr int64_t kWeatherReplyLimit = 64 * 1024;

// The address of the station file of `code` on the weather server in use.
std::string StationFileUrl(const std::string& code, WeatherKind kind);

// Turns the outcome of ReadUrl into what the screen shows, judged against today's year.
WeatherResult WeatherFromReply(int16_t code, const std::string& reply);

// Fetches and reads the station file (blocks, serving the event loop).
WeatherResult FetchWeather(const std::string& code, WeatherKind kind);

}  // namespace norvane
