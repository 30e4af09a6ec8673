#pragma once
// The addresses of the outside servers, in one place. Each can be replaced by an environment
// variable, so that a mirror (or a test server on 127.0.0.1) takes the place of the real one.

#include <string>

namespace norvane {

// NOAA's tgftp server keeps one text file per station under this base: METAR reports in
// /observations/metar/stations/CODE.TXT and TAF forecasts in /forecasts/taf/stations/CODE.TXT.
inline constexpr const char* kDefaultWeatherUrl = "https://tgftp.nws.noaa.gov/data";
// Folder holding NorvaneVerInfo.txt, Norvane.new, Norvane.manifest and Norvane.manifest.sig.
inline constexpr const char* kDefaultUpdateUrl = "https://norvane.org/update";

inline constexpr const char* kWeatherUrlVariable = "NORVANE_WEATHER_URL";
inline constexpr const char* kUpdateUrlVariable = "NORVANE_UPDATE_URL";

// The base address in use: the variable's value when it is set and not blank, else the default;
// without a trailing "/".
std::string WeatherBaseUrl();
std::string UpdateBaseUrl();

}  // namespace norvane
