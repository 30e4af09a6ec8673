#pragma once
// Each domain adds its subcommands here; main() calls every Register* once.

namespace CLI {
class App;
}

namespace norvane::cli {

void RegisterAtmosphereCommands(CLI::App& app);   // atmosphere speed changeover density-altitude stall descent
void RegisterNavigationCommands(CLI::App& app);   // tracks point intersection magvar inverse direct
void RegisterManoeuvreCommands(CLI::App& app);    // wind turn holding
void RegisterSunCommands(CLI::App& app);          // sun
void RegisterToolCommands(CLI::App& app);         // convert angle calc
void RegisterServiceCommands(CLI::App& app);      // navdb weather
void RegisterNavDBCommands(CLI::App& app);        // navdb (called by RegisterServiceCommands)
void RegisterNavScreenCommands(CLI::App& app);    // tracks point intersection (called by RegisterNavigationCommands)
void RegisterWeatherCommand(CLI::App& app);       // weather (WeatherCommand.cpp)

}  // namespace norvane::cli
