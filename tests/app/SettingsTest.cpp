#include "app/Settings.hpp"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "app/Platform.hpp"
#include "support/Golden.hpp"
#include "support/RunProcess.hpp"
#include "support/TempDir.hpp"
#include "support/Unprivileged.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;
using norvane::test::ReadWhole;
using norvane::test::TempDir;
namespace fs = std::filesystem;

TEST(Settings, ReadRulesForRangesBlanksAndCase) {
  const std::map<std::string, int16_t Settings::*> field = {
      {"LTOffset", &Settings::LTOffset},       {"DefMVYear", &Settings::DefMVYear},
      {"DefMVModel", &Settings::DefMVModel},   {"DefaultUnitSystem", &Settings::DefaultUnitSystem},
      {"Synchronize", &Settings::Synchronize}, {"AutoMV", &Settings::AutoMV},
      {"IniTop", &Settings::IniTop},           {"IniLeft", &Settings::IniLeft},
      {"Colours", &Settings::Colours}};
  for (const GoldenRow& r : ReadGolden("app/data/settings.txt", "read")) {
    std::string text;
    for (char c : r[0]) text += c == '|' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(ParseSettings(text + "\r\n").*field.at(r[1]), r.Num(2)) << r.where;
  }
  EXPECT_EQ(ParseSettings("[NavDB]\nDBPath=  /data/europe.dat  \n").DBPath, "/data/europe.dat");
  const std::string longPath = "/" + std::string(599, 'x');  // cut to the 511 characters a 512-byte buffer holds
  EXPECT_EQ(ParseSettings("[NavDB]\nDBPath=" + longPath + "\n").DBPath, longPath.substr(0, 511));
  // A UTF-8 byte order mark (Windows editors) used to hide the whole first section.
  EXPECT_EQ(ParseSettings("\xEF\xBB\xBF[Options]\r\nLTOffset=5\r\n").LTOffset, 5);
}

TEST(Settings, GarbageAndLinkSectionRules) {
  std::string garbage(4096, '\0');
  for (size_t i = 0; i < garbage.size(); ++i) garbage[i] = static_cast<char>((i * 7919) % 256);
  EXPECT_EQ(ParseSettings(garbage), Settings{});

  // The links read are tidied (the rule itself is LinkTableTest's): a blank title dropped, sorted.
  const Settings s = ParseSettings("[DBLinks]\nTitle0=zulu\nLink0=z\nTitle1=   \nLink1=blank\nTitle2=Alpha\nLink2=a\n");
  ASSERT_EQ(s.Links.count, 2);
  EXPECT_EQ(s.Links.entries[0].url + s.Links.entries[1].url, "az");
  // An empty first title after tidying means the defaults.
  EXPECT_EQ(ParseSettings("[DBLinks]\nTitle0=\nLink0=x\n").Links, LinkTable::Defaults());
}

TEST(Settings, WritesTheExactLinesAndReadsThemBack) {
  Settings s;
  s.Synchronize = 0;
  s.RemindPosition = 1;
  s.PrevAutoUpdate = "2026-11-22";
  s.DefaultUnitSystem = 1;
  s.DefMVYear = 2007;
  s.DefMVModel = 1;
  s.AutoMV = 1;
  s.LTOffset = -5;
  s.IniTop = 1500;
  s.IniLeft = 30;
  s.DBPath = "/home/pilot/europe.dat";
  s.Links = LinkTable{};
  s.Links.entries[0] = {"Weather", "https://example.org/wx"};
  s.Links.count = 1;
  const std::string expected =
      "[Options]\r\nSynchronize=0\r\nRemindPosition=1\r\nAutoUpdateCheck=0\r\nPrevAutoUpdate=2026-11-22\r\n"
      "DefaultUnitSystem= 1 \r\nDefMVYear=2007\r\nDefMVModel=1\r\nAutoMV=1\r\nLTOffset=-5\r\n\r\n"
      "[WinPos]\r\nIniTop=1500\r\nIniLeft=30\r\n\r\n[NavDB]\r\nDBPath=/home/pilot/europe.dat\r\n\r\n"
      "[DBLinks]\r\nTitle0=Weather\r\nLink0=https://example.org/wx\r\n";
  EXPECT_EQ(SerializeSettings(s), expected);
  EXPECT_EQ(SerializeSettings(ParseSettings(expected)), expected);  // a file without Colours stays as it was
  s.Colours = 1;                                                    // the night colours: one line more
  std::string night = expected;
  night.insert(night.find("\r\n\r\n[WinPos]"), "\r\nColours=1");
  EXPECT_EQ(SerializeSettings(s), night);
  EXPECT_EQ(ParseSettings(night), s);
  s.Colours = 0;

  TempDir dir;
  const fs::path file = dir.path / kSettingsFileName;
  ASSERT_TRUE(WriteSettings(file, s));
  EXPECT_EQ(ReadWhole(file), expected);
  EXPECT_EQ(ReadSettings(file), s);
  EXPECT_FALSE(fs::exists(dir.path / "Norvane.ini.tmp"));
}

