#pragma once
// The texts of golden table rows that hold bytes a table line cannot: \n, \r, \t, \\ and \xHH.
#include <string>

namespace norvane::test {

inline std::string Unescape(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    const char c = i + 1 < s.size() && s[i] == '\\' ? s[++i] : 0;
    if (c == 'x') out += char(std::stoi(s.substr(i + 1, 2), nullptr, 16)), i += 2;
    else out += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c ? c : s[i];
  }
  return out;
}

}  // namespace norvane::test
