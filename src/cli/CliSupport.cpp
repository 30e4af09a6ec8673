#include "cli/CliSupport.hpp"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <cstdio>
#include <ctime>

#include "app/NumberChars.hpp"
#include "app/TextFormat.hpp"
#include "navigation/Geodesy.hpp"
#include "navigation/GeoMag.hpp"

namespace norvane::cli {

OutputMode& GlobalOutputMode() {
  static OutputMode mode;
  return mode;
}

void WriteOutput(std::FILE* out, std::string_view bytes) {
  errno = 0;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
  if (written && std::fflush(out) == 0) return;
  const int why = errno;
  throw OutputError(std::string("cannot write the output") + (why ? std::string(": ") + std::strerror(why) : ""));
}

int& ExitStatus() {
  static int status = kExitOk;
  return status;
}

void ResultPrinter::Add(std::string key, std::string text, std::optional<double> raw) {
  items_.push_back({std::move(key), std::move(text), raw});
}

void ResultPrinter::Message(std::string text) { items_.push_back({"message", std::move(text), {}}); }

int ResultPrinter::Print() const {
  const OutputMode& mode = GlobalOutputMode();
  std::string out;
  if (mode.json) {
    out = "{";
    for (size_t i = 0; i < items_.size(); ++i) {
      const Item& it = items_[i];
      if (i) out += ", ";
      out += JsonQuote(it.key) + ": ";
      if (mode.raw && it.raw && std::isfinite(*it.raw))
        out += FormatRaw(*it.raw);
      else
        out += JsonQuote(it.text);
    }
    out += "}\n";
  } else {
    for (const Item& it : items_) {
      out += it.key + ": ";
      out += mode.raw && it.raw ? FormatRaw(*it.raw) : it.text;
      out += '\n';
    }
  }
  WriteOutput(stdout, out);
  return failed_ ? kExitComputation : kExitOk;
}

std::string Shortest(double v) {
  char buf[64];
  char* end = WriteShortest(buf, buf + sizeof buf, v, /*fixed*/ true);
  if (!end) end = WriteShortest(buf, buf + sizeof buf, v);
  return std::string(buf, end);
}

void RequireRange(std::string_view option, double value, double min, double max, std::string_view unit) {
  if (std::isfinite(value) && value >= min && value <= max) return;
  std::string msg =
      std::string(option) + ": " + Shortest(value) + " is out of range (" + Shortest(min) + " to " + Shortest(max);
  if (!unit.empty()) msg += " " + std::string(unit);
  msg += ")";
  throw UsageError(msg);
}

std::optional<double> ParseNumber(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const char* first = text.data();
  const char* last = text.data() + text.size();
  if (*first == '+') ++first;
  if (first != last && *first == '-' && first != text.data()) return std::nullopt;  // "+-5"
  double v = 0;
  if (ReadDouble(first, last, v, /*exponent*/ false) != last || !std::isfinite(v)) return std::nullopt;
  return v;
}

LatLon ParseLatLon(std::string_view option, std::string_view text, const CoordinateLimits& limits) {
  const auto bad = [&] {
    return UsageError(std::string(option) +
                      ": expected LAT,LON in signed decimal degrees (north and east "
                      "positive) or as N51 28 39,W000 27 41, got \"" +
                      std::string(text) + "\"");
  };
  size_t split = text.find(',');
  size_t lonStart = split == std::string_view::npos ? split : split + 1;
  if (split == std::string_view::npos) {
    // "N51 28 39 W000 27 41" or "51 28 39N 000 27 41W": the longitude starts at its letter, or
    // after the latitude's.
    const size_t ns = text.find_first_of("NS");
    if (ns == 0)
      split = lonStart = text.find_first_of("EW");
    else if (ns != std::string_view::npos)
      split = lonStart = ns + 1;
    if (split == std::string_view::npos) throw bad();
  }
  const auto lat = ParseCoordinate(text.substr(0, split), false);
  const auto lon = ParseCoordinate(text.substr(lonStart), true);
  if (!lat || !lon) throw bad();
  const auto require = [&](const char* axis, double v, double max, const char* range) {
    if (std::fabs(v) <= max) return;
    throw UsageError(std::string(option) + " " + axis + ": " + FormatRaw(v) + " is out of range (" + range + ")");
  };
  require("latitude", *lat, limits.maxLat, limits.latRange);
  require("longitude", *lon, limits.maxLon, limits.lonRange);
  return {*lat, *lon};
}

Date ParseDate(std::string_view option, std::string_view text) {
  Date d;
  const std::string s(text);
  // Digits exactly where the form has them: scanf's %d alone would also take " 1" or "+1".
  const auto digits = [&](size_t at, size_t n, int& value) {
    value = 0;
    for (size_t i = at; i < at + n; ++i) {
      if (s[i] < '0' || s[i] > '9') return false;
      value = value * 10 + (s[i] - '0');
    }
    return true;
  };
  if (s.size() != 10 || s[4] != '-' || s[7] != '-' || !digits(0, 4, d.year) || !digits(5, 2, d.month) ||
      !digits(8, 2, d.day))
    throw UsageError(std::string(option) + ": expected a date YYYY-MM-DD, got \"" + s + "\"");
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (d.year % 4 == 0 && d.year % 100 != 0) || d.year % 400 == 0;
  const bool okMonth = d.month >= 1 && d.month <= 12;
  const int dim = okMonth ? kDays[d.month - 1] + (d.month == 2 && leap ? 1 : 0) : 0;
  if (d.year < 1900 || d.year > 2100 || !okMonth || d.day < 1 || d.day > dim)
    throw UsageError(std::string(option) + ": \"" + s + "\" is not a calendar date from 1900-01-01 to 2100-12-31");
  return d;
}

Date Today() {
  const std::time_t t = std::time(nullptr);
  std::tm tm{};
#ifdef _WIN32
  localtime_s(&tm, &t);
#else
  localtime_r(&t, &tm);
#endif
  return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday};
}

const std::vector<std::string>& MagModelOptionNames() {
  static const std::vector<std::string> names = {"igrf10", "wmm2005", "wmm2025", "igrf14"};
  return names;
}

MagModel MagModelFromOptionName(std::string_view name) {
  const auto& names = MagModelOptionNames();
  for (size_t i = 0; i < names.size(); ++i)
    if (names[i] == name) return MagModel(i);
  return MagModel::IGRF10;
}

std::string JsonQuote(std::string_view s) {
  std::string out = "\"";
  for (unsigned char c : s) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (c < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", c);
          out += buf;
        } else {
          out.push_back(static_cast<char>(c));
        }
    }
  }
  return out + "\"";
}

}  // namespace norvane::cli
