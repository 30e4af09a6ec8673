// What the update server sends: the version file, the signed manifest, the Ed25519 signature
// (libsodium against the OpenSSL of scripts/sign-update), and the once-a-day rule.
#include <gtest/gtest.h>
#include <sodium.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "online/ServerAddresses.hpp"
#include "online/UpdateInfo.hpp"
#include "online/UpdateManifest.hpp"
#include "online/UpdateSignature.hpp"
#include "support/Golden.hpp"
#include "support/TempDir.hpp"

namespace norvane {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
const unsigned char* Bytes(const std::string& s) { return reinterpret_cast<const unsigned char*>(s.data()); }

// The rows of data/update.txt: the version file, the verdicts, the once-a-day rule, the manifest.
TEST(UpdateInfo, GoldenTable) {
  const std::string table = "online/data/update.txt";
  for (const auto& r : test::ReadGolden(table, "version")) {
    EXPECT_EQ(ParseVersionText(r[0]), std::stoi(r[1])) << r.where;
    if (r[2] != "-") {
      EXPECT_EQ(VersionText(int16_t(std::stoi(r[1]))), r[2]) << r.where;
    }
  }
  for (const auto& r : test::ReadGolden(table, "verdict"))
    EXPECT_STREQ(VerdictText(JudgeServerVersion(int16_t(std::stoi(r[0])), int16_t(std::stoi(r[1])))), r[2].c_str())
        << r.where;
  for (const auto& r : test::ReadGolden(table, "due"))
    EXPECT_EQ(AutoUpdateCheckDue(int16_t(std::stoi(r[0])), r[1], r[2], r[3] == "yes"), r[4] == "yes") << r.where;
  for (const auto& r : test::ReadGolden(table, "manifest")) {
    const std::optional<UpdateManifest> m = ParseUpdateManifest(r[0]);
    ASSERT_EQ(m.has_value(), r[1] != "0") << r.where;
    if (!m) continue;
    EXPECT_EQ(m->version, std::stoi(r[1])) << r.where;
    EXPECT_EQ(m->platform, r[2]) << r.where;
    EXPECT_EQ(m->size, std::stoll(r[3])) << r.where;
    EXPECT_EQ(m->sha256[0], 0x9f);
    EXPECT_EQ(m->sha256[31], 0x08);
  }
  EXPECT_EQ(UpdateQuestionText(233), "A new Norvane version (2.33) is available\r\nWould you like to update it now ?");
}

TEST(ServerAddresses, DefaultsAndOverrides) {
  unsetenv(kWeatherUrlVariable);
  EXPECT_EQ(WeatherBaseUrl(), "https://tgftp.nws.noaa.gov/data");
  setenv(kWeatherUrlVariable, " http://127.0.0.1:8080/wx/ ", 1);
  setenv(kUpdateUrlVariable, "", 1);  // empty: the default
  EXPECT_EQ(WeatherBaseUrl(), "http://127.0.0.1:8080/wx");
  EXPECT_EQ(UpdateBaseUrl(), kDefaultUpdateUrl);
  unsetenv(kWeatherUrlVariable);
  unsetenv(kUpdateUrlVariable);
}

TEST(UpdateSignature, AcceptsOnlyTheSignedFileUnderTheRightKey) {
  ASSERT_GE(sodium_init(), 0);
  UpdatePublicKey pk{}, otherPk{};
  unsigned char sk[crypto_sign_SECRETKEYBYTES], otherSk[crypto_sign_SECRETKEYBYTES];
  crypto_sign_keypair(pk.data(), sk);
  crypto_sign_keypair(otherPk.data(), otherSk);
  const std::string file =
      "\x7f"
      "ELF new executable\0with nul bytes" +
      std::string(5000, '\xAA');
  std::string sig(crypto_sign_BYTES, '\0'), badSig;
  crypto_sign_detached(reinterpret_cast<unsigned char*>(sig.data()), nullptr, Bytes(file), file.size(), sk);
  std::string tampered = file;
  tampered[2000] ^= 1;
  (badSig = sig)[10] ^= 0x40;
  EXPECT_TRUE(VerifyUpdateSignature(Bytes(file), file.size(), sig, pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), sig, otherPk));  // someone else's key
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(tampered), tampered.size(), sig, pk));
  EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size() - 1, sig, pk));  // truncated download
  for (const std::string& s : {badSig, sig.substr(0, 63), sig + "\n", std::string(), std::string(64, '\0')})
    EXPECT_FALSE(VerifyUpdateSignature(Bytes(file), file.size(), s, pk)) << s.size();
  // The built-in key must be the public half of the release key: this file was signed with it.
  const fs::path data = fs::path(NORVANE_SOURCE_DIR) / "tests/online/data";
  const std::string check = ReadAll(data / "release-key-check.txt");
  ASSERT_FALSE(check.empty());
  EXPECT_TRUE(VerifyUpdateSignature(Bytes(check), check.size(), ReadAll(data / "release-key-check.txt.sig"),
                                    TrustedUpdateKey()));
}

// scripts/sign-update (OpenSSL, sha256sum) makes manifests that the program (libsodium) accepts.
TEST(UpdateSignature, SigningScriptInteroperates) {
  if (std::system("command -v openssl >/dev/null 2>&1") != 0) GTEST_SKIP() << "openssl command not installed";
  const test::TempDir temp;
  const fs::path& dir = temp.path;
  const auto run = [&](const std::string& args) {
    return std::system(("'" NORVANE_SOURCE_DIR "/scripts/sign-update' " + args + " 2>/dev/null").c_str());
  };
  const std::string key = "'" + (dir / "key.pem").string() + "'", file = "'" + (dir / "norvane").string() + "'";
  std::ofstream(dir / "norvane", std::ios::binary) << "test";
  ASSERT_EQ(run("--new-key " + key + " > '" + (dir / "pub.txt").string() + "'"), 0);
  ASSERT_EQ(run(key + " " + file + " 2.33 linux-x86_64 > /dev/null"), 0);
  // A version or platform the program would not read is refused before anything is signed, and a
  // second --new-key on the same path does not overwrite the secret key.
  EXPECT_NE(run(key + " " + file + " 2.3 linux-x86_64"), 0);
  EXPECT_NE(run(key + " " + file + " 2.33 'Linux x86'"), 0);
  EXPECT_NE(run("--new-key " + key + " >/dev/null"), 0);

  UpdatePublicKey pk{};
  std::FILE* f = std::fopen((dir / "pub.txt").c_str(), "r");
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
  EXPECT_EQ(ReadAll(dir / "NorvaneVerInfo.txt"), "2.33");
}

}  // namespace
}  // namespace norvane
