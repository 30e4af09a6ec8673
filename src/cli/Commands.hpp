#pragma once
// Each domain adds its subcommands here; main() calls every Register* once.

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace norvane::cli {

void RegisterAtmosphereCommands(CLI::App& app);  // atmosphere speed changeover density-altitude stall descent
void RegisterNavigationCommands(CLI::App& app);  // tracks point intersection magvar inverse direct
void RegisterManoeuvreCommands(CLI::App& app);   // wind turn holding
void RegisterSunCommands(CLI::App& app);         // sun
void RegisterToolCommands(CLI::App& app);        // convert angle calc
void RegisterTsdCommand(CLI::App& app);          // tsd (TsdCommand.cpp)
void RegisterServiceCommands(CLI::App& app);     // navdb weather
void RegisterNavDBCommands(CLI::App& app);       // navdb (called by RegisterServiceCommands)
void RegisterNavScreenCommands(CLI::App& app);   // tracks point intersection (called by RegisterNavigationCommands)
void RegisterWeatherCommand(CLI::App& app);      // weather (WeatherCommand.cpp)
void RegisterMetarDecodeCommand(CLI::App& app);  // metar-decode (MetarCommand.cpp)

// Parses the command line, runs its command and returns the exit status (main.cpp).
int RunCommandLine(int argc, char** argv);

// Decoded METAR/TAF output shared by weather --decode and metar-decode (MetarCommand.cpp): "key: text"
// lines, or one JSON object on a line; --elevation adds the density altitude.
std::string DecodedOutput(const std::string& report, std::optional<double> elevationFt, bool json);
void AddElevationOption(CLI::App& cmd, std::optional<double>& elevationFt);
void CheckElevation(const std::optional<double>& elevationFt);

}  // namespace norvane::cli
