#pragma once
// Golden tables in the manner of PROJ's gie files: one case per line of a text file under tests/,
// fields separated by blanks, a "quoted field" for a text with blanks (with \" \\ \n \r \t \xHH
// as in C++); a field starting with '#' begins a comment to the end of the line. A test reads the
// rows and checks each against the code: a case is added by adding a line.
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace norvane::test {

struct GoldenRow {
  std::string where;  // "file:line", for the failure message
  std::vector<std::string> fields;

  const std::string& operator[](size_t i) const { return fields.at(i); }
  // Field i as a number; "NaN" reads as NaN.
  double Num(size_t i) const { return fields.at(i) == "NaN" ? std::nan("") : std::stod(fields.at(i)); }
};

// The rows of tests/`path`, or of those whose first field is `kind` (without that field).
inline std::vector<GoldenRow> ReadGolden(const std::string& path, const std::string& kind = "") {
  std::ifstream in(std::string(NORVANE_SOURCE_DIR) + "/tests/" + path);
  EXPECT_TRUE(in) << path;
  std::vector<GoldenRow> rows;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    GoldenRow row{path + ":" + std::to_string(number), {}};
    for (size_t i = 0; i < line.size();) {
      if (line[i] == ' ' || line[i] == '\t' || line[i] == '\r') {
        ++i;
      } else if (line[i] == '#') {
        break;
      } else if (line[i] == '"') {  // \" \\ \n \r \t \xHH as in C++
        std::string field;
        for (++i; i < line.size() && line[i] != '"'; ++i) {
          const char c = line[i] == '\\' && i + 1 < line.size() ? line[++i] : 0;
          if (c == 'x' && i + 2 < line.size()) {
            field += char(std::stoi(line.substr(i + 1, 2), nullptr, 16));
            i += 2;
          } else {
            field += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c ? c : line[i];
          }
        }
        row.fields.push_back(field);
        ++i;
      } else {
        const size_t end = line.find_first_of(" \t\r", i);
        row.fields.push_back(line.substr(i, end - i));
        i = end == std::string::npos ? line.size() : end;
      }
    }
    if (row.fields.empty() || (!kind.empty() && row.fields[0] != kind)) continue;
    if (!kind.empty()) row.fields.erase(row.fields.begin());
    rows.push_back(std::move(row));
  }
  EXPECT_FALSE(rows.empty()) << path << " " << kind;
  return rows;
}

}  // namespace norvane::test
