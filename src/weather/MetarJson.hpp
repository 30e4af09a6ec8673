#pragma once
// The typed groups of a decoded report as JSON, for scripts (norvane-cli metar-decode --json).

#include <optional>
#include <string>

#include "weather/MetarDecoder.hpp"

namespace norvane {

// One JSON object on one line; speeds in knots, visibility in metres, QNH in hPa. With a field
// elevation (ft), a METAR also gets its density altitude (null outside the model's ranges).
std::string ReportJson(const DecodedReport& report, std::optional<double> elevationFt = std::nullopt);

}  // namespace norvane
