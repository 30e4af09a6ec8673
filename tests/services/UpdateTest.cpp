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

#include "services/ServerAddresses.hpp"
#include "services/UpdateInfo.hpp"
#include "services/UpdateManifest.hpp"
#include "services/UpdateSignature.hpp"
#include "support/TempDir.hpp"

namespace norvane {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
const unsigned char* Bytes(const std::string& s) { return reinterpret_cast<const unsigned char*>(s.data()); }

TEST(UpdateInfo, VersionFileVerdictsAndOnceADay) {
  const std::pair<const char*, int16_t> rows[] = {{"2.33", 233}, {"3.00", 300}, {"2,40", 240}, {"10.01", 0},
                                                  {"2.3", 0},    {"2.33\n", 0}, {"a.bc", 0},  {"<htm", 0}};
  for (const auto& [text, version] : rows) EXPECT_EQ(ParseVersionText(text), version) << text;
  EXPECT_EQ(VersionText(233), "2.33");
  EXPECT_EQ(VersionText(305), "3.05");
  EXPECT_EQ(JudgeServerVersion(232, 232), ServerVersionVerdict::NoUpdate);
  EXPECT_EQ(JudgeServerVersion(231, 232), ServerVersionVerdict::NoUpdate);
  EXPECT_EQ(JudgeServerVersion(233, 232), ServerVersionVerdict::NewVersion);
  EXPECT_EQ(JudgeServerVersion(0, 232), ServerVersionVerdict::NoData);
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NoData), "Unable to retrieve version data");
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NoUpdate), "No update available");
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NewVersion), "A new version is available");
  EXPECT_EQ(UpdateQuestionText(233), "A new Norvane version (2.33) is available\r\nWould you like to update it now ?");
  EXPECT_TRUE(AutoUpdateCheckDue(1, "", "14/03/2025", true));
  EXPECT_TRUE(AutoUpdateCheckDue(1, "13/03/2025", "14/03/2025", true));
  EXPECT_FALSE(AutoUpdateCheckDue(1, "14/03/2025", "14/03/2025", true));  // second start that day
  EXPECT_FALSE(AutoUpdateCheckDue(0, "", "14/03/2025", true));
  EXPECT_FALSE(AutoUpdateCheckDue(1, "", "14/03/2025", false));
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

TEST(UpdateManifest, ReadsOnlyWellFormedManifests) {
  const std::string kHash = "9f86d081884c7d659a2feaa0c55ad015a3bf4f1b2b0b822cd15d6c15b0f00a08";  // SHA-256("test")
  const std::string h = "Norvane update manifest 1\n", rest = "\nsize: 1\nsha256: " + kHash + "\n";
  struct Row {
    std::string text;
    int16_t version;  // 0: refused
    const char* platform;
    int64_t size;
  };
  const Row rows[] = {
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 23456789\nsha256: " + kHash + "\n", 233, "linux-x86_64", 23456789},
      {"Norvane update manifest 1\r\nsha256: " + kHash + "\r\nsize: 1\r\nplatform: macos-arm64\r\nversion: 327.67\r\n",
       32767, "macos-arm64", 1},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash, 0, "", 0},  // no final line end
      {h + "version: 2.33\nversion: 2.34\nplatform: linux-x86_64" + rest, 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64" + rest + "url: x\n", 0, "", 0},
      {h + "version: 2.3\nplatform: linux-x86_64" + rest, 0, "", 0},
      {h + "version: 327.68\nplatform: linux-x86_64" + rest, 0, "", 0},
      {h + "version: 2.33\nplatform: Linux x86" + rest, 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 0\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 209715201\nsha256: " + kHash + "\n", 0, "", 0},  // > 200 MiB
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash.substr(1) + "g\n", 0, "", 0},
      {"Norvane update manifest 2\nversion: 2.33\nplatform: linux-x86_64" + rest, 0, "", 0},
  };
  for (const Row& r : rows) {
    const std::optional<UpdateManifest> m = ParseUpdateManifest(r.text);
    ASSERT_EQ(m.has_value(), r.version != 0) << r.text;
    if (!m) continue;
    EXPECT_EQ(m->version, r.version);
    EXPECT_EQ(m->platform, r.platform);
    EXPECT_EQ(m->size, r.size);
    EXPECT_EQ(m->sha256[0], 0x9f);
    EXPECT_EQ(m->sha256[31], 0x08);
  }
}

TEST(UpdateSignature, AcceptsOnlyTheSignedFileUnderTheRightKey) {
  ASSERT_GE(sodium_init(), 0);
  UpdatePublicKey pk{}, otherPk{};
  unsigned char sk[crypto_sign_SECRETKEYBYTES], otherSk[crypto_sign_SECRETKEYBYTES];
  crypto_sign_keypair(pk.data(), sk);
  crypto_sign_keypair(otherPk.data(), otherSk);
  const std::string file = "\x7f" "ELF new executable\0with nul bytes" + std::string(5000, '\xAA');
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
  const fs::path data = fs::path(NORVANE_SOURCE_DIR) / "tests/services/data";
  const std::string check = ReadAll(data / "release-key-check.txt");
  ASSERT_FALSE(check.empty());
  EXPECT_TRUE(VerifyUpdateSignature(Bytes(check), check.size(), ReadAll(data / "release-key-check.txt.sig"), TrustedUpdateKey()));
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
