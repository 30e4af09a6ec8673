#pragma once
// The signed manifest of an update: which program file the maker released, for which platform.
//
// The version file and the program file prove nothing by themselves: a mirror, or anyone on an
// http:// update address, could offer "9.99" and serve an older signed release, or a signed build
// for another system. The manifest binds version, platform, size and SHA-256 of the program file
// under one Ed25519 signature (Norvane.manifest.sig, made by scripts/sign-update), and the program
// installs only what a good manifest names for its own platform and above its own version.
//
// Format: UTF-8 text, LF (or CR LF) line ends, this header line and the four fields once each,
// in any order:
//
//   Norvane update manifest 1
//   version: 2.33
//   platform: linux-x86_64
//   size: 23456789
//   sha256: 64 hexadecimal digits
//
// version is major.minor (1 to 3 digits, ".", 2 digits; major * 100 + minor below 32768);
// platform is lowercase letters, digits, "-" and "_"; size 1 byte to kExecutableLimit.

#include <sodium.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "online/UpdateSignature.hpp"

namespace norvane {

using Sha256Digest = std::array<unsigned char, 32>;

struct UpdateManifest {
  int16_t version = 0;  // major * 100 + minor
  std::string platform;
  int64_t size = 0;
  Sha256Digest sha256{};
};

inline constexpr const char* kManifestHeader = "Norvane update manifest 1";

// The manifest in `text`; nullopt when anything in it is malformed, missing, repeated or unknown.
std::optional<UpdateManifest> ParseUpdateManifest(std::string_view text);

// The manifest when `signature` is a good signature of exactly `text` under `key` and the text
// is a well-formed manifest; nullopt otherwise.
std::optional<UpdateManifest> ReadSignedManifest(std::string_view text, std::string_view signature,
                                                 const UpdatePublicKey& key);

enum class ManifestVerdict {
  Invalid,        // no manifest, a bad signature or a malformed text
  OtherPlatform,  // a build for another system
  NotNewer,       // not above the running version: a rollback or the same release
  Install,
};
ManifestVerdict JudgeManifest(const std::optional<UpdateManifest>& manifest, int16_t ownVersion,
                              std::string_view ownPlatform);

// SHA-256 (FIPS 180-4, libsodium's crypto_hash_sha256) of data given in pieces.
class Sha256 {
 public:
  Sha256();
  void Update(const void* data, std::size_t size);
  Sha256Digest Final();

 private:
  crypto_hash_sha256_state state_;
};

}  // namespace norvane
