#pragma once
// Authenticity of a downloaded executable: a detached Ed25519 signature (RFC 8032, as made by
// libsodium's crypto_sign_detached or `openssl pkeyutl -sign -rawin`) over the whole file,
// checked against the public key built into the program. The secret key never leaves the
// maker's machine; scripts/sign-update signs a release with it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace norvane {

using UpdatePublicKey = std::array<unsigned char, 32>;
inline constexpr std::size_t kUpdateSignatureSize = 64;

// The key the program trusts: the built-in one unless a test replaced it.
UpdatePublicKey TrustedUpdateKey();

// True when `signature` (exactly 64 bytes) is a valid signature of `data` under `key`.
bool VerifyUpdateSignature(const unsigned char* data, std::size_t size, std::string_view signature,
                           const UpdatePublicKey& key);

namespace testing {
// Tests sign with a key pair of their own; nullopt restores the built-in key.
void SetTrustedUpdateKey(std::optional<UpdatePublicKey> key);
}  // namespace testing

}  // namespace norvane
