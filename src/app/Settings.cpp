#include "app/Settings.hpp"

#include "sun/SunTimes.hpp"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <sstream>
#include <unordered_map>
#include <vector>

#include "app/Platform.hpp"
#include "app/TextLines.hpp"
#include "navigation/GeoMag.hpp"

namespace norvane {
namespace {

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// section -> key -> value, both lower-cased; the first occurrence of a key wins.
using Profile = std::unordered_map<std::string, std::unordered_map<std::string, std::string>>;

Profile ParseProfile(const std::string& text) {
  Profile p;
  std::string section;
  bool inSection = false;
  for (const std::string_view l : Lines(text)) {
    const std::string line = TrimBlanks(std::string(l));
    if (line.empty() || line[0] == ';') continue;
    if (line[0] == '[') {
      const size_t close = line.find(']');
      if (close == std::string::npos) continue;
      section = Lower(TrimBlanks(line.substr(1, close - 1)));
      inSection = true;
      continue;
    }
    const size_t eq = line.find('=');
    if (!inSection || eq == std::string::npos) continue;
    const std::string key = Lower(TrimBlanks(line.substr(0, eq)));
    if (key.empty()) continue;
    p[section].try_emplace(key, line.substr(eq + 1));
  }
  return p;
}

std::optional<std::string> Lookup(const Profile& p, const char* section, const std::string& key) {
  const auto s = p.find(Lower(section));
  if (s == p.end()) return std::nullopt;
  const auto k = s->second.find(Lower(key));
  if (k == s->second.end()) return std::nullopt;
  return k->second;
}

// GetPrivateProfileString: blanks around the value removed, surrounding quotes dropped, the
// result cut to the 511 characters of a 512-character buffer.
std::string ReadText(const Profile& p, const char* section, const std::string& key) {
  const auto v = Lookup(p, section, key);
  if (!v) return std::string();
  std::string s = TrimBlanks(*v);
  if (s.size() >= 2 && (s.front() == '"' || s.front() == '\'') && s.back() == s.front()) s = s.substr(1, s.size() - 2);
  if (s.size() > 511) s.resize(511);
  return s;
}

// GetPrivateProfileInt: leading blanks skipped, optional sign, decimal digits up to the first
// other character (no digits reads as 0). The value must fit 16 bits and the key's range,
// otherwise the default applies.
int16_t ReadInt(const Profile& p, const char* section, const char* key, int min, int max, int16_t def) {
  const auto v = Lookup(p, section, key);
  if (!v) return def;
  size_t i = 0;
  while (i < v->size() && ((*v)[i] == ' ' || (*v)[i] == '\t')) ++i;
  bool negative = false;
  if (i < v->size() && ((*v)[i] == '-' || (*v)[i] == '+')) negative = (*v)[i++] == '-';
  long long value = 0;
  for (; i < v->size() && std::isdigit(static_cast<unsigned char>((*v)[i])); ++i) {
    value = value * 10 + ((*v)[i] - '0');
    if (value > 1000000) break;  // far outside any 16-bit value already
  }
  if (negative) value = -value;
  if (value < INT16_MIN || value > INT16_MAX || value < min || value > max) return def;
  return static_cast<int16_t>(value);
}

// A text value as written. The reader drops blanks around a value and one pair of surrounding
// quotes, so a value that would lose either is written inside double quotes to read back whole.
std::string TextValue(const std::string& v) {
  if (v.empty()) return v;
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  const bool quoted = v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front();
  if (blank(v.front()) || blank(v.back()) || quoted) return '"' + v + '"';
  return v;
}

}  // namespace

Settings ParseSettings(const std::string& text) {
  // Windows editors put a UTF-8 byte order mark before "[Options]"; kept, it would hide that section.
  const bool bom = text.compare(0, 3, "\xEF\xBB\xBF") == 0;
  const Profile p = ParseProfile(bom ? text.substr(3) : text);
  Settings s;
  s.Synchronize = ReadInt(p, "Options", "Synchronize", 0, 1, 1);
  s.RemindPosition = ReadInt(p, "Options", "RemindPosition", 0, 1, 0);
  s.AutoUpdateCheck = ReadInt(p, "Options", "AutoUpdateCheck", 0, 1, 0);
  s.PrevAutoUpdate = ReadText(p, "Options", "PrevAutoUpdate");
  s.DefaultUnitSystem = ReadInt(p, "Options", "DefaultUnitSystem", 0, 1, 0);
  // The year must lie in the model's years (2005-2009 for IGRF-10 and WMM2005, 2025-2029 for
  // WMM2025 and IGRF-14), otherwise it reads as the model's first year.
  s.DefMVModel = ReadInt(p, "Options", "DefMVModel", 0, kMagModelCount - 1, 0);
  const MagModel model = MagModel(s.DefMVModel);
  s.DefMVYear = ReadInt(p, "Options", "DefMVYear", MagModelEpoch(model), MagModelLastYear(model),
                        static_cast<int16_t>(MagModelEpoch(model)));
  s.AutoMV = ReadInt(p, "Options", "AutoMV", 0, 1, 0);
  s.LTOffset = ReadInt(p, "Options", "LTOffset", int(kLocalTimeOffset.min), int(kLocalTimeOffset.max), 0);
  s.Colours = ReadInt(p, "Options", "Colours", 0, 1, 0);
  s.IniTop = ReadInt(p, "WinPos", "IniTop", 0, 32000, 0);
  s.IniLeft = ReadInt(p, "WinPos", "IniLeft", 0, 32000, 0);
  s.DBPath = ReadText(p, "NavDB", "DBPath");
  LinkTable links;
  for (int i = 0; i < LinkTable::kCapacity; ++i) {
    links.entries[i].title = ReadText(p, "DBLinks", "Title" + std::to_string(i));
    links.entries[i].url = ReadText(p, "DBLinks", "Link" + std::to_string(i));
  }
  links.Tidy();
  s.Links = links.count == 0 || links.entries[0].title.empty() ? LinkTable::Defaults() : links;
  return s;
}

Settings ReadSettings(const std::filesystem::path& file, std::string* error) {
  // The file the program writes is about 1 KB; a much larger one is something else.
  constexpr size_t kLimit = 1 << 20;
  std::error_code ec;
  if (!std::filesystem::exists(file, ec) && !ec) return Settings{};  // the first start
  errno = 0;
  std::FILE* f = std::fopen(file.string().c_str(), "rb");
  std::string text;
  int why = errno;
  bool ok = f != nullptr;
  if (f) {
    char buf[8192];
    size_t n = 0;
    while (text.size() <= kLimit && (n = std::fread(buf, 1, sizeof buf, f)) > 0) text.append(buf, n);
    why = errno;
    ok = !std::ferror(f);
    std::fclose(f);
  }
  if (!ok || text.size() > kLimit) {
    if (error) {
      *error = ok ? file.string() + " is larger than 1 MB, not a settings file"
                  : "cannot read " + file.string() + (why ? std::string(": ") + std::strerror(why) : std::string());
    }
    return Settings{};
  }
  return ParseSettings(text);
}

std::string SerializeSettings(const Settings& s) {
  std::string out;
  const auto line = [&out](const std::string& l) { out += l + "\r\n"; };
  const auto num = [](int v) { return std::to_string(v); };
  line("[Options]");
  line("Synchronize=" + num(s.Synchronize));
  line("RemindPosition=" + num(s.RemindPosition));
  line("AutoUpdateCheck=" + num(s.AutoUpdateCheck));
  line("PrevAutoUpdate=" + TextValue(s.PrevAutoUpdate));
  // This one line keeps the BASIC number-printing form: a blank for the sign, one blank after.
  line("DefaultUnitSystem=" + std::string(s.DefaultUnitSystem >= 0 ? " " : "") + num(s.DefaultUnitSystem) + " ");
  line("DefMVYear=" + num(s.DefMVYear));
  line("DefMVModel=" + num(s.DefMVModel));
  line("AutoMV=" + num(s.AutoMV));
  line("LTOffset=" + num(s.LTOffset));
  // A later key: absent for the day, so that a file written by an older version stays as it was.
  if (s.Colours != 0) line("Colours=" + num(s.Colours));
  line("");
  line("[WinPos]");
  line("IniTop=" + num(s.IniTop));
  line("IniLeft=" + num(s.IniLeft));
  line("");
  line("[NavDB]");
  line("DBPath=" + TextValue(s.DBPath));
  line("");
  line("[DBLinks]");
  for (int i = 0; i < s.Links.count && i < LinkTable::kCapacity; ++i) {
    line("Title" + num(i) + "=" + TextValue(s.Links.entries[i].title));
    line("Link" + num(i) + "=" + TextValue(s.Links.entries[i].url));
  }
  return out;
}

bool WriteSettings(const std::filesystem::path& file, const Settings& s, std::string* error) {
  return WriteFileAtomic(file, SerializeSettings(s), error);
}

}  // namespace norvane
