#include "online/UpdateSignature.hpp"

#include <sodium.h>

namespace norvane {

namespace {

// Public half of the release signing key (Ed25519, raw 32 bytes).
constexpr UpdatePublicKey kBuiltInKey = {
    0x53, 0xe9, 0xa1, 0x38, 0xcb, 0x3c, 0x85, 0x72, 0xbf, 0xe2, 0xdc, 0xf6, 0xfd, 0xfc, 0x3a, 0xa6,
    0x00, 0xc4, 0x55, 0xaf, 0x82, 0x33, 0xf7, 0xc4, 0x0c, 0xde, 0x11, 0xa9, 0x5e, 0xb1, 0x75, 0x2d,
};

std::optional<UpdatePublicKey>& KeyOverride() {
  static std::optional<UpdatePublicKey> key;
  return key;
}

}  // namespace

UpdatePublicKey TrustedUpdateKey() { return KeyOverride().value_or(kBuiltInKey); }

bool VerifyUpdateSignature(const unsigned char* data, std::size_t size, std::string_view signature,
                           const UpdatePublicKey& key) {
  static_assert(crypto_sign_PUBLICKEYBYTES == 32 && crypto_sign_BYTES == kUpdateSignatureSize);
  if (signature.size() != kUpdateSignatureSize || (data == nullptr && size != 0)) return false;
  if (sodium_init() < 0) return false;
  static const unsigned char kEmpty = 0;
  return crypto_sign_verify_detached(reinterpret_cast<const unsigned char*>(signature.data()), data ? data : &kEmpty,
                                     size, key.data()) == 0;
}

namespace testing {
void SetTrustedUpdateKey(std::optional<UpdatePublicKey> key) { KeyOverride() = key; }
}  // namespace testing

}  // namespace norvane
