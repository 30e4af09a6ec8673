// The page's entry into norvane-cli: one command line per call, with standard input, output and
// error as the files /stdin, /stdout and /stderr of the module's memory file system, so that the
// page gets the bytes the desktop's norvane-cli prints.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include <emscripten/emscripten.h>

#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"

namespace norvane::cli {
// The page has neither network nor waypoint database: of the service commands it keeps the
// METAR/TAF decoder. Replaces ServiceCommands.cpp, which this build leaves out.
void RegisterServiceCommands(CLI::App& app) { RegisterMetarDecodeCommand(app); }
}  // namespace norvane::cli

// `args`: `count` arguments, each ended by a NUL. Returns norvane-cli's exit status.
extern "C" EMSCRIPTEN_KEEPALIVE int norvane_cli(const char* args, int count) {
  std::vector<std::string> words;
  for (int i = 0; i < count; ++i) {
    words.emplace_back(args);
    args += words.back().size() + 1;
  }
  std::string program = "norvane-cli";
  std::vector<char*> argv{program.data()};
  for (std::string& w : words) argv.push_back(w.data());
  argv.push_back(nullptr);
  if (!std::freopen("/stdin", "r", stdin) || !std::freopen("/stdout", "w", stdout) ||
      !std::freopen("/stderr", "w", stderr))
    return norvane::cli::kExitComputation;
  std::cin.clear();
  const int status = norvane::cli::RunCommandLine(int(argv.size()) - 1, argv.data());
  std::fflush(stdout);
  std::fflush(stderr);
  return status;
}
