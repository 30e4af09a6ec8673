// libFuzzer target: the settings file reader on arbitrary text. Whatever it reads must hold values
// within each key's range, and writing it out and reading that back must give the same settings:
// otherwise a value would change a little more at every start.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/Settings.hpp"

using namespace norvane;

namespace {
void Require(bool condition) {
  if (!condition) std::abort();
}
bool In(int v, int lo, int hi) { return v >= lo && v <= hi; }
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Settings s = ParseSettings(std::string(reinterpret_cast<const char*>(data), size));
  Require(In(s.Synchronize, 0, 1) && In(s.RemindPosition, 0, 1) && In(s.AutoUpdateCheck, 0, 1) &&
          In(s.DefaultUnitSystem, 0, 1) && In(s.DefMVModel, 0, 3) &&
          In(s.DefMVYear, s.DefMVModel < 2 ? 2005 : 2025, s.DefMVModel < 2 ? 2009 : 2029) && In(s.AutoMV, 0, 1) &&
          In(s.LTOffset, -12, 14) && In(s.Colours, 0, 1) && In(s.IniTop, 0, 32000) && In(s.IniLeft, 0, 32000));
  Require(s.Links.count >= 1 && s.Links.count <= LinkTable::kCapacity);
  for (int i = 0; i < LinkTable::kCapacity; ++i) Require((i < s.Links.count) == !s.Links.entries[i].title.empty());
  Require(s.PrevAutoUpdate.size() <= 511 && s.DBPath.size() <= 511);
  const std::string written = SerializeSettings(s);
  Require(ParseSettings(written) == s);
  Require(SerializeSettings(ParseSettings(written)) == written);
  return 0;
}
