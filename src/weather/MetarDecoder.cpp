#include "weather/MetarDecoder.hpp"

#include <algorithm>
#include <cmath>

#include "app/TextLines.hpp"
#include "app/Units.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"

namespace norvane {

namespace {

// Unit factors: 1 kt = 1852 m / 3600 s (international nautical mile); 1 statute mile = 1609.344 m.
constexpr double kKnotsPerMps = 3600.0 / kNm;
constexpr double kKnotsPerKmh = 1000.0 / kNm;
constexpr double kMetresPerMile = kStatuteMile;

using Tokens = std::vector<std::string_view>;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }

bool AllDigits(std::string_view s) { return !s.empty() && std::all_of(s.begin(), s.end(), IsDigit); }

int Number(std::string_view s) {  // s holds only digits, at most 9
  int v = 0;
  for (char c : s) v = v * 10 + (c - '0');
  return v;
}

bool StartsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

Tokens Split(std::string_view text) {
  Tokens tokens;
  size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\r' || text[i] == '\n')) ++i;
    size_t j = i;
    while (j < text.size() && text[j] != ' ' && text[j] != '\t' && text[j] != '\r' && text[j] != '\n') ++j;
    if (j > i) tokens.push_back(text.substr(i, j - i));
    i = j;
  }
  return tokens;
}

// DDHHMM, with day 1-31, hour 0-24 and minute 0-59.
std::optional<DayTime> DayHourMinute(std::string_view s) {
  if (s.size() != 6 || !AllDigits(s)) return std::nullopt;
  DayTime t{Number(s.substr(0, 2)), Number(s.substr(2, 2)), Number(s.substr(4, 2))};
  if (t.day < 1 || t.day > 31 || t.hour > 24 || t.minute > 59) return std::nullopt;
  return t;
}

// DDHH of a TAF period.
std::optional<DayTime> DayHour(std::string_view s) {
  if (s.size() != 4 || !AllDigits(s)) return std::nullopt;
  DayTime t{Number(s.substr(0, 2)), Number(s.substr(2, 2)), 0};
  if (t.day < 1 || t.day > 31 || t.hour > 24) return std::nullopt;
  return t;
}

// HHMM of a METAR trend time (FM, TL, AT).
std::optional<DayTime> HourMinute(std::string_view s) {
  if (s.size() != 4 || !AllDigits(s)) return std::nullopt;
  DayTime t{0, Number(s.substr(0, 2)), Number(s.substr(2, 2))};
  if (t.hour > 24 || t.minute > 59) return std::nullopt;
  return t;
}

// DDHH/DDHH, or the older DDHHHH (one day, two hours).
bool Period(std::string_view s, std::optional<DayTime>& from, std::optional<DayTime>& to) {
  if (s.size() == 9 && s[4] == '/') {
    auto a = DayHour(s.substr(0, 4)), b = DayHour(s.substr(5, 4));
    if (!a || !b) return false;
    from = a;
    to = b;
    return true;
  }
  if (s.size() == 6 && AllDigits(s)) {
    auto a = DayHour(s.substr(0, 4));
    const int h2 = Number(s.substr(4, 2));
    if (!a || h2 > 24) return false;
    from = a;
    to = DayTime{a->day, h2, 0};
    return true;
  }
  return false;
}

std::optional<WindGroup> Wind(std::string_view s) {
  WindGroup w;
  w.code = std::string(s);
  for (std::string_view unit : {"KT", "MPS", "KMH"})
    if (s.size() > unit.size() && s.substr(s.size() - unit.size()) == unit) {
      w.unit = std::string(unit);
      s.remove_suffix(unit.size());
      break;
    }
  if (w.unit.empty() || s.size() < 5) return std::nullopt;
  const std::string_view dir = s.substr(0, 3);
  if (dir == "VRB")
    w.variable = true;
  else if (AllDigits(dir)) {
    w.direction = Number(dir);
    if (*w.direction > 360) return std::nullopt;
  } else if (dir != "///")
    return std::nullopt;
  s.remove_prefix(3);
  const size_t g = s.find('G');
  std::string_view speed = s.substr(0, g);
  if (!speed.empty() && speed[0] == 'P') {
    w.above = true;
    speed.remove_prefix(1);
  }
  if (AllDigits(speed) && speed.size() >= 2 && speed.size() <= 3)
    w.speed = Number(speed);
  else if (speed != "//")
    return std::nullopt;
  if (g != std::string_view::npos) {
    std::string_view gust = s.substr(g + 1);
    if (!gust.empty() && gust[0] == 'P') gust.remove_prefix(1);
    if (!AllDigits(gust) || gust.size() < 2 || gust.size() > 3) return std::nullopt;
    w.gust = Number(gust);
  }
  return w;
}

