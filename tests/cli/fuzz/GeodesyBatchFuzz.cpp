// libFuzzer target: the batch input of `norvane-cli inverse` and `direct`. A line read as numbers
// must hold finite values that read back the same when printed; a whole run must answer every
// input line with exactly one output line: an answer in the expected columns or an error line.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "cli/GeodesyBatch.hpp"
#include "support/FuzzSupport.hpp"

using namespace norvane::cli;

namespace {
using norvane::fuzz::Require;

std::vector<std::string_view> Split(std::string_view s, char sep) {
  std::vector<std::string_view> parts;
  size_t start = 0;
  for (size_t i = 0; i <= s.size(); ++i)
    if (i == s.size() || s[i] == sep) {
      parts.push_back(s.substr(start, i - start));
      start = i + 1;
    }
  return parts;
}

void CheckLine(std::string_view line) {
  double f[4];
  std::string why;
  for (int n = 1; n <= 4; ++n) {
    if (!ParseBatchFields(line, f, n, "FIELDS", why)) {
      Require(why.rfind("expected FIELDS", 0) == 0);
      continue;
    }
    std::string again;
    for (int i = 0; i < n; ++i) {
      Require(std::isfinite(f[i]));
      char buf[32];
      again += std::string(buf, std::to_chars(buf, buf + sizeof buf, f[i]).ptr) + (i + 1 < n ? "," : "");
    }
    double g[4];
    Require(ParseBatchFields(again, g, n, "FIELDS", why));
    for (int i = 0; i < n; ++i) Require(g[i] == f[i]);
  }
}

// Runs one batch over the input and checks the answer lines; `columns` numbers per answer.
void CheckRun(std::string_view input, int columns, bool inverse) {
  std::FILE* in = fmemopen(const_cast<char*>(input.data()), input.size(), "r");
  char* outText = nullptr;
  size_t outSize = 0;
  std::FILE* out = open_memstream(&outText, &outSize);
  Require(in && out);
  const long failed =
      inverse ? RunInverseBatch(in, out, InverseMethod::Wgs84) : RunDirectBatch(in, out, DirectMethod::Wgs84);
  std::fclose(in);
  std::fclose(out);
  const std::string_view output(outText, outSize);

  // Input lines: one per "\n", and a last one without it when it holds anything.
  size_t inputLines = 0;
  for (char c : input) inputLines += c == '\n';
  if (!input.empty() && input.back() != '\n') ++inputLines;
  Require(output.empty() || output.back() == '\n');
  std::vector<std::string_view> lines = Split(output, '\n');
  lines.pop_back();  // after the last "\n"
  Require(lines.size() == inputLines);
  long errors = 0;
  for (std::string_view l : lines) {
    if (l.rfind("error: line ", 0) == 0) {
      ++errors;
      continue;
    }
    const auto cols = Split(l, ' ');
    Require(int(cols.size()) == columns);
    for (size_t i = 0; i < cols.size(); ++i) {
      if (cols[i] == "ND") continue;
      double v = 0;
      const auto [ptr, ec] = std::from_chars(cols[i].data(), cols[i].data() + cols[i].size(), v);
      Require(ec == std::errc() && ptr == cols[i].data() + cols[i].size() && std::isfinite(v));
      if (!inverse) Require(std::fabs(v) <= (i == 0 ? 90 : 180));
    }
  }
  Require(errors == failed);
  std::free(outText);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  for (std::string_view line : Split(input.substr(0, 600), '\n')) CheckLine(line);
  if (size == 0) return 0;  // fmemopen refuses an empty buffer
  CheckRun(input, 3, true);
  CheckRun(input, 2, false);
  return 0;
}
