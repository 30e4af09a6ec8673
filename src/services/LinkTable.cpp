#include "services/LinkTable.hpp"

#include <cctype>
#include <utility>

namespace norvane {
namespace {

// Case-insensitive comparison of two titles (ASCII case folding, then bytes).
int CompareNoCase(const std::string& a, const std::string& b) {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    const int ca = std::tolower(static_cast<unsigned char>(a[i]));
    const int cb = std::tolower(static_cast<unsigned char>(b[i]));
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

std::string TrimBlanks(const std::string& s) {
  const size_t first = s.find_first_not_of(" \t");
  if (first == std::string::npos) return std::string();
  const size_t last = s.find_last_not_of(" \t");
  return s.substr(first, last - first + 1);
}

LinkTable LinkTable::Defaults() {
  LinkTable t;
  static const Link kDefaults[] = {
      {"Abbreviations and acronyms", "https://www.faa.gov/air_traffic/publications/atpubs/pcg_html/"},
      {"Aircraft information database", "https://contentzone.eurocontrol.int/aircraftperformance/"},
      {"Aircraft information for ATC", "https://www.faa.gov/air_traffic/publications/atpubs/atc_html/appendix_a.html"},
      {"AIS sites (world wide)", "https://www.ead.eurocontrol.int/"},
      {"Aviation weather maps", "https://aviationweather.gov/"},
      {"CFMU Network Operations", "https://www.public.nm.eurocontrol.int/PUBPORTAL/gateway/spec/"},
      {"European AIS database", "https://www.ead.eurocontrol.int/"},
      {"FAA type certificate data", "https://drs.faa.gov/"},
      {"ICAO aircraft type designators", "https://www.icao.int/publications/DOC8643/Pages/Search.aspx"},
      {"ICAO registration prefixes", "https://www.icao.int/"},
      {"ICAO/IATA airport codes", "https://www.iata.org/en/publications/directories/code-search/"},
      {"ISO country codes", "https://www.iso.org/obp/ui/#search"},
      {"World time server", "https://www.timeanddate.com/worldclock/"},
      {"World time zone map", "https://www.timeanddate.com/time/map/"},
  };
  for (const Link& l : kDefaults) t.entries[t.count++] = l;
  return t;
}

void LinkTable::Tidy() {
  std::array<Link, kCapacity> kept{};
  int n = 0;
  for (const Link& l : entries) {
    std::string title = TrimBlanks(l.title);
    if (!title.empty()) kept[n++] = {std::move(title), l.url};
  }
  for (int i = 0; i + 1 < n; ++i) {
    int best = i;
    for (int j = i + 1; j < n; ++j)
      if (CompareNoCase(kept[j].title, kept[best].title) < 0) best = j;
    if (best != i) std::swap(kept[i], kept[best]);
  }
  entries = std::move(kept);
  count = n;
}

}  // namespace norvane
