#pragma once
// Shared conventions of norvane-cli: output as "key: text" lines (or --raw / --json), one-line
// usage errors with exit status 2, and the parsers of coordinates and dates.

#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace norvane {
enum class MagModel;
}

namespace norvane::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitComputation = 1;  // the screen's error text, no results
inline constexpr int kExitUsage = 2;        // bad, missing or out-of-range input

// Thrown for bad input; main() prints "error: <what>" and exits with kExitUsage.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct OutputMode {
  bool raw = false;   // numbers at %.17g instead of the screen's mask
  bool json = false;  // one JSON object instead of key: text lines
};
OutputMode& GlobalOutputMode();

// Thrown when the results cannot be written (a full disk, a closed output); main() prints
// "error: <what>" and exits with kExitComputation, so that a script never takes a cut-off output
// for a complete one.
struct OutputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// Writes `bytes` to `out` and flushes it; throws OutputError with the system's reason on failure.
void WriteOutput(std::FILE* out, std::string_view bytes);

// The exit status main() returns once the subcommand's callback has run. A callback prints
// through ResultPrinter and stores printer.Print()'s result here; a UsageError thrown from a
// callback is reported by main() as "error: ..." with kExitUsage.
int& ExitStatus();

// Collects the results of one calculation and prints them in the chosen form.
class ResultPrinter {
 public:
  // A result as the screen shows it; `raw` is its full-precision value when it is a number.
  void Add(std::string key, std::string text, std::optional<double> raw = std::nullopt);
  // The screen's error or notice label.
  void Message(std::string text);
  // Prints everything to stdout; returns the exit status to use (kExitOk unless SetFailed).
  int Print() const;
  void SetFailed() { failed_ = true; }
  // The error label with a failed exit status.
  void Fail(std::string text) {
    Message(std::move(text));
    SetFailed();
  }

 private:
  struct Item {
    std::string key, text;
    std::optional<double> raw;
  };
  std::vector<Item> items_;
  bool failed_ = false;
};

// Range check with the message format shared by every command:
//   "--altitude: 90000 is out of range (-500 to 85999 m)".
void RequireRange(std::string_view option, double value, double min, double max, std::string_view unit = {});

struct LatLon {
  double lat = 0, lon = 0;
};
// The largest latitude and longitude a command's screen takes, and how a refusal names them.
struct CoordinateLimits {
  double maxLat = 90, maxLon = 180;
  const char* latRange = "-90 to 90 degrees";
  const char* lonRange = "-180 to 180 degrees";
};
// "LAT,LON" in signed decimal degrees, or each part in a hemisphere form (ParseCoordinate:
// "N51 28 39,W000 27 41", "51 28 39.5N, 000 27 41W"; without the comma too). Throws UsageError
// naming the option, and for a value out of range the limits' range.
LatLon ParseLatLon(std::string_view option, std::string_view text, const CoordinateLimits& limits = {});

struct Date {
  int year = 0, month = 0, day = 0;
};
// "YYYY-MM-DD", a real calendar date from 1900 to 2100. Throws UsageError naming option.
Date ParseDate(std::string_view option, std::string_view text);

// The geomagnetic models by their option names, in MagModel order: igrf10 wmm2005 wmm2025 igrf14.
const std::vector<std::string>& MagModelOptionNames();
// The model of one of those names (the option's IsMember check has run; others give igrf10).
MagModel MagModelFromOptionName(std::string_view name);
Date Today();

// Shortest fixed-point text that reads back as v: "3.01", not "3.0099999999999998"; "700000".
std::string Shortest(double v);

// Strict number parser for option values (no blanks, no trailing text); nullopt if malformed.
std::optional<double> ParseNumber(std::string_view text);

// JSON string escaping for --json.
std::string JsonQuote(std::string_view s);

}  // namespace norvane::cli