TEST(Settings, TextValuesWithBlanksOrQuotesReadBackWhole) {
  // The reader strips blanks and one pair of quotes; such values were written bare and changed
  // at every start (" /data/x.dat" lost its blank, "'home'" its quotes).
  Settings s;
  s.DBPath = "  /data/with blanks.dat ";
  s.PrevAutoUpdate = "'14/03/2026'";
  s.Links = LinkTable{};
  s.Links.entries[0] = {"\"Quoted\"", "  https://example.org/a b  "};
  s.Links.count = 1;
  const std::string text = SerializeSettings(s);
  EXPECT_NE(text.find("DBPath=\"  /data/with blanks.dat \"\r\n"), std::string::npos);
  EXPECT_EQ(ParseSettings(text), s);
  // Ordinary values keep their plain form.
  EXPECT_NE(SerializeSettings(Settings{}).find("DBPath=\r\n"), std::string::npos);
}

TEST(Settings, WriteFailuresKeepTheOldFileAndSayWhy) {
  TempDir dir;
  const fs::path file = dir.path / kSettingsFileName;
  Settings old;
  old.LTOffset = 3;
  ASSERT_TRUE(WriteSettings(file, old));
  const std::string before = ReadWhole(file);
  Settings changed = old;
  changed.LTOffset = -7;
  std::string error;

  // A full disk.
  norvane::testing::SetWriteFault(ENOSPC);
  EXPECT_FALSE(WriteSettings(file, changed, &error));
  norvane::testing::SetWriteFault(0);
  EXPECT_EQ(error, "cannot write " + file.string() + ".tmp: No space left on device");
  EXPECT_EQ(ReadWhole(file), before);
  EXPECT_FALSE(fs::exists(dir.path / "Norvane.ini.tmp"));

  // A folder that cannot take the temporary file: its name is held by a non-empty folder.
  fs::create_directories(dir.path / "Norvane.ini.tmp" / "inside");
  EXPECT_FALSE(WriteSettings(file, changed, &error));
  EXPECT_EQ(error.rfind("cannot create " + file.string() + ".tmp: ", 0), 0u) << error;
  EXPECT_EQ(ReadWhole(file), before);
  EXPECT_TRUE(fs::exists(dir.path / "Norvane.ini.tmp" / "inside"));  // not ours to remove
  fs::remove_all(dir.path / "Norvane.ini.tmp");

  // A folder that is a regular file.
  std::ofstream(dir.path / "plain") << "x";
  EXPECT_FALSE(WriteSettings(dir.path / "plain" / kSettingsFileName, changed, &error));
  EXPECT_EQ(error, "cannot create " + (dir.path / "plain" / kSettingsFileName).string() + ".tmp: Not a directory");

  EXPECT_EQ(ReadSettings(file), old);
  ASSERT_TRUE(WriteSettings(file, changed));
  EXPECT_EQ(ReadSettings(file), changed);
}

TEST(Settings, RewritingKeepsModeAndOwnerAndLeavesAReadOnlyFileAlone) {
  TempDir dir;
  const fs::path file = dir.path / kSettingsFileName;
  ASSERT_TRUE(WriteSettings(file, Settings{}));
  const fs::perms rw_r = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read,
                  r_r = rw_r & ~fs::perms::owner_write;
  fs::permissions(file, rw_r);
  const bool root = ::geteuid() == 0;
  ASSERT_TRUE(!root || ::chown(file.c_str(), 65534, 65534) == 0);  // nobody's file, rewritten by root
  ASSERT_TRUE(WriteSettings(file, Settings{}));                    // came back 0644 and root's
  struct stat st {};
  ASSERT_EQ(::stat(file.c_str(), &st), 0);
  EXPECT_EQ(fs::perms(st.st_mode & 07777), rw_r);
  EXPECT_EQ(st.st_uid, root ? 65534u : ::geteuid());
  fs::permissions(file, r_r);  // the user's protection holds against root too
  std::string error;
  EXPECT_FALSE(WriteSettings(file, Settings{}, &error));
  EXPECT_EQ(error, "cannot replace " + file.string() + ": the file is read-only");
  EXPECT_EQ(fs::status(file).permissions(), r_r);
}

