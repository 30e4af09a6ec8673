#pragma once
// Airport weather: the station file's address and the reading of its text. The weather
// service keeps one small text file per station: the first line is the observation or issue
// time ("2025/03/14 09:50"), the following lines the METAR report or the TAF forecast.

#include <cstdint>
#include <string>
#include <string_view>

namespace norvane {

enum class WeatherKind { Metar, Taf };

// True for exactly four letters A-Z (an ICAO location indicator as the screen accepts it).
bool IsIcaoCode(std::string_view code);

// base + "/observations/metar/stations/" or "/forecasts/taf/stations/" + code + ".TXT".
std::string WeatherUrl(std::string_view base, std::string_view code, WeatherKind kind);

struct WeatherResult {
  int16_t code = 0;      // 0 success, 1-4 as ReadUrl, 5 no station file of this year
  std::string recorded;  // the first line, as shown after "Recorded: "
  std::string report;    // lines 2 to the last without their outer blanks, joined by LF (blank lines left out)
};

// Reads a station file received with ReadUrl code 0. A file whose first four characters are not
// `currentYear` is refused with code 5: an error page, or a file the station stopped updating
// last year (the rule holds across New Year too, so a report of 31 December is refused on
// 1 January). Lines end at LF; a CR before the LF belongs to the line end. The texts are valid
// UTF-8 without control characters (SafeServerText), whatever bytes the server sent.
WeatherResult ParseWeatherReply(std::string_view bytes, int currentYear);

// What the screen's text area shows for a failure: the texts of the access layer for codes 1 to
// 4; for 5 "Unable to get weather data" CR LF "(unknown location or no available weather data)".
std::string WeatherErrorText(int code);

// The label above the report: "Recorded: " + the first line.
std::string RecordedText(const WeatherResult& result);

}  // namespace norvane
