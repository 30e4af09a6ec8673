#include "weather/MetarText.hpp"

#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "app/TextFormat.hpp"

namespace norvane {

namespace {

std::string Grouped(long long v) {  // 1400 -> "1,400"
  std::string digits = std::to_string(v < 0 ? -v : v);
  for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3) digits.insert(static_cast<size_t>(at), ",");
  return (v < 0 ? "-" : "") + digits;
}

std::string Two(int v) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d", v % 100);
  return buf;
}

std::string Degrees(int v) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%03d", v % 1000);
  return std::string(buf) + "\u00B0";
}

std::string Clock(const DayTime& t) { return Two(t.hour) + ":" + Two(t.minute); }
std::string DayClock(const DayTime& t) { return "day " + std::to_string(t.day) + " " + Clock(t); }

std::string Capital(std::string s) {
  if (!s.empty() && s[0] >= 'a' && s[0] <= 'z') s[0] = static_cast<char>(s[0] - 'a' + 'A');
  return s;
}

std::string Speed(int v, const std::string& unit) {
  if (unit == "KT") return std::to_string(v) + " kt";
  return std::to_string(v) + (unit == "MPS" ? " m/s (" : " km/h (") + FormatMask(WindKnots(v, unit), "0") + " kt)";
}

std::string WindText(const WindGroup& w) {
  if (!w.speed && !w.direction && !w.variable) return "Wind not reported";
  if (w.speed && *w.speed == 0 && !w.gust) return "Wind calm";
  std::string s = "Wind ";
  s += w.variable ? "variable" : w.direction ? Degrees(*w.direction) : "direction not reported";
  if (w.speed)
    s += std::string(" at ") + (w.above ? "more than " : "") + Speed(*w.speed, w.unit);
  else
    s += ", speed not reported";
  if (w.gust) s += ", gusts " + Speed(*w.gust, w.unit);
  if (w.from && w.to) s += ", varying between " + Degrees(*w.from) + " and " + Degrees(*w.to);
  return s;
}

std::string DirectionName(const std::string& d) {
  static const std::pair<const char*, const char*> names[] = {
      {"N", "north"}, {"NE", "northeast"}, {"E", "east"}, {"SE", "southeast"},
      {"S", "south"}, {"SW", "southwest"}, {"W", "west"}, {"NW", "northwest"}};
  for (const auto& [code, name] : names)
    if (d == code) return name;
  return d;
}

std::string MilesText(double miles) {  // 1.5 -> "1 1/2", 0.25 -> "1/4", 10 -> "10"
  const int whole = static_cast<int>(miles);
  const double part = miles - whole;
  if (part < 1e-9) return std::to_string(whole);
  for (int d : {2, 4, 8, 16}) {
    const double n = part * d;
    if (std::fabs(n - std::round(n)) < 1e-9) {
      const std::string f = std::to_string(static_cast<int>(std::round(n))) + "/" + std::to_string(d);
      return whole ? std::to_string(whole) + " " + f : f;
    }
  }
  return FormatMask(miles, "0.0##");
}

std::string VisibilityText(const VisibilityGroup& v, bool minimum) {
  std::string s = minimum ? "Minimum visibility " : "Visibility ";
  if (!v.metres) return s + "not reported";
  const char* bound = v.bound == 'P' ? "more than " : v.bound == 'M' ? "less than " : "";
  if (v.statuteMiles) {
    s += bound + MilesText(v.miles) + " SM (" + FormatMask(*v.metres / 1000, "0.0") + " km)";
  } else if (*v.metres >= 9999) {
    s += "10 km or more";
  } else if (*v.metres == 0) {
    s += "less than 50 m";
  } else if (*v.metres >= 5000 && static_cast<int>(*v.metres) % 1000 == 0) {
    s += std::to_string(static_cast<int>(*v.metres) / 1000) + " km";
  } else {
    s += Grouped(static_cast<int>(*v.metres)) + " m";
  }
  if (!v.direction.empty()) s += " towards the " + DirectionName(v.direction);
  if (v.ndv) s += " (no directional variation)";
  return s;
}

std::string RvrText(const RunwayRange& r) {
  const char* unit = r.feet ? " ft" : " m";
  auto value = [unit](int v, char bound) {
    return std::string(bound == 'P' ? "more than " : bound == 'M' ? "less than " : "") + Grouped(v) + unit;
  };
  std::string s = "Runway " + r.runway + " visual range " + value(r.value, r.bound);
  if (r.valueTo) s += " to " + value(r.valueTo, r.boundTo);
  if (r.tendency == 'U') s += ", increasing";
  if (r.tendency == 'D') s += ", decreasing";
  if (r.tendency == 'N') s += ", no distinct change";
  return s;
}

// The descriptors written before the phenomena ("FZRA" -> "freezing rain").
constexpr std::pair<std::string_view, const char*> kDescriptorWords[] = {
    {"FZ", "freezing "}, {"MI", "shallow "},      {"BC", "patches of "},
    {"PR", "partial "},  {"DR", "low drifting "}, {"BL", "blowing "},
};