bool Sector(std::string_view s, WindGroup& w) {
  if (s.size() != 7 || s[3] != 'V' || !AllDigits(s.substr(0, 3)) || !AllDigits(s.substr(4))) return false;
  w.from = Number(s.substr(0, 3));
  w.to = Number(s.substr(4));
  return *w.from <= 360 && *w.to <= 360;
}

bool IsDirection(std::string_view s) {
  for (std::string_view d : {"N", "NE", "E", "SE", "S", "SW", "W", "NW"})
    if (s == d) return true;
  return false;
}

// "1/2", "3/4", "1/16": numerator / denominator, both non-zero.
std::optional<double> Fraction(std::string_view s) {
  const size_t slash = s.find('/');
  if (slash == std::string_view::npos || slash == 0 || slash + 1 >= s.size() || s.size() > 5) return std::nullopt;
  const std::string_view n = s.substr(0, slash), d = s.substr(slash + 1);
  if (!AllDigits(n) || !AllDigits(d) || Number(d) == 0) return std::nullopt;
  return static_cast<double>(Number(n)) / Number(d);
}

// Statute miles: "10SM", "P6SM", "M1/4SM", "1/2SM"; `whole` is a preceding "1" of "1 1/2SM".
std::optional<VisibilityGroup> Miles(std::string_view s, std::string_view whole) {
  if (s.size() < 3 || s.substr(s.size() - 2) != "SM") return std::nullopt;
  VisibilityGroup v;
  v.code = whole.empty() ? std::string(s) : std::string(whole) + " " + std::string(s);
  s.remove_suffix(2);
  if (!s.empty() && (s[0] == 'P' || s[0] == 'M')) {
    v.bound = s[0];
    s.remove_prefix(1);
  }
  std::optional<double> miles;
  if (AllDigits(s) && s.size() <= 3)
    miles = Number(s);
  else
    miles = Fraction(s);
  if (!miles) return std::nullopt;
  if (!whole.empty()) {
    if (v.bound || !AllDigits(whole) || whole.size() > 2 || s.find('/') == std::string_view::npos) return std::nullopt;
    *miles += Number(whole);
  }
  v.statuteMiles = true;
  v.miles = *miles;
  v.metres = *miles * kMetresPerMile;
  return v;
}

// Metres: "0800", "9999", "9999NDV", "1500SW", "////".
std::optional<VisibilityGroup> Metres(std::string_view s) {
  if (s.size() < 4) return std::nullopt;
  VisibilityGroup v;
  v.code = std::string(s);
  const std::string_view digits = s.substr(0, 4), rest = s.substr(4);
  if (digits == "////") {
    if (!rest.empty() && rest != "NDV") return std::nullopt;
  } else {
    if (!AllDigits(digits)) return std::nullopt;
    v.metres = Number(digits);
  }
  if (rest == "NDV")
    v.ndv = true;
  else if (IsDirection(rest))
    v.direction = std::string(rest);
  else if (!rest.empty())
    return std::nullopt;
  return v;
}

// R24L/1100U, R06/P2000N, R27/0600V1000U, R28L/2400V4000FT/U, R24/M0050.
std::optional<RunwayRange> Rvr(std::string_view s) {
  const size_t slash = s.find('/');
  if (s.size() < 8 || s[0] != 'R' || slash == std::string_view::npos || slash < 3 || slash > 4) return std::nullopt;
  RunwayRange r;
  r.code = std::string(s);
  r.runway = std::string(s.substr(1, slash - 1));
  if (!AllDigits(r.runway.substr(0, 2)) ||
      (r.runway.size() == 3 && r.runway[2] != 'L' && r.runway[2] != 'C' && r.runway[2] != 'R'))
    return std::nullopt;
  std::string_view rest = s.substr(slash + 1);
  auto value = [&rest](int& v, char& bound) {
    if (!rest.empty() && (rest[0] == 'P' || rest[0] == 'M')) {
      bound = rest[0];
      rest.remove_prefix(1);
    }
    if (rest.size() < 4 || !AllDigits(rest.substr(0, 4))) return false;
    v = Number(rest.substr(0, 4));
    rest.remove_prefix(4);
    return true;
  };
  if (!value(r.value, r.bound)) return std::nullopt;
  if (!rest.empty() && rest[0] == 'V') {
    rest.remove_prefix(1);
    if (!value(r.valueTo, r.boundTo)) return std::nullopt;
  }
  if (StartsWith(rest, "FT")) {
    r.feet = true;
    rest.remove_prefix(2);
  }
  if (!rest.empty() && rest[0] == '/') rest.remove_prefix(1);
  if (rest.size() == 1 && (rest[0] == 'U' || rest[0] == 'D' || rest[0] == 'N'))
    r.tendency = rest[0];
  else if (!rest.empty())
    return std::nullopt;
  return r;
}

