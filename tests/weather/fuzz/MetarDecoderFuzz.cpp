// libFuzzer target: the METAR/TAF decoder on garbage, truncated and enormous input. Every group of
// a report is either decoded or listed as not decoded, and the decoded view and JSON always come out.
#include <cstdint>
#include <string>
#include <string_view>

#include "support/FuzzSupport.hpp"
#include "weather/MetarDecoder.hpp"
#include "weather/MetarJson.hpp"
#include "weather/MetarText.hpp"

using namespace norvane;
using norvane::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const std::string& report : SplitReports(text)) {
    const DecodedReport r = DecodeReport(report);
    const auto lines = DescribeReport(r, 1000.0);
    Require(!lines.empty() && lines.front().key == "report");
    size_t undecoded = 0;
    for (const DecodedLine& l : lines) {
      Require(!l.key.empty() && !l.text.empty());
      undecoded += l.key == "undecoded";
    }
    Require(undecoded == r.undecoded.size());
    const std::string json = ReportJson(r, 1000.0);
    Require(json.front() == '{' && json.back() == '}' && json.find('\n') == std::string::npos);
    Require(ReportLines(report).size() <= report.size());
  }
  return 0;
}
