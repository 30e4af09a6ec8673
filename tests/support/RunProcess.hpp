#pragma once
// Runs a program with arguments (no shell interpretation of the arguments) and captures its
// standard output, standard error and exit status. For end-to-end tests of norvane-cli.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace norvane::test {

struct ProcessResult {
  int status = -1;
  std::string out, err;
};

inline std::string ShellQuote(const std::string& s) {
  std::string q = "'";
  for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return q + "'";
}

inline std::string ReadWhole(const std::filesystem::path& p) {
  std::ifstream in(p, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

// Where the child's standard streams come from and go to, instead of /dev/null and a capture file.
struct RunOptions {
  std::string stdinFile;       // read standard input from this file
  std::string stdoutRedirect;  // shell redirection target for standard output: "/dev/full", "&-" (closed)
};

inline ProcessResult RunProcess(const std::string& program, const std::vector<std::string>& args,
                                const RunOptions& options = {}) {
  namespace fs = std::filesystem;
  // Unique per call, also across test processes that CTest runs in parallel.
  static std::mt19937_64 rng{std::random_device{}()};
  const fs::path dir = fs::temp_directory_path();
  const std::string stem = "norvane-run-" + std::to_string(rng());
  const fs::path outFile = dir / (stem + ".out"), errFile = dir / (stem + ".err");
  std::string cmd = ShellQuote(program);
  for (const auto& a : args) cmd += " " + ShellQuote(a);
  const std::string out = options.stdoutRedirect.empty()     ? ShellQuote(outFile.string())
                          : options.stdoutRedirect[0] == '&' ? options.stdoutRedirect
                                                             : ShellQuote(options.stdoutRedirect);
  const std::string in = options.stdinFile.empty() ? "/dev/null" : ShellQuote(options.stdinFile);
  cmd += " >" + out + " 2>" + ShellQuote(errFile.string()) + " <" + in;
  const int raw = std::system(cmd.c_str());
  ProcessResult r;
  r.status = raw != -1 && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  r.out = ReadWhole(outFile);
  r.err = ReadWhole(errFile);
  std::error_code ec;
  fs::remove(outFile, ec);
  fs::remove(errFile, ec);
  return r;
}

#ifdef NORVANE_CLI
// Runs the built norvane-cli (NORVANE_CLI, the compile definition with its path) with `stdinText`
// as its standard input.
inline ProcessResult RunCli(const std::vector<std::string>& args, const std::string& stdinText = "") {
  if (stdinText.empty()) return RunProcess(NORVANE_CLI, args);
  static std::mt19937_64 rng{std::random_device{}()};
  const auto in = std::filesystem::temp_directory_path() / ("norvane-stdin-" + std::to_string(rng()));
  std::ofstream(in, std::ios::binary) << stdinText;
  ProcessResult r = RunProcess(NORVANE_CLI, args, {in.string(), ""});
  std::error_code ec;
  std::filesystem::remove(in, ec);
  return r;
}
#endif

}  // namespace norvane::test

namespace norvane::test {

// Runs a shell command line (for rows that need pipes or redirections) and captures its standard
// output; a line ending in 2>&1 gets standard error too.
struct ShellResult {
  int status = -1;
  std::string out;
};

inline ShellResult RunShell(const std::string& commandLine) {
  ShellResult r;
  FILE* pipe = popen(commandLine.c_str(), "r");
  if (!pipe) return r;
  char buf[4096];
  for (size_t n; (n = std::fread(buf, 1, sizeof buf, pipe)) > 0;) r.out.append(buf, n);
  const int raw = pclose(pipe);
  r.status = raw != -1 && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return r;
}

#ifdef NORVANE_CLI
// norvane-cli from a command line as a shell reads it (quotes allowed), standard error after
// standard output, `stdinText` piped in.
inline ShellResult RunCliLine(const std::string& args, const std::string& stdinText = "") {
  const std::string pipe = stdinText.empty() ? "" : "printf '%s' " + ShellQuote(stdinText) + " | ";
  return RunShell(pipe + ShellQuote(NORVANE_CLI) + " " + args + " 2>&1");
}
#endif

}  // namespace norvane::test