constexpr std::string_view kDescriptors[] = {"MI", "BC", "PR", "DR", "BL", "SH", "TS", "FZ"};
struct Phenomenon {
  std::string_view code, name;
};
constexpr Phenomenon kPhenomena[] = {{"DZ", "drizzle"},
                                     {"RA", "rain"},
                                     {"SN", "snow"},
                                     {"SG", "snow grains"},
                                     {"IC", "ice crystals"},
                                     {"PL", "ice pellets"},
                                     {"GR", "hail"},
                                     {"GS", "small hail"},
                                     {"UP", "unknown precipitation"},
                                     {"BR", "mist"},
                                     {"FG", "fog"},
                                     {"FU", "smoke"},
                                     {"VA", "volcanic ash"},
                                     {"DU", "widespread dust"},
                                     {"SA", "sand"},
                                     {"HZ", "haze"},
                                     {"PY", "spray"},
                                     {"PO", "dust whirls"},
                                     {"SQ", "squalls"},
                                     {"FC", "funnel cloud"},
                                     {"SS", "sandstorm"},
                                     {"DS", "duststorm"}};

}  // namespace

std::string_view PhenomenonName(std::string_view code) {
  for (const Phenomenon& p : kPhenomena)
    if (p.code == code) return p.name;
  return {};
}

// Intensity or VC, at most one descriptor, then phenomena; a descriptor alone stands only for
// showers or thunderstorm (VCSH, TS).
std::optional<PresentWeather> ReadPresentWeather(std::string_view s) {
  PresentWeather p;
  if (!s.empty() && (s[0] == '-' || s[0] == '+')) {
    p.intensity = s.substr(0, 1);
    s.remove_prefix(1);
  } else if (StartsWith(s, "VC")) {
    p.intensity = "VC";
    s.remove_prefix(2);
  }
  if (s.size() >= 2)
    for (std::string_view d : kDescriptors)
      if (s.substr(0, 2) == d) {
        p.descriptor = d;
        s.remove_prefix(2);
        break;
      }
  if (s.size() % 2 != 0 || s.size() > 8) return std::nullopt;
  for (size_t i = 0; i < s.size(); i += 2) {
    if (PhenomenonName(s.substr(i, 2)).empty()) return std::nullopt;
    p.phenomena.push_back(s.substr(i, 2));
  }
  if (p.phenomena.empty() && p.descriptor != "SH" && p.descriptor != "TS") return std::nullopt;
  return p;
}

