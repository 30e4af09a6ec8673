// norvane-cli: every calculator without a window, for scripts and batch work.
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>

#include "app/Platform.hpp"
#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace {
// Flushes what is still buffered; a full disk or a closed output must not pass for success.
int FinishOutput(int status) {
  errno = 0;
  std::cout.flush();
  const bool flushed = std::fflush(stdout) == 0;
  if (flushed && !std::ferror(stdout) && std::cout) return status;
  const int why = errno;
  std::fprintf(stderr, "error: cannot write the output%s%s\n", why ? ": " : "", why ? std::strerror(why) : "");
  return norvane::cli::kExitComputation;
}
// Help and version texts, written like results so that a failed write is reported.
int PrintHelp(CLI::App& app, const CLI::Error& e) {
  std::ostringstream out, err;
  const int status = app.exit(e, out, err);
  std::fputs(err.str().c_str(), stderr);
  try {
    norvane::cli::WriteOutput(stdout, out.str());
  } catch (const norvane::cli::OutputError& x) {
    std::fprintf(stderr, "error: %s\n", x.what());
    return norvane::cli::kExitComputation;
  }
  return status;
}
}  // namespace

// Starts afresh on every call: the web page runs one command line per calculation.
int norvane::cli::RunCommandLine(int argc, char** argv) {
  Catalogue().clear();
  GlobalOutputMode() = {};
  ExitStatus() = kExitOk;
  CLI::App app{
      "Norvane aeronautical calculator, command-line edition.\n"
      "Each command prints one \"key: text\" line per result, exactly as the screen shows it.",
      "norvane-cli"};
  app.set_version_flag("--version", "norvane-cli " + std::to_string(NORVANE_VERSION_MAJOR) + "." +
                                        std::to_string(NORVANE_VERSION_MINOR));
  app.require_subcommand(1);
  app.fallthrough();
  OutputMode& mode = GlobalOutputMode();
  app.add_flag("--raw", mode.raw, "Print numbers at full precision (%.17g) instead of the screen's mask");
  app.add_flag("--json", mode.json, "Print the results as one JSON object");
  app.footer(
      "Exit status: 0 results printed, 1 the calculation ended in the screen's error text, "
      "2 bad or out-of-range input.\nRun 'norvane-cli COMMAND --help' for a command's options, "
      "units and ranges.");

  RegisterAtmosphereCommands(app);
  RegisterNavigationCommands(app);
  RegisterManoeuvreCommands(app);
  RegisterSunCommands(app);
  RegisterToolCommands(app);
  RegisterTsdCommand(app);
  RegisterServiceCommands(app);
  RegisterDescribeCommand(app);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return PrintHelp(app, e);
  } catch (const CLI::CallForAllHelp& e) {
    return PrintHelp(app, e);
  } catch (const CLI::CallForVersion& e) {
    return PrintHelp(app, e);
  } catch (const CLI::ParseError& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitUsage;
  } catch (const OutputError& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitComputation;
  } catch (const UsageError& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "error: %s\n", e.what());
    return kExitComputation;
  }
  return FinishOutput(ExitStatus());
}

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "C");
  norvane::GuardStandardStreams();
  return norvane::cli::RunCommandLine(argc, argv);
}
