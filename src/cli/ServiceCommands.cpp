#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {

void RegisterServiceCommands(CLI::App& app) {
  RegisterNavDBCommands(app);
  RegisterWeatherCommand(app);
  RegisterMetarDecodeCommand(app);
}

}  // namespace norvane::cli
