#include "online/LinkTable.hpp"

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
  // Reference pages of the issuing bodies where one exists, chosen for stable addresses.
  static const Link kDefaults[] = {
      // FAA Order JO 7340.2, Contractions: ICAO and FAA abbreviations.
      {"Abbreviations and acronyms", "https://www.faa.gov/air_traffic/publications/atpubs/cnt_html/"},
      // EUROCONTROL Aircraft Performance Database.
      {"Aircraft information database", "https://contentzone.eurocontrol.int/aircraftperformance/"},
      // FAA Order JO 7110.65, Appendix A: aircraft information for controllers.
      {"Aircraft information for ATC", "https://www.faa.gov/air_traffic/publications/atpubs/atc_html/appendix_a.html"},
      // EAD Basic: AIPs, charts and NOTAM of states world wide (free registration).
      {"AIS sites (world wide)", "https://www.ead.eurocontrol.int/"},
      // NOAA Aviation Weather Center.
      {"Aviation weather maps", "https://aviationweather.gov/"},
      // EUROCONTROL Network Manager (formerly CFMU): Network Operations Portal.
      {"CFMU Network Operations", "https://www.eurocontrol.int/portal/network-operations-portal"},
      {"European AIS database", "https://www.eurocontrol.int/service/european-ais-database"},
      // FAA Dynamic Regulatory System, which holds the type certificate data sheets.
      {"FAA type certificate data", "https://drs.faa.gov/"},
      // ICAO Doc 8643, Aircraft Type Designators.
      {"ICAO aircraft type designators", "https://www.icao.int/publications/DOC8643/Pages/Search.aspx"},
      {"ICAO registration prefixes", "https://en.wikipedia.org/wiki/List_of_aircraft_registration_prefixes"},
      {"ICAO/IATA airport codes", "https://www.iata.org/en/publications/directories/code-search/"},
      // ISO 3166 country codes.
      {"ISO country codes", "https://www.iso.org/iso-3166-country-codes.html"},
      {"World time server", "https://www.timeanddate.com/worldclock/"},
      {"World time zone map", "https://www.timeanddate.com/time/map/"},
  };

  for (const Link& l : kDefaults) t.entries[t.count++] = l;
  return t;
}

void LinkTable::Tidy() { TidyTracking(-1); }

int LinkTable::TidyTracking(int tracked) {
  std::array<Link, kCapacity> kept{};
  std::array<int, kCapacity> from{};  // original position of each kept entry
  int n = 0;
  for (int i = 0; i < kCapacity; ++i) {
    std::string title = TrimBlanks(entries[i].title);
    if (title.empty()) continue;
    from[n] = i;
    kept[n++] = {std::move(title), entries[i].url};
  }
  for (int i = 0; i + 1 < n; ++i) {
    int best = i;
    for (int j = i + 1; j < n; ++j)
      if (CompareNoCase(kept[j].title, kept[best].title) < 0) best = j;
    if (best != i) {
      std::swap(kept[i], kept[best]);
      std::swap(from[i], from[best]);
    }
  }
  entries = std::move(kept);
  count = n;
  for (int i = 0; i < n; ++i)
    if (from[i] == tracked) return i;
  return -1;
}

int LinkTable::Add(const Link& link) {
  if (Full() || TrimBlanks(link.title).empty()) return -1;
  entries[count] = link;
  return TidyTracking(count);
}

int LinkTable::Replace(int index, const Link& link) {
  if (index < 0 || index >= count) return -1;
  entries[index] = link;
  return TidyTracking(index);
}

void LinkTable::Remove(int index) {
  if (index < 0 || index >= count) return;
  entries[index] = Link{};
  Tidy();
}

}  // namespace norvane
