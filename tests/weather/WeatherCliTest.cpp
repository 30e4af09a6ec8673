// norvane-cli weather, run as a program against a local weather server: the rows of
// data/weather-cli.txt, and a hostile server.
#include <gtest/gtest.h>

#include <QDate>
#include <QJsonDocument>

#include <sstream>
#include <string>

#include "support/Golden.hpp"
#include "support/LocalHttpServer.hpp"
#include "support/RunProcess.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

TEST(WeatherCli, PrintsWhatTheScreenShows) {
  const std::string year = std::to_string(QDate::currentDate().year());
  const std::string metar = year + "/03/14 09:50\nEGLL 140950Z 24012KT\n";
  const std::string taf = year + "/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT \n  TEMPO 1412/1418 BKN014\n";
  const std::string evil = year +
                           "/03/14 09:50\x1b]0;owned\x07\nEDDM M\xfcnchen \x1b[2J\x9b"
                           "31m\r\n";
  test::LocalHttpServer server;
  server.Serve("/data/observations/metar/stations/EGLL.TXT", &metar);
  server.Serve("/data/forecasts/taf/stations/EGLL.TXT", &taf);
  server.Serve("/data/observations/metar/stations/EVIL.TXT", &evil);
  // A byte every 2 s for 12 s: only the overall deadline ends the transfer.
  server.Routes().Get("/data/observations/metar/stations/SLOW.TXT",
                      [&](const httplib::Request&, httplib::Response& res) { server.Drip(res, 6); });
  const std::string url = "NORVANE_WEATHER_URL=" + server.Start() + "/data";
  const auto cli = [&](std::vector<std::string> args) {
    args.insert(args.begin(), {url, "NORVANE_TRANSFER_DEADLINE_MS=3000", NORVANE_CLI});
    return test::RunProcess("/usr/bin/env", args);
  };

  for (const auto& r : test::ReadGolden("weather/data/weather-cli.txt", "cli")) {
    std::vector<std::string> args;
    std::istringstream words(r[1]);
    for (std::string word; words >> word;) args.push_back(word);
    const test::ProcessResult run = cli(args);
    std::string want = r[2];
    for (size_t i; (i = want.find("$YEAR")) != std::string::npos;) want.replace(i, 5, year);
    EXPECT_EQ(run.status, std::stoi(r[0])) << r.where << "\n" << run.err;
    EXPECT_EQ(run.out.substr(0, want.size()), want) << r.where;
    if (run.status == 2) {
      EXPECT_NE(run.err.find("--icao"), std::string::npos) << run.err;
    }
  }

  // Escape sequences and Latin-1 from the server: no control byte reaches the terminal, and
  // --json is UTF-8 that a strict parser takes.
  const std::string text = cli({"weather", "--icao", "EVIL"}).out;
  EXPECT_EQ(text.find_first_of("\x1b\x07\r\x9b"), std::string::npos) << text;
  EXPECT_NE(text.find("EDDM M\u00fcnchen"), std::string::npos) << text;
  QJsonParseError error;
  const QJsonDocument json =
      QJsonDocument::fromJson(QByteArray::fromStdString(cli({"--json", "weather", "--icao", "EVIL"}).out), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  EXPECT_TRUE(json["report"].toString().startsWith(QString::fromUtf8("EDDM M\u00fcnchen")));
}

}  // namespace
}  // namespace norvane
