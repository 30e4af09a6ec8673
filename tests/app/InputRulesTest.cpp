#include "app/InputRules.hpp"

#include <gtest/gtest.h>

using namespace norvane;

namespace {
BoxState Box(std::u16string text, int maxLength, int caret = -1, int sel = 0) {
  BoxState b;
  b.text = std::move(text);
  b.maxLength = maxLength;
  b.caret = caret < 0 ? static_cast<int>(b.text.size()) : caret;
  b.selectionLength = sel;
  return b;
}
}  // namespace

TEST(InputRules, FilterKeyModesLengthsAndSeparators) {
  const char16_t comma = u',', dot = u'.';
  // Digits everywhere but letters-only.
  EXPECT_EQ(FilterKey(Box(u"", 4), u'7', KeyMode::UnsignedInt, false, dot), u'7');
  EXPECT_EQ(FilterKey(Box(u"", 4), u'7', KeyMode::Letters, false, dot), 0);
  // Control characters pass, even into a full box.
  EXPECT_EQ(FilterKey(Box(u"1234", 4), 8, KeyMode::UnsignedInt, false, dot), 8);
  // Full box swallows unless something is selected.
  EXPECT_EQ(FilterKey(Box(u"1234", 4), u'5', KeyMode::UnsignedInt, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"1234", 4, 0, 4), u'5', KeyMode::UnsignedInt, false, dot), u'5');
  // Maximum length 0 refuses every printable key while empty.
  EXPECT_EQ(FilterKey(Box(u"", 0), u'1', KeyMode::SignedReal, false, dot), 0);
  // Letters.
  EXPECT_EQ(FilterKey(Box(u"", 5), u'A', KeyMode::SignedReal, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"", 5), u'A', KeyMode::Letters, false, dot), u'A');
  EXPECT_EQ(FilterKey(Box(u"", 5), u'q', KeyMode::LettersDigits, true, dot), u'Q');
  EXPECT_EQ(FilterKey(Box(u"", 5), u'q', KeyMode::Letters, false, dot), u'q');
  // Minus: signed modes, caret at 0, only once.
  EXPECT_EQ(FilterKey(Box(u"12", 6, 0), u'-', KeyMode::SignedReal, false, dot), u'-');
  EXPECT_EQ(FilterKey(Box(u"12", 6, 1), u'-', KeyMode::SignedReal, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"-12", 6, 0), u'-', KeyMode::SignedInt, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"", 6), u'-', KeyMode::UnsignedReal, false, dot), 0);
  // Either separator key types the locale's; room must be left for a digit.
  EXPECT_EQ(FilterKey(Box(u"1234", 6), u',', KeyMode::SignedReal, false, dot), dot);
  EXPECT_EQ(FilterKey(Box(u"1234", 6), u'.', KeyMode::SignedReal, false, comma), comma);
  EXPECT_EQ(FilterKey(Box(u"12345", 6), u',', KeyMode::SignedReal, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"1.2", 6), u'.', KeyMode::UnsignedReal, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"12", 6), u'.', KeyMode::SignedInt, false, dot), 0);
  // Anything else.
  EXPECT_EQ(FilterKey(Box(u"", 6), u'+', KeyMode::SignedReal, false, dot), 0);
  EXPECT_EQ(FilterKey(Box(u"", 6), u' ', KeyMode::LettersDigits, false, dot), 0);
}

// A "-" over a selected "-2.6" was refused (-3 became +3); pasted "egll" stayed lower case.
TEST(InputRules, KeysReplaceTheSelectionAndPastedTextIsFilteredAsTyped) {
  struct Row { std::u16string text; int caret, selection, maxLength; std::u16string typed; KeyMode mode; std::u16string kept; };
  const Row rows[] = {
      {u"-0.4", 0, 4, 6, u"-", KeyMode::SignedReal, u"-"},      {u"-2.6", 0, 2, 6, u"-3", KeyMode::SignedInt, u"-3"},
      {u"2.6", 1, 2, 6, u".", KeyMode::UnsignedReal, u"."},     {u"12", 2, 0, 6, u"-5", KeyMode::SignedReal, u"5"},
      {u"", 0, 0, 4, u" egll\n", KeyMode::Letters, u"EGLL"},     {u"", 0, 0, 4, u"EGLL2", KeyMode::Letters, u"EGLL"},
      {u"", 0, 0, 6, u"1,234.5", KeyMode::SignedReal, u"1.2345"}, {u"45", 0, 2, 2, u"123", KeyMode::UnsignedInt, u"12"},
  };
  for (const Row& r : rows)
    EXPECT_EQ(FilterText(Box(r.text, r.maxLength, r.caret, r.selection), r.typed, r.mode, true, u'.'), r.kept);
}

TEST(InputRules, ValidatorsFollowTheTextRules) {
  EXPECT_TRUE(IsValidIntText(u"", true, 0, 59));
  EXPECT_FALSE(IsValidIntText(u"", false, 0, 59));
  EXPECT_TRUE(IsValidIntText(u"59", false, 0, 59));
  EXPECT_FALSE(IsValidIntText(u"60", false, 0, 59));
  EXPECT_FALSE(IsValidIntText(u"-0", false, 0, 59));   // a minus where min >= 0
  EXPECT_FALSE(IsValidIntText(u"-", false, -10, 10));
  EXPECT_TRUE(IsValidIntText(u"-10", false, -10, 10));
  EXPECT_FALSE(IsValidIntText(u"99999999999", false, 0, 2147483647));  // conversion overflow

  const char16_t dot = u'.';
  EXPECT_FALSE(IsValidRealText(u"-0", false, 0, 100, dot));
  EXPECT_FALSE(IsValidRealText(u".", false, -1, 100, dot));
  EXPECT_FALSE(IsValidRealText(u"-", false, -1, 100, dot));
  EXPECT_FALSE(IsValidRealText(u"-.", false, -1, 100, dot));
  EXPECT_FALSE(IsValidRealText(u"12.", false, 0, 100, dot));
  EXPECT_TRUE(IsValidRealText(u".5", false, 0, 100, dot));
  EXPECT_TRUE(IsValidRealText(u"-.5", false, -1, 100, dot));
  EXPECT_TRUE(IsValidRealText(u"59.99", false, 0, 59.99, dot));
  EXPECT_FALSE(IsValidRealText(u"60", false, 0, 59.99, dot));
  EXPECT_TRUE(IsValidRealText(u"1,5", false, 0, 2, u','));
  EXPECT_FALSE(IsValidRealText(u"1.5", false, 0, 2, u','));  // not the locale's separator
  EXPECT_TRUE(IsValidRealText(u"", true, 0, 2, dot));

  EXPECT_FALSE(AllInputsValid({}));
  EXPECT_FALSE(AllInputsValid({true, false, true}));
  EXPECT_TRUE(AllInputsValid({true, true}));
}

TEST(InputRules, LocaleSeparator) {
  EXPECT_EQ(DecimalSepFromText(u"0,5"), u',');
  EXPECT_EQ(DecimalSepFromText(u"0.5"), u'.');
}
