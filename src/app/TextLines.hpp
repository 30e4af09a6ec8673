#pragma once
// Line splitting shared by the readers of settings files, server replies and report texts.

#include <string_view>
#include <vector>

namespace norvane {

// The lines of `text` without their ends (LF or CR LF); a final line without a line feed counts,
// and nothing after a final line feed does.
inline std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    start = end + 1;
  }
  return lines;
}

}  // namespace norvane
