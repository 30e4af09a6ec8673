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
  const auto key = [](const std::string& k) -> char16_t {
    return k == "BS" ? 8 : k == "SP" ? u' ' : k.empty() ? 0 : k[0];
  };
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "key")) {
    const std::u16string text(r[0].begin(), r[0].end());
    const BoxState box = Box(text, int(r.Num(1)), int(r.Num(2)), int(r.Num(3)));
    EXPECT_EQ(FilterKey(box, key(r[4]), KeyMode(r.Num(5)), r[6] == "yes", key(r[7])), key(r[8])) << r.where;
  }
}

// A "-" over a selected "-2.6" was refused (-3 became +3); pasted "egll" stayed lower case.
TEST(InputRules, KeysReplaceTheSelectionAndPastedTextIsFilteredAsTyped) {
  const auto wide = [](const std::string& s) { return std::u16string(s.begin(), s.end()); };
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "paste")) {
    const BoxState box = Box(wide(r[0]), int(r.Num(1)), int(r.Num(2)), int(r.Num(3)));
    EXPECT_EQ(FilterText(box, wide(r[4]), KeyMode(r.Num(5)), true, u'.'), wide(r[6])) << r.where;
  }
}

TEST(InputRules, ValidatorsFollowTheTextRulesAndTheLocaleSeparator) {
  const auto wide = [](const std::string& s) { return std::u16string(s.begin(), s.end()); };
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "int"))
    EXPECT_EQ(IsValidIntText(wide(r[0]), r[1] == "yes", int(r.Num(2)), int(r.Num(3))), r[4] == "yes") << r.where;
  for (const GoldenRow& r : ReadGolden("app/data/text.txt", "real"))
    EXPECT_EQ(IsValidRealText(wide(r[0]), r[1] == "yes", r.Num(2), r.Num(3), char16_t(r[4][0])), r[5] == "yes")
        << r.where;

  EXPECT_FALSE(AllInputsValid({}));
  EXPECT_FALSE(AllInputsValid({true, false, true}));
  EXPECT_TRUE(AllInputsValid({true, true}));
  // The locale's separator, from how it writes one half.
  EXPECT_EQ(DecimalSepFromText(u"0,5"), u',');
  EXPECT_EQ(DecimalSepFromText(u"0.5"), u'.');
}
