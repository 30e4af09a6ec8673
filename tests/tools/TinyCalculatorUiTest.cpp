// The tiny math calculator driven as a user drives it: by keys only, by the key pad only, the
// memory keys, a failed expression kept for correction, the decimal comma.
#include <QLineEdit>
#include <QListWidget>
#include <map>

#include "support/UiTest.hpp"
#include "tools/TinyCalculatorScreen.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

struct TinyCalculatorUi : UiFixture {};

QLineEdit* Line(QWidget& s) { return Find<QLineEdit>(s, "txtExpression"); }

// Types the tokens on the keyboard and presses Enter.
QString ByKeys(QWidget& s, const QStringList& tokens) {
  for (const QString& t : tokens) QTest::keyClicks(Line(s), t);
  QTest::keyClick(Line(s), Qt::Key_Return);
  return Text(s, "lblResult");
}

// Clicks the key pad button of each token, then "=".
QString ByButtons(QWidget& s, const QStringList& tokens) {
  static const std::map<QString, QString> names = {
      {"+", "cmdAdd"},  {"-", "cmdSubtract"}, {"*", "cmdMultiply"}, {"/", "cmdDivide"}, {"^", "cmdPower"},
      {"(", "cmdLeft"}, {")", "cmdRight"},    {".", "cmdSep"},      {"sin(", "cmdSin"}, {"sqrt(", "cmdSqrt"},
      {"pi", "cmdPi"},  {"%", "cmdPercent"},  {"mem", "cmdMR"}};
  for (const QString& t : tokens) {
    const auto it = names.find(t);
    Click(s, it != names.end() ? it->second : "cmd" + t);
  }
  Click(s, "cmdEquals");
  return Text(s, "lblResult");
}

// Every key of the pad once: it must type what the keyboard types (the values are the model's).
TEST_F(TinyCalculatorUi, KeysAndButtonsGiveTheSameTexts) {
  const QStringList tokens{"sin(", "3", "0", ")", "+", "sqrt(", "4", ")", "*", "pi", "-", "2", "^", "2", "/", "(",
                           "1",    ".", "5", "6", "7", "8",     "9", ")", "+", "2",  "0", "0", "*", "1", "5", "%"};
  TinyCalculatorScreen keys, buttons;
  Show(keys);
  Show(buttons);
  const QString byKeys = ByKeys(keys, tokens);
  EXPECT_TRUE(byKeys.front().isDigit() && byKeys != "0") << byKeys.toStdString();
  EXPECT_EQ(ByButtons(buttons, tokens), byKeys);
  Click(keys, "cmdClear");
  // A failed expression stays for correction; an operator after a result continues from it.
  EXPECT_EQ(ByKeys(keys, {"2", "+"}), "Syntax error");
  EXPECT_EQ(Line(keys)->text(), "2+");
  EXPECT_EQ(ByKeys(keys, {"3"}), "5");
  EXPECT_EQ(Line(keys)->text(), "");
  EXPECT_EQ(ByKeys(keys, {"*", "2"}), "10");
  Click(keys, "OptAngle1");
  EXPECT_EQ(ByKeys(keys, {"cos(pi)"}), "-1");
  EXPECT_EQ(Find<QListWidget>(keys, "lstHistory")->item(0)->text(), "cos(pi) = -1");
}

TEST_F(TinyCalculatorUi, MemoryKeysAndIndicator) {
  TinyCalculatorScreen s;
  Show(s);
  ByKeys(s, {"6*7"});
  EXPECT_EQ(Text(s, "lblMemory"), "");
  Click(s, "cmdMS");
  EXPECT_EQ(Text(s, "lblMemory"), "M");
  Click(s, "cmdMPlus");
  EXPECT_EQ(ByButtons(s, {"mem", "/", "2"}), "42");  // memory 84
  Click(s, "cmdMMinus");                             // 84 - 42
  EXPECT_EQ(ByButtons(s, {"mem"}), "42");
  Click(s, "cmdMC");
  EXPECT_EQ(Text(s, "lblMemory"), "");
  EXPECT_EQ(ByButtons(s, {"mem", "+", "1"}), "1");
  // ± negates the whole expression and back; ⌫ takes one character.
  QTest::keyClicks(Line(s), "2+3");
  Click(s, "cmdSign");
  EXPECT_EQ(Line(s)->text(), "-(2+3)");
  Click(s, "cmdSign");
  Click(s, "cmdBack");
  EXPECT_EQ(Line(s)->text(), "2+");
}

TEST_F(TinyCalculatorUi, DecimalCommaUnderAGermanLocale) {
  App().decimalSep = u',';
  TinyCalculatorScreen s;
  Show(s);
  QTest::keyClicks(Line(s), "1.5*2");  // either separator key gives the program's own
  EXPECT_EQ(Line(s)->text(), "1,5*2");
  EXPECT_EQ(ByKeys(s, {}), "3");
  EXPECT_EQ(ByButtons(s, {"1", "/", "4"}), "0,25");
  // A double click on a calculation puts its result into the expression.
  auto* history = Find<QListWidget>(s, "lstHistory");
  const QRect row = history->visualItemRect(history->item(0));
  QTest::mouseClick(history->viewport(), Qt::LeftButton, {}, row.center());
  QTest::mouseDClick(history->viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_EQ(Line(s)->text(), "0,25");
  QTest::keyClick(history, Qt::Key_Return);  // the keyboard's way: Enter on the chosen line
  EXPECT_EQ(Line(s)->text(), "0,250,25");
}

}  // namespace
