// libFuzzer target: the reading of a weather station file received from the network. A reply is
// either refused with code 5 or split into the recorded line and a report of non-empty lines without leading blanks.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "services/WeatherReport.hpp"

using namespace norvane;

namespace {
void Require(bool condition) {
  if (!condition) std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  for (const int year : {2026, 1999}) {
    const WeatherResult r = ParseWeatherReply(reply, year);
    const bool thisYear = reply.substr(0, 4) == std::to_string(year);
    Require(r.code == (thisYear ? 0 : 5));
    Require(!WeatherErrorText(r.code).empty() || r.code == 0);
    if (r.code != 0) {
      Require(r.recorded.empty() && r.report.empty());
      continue;
    }
    Require(reply.substr(0, r.recorded.size()) == r.recorded);
    Require(r.recorded.find('\n') == std::string::npos);
    Require(r.report.find("\n ") == std::string::npos && r.report.find("\n\n") == std::string::npos);
    Require(r.recorded.size() + r.report.size() <= size);
    Require(RecordedText(r) == "Recorded: " + r.recorded);
  }
  return 0;
}
