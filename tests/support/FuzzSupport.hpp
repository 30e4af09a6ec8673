#pragma once
// What the libFuzzer targets share: a failed property aborts (libFuzzer records the input), and
// the update targets sign with a throwaway Ed25519 key pair made once per process.
#include <array>
#include <cstdlib>

#if __has_include(<sodium.h>)
#include <sodium.h>

#include "online/UpdateSignature.hpp"
#endif

namespace norvane::fuzz {

inline void Require(bool condition) {
  if (!condition) std::abort();
}

#if __has_include(<sodium.h>)
struct TestKeyPair {
  UpdatePublicKey pk{};
  std::array<unsigned char, crypto_sign_SECRETKEYBYTES> sk{};
  TestKeyPair() {
    Require(sodium_init() >= 0);
    crypto_sign_keypair(pk.data(), sk.data());
  }
};
#endif

}  // namespace norvane::fuzz
