#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {

void RegisterAtmosphereCommands(CLI::App& /*app*/) {}

}  // namespace norvane::cli
