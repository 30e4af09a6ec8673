#pragma once
// The decoded view of a report in plain language, as the weather screen and norvane-cli
// metar-decode show it.

#include <optional>
#include <string>
#include <vector>

#include "weather/MetarDecoder.hpp"

namespace norvane {

// One line of the decoded view: a key for scripts ("wind") and the plain-language text
// ("Wind 240° at 10 kt, gusts 22 kt").
struct DecodedLine {
  std::string key;
  std::string text;
};

// The decoded view in the order of the report. With a field elevation (ft) and a METAR that has
// temperature, dew point and QNH, the station pressure and density altitude of the density
// altitude model are added.
std::vector<DecodedLine> DescribeReport(const DecodedReport& report, std::optional<double> elevationFt = std::nullopt);

}  // namespace norvane
