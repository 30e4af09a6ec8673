#include "weather/WeatherClient.hpp"

#include <QDate>

#include "online/Internet.hpp"
#include "online/ServerAddresses.hpp"

namespace norvane {

std::string StationFileUrl(const std::string& code, WeatherKind kind) {
  return WeatherUrl(WeatherBaseUrl(), code, kind);
}

WeatherResult WeatherFromReply(int16_t code, const std::string& reply) {
  if (code != 0) {
    WeatherResult failed;
    failed.code = code;
    return failed;
  }
  return ParseWeatherReply(reply, QDate::currentDate().year());
}

WeatherResult FetchWeather(const std::string& code, WeatherKind kind) {
  std::string reply;
  int16_t err = 0;
  ReadUrl(StationFileUrl(code, kind), reply, err, kWeatherReplyLimit);
  return WeatherFromReply(err, reply);
}

}  // namespace norvane
