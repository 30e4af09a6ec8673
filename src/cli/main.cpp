// norvane-cli: every calculator without a window, for scripts and batch work.
#include <clocale>
#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "C");
  using namespace norvane::cli;
  CLI::App app{"Norvane aeronautical calculator, command-line edition.\n"
               "Each command prints one \"key: text\" line per result, exactly as the screen shows it.",
               "norvane-cli"};
  app.set_version_flag("--version", "norvane-cli " + std::to_string(NORVANE_VERSION_MAJOR) + "." +
                                        std::to_string(NORVANE_VERSION_MINOR));
  app.require_subcommand(1);
  app.fallthrough();
  OutputMode& mode = GlobalOutputMode();
  app.add_flag("--raw", mode.raw, "Print numbers at full precision (%.17g) instead of the screen's mask");
  app.add_flag("--json", mode.json, "Print the results as one JSON object");
  app.footer("Exit status: 0 results printed, 1 the calculation ended in the screen's error text, "
             "2 bad or out-of-range input.\nRun 'norvane-cli COMMAND --help' for a command's options, "
             "units and ranges.");

  RegisterAtmosphereCommands(app);
  RegisterNavigationCommands(app);
  RegisterManoeuvreCommands(app);
  RegisterSunCommands(app);
  RegisterToolCommands(app);
  RegisterServiceCommands(app);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitUsage;
  } catch (const UsageError& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitComputation;
  }
  std::fflush(stdout);
  return ExitStatus();
}