// "-SHRA" -> "light rain showers", "+TSRA" -> "heavy thunderstorm with rain", "VCFG" -> "fog in the
// vicinity", "+FC" -> "tornado or waterspout".
std::string WeatherWords(std::string_view code) {
  if (code == "NSW") return "no significant weather";
  if (code == "//") return "present weather not observed";
  const auto p = ReadPresentWeather(code);
  if (!p) return std::string(code);
  std::string phen;
  for (std::string_view c : p->phenomena) {
    if (!phen.empty()) phen += " and ";
    if (c == "FC" && p->intensity == "+")
      phen += "tornado or waterspout";
    else
      phen += PhenomenonName(c);
  }
  std::string s = phen;
  const std::string_view d = p->descriptor;
  if (d == "SH")
    s = phen.empty() ? "showers" : phen + " showers";
  else if (d == "TS")
    s = phen.empty() ? "thunderstorm" : "thunderstorm with " + phen;
  else
    for (const auto& [descriptor, words] : kDescriptorWords)
      if (d == descriptor) s = words + phen;
  if (p->intensity == "-") s = "light " + s;
  if (p->intensity == "+" && !(phen == "tornado or waterspout" && d.empty())) s = "heavy " + s;
  if (p->intensity == "VC") s += " in the vicinity";
  return s;
}

std::string CloudText(const CloudLayer& c) {
  const char* type = c.type == "CB" ? " (cumulonimbus)" : c.type == "TCU" ? " (towering cumulus)" : "";
  auto height = [&c] {
    if (!c.heightFt) return std::string(", height not reported");
    if (*c.heightFt == 0) return std::string(" below 100 ft");
    return " at " + Grouped(*c.heightFt) + " ft";
  };
  if (c.cover == "VV")
    return c.heightFt ? "Sky obscured, vertical visibility " + Grouped(*c.heightFt) + " ft"
                      : "Sky obscured, vertical visibility not reported";
  if (c.cover.empty()) {
    if (c.type == "CB") return "Cumulonimbus, cover and height not reported";
    if (c.type == "TCU") return "Towering cumulus, cover and height not reported";
    return "Clouds, cover and height not reported";
  }
  const std::string name = c.cover == "FEW"   ? "Few clouds"
                           : c.cover == "SCT" ? "Scattered clouds"
                           : c.cover == "BKN" ? "Broken clouds"
                                              : "Overcast";
  return name + height() + type;
}

std::string SkyText(const std::string& code) {
  if (code == "NSC") return "No significant cloud";
  if (code == "NCD") return "No cloud detected";
  if (code == "SKC") return "Sky clear";
  return "No cloud below 12,000 ft";  // CLR of an automatic station
}

std::vector<std::string> SectionTexts(const WeatherSection& sec) {
  std::vector<std::string> out;
  if (sec.wind) out.push_back(WindText(*sec.wind));
  if (sec.cavok) out.push_back("Visibility 10 km or more, no cloud below 5,000 ft, no significant weather (CAVOK)");
  if (sec.visibility) out.push_back(VisibilityText(*sec.visibility, false));
  if (sec.minimumVisibility) out.push_back(VisibilityText(*sec.minimumVisibility, true));
  for (const RunwayRange& r : sec.rvr) out.push_back(RvrText(r));
  for (const std::string& w : sec.weather) out.push_back(Capital(WeatherWords(w)));
  for (const CloudLayer& c : sec.clouds) out.push_back(CloudText(c));
  if (!sec.skyCode.empty()) out.push_back(SkyText(sec.skyCode));
  return out;
}

void AddSection(std::vector<DecodedLine>& lines, const WeatherSection& sec) {
  const std::vector<std::string> texts = SectionTexts(sec);
  // Keys follow the same order as SectionTexts.
  std::vector<std::string> keys;
  if (sec.wind) keys.emplace_back("wind");
  if (sec.cavok) keys.emplace_back("visibility");
  if (sec.visibility) keys.emplace_back("visibility");
  if (sec.minimumVisibility) keys.emplace_back("minimum_visibility");
  keys.insert(keys.end(), sec.rvr.size(), "rvr");
  keys.insert(keys.end(), sec.weather.size(), "weather");
  keys.insert(keys.end(), sec.clouds.size(), "clouds");
  if (!sec.skyCode.empty()) keys.emplace_back("clouds");
  for (size_t k = 0; k < texts.size(); ++k) lines.push_back({keys[k], texts[k]});
}