namespace {

std::optional<CloudLayer> Cloud(std::string_view s) {
  CloudLayer c;
  std::string_view cover;
  for (std::string_view k : {"FEW", "SCT", "BKN", "OVC", "///"})
    if (StartsWith(s, k)) cover = k;
  if (cover.empty() && StartsWith(s, "VV")) cover = "VV";
  if (cover.empty()) return std::nullopt;
  c.cover = cover == "///" ? "" : std::string(cover);
  s.remove_prefix(cover.size());
  if (s.size() < 3) return std::nullopt;
  if (AllDigits(s.substr(0, 3)))
    c.heightFt = Number(s.substr(0, 3)) * 100;
  else if (s.substr(0, 3) != "///")
    return std::nullopt;
  s.remove_prefix(3);
  if (s == "CB" || s == "TCU")
    c.type = std::string(s);
  else if (!s.empty() && s != "///")
    return std::nullopt;
  if (c.cover == "VV" && !c.type.empty()) return std::nullopt;
  if (c.cover.empty() && c.heightFt) return std::nullopt;
  return c;
}

std::optional<int> Celsius(std::string_view s) {
  int sign = 1;
  if (!s.empty() && s[0] == 'M') {
    sign = -1;
    s.remove_prefix(1);
  }
  if (s.size() != 2 || !AllDigits(s)) return std::nullopt;
  return sign * Number(s);  // M00 (just below zero) is read as 0
}

// TT/TdTd: "12/06", "M05/M07", "12/", "//\//".
bool Temperatures(std::string_view s, DecodedReport& r) {
  const size_t slash = s.find('/');
  if (slash == std::string_view::npos || slash == 0 || s.size() > 7) return false;
  const std::string_view t = s.substr(0, slash), d = s.substr(slash + 1);
  const auto tc = Celsius(t), dc = Celsius(d);
  if (!(tc || t == "//") || !(dc || d == "//" || d.empty())) return false;
  r.temperature = tc;
  r.dewPoint = dc;
  r.temperatureGiven = true;
  return true;
}

bool Pressure(std::string_view s, DecodedReport& r) {
  if (s.size() != 5 || (s[0] != 'Q' && s[0] != 'A')) return false;
  const std::string_view v = s.substr(1);
  if (v != "////" && !AllDigits(v)) return false;
  r.qnhGiven = true;
  if (v == "////") return true;
  if (s[0] == 'Q') {
    r.qnhHpa = Number(v);
  } else {
    r.qnhInHg = Number(v) / 100.0;
    if (!r.qnhHpa) r.qnhHpa = std::round(*r.qnhInHg * kHpaPerInHg * 10) / 10;
  }
  return true;
}

// TX25/1414Z, TNM02/1406Z.
std::optional<TemperatureForecast> ForecastTemperature(std::string_view s) {
  if (s.size() < 10 || (!StartsWith(s, "TX") && !StartsWith(s, "TN")) || s.back() != 'Z') return std::nullopt;
  const size_t slash = s.find('/');
  if (slash == std::string_view::npos) return std::nullopt;
  const auto c = Celsius(s.substr(2, slash - 2));
  const auto t = DayHour(s.substr(slash + 1, s.size() - slash - 2));
  if (!c || !t) return std::nullopt;
  return TemperatureForecast{s[1] == 'X', *c, *t};
}

bool IsStation(std::string_view s) {
  return s.size() == 4 && IsUpper(s[0]) &&
         std::all_of(s.begin(), s.end(), [](char c) { return IsUpper(c) || IsDigit(c); });
}

bool IsProbability(std::string_view s) { return s.size() == 6 && StartsWith(s, "PROB") && AllDigits(s.substr(4)); }

// A token that opens a change group of a TAF or a trend of a METAR.
bool OpensChange(std::string_view s) {
  return s == "BECMG" || s == "TEMPO" || s == "NOSIG" || IsProbability(s) ||
         (s.size() == 8 && StartsWith(s, "FM") && AllDigits(s.substr(2)));
}

// Groups that describe weather, in any section.
bool SectionGroup(const Tokens& tokens, size_t& i, WeatherSection& sec) {
  const std::string_view s = tokens[i];
  if (auto w = Wind(s)) {
    sec.wind = w;
    if (i + 1 < tokens.size() && Sector(tokens[i + 1], *sec.wind)) {
      sec.wind->code += " " + std::string(tokens[i + 1]);
      ++i;
    }
    return true;
  }
  if (s == "CAVOK") {
    sec.cavok = true;
    return true;
  }
  if (i + 1 < tokens.size() && s.size() <= 2 && AllDigits(s)) {
    if (auto v = Miles(tokens[i + 1], s)) {
      sec.visibility = v;
      ++i;
      return true;
    }
  }
  if (auto v = Miles(s, {})) {
    sec.visibility = v;
    return true;
  }
  if (auto v = Metres(s)) {
    if (!sec.visibility)
      sec.visibility = v;
    else if (!v->direction.empty() && !sec.minimumVisibility)
      sec.minimumVisibility = v;
    else
      return false;
    return true;
  }
  if (auto r = Rvr(s)) {
    sec.rvr.push_back(*r);
    return true;
  }
  if (s == "NSW" || s == "//" || ReadPresentWeather(s)) {
    sec.weather.emplace_back(s);
    return true;
  }
  if (s == "NSC" || s == "NCD" || s == "SKC" || s == "CLR") {
    sec.skyCode = std::string(s);
    return true;
  }
  if (auto c = Cloud(s)) {
    sec.clouds.push_back(*c);
    return true;
  }
  return false;
}

// The period after BECMG/TEMPO/PROB: DDHH/DDHH in a TAF, FMhhmm TLhhmm AThhmm in a METAR trend.
void ChangePeriod(const Tokens& tokens, size_t& i, ChangeGroup& c) {
  while (i + 1 < tokens.size()) {
    const std::string_view s = tokens[i + 1];
    std::optional<DayTime> from, to;
    if (Period(s, from, to) && !c.from) {
      c.from = from;
      c.to = to;
    } else if (s.size() == 6 && (StartsWith(s, "FM") || StartsWith(s, "TL") || StartsWith(s, "AT")) &&
               HourMinute(s.substr(2))) {
      auto& slot = s[0] == 'F' ? c.from : s[0] == 'T' ? c.to : c.at;
      if (slot) return;
      slot = HourMinute(s.substr(2));
    } else {
      return;
    }
    ++i;
  }
}

}  // namespace

