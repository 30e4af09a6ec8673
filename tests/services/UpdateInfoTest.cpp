// Version file, the once-a-day rule and the texts of the update check.
#include <gtest/gtest.h>

#include <cstdlib>

#include "services/ServerAddresses.hpp"
#include "services/UpdateInfo.hpp"

namespace norvane {
namespace {

TEST(UpdateInfo, VersionFile) {
  struct Row {
    const char* text;
    int16_t version;
  };
  const Row rows[] = {
      {"2.33", 233}, {"3.00", 300}, {"2,40", 240},
      {"10.01", 0},  // five characters: no data
      {"2.3", 0},    {"2.33\n", 0}, {"a.bc", 0}, {"<htm", 0},
  };
  for (const Row& r : rows) EXPECT_EQ(ParseVersionText(r.text), r.version) << r.text;
  EXPECT_EQ(VersionText(233), "2.33");
  EXPECT_EQ(VersionText(305), "3.05");
  EXPECT_EQ(ParseVersionText(VersionText(OwnVersionNumber())), OwnVersionNumber());
}

TEST(UpdateInfo, Verdicts) {
  EXPECT_EQ(JudgeServerVersion(232, 232), ServerVersionVerdict::NoUpdate);
  EXPECT_EQ(JudgeServerVersion(231, 232), ServerVersionVerdict::NoUpdate);
  EXPECT_EQ(JudgeServerVersion(233, 232), ServerVersionVerdict::NewVersion);
  EXPECT_EQ(JudgeServerVersion(0, 232), ServerVersionVerdict::NoData);
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NoData), "Unable to retrieve version data");
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NoUpdate), "No update available");
  EXPECT_STREQ(VerdictText(ServerVersionVerdict::NewVersion), "A new version is available");
  EXPECT_EQ(UpdateQuestionText(233), "A new Norvane version (2.33) is available\r\nWould you like to update it now ?");
}

TEST(UpdateInfo, OnceADay) {
  EXPECT_TRUE(AutoUpdateCheckDue(1, "", "14/03/2025", true));
  EXPECT_TRUE(AutoUpdateCheckDue(1, "13/03/2025", "14/03/2025", true));
  EXPECT_FALSE(AutoUpdateCheckDue(1, "14/03/2025", "14/03/2025", true));  // second start that day
  EXPECT_FALSE(AutoUpdateCheckDue(0, "", "14/03/2025", true));
  EXPECT_FALSE(AutoUpdateCheckDue(1, "", "14/03/2025", false));
}

TEST(ServerAddresses, DefaultsAndOverrides) {
  unsetenv(kWeatherUrlVariable);
  unsetenv(kUpdateUrlVariable);
  EXPECT_EQ(WeatherBaseUrl(), "https://tgftp.nws.noaa.gov/data");
  EXPECT_EQ(UpdateBaseUrl(), kDefaultUpdateUrl);
  setenv(kWeatherUrlVariable, " http://127.0.0.1:8080/wx/ ", 1);
  setenv(kUpdateUrlVariable, "", 1);
  EXPECT_EQ(WeatherBaseUrl(), "http://127.0.0.1:8080/wx");
  EXPECT_EQ(UpdateBaseUrl(), kDefaultUpdateUrl);
  unsetenv(kWeatherUrlVariable);
  unsetenv(kUpdateUrlVariable);
}

}  // namespace
}  // namespace norvane
