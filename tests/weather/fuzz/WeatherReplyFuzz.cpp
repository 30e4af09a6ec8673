// libFuzzer target: the reading of a weather station file received from the network. A reply is
// either refused with code 5 or split into the recorded line and a report of non-empty lines without
// leading blanks, both valid UTF-8 without a control character but the line feeds, whatever the bytes.
#include <cstdint>
#include <string_view>

#include "online/ServerText.hpp"
#include "support/FuzzSupport.hpp"
#include "weather/WeatherReport.hpp"

using namespace norvane;
using norvane::fuzz::Require;

namespace {
bool FitToShow(std::string_view s) {
  if (!IsValidUtf8(s)) return false;
  for (size_t i = 0; i < s.size(); ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c < 0x20 || c == 0x7F) return false;
    if (c == 0xC2 && i + 1 < s.size() && static_cast<unsigned char>(s[i + 1]) < 0xA0) return false;  // C1
  }
  return true;
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
    Require(r.recorded.substr(0, 4) == reply.substr(0, 4));
    std::string lines = r.report;
    for (char& c : lines)
      if (c == '\n') c = ' ';
    Require(FitToShow(r.recorded) && FitToShow(lines));
    Require(r.report.find("\n ") == std::string::npos && r.report.find(" \n") == std::string::npos &&
            r.report.find("\n\n") == std::string::npos);
    Require(r.recorded.size() + r.report.size() <= 3 * size);
    Require(RecordedText(r) == "Recorded: " + r.recorded);
  }
  return 0;
}
