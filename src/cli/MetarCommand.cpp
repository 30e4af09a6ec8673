// norvane-cli metar-decode: METAR and TAF reports from standard input, decoded without any network.
#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "online/ServerText.hpp"
#include "weather/MetarDecoder.hpp"
#include "weather/MetarJson.hpp"
#include "weather/MetarText.hpp"

namespace norvane::cli {

std::string DecodedOutput(const std::string& report, std::optional<double> elevationFt, bool json) {
  const DecodedReport decoded = DecodeReport(report);
  if (json) return ReportJson(decoded, elevationFt) + "\n";
  std::string out;
  for (const DecodedLine& line : DescribeReport(decoded, elevationFt)) out += line.key + ": " + line.text + "\n";
  return out;
}

void AddElevationOption(CLI::App& cmd, std::optional<double>& elevationFt) {
  cmd.add_option("--elevation", elevationFt,
                 "Field elevation in ft (-1500 to 15000): adds the density altitude of a METAR with "
                 "temperature, dew point and QNH");
}

void CheckElevation(const std::optional<double>& elevationFt) {
  if (elevationFt) RequireRange("--elevation", *elevationFt, kFieldElevation.min, kFieldElevation.max, "ft");
}

void RegisterMetarDecodeCommand(CLI::App& app) {
  auto elevation = std::make_shared<std::optional<double>>();
  CLI::App* cmd = app.add_subcommand(
      "metar-decode",
      "Decodes METAR, SPECI and TAF reports read from standard input: one report per line, a TAF over "
      "several lines (lines starting with FM, BECMG, TEMPO, PROB, TX, TN or a blank continue it); a "
      "station file's time line is skipped.\nPrints one \"key: text\" line per element, a blank line "
      "between reports; with --json one JSON object per report and line. Groups that cannot be read "
      "are printed as undecoded. Exits 1 when standard input holds no report.");
  AddElevationOption(*cmd, *elevation);
  cmd->callback([elevation] {
    CheckElevation(*elevation);
    // Whatever the bytes, the output is UTF-8 without control characters.
    const std::string input =
        SafeServerText(std::string((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>()));
    const std::vector<std::string> reports = SplitReports(input);
    const bool json = GlobalOutputMode().json;
    std::string out;
    for (size_t i = 0; i < reports.size(); ++i) {
      if (i > 0 && !json) out += '\n';
      out += DecodedOutput(reports[i], *elevation, json);
    }
    if (reports.empty()) {
      out = json ? "{\"message\": \"No report on standard input\"}\n" : "message: No report on standard input\n";
    }
    WriteOutput(stdout, out);
    ExitStatus() = reports.empty() ? kExitComputation : kExitOk;
  });
}

}  // namespace norvane::cli
