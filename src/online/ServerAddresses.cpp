#include "online/ServerAddresses.hpp"

#include <cstdlib>

namespace norvane {

namespace {

std::string FromEnvironment(const char* variable, const char* fallback) {
  std::string url;
  if (const char* value = std::getenv(variable)) url = value;
  const auto first = url.find_first_not_of(" \t");
  url = first == std::string::npos ? std::string() : url.substr(first, url.find_last_not_of(" \t") - first + 1);
  if (url.empty()) url = fallback;
  while (!url.empty() && url.back() == '/') url.pop_back();
  return url;
}

}  // namespace

std::string WeatherBaseUrl() { return FromEnvironment(kWeatherUrlVariable, kDefaultWeatherUrl); }
std::string UpdateBaseUrl() { return FromEnvironment(kUpdateUrlVariable, kDefaultUpdateUrl); }

}  // namespace norvane