DecodedReport DecodeReport(std::string_view text) {
  DecodedReport r;
  Tokens tokens = Split(text);
  // "=" closes the report; anything after it is not part of it.
  for (size_t i = 0; i < tokens.size(); ++i) {
    const size_t eq = tokens[i].find('=');
    if (eq == std::string_view::npos) continue;
    for (size_t j = i + 1; j < tokens.size(); ++j) r.undecoded.emplace_back(tokens[j]);
    tokens[i] = tokens[i].substr(0, eq);
    tokens.resize(tokens[i].empty() ? i : i + 1);
    break;
  }

  size_t i = 0;
  for (; i < tokens.size(); ++i) {
    const std::string_view s = tokens[i];
    if (s == "METAR" || s == "SPECI" || s == "TAF") {
      if (r.typeGiven) break;
      r.typeGiven = true;
      r.type = s == "TAF"     ? DecodedReport::Type::Taf
               : s == "SPECI" ? DecodedReport::Type::Speci
                              : DecodedReport::Type::Metar;
    } else if (s == "COR") {
      r.corrected = true;
    } else if (s == "AMD") {
      r.amended = true;
    } else {
      break;
    }
  }
  if (i < tokens.size() && IsStation(tokens[i])) r.station = std::string(tokens[i++]);
  if (i < tokens.size() && tokens[i].size() == 7 && tokens[i][6] == 'Z') {
    if (auto t = DayHourMinute(tokens[i].substr(0, 6))) {
      r.time = t;
      ++i;
    }
  }
  if (i < tokens.size() && (!r.typeGiven || r.type == DecodedReport::Type::Taf) &&
      Period(tokens[i], r.validFrom, r.validTo)) {
    r.type = DecodedReport::Type::Taf;
    ++i;
  }

  WeatherSection* sec = &r.section;
  for (; i < tokens.size(); ++i) {
    const std::string_view s = tokens[i];
    if (s == "RMK") {
      for (size_t j = i + 1; j < tokens.size(); ++j) {
        if (!r.remarks.empty()) r.remarks += ' ';
        r.remarks += tokens[j];
      }
      break;
    }
    if (s == "NIL") {
      r.nil = true;
    } else if (s == "AUTO") {
      r.automatic = true;
    } else if (s == "COR") {
      r.corrected = true;
    } else if (s == "CNL") {
      r.cancelled = true;
    } else if ((s == "TEMPO" || s == "BECMG") && !r.changes.empty() && IsProbability(r.changes.back().kind) &&
               !r.changes.back().from && sec == &r.changes.back().section) {
      r.changes.back().kind += " " + std::string(s);  // PROB30 TEMPO 1412/1418
      ChangePeriod(tokens, i, r.changes.back());
    } else if (OpensChange(s)) {
      ChangeGroup c;
      if (StartsWith(s, "FM")) {
        c.kind = "FM";
        c.from = DayHourMinute(s.substr(2));
        if (!c.from) {
          r.undecoded.emplace_back(s);
          continue;
        }
      } else {
        c.kind = std::string(s);
      }
      r.changes.push_back(std::move(c));
      if (s != "NOSIG" && !StartsWith(s, "FM")) ChangePeriod(tokens, i, r.changes.back());
      sec = &r.changes.back().section;
    } else if (SectionGroup(tokens, i, *sec)) {
    } else if (auto tf = ForecastTemperature(s)) {
      r.temperatures.push_back(*tf);
    } else if (!r.temperatureGiven && sec == &r.section && Temperatures(s, r)) {
    } else if (Pressure(s, r)) {
    } else if (s.size() > 2 && StartsWith(s, "RE") && ReadPresentWeather(s.substr(2))) {
      r.recentWeather.emplace_back(s.substr(2));
    } else if (s == "WS" && i + 1 < tokens.size()) {
      size_t j = i + 1;
      if (tokens[j] == "TKOF" || tokens[j] == "LDG") ++j;  // older form WS TKOF RWY24
      const std::string_view rwy = j < tokens.size() ? tokens[j] : std::string_view{};
      if (rwy == "ALL" && j + 1 < tokens.size() && tokens[j + 1] == "RWY") {
        r.windShear.emplace_back("ALL");
        i = j + 1;
      } else if ((StartsWith(rwy, "RWY") && rwy.size() >= 5 && rwy.size() <= 6 && AllDigits(rwy.substr(3, 2))) ||
                 (StartsWith(rwy, "R") && rwy.size() >= 3 && rwy.size() <= 4 && AllDigits(rwy.substr(1, 2)))) {
        r.windShear.emplace_back(rwy.substr(rwy[1] == 'W' ? 3 : 1));
        i = j;
      } else {
        r.undecoded.emplace_back(s);
      }
    } else {
      r.undecoded.emplace_back(s);
    }
  }
  return r;
}

