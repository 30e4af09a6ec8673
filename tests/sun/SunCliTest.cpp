// norvane-cli sun, end to end: the built binary with real arguments.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

namespace norvane {
namespace {

test::ProcessResult Sun(std::vector<std::string> args) {
  args.insert(args.begin(), "sun");
  return test::RunProcess(NORVANE_CLI, args);
}

TEST(SunCli, PrintsTheScreenTextsInTableOrder) {
  struct Row {
    std::vector<std::string> args;
    int status;
    const char* out;
  } rows[] = {
      {{"--at", "0,0", "--date", "2009-03-21"}, 0, "sunrise: 06:04\nsunset: 18:10\ndawn: 05:43\ndusk: 18:31\n"},
      {{"--at", "0,170", "--date", "2009-03-21"},
       0,
       "sunrise: 18:44\nsunset: 06:51\ndawn: 18:23\ndusk: 07:11\nmessage: Sunrise previous day\n"},
      {{"--at", "0,0", "--date", "2009-03-21", "--lt-offset", "2"},
       0,
       "sunrise: 08:04\nsunset: 20:10\ndawn: 07:43\ndusk: 20:31\n"},
      // A negative latitude after a blank is a value, not an option.
      {{"--at", "-78,0", "--date", "2009-06-21"},
       1,
       "sunrise: None\nsunset: None\ndawn: None\ndusk: None\nmessage: Permanent day/night\n"},
      {{"--at", "0,0", "--date", "2009-03-21", "--twilight", "astronomical"},
       0,
       "sunrise: 06:04\nsunset: 18:10\ndawn: 04:55\ndusk: 19:19\n"},
  };
  for (const Row& r : rows) {
    const auto res = Sun(r.args);
    EXPECT_EQ(res.status, r.status) << r.args[1] << " " << res.err;
    EXPECT_EQ(res.out, r.out) << r.args[1];
    EXPECT_EQ(res.err, "");
  }
}

TEST(SunCli, RawAndJsonCarryMinutesAfterMidnight) {
  const auto res = test::RunProcess(NORVANE_CLI, {"--json", "--raw", "sun", "--at", "0,0", "--date", "2009-03-21"});
  ASSERT_EQ(res.status, 0) << res.err;
  EXPECT_NE(res.out.find("\"sunrise\": 363.85"), std::string::npos) << res.out;
  const auto none = test::RunProcess(NORVANE_CLI, {"--json", "sun", "--at", "78,0", "--date", "2009-06-21"});
  EXPECT_EQ(none.out,
            "{\"sunrise\": \"None\", \"sunset\": \"None\", \"dawn\": \"None\", \"dusk\": \"None\", "
            "\"message\": \"Permanent day/night\"}\n");
}

TEST(SunCli, BadInputIsAUsageErrorNamingTheOption) {
  struct Row {
    std::vector<std::string> args;
    const char* mentions;
  } rows[] = {
      {{"--at", "90,0", "--date", "2009-03-21"}, "--at latitude"},
      {{"--at", "0,180", "--date", "2009-03-21"}, "--at longitude"},
      {{"--at", "0;0", "--date", "2009-03-21"}, "--at"},
      {{"--at", "0,0", "--date", "2009-02-29"}, "--date"},
      {{"--at", "0,0"}, "--date"},
      {{"--at", "0,0", "--date", "2009-03-21", "--lt-offset", "15"}, "--lt-offset"},
      {{"--at", "0,0", "--date", "2009-03-21", "--lt-offset", "1.5"}, "--lt-offset"},
      {{"--at", "0,0", "--date", "2009-03-21", "--twilight", "dark"}, "--twilight"},
  };
  for (const Row& r : rows) {
    const auto res = Sun(r.args);
    EXPECT_EQ(res.status, 2) << r.mentions;
    EXPECT_EQ(res.out, "");
    EXPECT_EQ(res.err.rfind("error: ", 0), 0u) << res.err;
    EXPECT_NE(res.err.find(r.mentions), std::string::npos) << res.err;
  }
}

TEST(SunCli, HelpStatesUnitsAndRanges) {
  const auto res = Sun({"--help"});
  EXPECT_EQ(res.status, 0);
  for (const char* s : {"--at", "89.983333", "--date", "YYYY-MM-DD", "--twilight", "nautical", "--lt-offset", "-12 to 14"})
    EXPECT_NE(res.out.find(s), std::string::npos) << s;
}

}  // namespace
}  // namespace norvane
