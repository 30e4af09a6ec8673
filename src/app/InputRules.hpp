#pragma once
// The text rules of the numeric input boxes, as pure functions: the key filter, the two range
// validators and the locale-aware number conversion. Screens apply the results (colour, flags);
// norvane-cli and the fuzzers call the same rules.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

// What a box holds (FilterKey modes).
enum class KeyMode : int16_t {
  UnsignedInt = 0,
  SignedInt = 1,
  UnsignedReal = 2,
  SignedReal = 3,
  Letters = 4,
  LettersDigits = 5,
};

// The part of a text box's state that the key filter looks at.
struct BoxState {
  std::u16string text;
  int maxLength = 0;  // 0 would refuse every printable key: give every box a positive length
  int caret = 0;      // caret position (characters before it)
  int selectionLength = 0;
};

// Returns the key code to use, 0 to swallow the key. decimalSep is the locale's separator code.
// The key replaces the selection: the one-minus and one-separator rules look at the text as it
// will be after the key.
char16_t FilterKey(const BoxState& box, char16_t key, KeyMode mode, bool toUpper, char16_t decimalSep);

// Pasted or dropped text as the box takes it: each character filtered as if typed in turn at the
// caret (the first replacing the selection); control characters dropped. caret and
// selectionLength must lie within the text.
std::u16string FilterText(BoxState box, std::u16string_view text, KeyMode mode, bool toUpper, char16_t decimalSep);

// Range checks on the text of a box, both bounds inclusive.
bool IsValidIntText(const std::u16string& text, bool allowEmpty, int32_t min, int32_t max);
bool IsValidRealText(const std::u16string& text, bool allowEmpty, double min, double max, char16_t decimalSep);

// Converts box text by the locale's rules: the separator is decimalSep (the other of "." and ","
// is not accepted). Leading "-" allowed. No exponent, no blanks. nullopt when not a number.
std::optional<double> ParseLocaleReal(const std::u16string& text, char16_t decimalSep);
std::optional<int32_t> ParseInt32(const std::u16string& text);

// True when every flag is set; false for an empty array (a screen without boxes keeps one flag).
bool AllInputsValid(const std::vector<bool>& flags);

// The locale's decimal separator: the second character of the text form of 0.5.
char16_t DecimalSepFromText(const std::u16string& halfAsText);

}  // namespace norvane
