#include "online/ServerText.hpp"

namespace norvane {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Length of the well-formed UTF-8 sequence at `at` (Unicode table 3-7), 0 when there is none;
// `c` receives its code point.
size_t SequenceAt(std::string_view s, size_t at, char32_t& c) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(s[i]); };
  const unsigned char b0 = byte(at);
  if (b0 < 0x80) {
    c = b0;
    return 1;
  }
  size_t n = 0;
  unsigned char lo = 0x80, hi = 0xBF;
  if (b0 >= 0xC2 && b0 <= 0xDF)
    n = 2;
  else if (b0 >= 0xE0 && b0 <= 0xEF)
    n = 3, lo = b0 == 0xE0 ? 0xA0 : 0x80, hi = b0 == 0xED ? 0x9F : 0xBF;
  else if (b0 >= 0xF0 && b0 <= 0xF4)
    n = 4, lo = b0 == 0xF0 ? 0x90 : 0x80, hi = b0 == 0xF4 ? 0x8F : 0xBF;
  else
    return 0;
  if (at + n > s.size()) return 0;
  c = b0 & (n == 2 ? 0x1F : n == 3 ? 0x0F : 0x07);
  for (size_t i = 1; i < n; ++i) {
    const unsigned char b = byte(at + i);
    if (b < (i == 1 ? lo : 0x80) || b > (i == 1 ? hi : 0xBF)) return 0;
    c = (c << 6) | (b & 0x3F);
  }
  return n;
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  char32_t c = 0;
  for (size_t at = 0; at < bytes.size();) {
    const size_t n = SequenceAt(bytes, at, c);
    if (n == 0) return false;
    at += n;
  }
  return true;
}

std::string DecodeServerText(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string out;
  out.reserve(bytes.size() * 2);
  for (const char b : bytes) AppendUtf8(out, static_cast<unsigned char>(b));
  return out;
}

std::string SafeServerText(std::string_view bytes) {
  const std::string text = DecodeServerText(bytes);
  std::string out;
  out.reserve(text.size());
  char32_t c = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t n = SequenceAt(text, at, c);  // never 0: the text is valid UTF-8
    const bool lineEnd = c == '\n' || (c == '\r' && at + 1 < text.size() && text[at + 1] == '\n');
    if (lineEnd || (c >= 0x20 && c < 0x7F) || c > 0x9F)
      out.append(text, at, n);
    else if (c == '\t')
      out += ' ';
    else
      out += kReplacement;
    at += n;
  }
  return out;
}

}  // namespace norvane