std::string ChangeHeading(const ChangeGroup& c, bool taf) {
  auto when = [taf](const DayTime& t) { return taf ? DayClock(t) : Clock(t); };
  std::string s;
  if (c.kind == "NOSIG") return "No significant change expected in the next 2 hours (NOSIG)";
  if (c.kind == "FM") return "From " + DayClock(*c.from) + " UTC";
  std::string kind = c.kind;
  if (const auto probability = ChangeProbability(kind)) {
    s = "Probability " + std::to_string(*probability) + " %";
    kind = kind.size() > 7 ? kind.substr(7) : "";
    if (!kind.empty()) s += ", ";
  }
  if (kind == "BECMG") s += s.empty() ? "Becoming" : "becoming";
  if (kind == "TEMPO") s += s.empty() ? "Temporarily" : "temporarily";
  if (c.from && c.to && taf)
    s += " between " + when(*c.from) + " and " + when(*c.to) + " UTC";
  else {
    if (c.from) s += " from " + when(*c.from);
    if (c.to) s += std::string(c.from ? " to " : " until ") + when(*c.to);
    if (c.at) s += " at " + when(*c.at);
    if (c.from || c.to || c.at) s += " UTC";
  }
  return s;
}

}  // namespace

std::vector<DecodedLine> DescribeReport(const DecodedReport& r, std::optional<double> elevationFt) {
  std::vector<DecodedLine> lines;
  const bool taf = r.type == DecodedReport::Type::Taf;
  std::string kind = taf                                    ? "Aerodrome forecast (TAF)"
                     : r.type == DecodedReport::Type::Speci ? "Special report (SPECI)"
                                                            : "Routine report (METAR)";
  if (r.amended) kind += ", amended";
  if (r.corrected) kind += ", corrected";
  if (r.automatic) kind += ", automatic station";
  if (!r.station.empty()) kind += " for " + r.station;
  lines.push_back({"report", kind});
  if (r.time)
    lines.push_back({"time", std::string(taf ? "Issued" : "Observed") + " on day " + std::to_string(r.time->day) +
                                 " at " + Clock(*r.time) + " UTC"});
  if (r.validFrom && r.validTo)
    lines.push_back({"validity", "Valid from " + DayClock(*r.validFrom) + " to " + DayClock(*r.validTo) + " UTC"});
  if (r.nil) lines.push_back({"report", "Missing report (NIL)"});
  if (r.cancelled) lines.push_back({"report", "Forecast cancelled (CNL)"});
  AddSection(lines, r.section);
  if (r.temperatureGiven) {
    std::string s = "Temperature ";
    s += r.temperature ? std::to_string(*r.temperature) + " \u00B0C" : "not reported";
    s += ", dew point ";
    s += r.dewPoint ? std::to_string(*r.dewPoint) + " \u00B0C" : "not reported";
    if (r.temperature && r.dewPoint)
      s += ", relative humidity " + FormatMask(RelativeHumidity(*r.temperature, *r.dewPoint), "0") + " %";
    lines.push_back({"temperature", s});
  }
  for (const TemperatureForecast& t : r.temperatures)
    lines.push_back({"temperature", std::string(t.maximum ? "Maximum" : "Minimum") + " temperature " +
                                        std::to_string(t.celsius) + " \u00B0C on day " + std::to_string(t.time.day) +
                                        " at " + Clock(t.time) + " UTC"});
  if (r.qnhGiven) {
    std::string s = "QNH ";
    if (r.qnhInHg)
      s += FormatFixed(*r.qnhInHg, 2) + " inHg (" + FormatMask(*r.qnhInHg * kHpaPerInHg, "0") + " hPa)";
    else if (r.qnhHpa)
      s += FormatMask(*r.qnhHpa, "0") + " hPa (" + FormatFixed(*r.qnhHpa / kHpaPerInHg, 2) + " inHg)";
    else
      s += "not reported";
    lines.push_back({"qnh", s});
  }
  if (const auto da = ReportDensityAltitude(r, elevationFt)) {
    lines.push_back({"density_altitude", "Density altitude " + Grouped(std::llround(da->feet)) + " ft at elevation " +
                                             Grouped(std::llround(*elevationFt)) + " ft (station pressure " +
                                             da->stationPressure + " hPa)"});
  } else if (elevationFt && r.temperature && r.dewPoint && r.qnhHpa && !taf) {
    lines.push_back({"density_altitude", "Density altitude not computed: values outside the calculator's ranges"});
  }
  for (const std::string& w : r.recentWeather) lines.push_back({"recent_weather", "Recent " + WeatherWords(w)});
  for (const std::string& rwy : r.windShear)
    lines.push_back({"wind_shear", rwy == "ALL" ? "Wind shear on all runways" : "Wind shear on runway " + rwy});
  for (const ChangeGroup& c : r.changes) {
    std::string s = ChangeHeading(c, taf);
    const std::vector<std::string> texts = SectionTexts(c.section);
    for (size_t k = 0; k < texts.size(); ++k) s += (k == 0 ? ": " : "; ") + texts[k];
    lines.push_back({taf ? "change" : "trend", s});
  }
  if (!r.remarks.empty()) lines.push_back({"remarks", "Remarks: " + r.remarks});
  for (const std::string& u : r.undecoded) lines.push_back({"undecoded", "Not decoded: " + u});
  return lines;
}

}  // namespace norvane
