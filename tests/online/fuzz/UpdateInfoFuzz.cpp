// libFuzzer target: the version file the update server sends. A version read back must print as
// the same four characters. Signatures are fuzzed through the manifest (UpdateManifestFuzz), whose
// verification is the same function.
#include <cstdint>
#include <string>
#include <string_view>

#include "online/UpdateInfo.hpp"
#include "support/FuzzSupport.hpp"

using namespace norvane;
using norvane::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const int16_t v = ParseVersionText(text);
  Require(v >= 0 && v <= 999);
  if (v > 0) {
    const std::string shown = VersionText(v);
    Require(shown.size() == 4 && shown[0] == text[0] && shown[2] == text[2] && shown[3] == text[3]);
    Require(ParseVersionText(shown) == v);
  }
  (void)VerdictText(JudgeServerVersion(v));
  return 0;
}
