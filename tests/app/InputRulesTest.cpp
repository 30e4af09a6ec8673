#include "app/InputRules.hpp"

#include <gtest/gtest.h>

#include "support/Golden.hpp"

using namespace norvane;
using norvane::test::GoldenRow;
using norvane::test::ReadGolden;

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
  const auto wide = [](const std::string& s) { return std::u16string(s.begin(), s.end()); };
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "int"))
    EXPECT_EQ(IsValidIntText(wide(r[0]), r[1] == "yes", int(r.Num(2)), int(r.Num(3))), r[4] == "yes") << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "real"))
    EXPECT_EQ(IsValidRealText(wide(r[0]), r[1] == "yes", r.Num(2), r.Num(3), char16_t(r[4][0])), r[5] == "yes") << r.where;

  EXPECT_FALSE(AllInputsValid({}));
  EXPECT_FALSE(AllInputsValid({true, false, true}));
  EXPECT_TRUE(AllInputsValid({true, true}));
}

TEST(InputRules, LocaleSeparator) {
  EXPECT_EQ(DecimalSepFromText(u"0,5"), u',');
  EXPECT_EQ(DecimalSepFromText(u"0.5"), u'.');
}
