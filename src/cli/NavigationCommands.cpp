#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {

void RegisterNavigationCommands(CLI::App& /*app*/) {}

}  // namespace norvane::cli
