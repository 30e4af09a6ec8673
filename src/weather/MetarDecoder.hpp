#pragma once
// Decoding of aerodrome reports and forecasts: METAR/SPECI and TAF in the code forms FM 15, FM 16
// and FM 51 of WMO No. 306 (Manual on Codes, Vol. I.1), as ICAO Annex 3 App. 3 and 5 prescribe
// them, with the US variants of FMH-1 (statute miles, A inHg, CLR, RVR in feet).
//
// The decoder is lenient: it reads groups in the order the code puts them but accepts them out of
// order, and every group it cannot read is kept in `undecoded` (never dropped, never fatal). It
// works on any bytes; non-ASCII bytes simply make a group undecodable. The decoded report is shown
// in plain language by MetarText.hpp and as JSON by MetarJson.hpp.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

struct WindGroup {
  std::string code;              // as reported, e.g. "24012G22KT"
  std::optional<int> direction;  // degrees true; empty for VRB or not reported
  bool variable = false;         // VRB
  std::optional<int> speed;      // in `unit`; empty when not reported
  std::optional<int> gust;       // in `unit`
  bool above = false;            // P: speed more than the value (P99KT, P49MPS)
  std::string unit;              // "KT", "MPS" or "KMH"
  std::optional<int> from, to;   // variable sector dddVddd
};

struct VisibilityGroup {
  std::string code;              // as reported: "9999", "1 1/2SM", "CAVOK", "1500SW"
  std::optional<double> metres;  // empty when not reported (////)
  bool statuteMiles = false;
  double miles = 0;       // when statuteMiles
  char bound = 0;         // 'P' more than, 'M' less than
  std::string direction;  // "SW" for a minimum visibility towards a sector
  bool ndv = false;       // no directional variation (automatic station)
};

struct RunwayRange {
  std::string code;             // "R24L/P2000N"
  std::string runway;           // "24L"
  int value = 0, valueTo = 0;   // valueTo > 0 for a variation "0600V1000"
  char bound = 0, boundTo = 0;  // 'P' or 'M'
  bool feet = false;
  char tendency = 0;  // 'U' up, 'D' down, 'N' no change
};

struct CloudLayer {
  std::string cover;            // FEW SCT BKN OVC VV, or "" when not reported (///)
  std::optional<int> heightFt;  // above aerodrome level
  std::string type;             // "CB", "TCU" or "" ("///": not reported)
};

// The weather of one section: the report's body, a trend group or a forecast change group.
struct WeatherSection {
  std::optional<WindGroup> wind;
  std::optional<VisibilityGroup> visibility;
  std::optional<VisibilityGroup> minimumVisibility;
  bool cavok = false;
  std::vector<RunwayRange> rvr;
  std::vector<std::string> weather;  // coded groups as they stand ("-SHRA", "VCTS", "NSW")
  std::vector<CloudLayer> clouds;
  std::string skyCode;  // NSC, NCD, SKC or CLR
};

struct DayTime {
  int day = 0, hour = 0, minute = 0;  // day 0: not given (METAR trend times)
};

// A change group of a TAF (FM, BECMG, TEMPO, PROBnn, PROBnn TEMPO) or a METAR trend (BECMG, TEMPO,
// NOSIG) with its period.
struct ChangeGroup {
  std::string kind;  // "FM", "BECMG", "TEMPO", "PROB30", "PROB30 TEMPO", "NOSIG"
  std::optional<DayTime> from, to, at;
  WeatherSection section;
};

struct TemperatureForecast {  // TX/TN groups of a TAF
  bool maximum = true;
  int celsius = 0;
  DayTime time;
};

struct DecodedReport {
  enum class Type { Metar, Speci, Taf } type = Type::Metar;
  bool typeGiven = false;  // "METAR", "SPECI" or "TAF" stood at the start
  bool corrected = false, amended = false, automatic = false, nil = false, cancelled = false;
  std::string station;
  std::optional<DayTime> time;  // observation or issue time, UTC
  std::optional<DayTime> validFrom, validTo;
  WeatherSection section;
  std::optional<int> temperature, dewPoint;  // degrees C
  bool temperatureGiven = false;             // a T/Td group stood there, values perhaps not reported
  std::optional<double> qnhHpa;
  std::optional<double> qnhInHg;  // when reported in inches (A group)
  bool qnhGiven = false;
  std::vector<std::string> recentWeather;  // without the RE prefix
  std::vector<std::string> windShear;      // runway designators, "ALL" for all runways
  std::vector<ChangeGroup> changes;
  std::vector<TemperatureForecast> temperatures;
  std::string remarks;  // the text after RMK, as it stands
  std::vector<std::string> undecoded;
};

// Decodes one report (a METAR, SPECI or TAF; a TAF may span several lines). A trailing "=" ends
// the report. Never throws.
DecodedReport DecodeReport(std::string_view text);

// Splits text holding several reports into single reports: a line starting with a change group
// (FM, BECMG, TEMPO, PROB, TX, TN) or with a blank continues the report before it; a station
// file's time line ("2025/03/14 09:50") and empty lines are skipped.
std::vector<std::string> SplitReports(std::string_view text);

// The report with one change group per line (the raw view): the body on the first line, then
// each FM, BECMG, TEMPO or PROB group, and RMK, on a line of its own.
std::string ReportLines(std::string_view text);

// What the decoded views (MetarText.hpp, MetarJson.hpp) read from the codes and derive from a
// decoded report.

// A present weather group w'w' (WMO code table 4678) in its parts, viewing into the group's text.
struct PresentWeather {
  std::string_view intensity;               // "-", "+", "VC" or ""
  std::string_view descriptor;              // "SH", "TS", "FZ", ... or ""
  std::vector<std::string_view> phenomena;  // "RA", "BR", ...
};
// Empty when `code` is not a present weather group ("NSW" and "//" are not).
std::optional<PresentWeather> ReadPresentWeather(std::string_view code);
// "rain" for "RA"; empty for a code not in the table.
std::string_view PhenomenonName(std::string_view code);

// 30 for the change group kinds "PROB30" and "PROB30 TEMPO"; empty for other kinds.
std::optional<int> ChangeProbability(std::string_view kind);

// 1 inHg = 33.8639 hPa at 0 degrees C, for the A group.
inline constexpr double kHpaPerInHg = 33.8639;

// A wind speed in `unit` ("KT", "MPS" or "KMH") in knots, unrounded.
double WindKnots(int speed, std::string_view unit);

// Relative humidity (%) from temperature and dew point, with the saturation vapour pressure of the
// density altitude model.
double RelativeHumidity(double temperatureC, double dewPointC);

struct StationDensityAltitude {
  double feet = 0;
  std::string stationPressure;  // hPa, as the density altitude screen shows it
};
// The density altitude model's result for a METAR (not a TAF) with temperature, dew point and QNH,
// at a field elevation (ft); empty when a value lies outside the model's input ranges.
std::optional<StationDensityAltitude> ReportDensityAltitude(const DecodedReport& report,
                                                            std::optional<double> elevationFt);

}  // namespace norvane
