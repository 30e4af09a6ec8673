// norvane-cli weather, run as a program against a local weather server.
#include <gtest/gtest.h>

#include <QDate>
#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>

#include <string>

#include "LocalHttpServer.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

struct CliRun {
  int status;
  std::string out, err;
};

CliRun RunCli(const QStringList& args, const std::string& weatherUrl, const char* deadlineMs = nullptr) {
  QProcess process;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("NORVANE_WEATHER_URL", QString::fromStdString(weatherUrl));
  if (deadlineMs) env.insert("NORVANE_TRANSFER_DEADLINE_MS", deadlineMs);
  process.setProcessEnvironment(env);
  process.start(NORVANE_CLI, args);
  if (!process.waitForFinished(30000)) return {-1, "", "timed out"};
  return {process.exitCode(), process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

TEST(WeatherCli, PrintsWhatTheScreenShows) {
  const std::string year = std::to_string(QDate::currentDate().year());
  test::LocalHttpServer server;
  auto& r = server.Routes();
  r.Get("/data/observations/metar/stations/EGLL.TXT", [&](const httplib::Request&, httplib::Response& res) {
    res.set_content(year + "/03/14 09:50\nEGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\n", "text/plain");
  });
  r.Get("/data/forecasts/taf/stations/EGLL.TXT", [&](const httplib::Request&, httplib::Response& res) {
    res.set_content(year + "/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030 \n  TEMPO 1412/1418 BKN014\n",
                    "text/plain");
  });
  r.Get("/data/observations/metar/stations/EVIL.TXT", [&](const httplib::Request&, httplib::Response& res) {
    res.set_content(year + "/03/14 09:50\x1b]0;owned\x07\nEDDM M\xfcnchen \x1b[2J\x9b" "31m\r\n", "text/plain");
  });
  // A byte every 2 s for 12 s: only the overall deadline ends the transfer.
  r.Get("/data/observations/metar/stations/SLOW.TXT", [&](const httplib::Request&, httplib::Response& res) {
    server.Drip(res, 6);
  });
  const std::string base = server.Start() + "/data";

  struct Row {
    QStringList args;
    int status;
    std::string out;
  };
  const Row rows[] = {
      {{"weather", "--icao", "EGLL"}, 0,
       "recorded: " + year + "/03/14 09:50\nreport: EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\n"},
      {{"weather", "--icao", "egll", "--taf"}, 0,
       "recorded: " + year + "/03/14 11:02\nreport: TAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030 TEMPO 1412/1418 BKN014\n"},
      {{"--json", "weather", "--icao", "EGLL"}, 0,
       "{\"recorded\": \"" + year + "/03/14 09:50\", \"report\": \"EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\"}\n"},
      {{"weather", "--icao", "EGLL", "--taf", "--decode"}, 0,
       "recorded: " + year + "/03/14 11:02\nreport: Aerodrome forecast (TAF) for EGLL\n"
       "time: Issued on day 14 at 10:58 UTC\nvalidity: Valid from day 14 12:00 to day 15 18:00 UTC\n"
       "wind: Wind 240\u00B0 at 12 kt\nvisibility: Visibility 10 km or more\nclouds: Scattered clouds at 3,000 ft\n"
       "change: Temporarily between day 14 12:00 and day 14 18:00 UTC: Broken clouds at 1,400 ft\n"},
      {{"weather", "--icao", "ZZZZ"}, 1,
       "message: Unable to get weather data (unknown location or no available weather data)\n"},
      {{"weather", "--icao", "EGL"}, 2, ""},
      {{"weather", "--icao", "EG1L"}, 2, ""},
      {{"weather"}, 2, ""},
  };
  for (const Row& row : rows) {
    const CliRun run = RunCli(row.args, base);
    EXPECT_EQ(run.status, row.status) << row.args.join(' ').toStdString() << "\n" << run.err;
    EXPECT_EQ(run.out, row.out) << row.args.join(' ').toStdString();
  }
  EXPECT_NE(RunCli({"weather", "--icao", "EGL"}, base).err.find("four-letter"), std::string::npos);

  // Escape sequences and Latin-1 from the server: no control byte reaches the terminal, and
  // --json is UTF-8 that a strict parser takes.
  const CliRun text = RunCli({"weather", "--icao", "EVIL"}, base);
  EXPECT_EQ(text.out.find_first_of("\x1b\x07\r\x9b"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("EDDM M\u00fcnchen"), std::string::npos) << text.out;
  QJsonParseError error;
  const QJsonDocument json =
      QJsonDocument::fromJson(QByteArray::fromStdString(RunCli({"--json", "weather", "--icao", "EVIL"}, base).out), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  EXPECT_TRUE(json["report"].toString().startsWith(QString::fromUtf8("EDDM M\u00fcnchen")));

  const CliRun slow = RunCli({"weather", "--icao", "SLOW"}, base, "3000");
  EXPECT_EQ(slow.status, 1);
  EXPECT_EQ(slow.out, "message: Read data error\n");

  server.Stop();
  const CliRun refused = RunCli({"weather", "--icao", "EGLL"}, test::RefusingUrl());
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "message: Invalid URL\n");
}

}  // namespace
}  // namespace norvane
