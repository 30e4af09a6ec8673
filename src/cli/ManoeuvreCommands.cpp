#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {

void RegisterManoeuvreCommands(CLI::App& /*app*/) {}

}  // namespace norvane::cli
