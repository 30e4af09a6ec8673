#include "app/InputRules.hpp"

#include <algorithm>
#include <charconv>
#include <string>

#include "app/NumberChars.hpp"

namespace norvane {
namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Narrows a u16string that holds only ASCII characters; returns false on anything else.
bool ToAscii(const std::u16string& in, std::string& out) {
  out.clear();
  out.reserve(in.size());
  for (char16_t c : in) {
    if (c > 127) return false;
    out.push_back(static_cast<char>(c));
  }
  return true;
}

}  // namespace

char16_t FilterKey(const BoxState& box, char16_t key, KeyMode mode, bool toUpper, char16_t decimalSep) {
  const int m = static_cast<int>(mode);
  if (key < 32) return key;
  const int len = static_cast<int>(box.text.size());
  if (len == box.maxLength && box.selectionLength == 0) return 0;
  // The one-minus and one-separator rules look at the text as it will be: the key replaces the
  // selection (a retyped "-3" over a selected "-2.6" keeps its minus).
  std::u16string after = box.text;
  if (box.selectionLength > 0 && box.caret >= 0 && box.caret < len)
    after.erase(size_t(box.caret), size_t(box.selectionLength));
  if (IsDigit(key)) return m == 4 ? 0 : key;
  if (key >= u'A' && key <= u'Z') return m >= 4 ? key : 0;
  if (key >= u'a' && key <= u'z') {
    if (m != 4 && m != 5) return 0;
    return toUpper ? static_cast<char16_t>(key - 32) : key;
  }
  if (key == u'-') {
    if (m != 1 && m != 3) return 0;
    if (box.caret != 0 || after.find(u'-') != std::u16string::npos) return 0;
    return key;
  }
  if (key == u'.' || key == u',' || key == decimalSep) {
    if ((m == 2 || m == 3) && after.find(decimalSep) == std::u16string::npos &&
        static_cast<int>(after.size()) < box.maxLength - 1)
      return decimalSep;
    return 0;
  }
  return 0;
}

std::u16string FilterText(BoxState box, std::u16string_view text, KeyMode mode, bool toUpper, char16_t decimalSep) {
  box.caret = std::clamp(box.caret, 0, static_cast<int>(box.text.size()));
  box.selectionLength = std::clamp(box.selectionLength, 0, static_cast<int>(box.text.size()) - box.caret);
  std::u16string out;
  for (const char16_t c : text) {
    // Line breaks and tabs of a copied text are not keys the box would take.
    const char16_t key = c < 32 ? 0 : FilterKey(box, c, mode, toUpper, decimalSep);
    if (key == 0) continue;
    box.text.replace(size_t(box.caret), size_t(box.selectionLength), 1, key);
    ++box.caret;
    box.selectionLength = 0;
    out.push_back(key);
  }
  return out;
}

std::optional<int32_t> ParseInt32(const std::u16string& text) {
  std::string s;
  if (!ToAscii(text, s) || s.empty()) return std::nullopt;
  size_t i = s[0] == '-' || s[0] == '+' ? 1 : 0;
  if (i == s.size()) return std::nullopt;
  for (size_t k = i; k < s.size(); ++k)
    if (s[k] < '0' || s[k] > '9') return std::nullopt;
  int32_t v = 0;
  const char* first = s.data() + (s[0] == '+' ? 1 : 0);
  const auto [ptr, ec] = std::from_chars(first, s.data() + s.size(), v);
  if (ec != std::errc() || ptr != s.data() + s.size()) return std::nullopt;
  return v;
}

std::optional<double> ParseLocaleReal(const std::u16string& text, char16_t decimalSep) {
  std::string s;
  if (!ToAscii(text, s) || s.empty()) return std::nullopt;
  size_t i = s[0] == '-' ? 1 : 0;
  bool digits = false, point = false;
  std::string c = i ? "-" : "";
  for (; i < s.size(); ++i) {
    const char ch = s[i];
    if (ch >= '0' && ch <= '9') {
      digits = true;
      c.push_back(ch);
    } else if (static_cast<char16_t>(ch) == decimalSep && !point) {
      point = true;
      c.push_back('.');
    } else {
      return std::nullopt;
    }
  }
  if (!digits) return std::nullopt;
  return ParseDouble(c);
}

bool IsValidIntText(const std::u16string& text, bool allowEmpty, int32_t min, int32_t max) {
  if (text.empty()) return allowEmpty;
  if (text[0] == u'-' && (min >= 0 || text.size() == 1)) return false;
  const auto v = ParseInt32(text);
  return v && *v >= min && *v <= max;
}

bool IsValidRealText(const std::u16string& text, bool allowEmpty, double min, double max, char16_t decimalSep) {
  if (text.empty()) return allowEmpty;
  size_t marks = 0;
  if (text[0] == u'-') {
    if (min >= 0 || text.size() == 1) return false;
    ++marks;
  }
  const size_t sep = text.find(decimalSep);
  if (sep != std::u16string::npos) {
    if (sep == text.size() - 1) return false;  // "12." stays invalid until a digit follows
    ++marks;
  }
  if (marks == text.size()) return false;
  const auto v = ParseLocaleReal(text, decimalSep);
  return v && *v >= min && *v <= max;
}

bool AllInputsValid(const std::vector<bool>& flags) {
  if (flags.empty()) return false;
  for (bool f : flags)
    if (!f) return false;
  return true;
}

char16_t DecimalSepFromText(const std::u16string& halfAsText) { return halfAsText.size() >= 2 ? halfAsText[1] : u'.'; }

}  // namespace norvane