namespace {

bool IsTimeLine(std::string_view line) {  // "2025/03/14 09:50" of a station file
  return line.size() == 16 && AllDigits(line.substr(0, 4)) && line[4] == '/' && line[7] == '/' && line[10] == ' ' &&
         line[13] == ':';
}

bool ContinuesReport(std::string_view line) {
  if (!line.empty() && (line[0] == ' ' || line[0] == '\t')) return true;
  const Tokens t = Split(line);
  if (t.empty()) return false;
  return (OpensChange(t[0]) && t[0] != "NOSIG") || ForecastTemperature(t[0]).has_value() || t[0] == "RMK";
}

}  // namespace

std::vector<std::string> SplitReports(std::string_view text) {
  std::vector<std::string> reports;
  bool open = false;  // the last report may take continuation lines
  for (const std::string_view line : Lines(text)) {
    if (Split(line).empty() || IsTimeLine(line)) {
      open = false;
      continue;
    }
    if (open && ContinuesReport(line)) {
      reports.back() += '\n';
      reports.back() += line;
    } else {
      reports.emplace_back(line);
    }
    // A report ended by "=" takes no more lines.
    const size_t last = line.find_last_not_of(" \t");
    open = line[last] != '=';
  }
  return reports;
}

std::string ReportLines(std::string_view text) {
  std::string out;
  const Tokens tokens = Split(text);
  bool remarks = false;
  for (size_t i = 0; i < tokens.size(); ++i) {
    const std::string_view s = tokens[i];
    const bool afterProb = i > 0 && IsProbability(tokens[i - 1]);
    const bool breakBefore = !remarks && i > 0 && ((OpensChange(s) && s != "NOSIG" && !afterProb) || s == "RMK");
    if (s == "RMK") remarks = true;
    if (i > 0) out += breakBefore ? '\n' : ' ';
    out += s;
  }
  return out;
}

std::optional<int> ChangeProbability(std::string_view kind) {
  if (!IsProbability(kind.substr(0, 6))) return std::nullopt;
  return Number(kind.substr(4, 2));
}

double WindKnots(int speed, std::string_view unit) {
  if (unit == "KT") return speed;
  return speed * (unit == "MPS" ? kKnotsPerMps : kKnotsPerKmh);
}

double RelativeHumidity(double temperatureC, double dewPointC) {
  return 100 * SaturationVapourPressure(std::min(dewPointC, temperatureC)) / SaturationVapourPressure(temperatureC);
}

std::optional<StationDensityAltitude> ReportDensityAltitude(const DecodedReport& r, std::optional<double> elevationFt) {
  if (!elevationFt || !r.temperature || !r.dewPoint || !r.qnhHpa || r.type == DecodedReport::Type::Taf)
    return std::nullopt;
  DensityAltitudeInput in;
  in.qnh = *r.qnhHpa;
  in.temperature = *r.temperature;
  in.dewPoint = *r.dewPoint;
  in.elevationFt = *elevationFt;
  if (!Admits(Qnh(false), in.qnh) || !Admits(AirTemperature(false), in.temperature) ||
      !Admits(DewPoint(false), in.dewPoint) || !Admits(kFieldElevation, in.elevationFt))
    return std::nullopt;
  const DensityAltitudeResult result = ComputeDensityAltitude(in);
  return StationDensityAltitude{*result.densityAltitude.value, result.pressure.text};
}

}  // namespace norvane
