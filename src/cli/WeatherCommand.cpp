// norvane-cli weather: the airport weather screen without a window.
#include <QCoreApplication>

#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "online/ServerAddresses.hpp"
#include "weather/WeatherClient.hpp"

namespace norvane::cli {

namespace {

// The screen's two-line failure text, or a report of several lines, on one output line.
std::string OneLine(std::string text) {
  for (size_t at; (at = text.find("\r\n")) != std::string::npos;) text.replace(at, 2, " ");
  for (char& c : text)
    if (c == '\n') c = ' ';
  return text;
}

}  // namespace

void RegisterWeatherCommand(CLI::App& app) {
  struct Options {
    std::string icao;
    bool taf = false;
    bool decode = false;
    std::optional<double> elevation;
  };
  auto options = std::make_shared<Options>();
  CLI::App* cmd = app.add_subcommand(
      "weather", std::string("Latest METAR report (or TAF forecast) of an airport from the weather server.\n"
                             "Server: $") +
                     kWeatherUrlVariable + ", default " + kDefaultWeatherUrl +
                     ".\nPrints recorded (the file's time line, UTC) and report; a failure prints "
                     "message and exits 1.");
  cmd->add_option("--icao", options->icao, "ICAO location indicator: exactly four letters A-Z (e.g. EGLL)")->required();
  cmd->add_flag("--taf", options->taf, "Fetch the TAF forecast instead of the METAR report");
  cmd->add_flag("--decode", options->decode,
                "Print the report decoded, one \"key: text\" line per element (with --json its typed groups), "
                "as metar-decode does");
  AddElevationOption(*cmd, options->elevation);
  cmd->callback([options] {
    std::string code = options->icao;
    for (char& c : code)
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (!IsIcaoCode(code))
      throw UsageError("--icao: expected a four-letter ICAO location indicator (A-Z), got \"" + options->icao + "\"");
    CheckElevation(options->elevation);
    // Qt Network needs an application object for its event loop.
    int argc = 1;
    char name[] = "norvane-cli";
    char* argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);

    const WeatherResult result = FetchWeather(code, options->taf ? WeatherKind::Taf : WeatherKind::Metar);
    if (result.code == 0 && options->decode) {
      const bool json = GlobalOutputMode().json;
      WriteOutput(stdout, (json ? "" : "recorded: " + result.recorded + "\n") +
                              DecodedOutput(result.report, options->elevation, json));
      ExitStatus() = kExitOk;
      return;
    }
    ResultPrinter printer;
    if (result.code == 0) {
      printer.Add("recorded", result.recorded);
      printer.Add("report", OneLine(result.report));
    } else {
      printer.Fail(OneLine(WeatherErrorText(result.code)));
    }
    ExitStatus() = printer.Print();
  });
}

}  // namespace norvane::cli
