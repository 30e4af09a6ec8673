#include "weather/WeatherReport.hpp"

#include "app/TextLines.hpp"
#include "online/NetTexts.hpp"
#include "online/ServerText.hpp"

namespace norvane {

bool IsIcaoCode(std::string_view code) {
  if (code.size() != 4) return false;
  for (char c : code)
    if (c < 'A' || c > 'Z') return false;
  return true;
}

std::string WeatherUrl(std::string_view base, std::string_view code, WeatherKind kind) {
  std::string url(base);
  url += kind == WeatherKind::Metar ? "/observations/metar/stations/" : "/forecasts/taf/stations/";
  url += code;
  url += ".TXT";
  return url;
}

WeatherResult ParseWeatherReply(std::string_view bytes, int currentYear) {
  WeatherResult result;
  const std::string text = SafeServerText(bytes);
  const std::string_view reply = text;
  if (reply.substr(0, 4) != std::to_string(currentYear)) {
    result.code = kNetNoWeatherData;
    return result;
  }
  bool first = true;
  for (const std::string_view line : Lines(reply)) {
    if (first) {
      result.recorded = std::string(line);
      first = false;
    } else {
      const size_t lead = line.find_first_not_of(' ');
      if (lead != std::string_view::npos) {
        if (!result.report.empty()) result.report += '\n';
        result.report += line.substr(lead, line.find_last_not_of(' ') + 1 - lead);
      }
    }
  }
  return result;
}

std::string WeatherErrorText(int code) {
  if (code == kNetNoWeatherData) return "Unable to get weather data\r\n(unknown location or no available weather data)";
  return NetErrorText(code);
}

std::string RecordedText(const WeatherResult& result) { return "Recorded: " + result.recorded; }

}  // namespace norvane
