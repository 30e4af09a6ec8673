// Ed25519 detached signatures of update files (RFC 8032), libsodium against OpenSSL.
#include <gtest/gtest.h>
#include <sodium.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "services/UpdateManifest.hpp"
#include "services/UpdateSignature.hpp"

namespace norvane {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

const unsigned char* Bytes(const std::string& s) { return reinterpret_cast<const unsigned char*>(s.data()); }

TEST(UpdateSignature, AcceptsOnlyTheSignedFileUnderTheRightKey) {
  ASSERT_GE(sodium_init(), 0);
  UpdatePublicKey pk{}, otherPk{};
  unsigned char sk[crypto_sign_SECRETKEYBYTES], otherSk[crypto_sign_SECRETKEYBYTES];
  crypto_sign_keypair(pk.data(), sk);
  crypto_sign_keypair(otherPk.data(), otherSk);
  const std::string file = "\x7f" "ELF new executable\0with nul bytes" + std::string(5000, '\xAA');
  std::string sig(crypto_sign_BYTES, '\0');
  crypto_sign_detached(reinterpret_cast<unsigned char*>(sig.data()), nullptr, Bytes(file), file.size(), sk);

  EXPECT_TRUE(VerifyUpdateSignature(Bytes(file), file.size(), sig, pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), sig, otherPk));  // someone else's key
  std::string tampered = file;
  tampered[2000] ^= 1;
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(tampered), tampered.size(), sig, pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size() - 1, sig, pk));  // truncated download
  std::string badSig = sig;
  badSig[10] ^= 0x40;
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), badSig, pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), sig.substr(0, 63), pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), sig + "\n", pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), "", pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), std::string(64, '\0'), pk));
}

TEST(UpdateSignature, TestKeyReplacesTheBuiltInOneUntilReset) {
  const UpdatePublicKey builtIn = TrustedUpdateKey();
  UpdatePublicKey mine{};
  mine.fill(7);
  testing::SetTrustedUpdateKey(mine);
  EXPECT_EQ(TrustedUpdateKey(), mine);
  testing::SetTrustedUpdateKey(std::nullopt);
  EXPECT_EQ(TrustedUpdateKey(), builtIn);
}

// The built-in key must be the public half of the release key: this file was signed with it.
TEST(UpdateSignature, BuiltInKeyMatchesTheReleaseKey) {
  const std::filesystem::path dir = std::filesystem::path(NORVANE_SOURCE_DIR) / "tests/services/data";
  const std::string file = ReadAll(dir / "release-key-check.txt");
  const std::string sig = ReadAll(dir / "release-key-check.txt.sig");
  ASSERT_FALSE(file.empty());
  EXPECT_TRUE(VerifyUpdateSignature(Bytes(file), file.size(), sig, TrustedUpdateKey()));
}

// scripts/sign-update (OpenSSL, sha256sum) makes manifests that the program (libsodium) accepts.
TEST(UpdateSignature, SigningScriptInteroperates) {
  if (std::system("command -v openssl >/dev/null 2>&1") != 0) GTEST_SKIP() << "openssl command not installed";
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / ("norvane-sign-" + std::to_string(::getpid()));
  std::filesystem::remove_all(dir);
  std::filesystem::create_directories(dir);
  const std::string script = std::string(NORVANE_SOURCE_DIR) + "/scripts/sign-update";
  const std::string key = (dir / "key.pem").string(), pub = (dir / "pub.txt").string();
  const std::string file = (dir / "norvane").string();
  std::ofstream(file, std::ios::binary) << "test";
  ASSERT_EQ(std::system(("'" + script + "' --new-key '" + key + "' > '" + pub + "'").c_str()), 0);
  ASSERT_EQ(std::system(("'" + script + "' '" + key + "' '" + file + "' 2.33 linux-x86_64 > /dev/null").c_str()), 0);
  // A version or platform the program would not read is refused before anything is signed.
  EXPECT_NE(std::system(("'" + script + "' '" + key + "' '" + file + "' 2.3 linux-x86_64 2>/dev/null").c_str()), 0);
  EXPECT_NE(std::system(("'" + script + "' '" + key + "' '" + file + "' 2.33 'Linux x86' 2>/dev/null").c_str()), 0);
  // A second --new-key on the same path must not overwrite the secret key.
  EXPECT_NE(std::system(("'" + script + "' --new-key '" + key + "' 2>/dev/null >/dev/null").c_str()), 0);

  UpdatePublicKey pk{};
  std::FILE* f = std::fopen(pub.c_str(), "r");
  ASSERT_NE(f, nullptr);
  for (auto& b : pk) {
    unsigned v = 0;
    ASSERT_EQ(std::fscanf(f, " 0x%2x,", &v), 1);
    b = static_cast<unsigned char>(v);
  }
  std::fclose(f);
  const std::optional<UpdateManifest> m =
      ReadSignedManifest(ReadAll(dir / "Norvane.manifest"), ReadAll(dir / "Norvane.manifest.sig"), pk);
  ASSERT_TRUE(m);
  EXPECT_EQ(m->version, 233);
  EXPECT_EQ(m->platform, "linux-x86_64");
  EXPECT_EQ(m->size, 4);
  EXPECT_EQ(m->sha256[0], 0x9f);  // SHA-256 of "test" is 9f86d081...b0f00a08
  EXPECT_EQ(m->sha256[31], 0x08);
  EXPECT_EQ(ReadAll(dir / "NorvaneVerInfo.txt"), "2.33");
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace norvane
