// The update manifest: what reads as one.
#include <gtest/gtest.h>

#include <string>

#include "services/UpdateManifest.hpp"

namespace norvane {
namespace {

const std::string kHash = "9f86d081884c7d659a2feaa0c55ad015a3bf4f1b2b0b822cd15d6c15b0f00a08";  // SHA-256("test")

TEST(UpdateManifest, ReadsOnlyWellFormedManifests) {
  const std::string h = "Norvane update manifest 1\n";
  struct Row {
    std::string text;
    int16_t version;  // 0: refused
    const char* platform;
    int64_t size;
  };
  const Row rows[] = {
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 23456789\nsha256: " + kHash + "\n", 233, "linux-x86_64", 23456789},
      {"Norvane update manifest 1\r\nsha256: " + kHash + "\r\nsize: 1\r\nplatform: macos-arm64\r\nversion: 327.67\r\n", 32767,
       "macos-arm64", 1},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash, 0, "", 0},  // no final line end
      {h + "version: 2.33\nversion: 2.34\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash + "\nurl: x\n", 0, "", 0},
      {h + "version: 2.3\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 327.68\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 2.33\nplatform: Linux x86\nsize: 1\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 0\nsha256: " + kHash + "\n", 0, "", 0},
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 209715201\nsha256: " + kHash + "\n", 0, "", 0},  // > 200 MiB
      {h + "version: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash.substr(1) + "g\n", 0, "", 0},
      {"Norvane update manifest 2\nversion: 2.33\nplatform: linux-x86_64\nsize: 1\nsha256: " + kHash + "\n", 0, "", 0},
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

}  // namespace
}  // namespace norvane
