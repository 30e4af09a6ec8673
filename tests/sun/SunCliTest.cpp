// norvane-cli sun, end to end: one row per mode, one per kind of error. The times are SunTimesTest's.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

TEST(SunCli, OneRowPerModeAndKindOfError) {
  struct Row { std::vector<std::string> args; int status; const char *out, *err; };
  const Row rows[] = {
      {{"sun", "--at", "0,0", "--date", "2009-03-21", "--lt-offset", "2", "--twilight", "astronomical"}, 0,
       "sunrise: 08:04\nsunset: 20:10\ndawn: 06:55\ndusk: 21:19\n", ""},
      // A negative latitude after a blank is a value, not an option.
      {{"--json", "sun", "--at", "-78,0", "--date", "2009-06-21"}, 1,
       "{\"sunrise\": \"None\", \"sunset\": \"None\", \"dawn\": \"None\", \"dusk\": \"None\", "
       "\"message\": \"Permanent day/night\"}\n", ""},
      {{"--json", "--raw", "sun", "--at", "0,0", "--date", "2000-02-29"}, 0, nullptr, ""},  // a leap day of a century
      {{"sun", "--at", "0,0", "--date", "1900-02-29"}, 2, "",
       "error: --date: \"1900-02-29\" is not a calendar date from 1900-01-01 to 2100-12-31\n"},
      {{"sun", "--at", "90,0", "--date", "2009-03-21"}, 2, "", "error: --at"},
      {{"sun", "--at", "0,0", "--date", "2009-03-21", "--twilight", "dark"}, 2, "", "error: --twilight"},
  };
  for (const Row& r : rows) {
    const auto res = norvane::test::RunCli(r.args);
    EXPECT_EQ(res.status, r.status) << r.args[2] << " " << res.err;
    if (r.out) EXPECT_EQ(res.out, r.out) << r.args[2];
    EXPECT_EQ(res.err.rfind(r.err, 0), 0u) << res.err;
  }
}