TEST(Settings, PermissionsRefuseAsTheySayForAnOrdinaryUser) {
  if (!norvane::test::RunsUnprivileged()) return;
  TempDir dir;
  const fs::path file = dir.path / kSettingsFileName;
  ASSERT_TRUE(WriteSettings(file, Settings{}));
  std::string error;
  fs::permissions(file, fs::perms::none);  // unreadable: reported, not taken for a first start
  ReadSettings(file, &error);
  EXPECT_EQ(error, "cannot read " + file.string() + ": Permission denied");
  fs::permissions(dir.path, fs::perms::owner_read | fs::perms::owner_exec);  // a read-only folder
  EXPECT_FALSE(WriteSettings(dir.path / "new.ini", Settings{}, &error));
  EXPECT_EQ(error, "cannot create " + (dir.path / "new.ini").string() + ".tmp: Permission denied");
  fs::permissions(dir.path, fs::perms::owner_all);
}

TEST(Settings, CrashBetweenWritingAndRenamingLosesNothing) {
  TempDir dir;
  const fs::path file = dir.path / kSettingsFileName;
  const fs::path tmp = dir.path / "Norvane.ini.tmp";
  Settings old;
  old.DefMVYear = 2008;
  ASSERT_TRUE(WriteSettings(file, old));
  // The crash left half a new file beside the old one.
  const std::string half = SerializeSettings(Settings{}).substr(0, 40);
  std::ofstream(tmp, std::ios::binary) << half;
  std::string error;
  EXPECT_EQ(ReadSettings(file, &error), old);
  EXPECT_EQ(error, "");
  Settings next = old;
  next.AutoMV = 1;
  ASSERT_TRUE(WriteSettings(file, next, &error)) << error;
  EXPECT_EQ(ReadSettings(file), next);
  EXPECT_FALSE(fs::exists(tmp));

  // A leftover name that links elsewhere is replaced, never written through: the file it
  // points to used to be overwritten with the settings.
  const fs::path victim = dir.path / "victim.txt";
  std::ofstream(victim) << "keep me";
  fs::create_symlink(victim, tmp);
  ASSERT_TRUE(WriteSettings(file, old, &error)) << error;
  EXPECT_EQ(ReadWhole(victim), "keep me");
  EXPECT_EQ(ReadSettings(file), old);
  EXPECT_FALSE(fs::exists(tmp));
}

TEST(Settings, UnreadableFilesAreReportedNotTakenForAFirstStart) {
  TempDir dir;
  std::string error = "unchanged";
  EXPECT_EQ(ReadSettings(dir.path / "absent.ini", &error), Settings{});
  EXPECT_EQ(error, "unchanged");  // the first start is not an error

  fs::create_directories(dir.path / "folder.ini");
  EXPECT_EQ(ReadSettings(dir.path / "folder.ini", &error), Settings{});
  EXPECT_EQ(error, "cannot read " + (dir.path / "folder.ini").string() + ": Is a directory");

  {
    std::ofstream big(dir.path / "big.ini", std::ios::binary);
    big << "[Options]\r\nLTOffset=5\r\n" << std::string(2 << 20, ';');
  }
  error.clear();
  EXPECT_EQ(ReadSettings(dir.path / "big.ini", &error), Settings{});
  EXPECT_EQ(error, (dir.path / "big.ini").string() + " is larger than 1 MB, not a settings file");
}

TEST(Settings, AppPathHonoursTheOverrideAndEndsWithASeparator) {
  TempDir dir;
  const fs::path over = dir.path / "app";
  setenv("NORVANE_APP_DIR", over.string().c_str(), 1);
  const std::string p = ResolveAppPath("/nonexistent");
  unsetenv("NORVANE_APP_DIR");
  EXPECT_EQ(p, over.string() + "/");
  EXPECT_TRUE(fs::is_directory(over));
  EXPECT_EQ(ResolveAppPath(dir.path), dir.path.string() + "/");  // writable program folder
}
