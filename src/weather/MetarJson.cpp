#include "weather/MetarJson.hpp"

#include <cmath>
#include <cstdio>

#include "app/TextFormat.hpp"

namespace norvane {

namespace {

std::string Quote(std::string_view s) {
  std::string out = "\"";
  for (unsigned char c : s) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20 || c == 0x7f) {  // bytes from 0x80 on pass: the text is UTF-8
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

std::string Num(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.10g", v);
  return buf;
}

template <class T>
std::string OrNull(const std::optional<T>& v) {
  return v ? Num(static_cast<double>(*v)) : "null";
}

std::optional<double> Knots(std::optional<int> v, const std::string& unit) {
  if (!v) return std::nullopt;
  return std::round(WindKnots(*v, unit));
}

std::string Two(int v) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d", v % 100);
  return buf;
}

std::string DayTimeJson(const std::optional<DayTime>& t) {
  if (!t) return "null";
  return "\"" + (t->day ? Two(t->day) : std::string()) + Two(t->hour) + Two(t->minute) + "\"";
}

std::string SectionJson(const WeatherSection& sec) {
  std::string j;
  const WindGroup* w = sec.wind ? &*sec.wind : nullptr;
  j += "\"wind_direction\":";
  j += !w ? "null" : w->variable ? "\"VRB\"" : OrNull(w->direction);
  j += ",\"wind_speed_kt\":" + (w ? OrNull(Knots(w->speed, w->unit)) : "null");
  j += ",\"gust_kt\":" + (w ? OrNull(Knots(w->gust, w->unit)) : "null");
  j += ",\"visibility_m\":";
  j += sec.cavok ? "10000" : sec.visibility ? OrNull(sec.visibility->metres) : "null";
  j += ",\"weather\":[";
  for (size_t k = 0; k < sec.weather.size(); ++k) j += (k ? "," : "") + Quote(sec.weather[k]);
  j += "],\"clouds\":[";
  for (size_t k = 0; k < sec.clouds.size(); ++k) {
    const CloudLayer& c = sec.clouds[k];
    j += std::string(k ? "," : "") + "{\"cover\":" + (c.cover.empty() ? "null" : Quote(c.cover)) +
         ",\"height_ft\":" + OrNull(c.heightFt) + ",\"type\":" + (c.type.empty() ? "null" : Quote(c.type)) + "}";
  }
  j += "]";
  return j;
}

}  // namespace

std::string ReportJson(const DecodedReport& r, std::optional<double> elevationFt) {
  const bool taf = r.type == DecodedReport::Type::Taf;
  std::string j = "{\"type\":";
  j += taf ? "\"TAF\"" : r.type == DecodedReport::Type::Speci ? "\"SPECI\"" : "\"METAR\"";
  j += ",\"station\":" + Quote(r.station) + ",\"time\":" + DayTimeJson(r.time);
  if (taf) j += ",\"valid_from\":" + DayTimeJson(r.validFrom) + ",\"valid_to\":" + DayTimeJson(r.validTo);
  j += ",\"nil\":" + std::string(r.nil ? "true" : "false") + "," + SectionJson(r.section);
  if (!taf) {
    j += ",\"temperature_c\":" + OrNull(r.temperature) + ",\"dew_point_c\":" + OrNull(r.dewPoint);
    j += ",\"relative_humidity\":";
    j += r.temperature && r.dewPoint ? FormatMask(RelativeHumidity(*r.temperature, *r.dewPoint), "0.0") : "null";
    j += ",\"qnh_hpa\":" + OrNull(r.qnhHpa);
    if (elevationFt) {
      const auto da = ReportDensityAltitude(r, elevationFt);
      j += ",\"density_altitude_ft\":" + (da ? FormatMask(da->feet, "0") : "null");
    }
  }
  j += ",\"recent_weather\":[";
  for (size_t k = 0; k < r.recentWeather.size(); ++k) j += (k ? "," : "") + Quote(r.recentWeather[k]);
  j += "],\"changes\":[";
  for (size_t k = 0; k < r.changes.size(); ++k) {
    const ChangeGroup& c = r.changes[k];
    j += std::string(k ? "," : "") + "{\"kind\":" + Quote(c.kind) + ",\"from\":" + DayTimeJson(c.from) +
         ",\"to\":" + DayTimeJson(c.to) + "," + SectionJson(c.section) + "}";
  }
  j += "],\"remarks\":" + (r.remarks.empty() ? std::string("null") : Quote(r.remarks)) + ",\"undecoded\":[";
  for (size_t k = 0; k < r.undecoded.size(); ++k) j += (k ? "," : "") + Quote(r.undecoded[k]);
  return j + "]}";
}

}  // namespace norvane
