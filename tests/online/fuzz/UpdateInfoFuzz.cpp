// libFuzzer target: what the update server sends, the version file and the detached signature of
// the new executable. A version read back must print as the same four characters; no signature
// made of the input verifies under the built-in key, and a signature made for the input fails
// once any byte of it changes.
#include <sodium.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "online/UpdateInfo.hpp"
#include "online/UpdateSignature.hpp"
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

  // First 64 bytes as the signature, the rest as the signed file.
  const std::string_view sig = text.substr(0, kUpdateSignatureSize);
  const auto* file = size > kUpdateSignatureSize ? data + kUpdateSignatureSize : nullptr;
  const size_t fileSize = size > kUpdateSignatureSize ? size - kUpdateSignatureSize : 0;
  Require(!VerifyUpdateSignature(file, fileSize, sig, TrustedUpdateKey()));

  static const fuzz::TestKeyPair keys;
  std::string good(kUpdateSignatureSize, '\0');
  crypto_sign_detached(reinterpret_cast<unsigned char*>(good.data()), nullptr, data, size, keys.sk.data());
  Require(VerifyUpdateSignature(data, size, good, keys.pk));
  if (size > 0) {
    std::string bad = good;
    bad[data[0] % kUpdateSignatureSize] ^= static_cast<char>(1u << (data[size - 1] % 8));
    Require(!VerifyUpdateSignature(data, size, bad, keys.pk));
    Require(!VerifyUpdateSignature(data, size, good.substr(0, kUpdateSignatureSize - 1), keys.pk));
  }
  return 0;
}
