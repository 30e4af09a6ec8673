// libFuzzer target: the update manifest as a server sends it. A manifest that reads has fields
// within their ranges; none verifies under the built-in key, and one signed with a test key stops
// verifying when any byte of it changes.
#include <sodium.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "online/UpdateInfo.hpp"
#include "online/UpdateManifest.hpp"
#include "support/FuzzSupport.hpp"

using namespace norvane;
using norvane::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::optional<UpdateManifest> m = ParseUpdateManifest(text);
  if (m) {
    Require(m->version >= 1 && m->size >= 1 && m->size <= kExecutableLimit);
    Require(!m->platform.empty() &&
            m->platform.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_") == std::string::npos);
    Require(JudgeManifest(m, m->version, m->platform) == ManifestVerdict::NotNewer);
    Require(JudgeManifest(m, static_cast<int16_t>(m->version - 1), m->platform) == ManifestVerdict::Install);
  }
  Require(JudgeManifest(std::nullopt, 0, "linux-x86_64") == ManifestVerdict::Invalid);

  // The first 64 bytes as a signature of the rest: never good under the built-in key.
  if (size >= kUpdateSignatureSize)
    Require(!ReadSignedManifest(text.substr(kUpdateSignatureSize), text.substr(0, kUpdateSignatureSize),
                                TrustedUpdateKey()));

  static const fuzz::TestKeyPair keys;
  std::string sig(kUpdateSignatureSize, '\0');
  crypto_sign_detached(reinterpret_cast<unsigned char*>(sig.data()), nullptr, data, size, keys.sk.data());
  Require(ReadSignedManifest(text, sig, keys.pk).has_value() == m.has_value());
  if (size > 0) {
    std::string changed(text);
    changed[data[0] % size] ^= static_cast<char>(1u << (data[size - 1] % 8));
    Require(!ReadSignedManifest(changed, sig, keys.pk));
  }
  return 0;
}
