// Airport weather end to end: a local weather server laid out like NOAA's.
#include <gtest/gtest.h>

#include <QDate>

#include <cstdlib>
#include <string>

#include "LocalHttpServer.hpp"
#include "services/Internet.hpp"
#include "services/ServerAddresses.hpp"
#include "services/WeatherClient.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

std::string Year(int offset = 0) { return std::to_string(QDate::currentDate().year() + offset); }

class WeatherClientTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::SetConnectionState(true);
    testing::SetStallTimeout(std::chrono::milliseconds(400));
    auto& r = server_.Routes();
    const std::string metar = "/data/observations/metar/stations/";
    const std::string taf = "/data/forecasts/taf/stations/";
    const auto serve = [&r](const std::string& path, std::string body) {
      r.Get(path, [body](const httplib::Request&, httplib::Response& res) { res.set_content(body, "text/plain"); });
    };
    serve(metar + "EGLL.TXT", Year() + "/03/14 09:50\nEGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\n");
    serve(taf + "EGLL.TXT", Year() + "/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030 \n"
                                     "      TEMPO 1412/1418 BKN014\n");
    serve(metar + "LFOK.TXT", Year(-1) + "/12/31 23:30\nLFOK 312330Z AUTO 00000KT CAVOK 01/M01 Q1025\n");
    r.Get(metar + "KJFK.TXT", [this](const httplib::Request&, httplib::Response& res) {
      server_.Stall();
      res.set_content("late", "text/plain");
    });
    setenv(kWeatherUrlVariable, (server_.Start() + "/data").c_str(), 1);
  }
  void TearDown() override {
    server_.Stop();
    unsetenv(kWeatherUrlVariable);
    testing::SetConnectionState(std::nullopt);
    testing::SetStallTimeout(std::chrono::seconds(20));
  }
  test::LocalHttpServer server_;
};

TEST_F(WeatherClientTest, ReportsOfThisYearAndFailures) {
  struct Row {
    const char* code;
    WeatherKind kind;
    int16_t err;
    std::string recorded, report;
  };
  const Row rows[] = {
      {"EGLL", WeatherKind::Metar, 0, Year() + "/03/14 09:50", "EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG"},
      {"EGLL", WeatherKind::Taf, 0, Year() + "/03/14 11:02",
       "TAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030\nTEMPO 1412/1418 BKN014"},
      {"LFOK", WeatherKind::Metar, 5, "", ""},  // the station's file is last year's
      {"ZZZZ", WeatherKind::Metar, 5, "", ""},  // unknown station: the server's error page
      {"LFOK", WeatherKind::Taf, 5, "", ""},
      {"KJFK", WeatherKind::Metar, 4, "", ""},  // the server never answers
  };
  for (const Row& r : rows) {
    const WeatherResult w = FetchWeather(r.code, r.kind);
    EXPECT_EQ(w.code, r.err) << r.code;
    EXPECT_EQ(w.recorded, r.recorded) << r.code;
    EXPECT_EQ(w.report, r.report) << r.code;
  }
  server_.Stop();
  EXPECT_EQ(FetchWeather("EGLL", WeatherKind::Metar).code, 3);  // server gone: connection refused
}

TEST_F(WeatherClientTest, NoConnection) {
  unsetenv(kWeatherUrlVariable);  // the real server, which must not be contacted
  testing::SetConnectionState(false);
  EXPECT_EQ(FetchWeather("EGLL", WeatherKind::Metar).code, 1);
}

}  // namespace
}  // namespace norvane
