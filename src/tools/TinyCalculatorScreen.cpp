#include "tools/TinyCalculatorScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

// Operators that continue from the last result when they start an empty line.
bool ContinuesFromResult(QChar c) { return QStringLiteral("+*/^%").contains(c); }

// True when `s` is "-(...)" with the outer parentheses belonging together.
bool IsNegatedWhole(const QString& s) {
  if (!s.startsWith(QLatin1String("-(")) || !s.endsWith(QLatin1Char(')'))) return false;
  int depth = 0;
  for (int i = 1; i < s.size(); ++i) {
    if (s[i] == QLatin1Char('(')) ++depth;
    if (s[i] == QLatin1Char(')') && --depth == 0 && i != s.size() - 1) return false;
  }
  return depth == 0;
}

}  // namespace

TinyCalculatorScreen::TinyCalculatorScreen(QWidget* parent)
    : CalculatorScreen(16, "frmData16", tr("Tiny math calculator"), parent),
      calc_(static_cast<char>(App().decimalSep)) {
  setLive(true);
  setHelpText(tr("Type an expression or use the keys; Enter or \"=\" evaluates"));

  QHBoxLayout* resultRow = buildDisplay();
  QGridLayout* pad = buildKeyPad();
  connectKeys();
  QVBoxLayout* side = buildSide();

  auto* columns = new QHBoxLayout;
  columns->addLayout(pad);
  columns->addLayout(side, 1);
  contentLayout()->addWidget(expression_);
  contentLayout()->addLayout(resultRow);
  contentLayout()->addLayout(columns);

  showMemory();
  setFocusProxy(expression_);
}

// The expression line, and the result with the memory mark beside it.
QHBoxLayout* TinyCalculatorScreen::buildDisplay() {
  expression_ = new QLineEdit(this);
  expression_->setObjectName("txtExpression");
  expression_->setToolTip(
      tr("Expression: + - * / ^ %, parentheses, sin cos tan asin acos atan sqrt ln log exp, "
         "pi, ans (last result), mem (memory)"));
  expression_->setMinimumWidth(expression_->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 34);
  expression_->installEventFilter(this);

  result_ = new QLabel(this);
  result_->setObjectName("lblResult");
  result_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  result_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  result_->setBackgroundRole(QPalette::Base);
  result_->setAutoFillBackground(true);
  QFont big = result_->font();
  big.setPointSizeF(big.pointSizeF() * 1.8);
  big.setBold(true);
  result_->setFont(big);
  result_->setMinimumHeight(result_->fontMetrics().height() + 10);

  memoryMark_ = new QLabel(this);
  memoryMark_->setObjectName("lblMemory");
  memoryMark_->setAlignment(Qt::AlignCenter);
  memoryMark_->setMinimumWidth(memoryMark_->fontMetrics().horizontalAdvance(QStringLiteral("MM")));

  auto* resultRow = new QHBoxLayout;
  resultRow->addWidget(memoryMark_);
  resultRow->addWidget(result_, 1);
  return resultRow;
}

// The key pad, row by row; a key that inserts text is connected here.
QGridLayout* TinyCalculatorScreen::buildKeyPad() {
  const QString sep(QChar(App().decimalSep));

  struct Key {
    const char* caption;
    const char* name;
    QString insert;  // empty: a key with its own action below
  };
  // The rows are the keypad as it is laid out.
  // clang-format off
  const Key keys[][5] = {
      {{"MC", "cmdMC", {}}, {"MR", "cmdMR", "mem"}, {"MS", "cmdMS", {}}, {"M+", "cmdMPlus", {}}, {"M\u2212", "cmdMMinus", {}}},
      {{"sin", "cmdSin", "sin("}, {"cos", "cmdCos", "cos("}, {"tan", "cmdTan", "tan("}, {"\u03C0", "cmdPi", "pi"}, {"C", "cmdClear", {}}},
      {{"asin", "cmdAsin", "asin("}, {"acos", "cmdAcos", "acos("}, {"atan", "cmdAtan", "atan("}, {"\u221A", "cmdSqrt", "sqrt("}, {"\u232B", "cmdBack", {}}},
      {{"ln", "cmdLn", "ln("}, {"log", "cmdLog", "log("}, {"e\u02E3", "cmdExp", "exp("}, {"x\u00B2", "cmdSquare", "^2"}, {"1/x", "cmdReciprocal", {}}},
      {{"7", "cmd7", "7"}, {"8", "cmd8", "8"}, {"9", "cmd9", "9"}, {"\u00F7", "cmdDivide", "/"}, {"^", "cmdPower", "^"}},
      {{"4", "cmd4", "4"}, {"5", "cmd5", "5"}, {"6", "cmd6", "6"}, {"\u00D7", "cmdMultiply", "*"}, {"%", "cmdPercent", "%"}},
      {{"1", "cmd1", "1"}, {"2", "cmd2", "2"}, {"3", "cmd3", "3"}, {"\u2212", "cmdSubtract", "-"}, {"(", "cmdLeft", "("}},
      {{"0", "cmd0", "0"}, {"", "cmdSep", sep}, {"\u00B1", "cmdSign", {}}, {"+", "cmdAdd", "+"}, {")", "cmdRight", ")"}},
  };
  // clang-format on
  auto* pad = new QGridLayout;
  pad->setSpacing(4);
  for (int r = 0; r < 8; ++r) {
    for (int c = 0; c < 5; ++c) {
      const Key& k = keys[r][c];
      QPushButton* b = makeKey(*k.caption ? QString::fromUtf8(k.caption) : sep, k.name);
      pad->addWidget(b, r, c);
      if (!k.insert.isEmpty()) connect(b, &QPushButton::clicked, this, [this, text = k.insert] { insertText(text); });
    }
  }
  QPushButton* ans = makeKey(QStringLiteral("ans"), "cmdAns", tr("The last result"));
  QPushButton* equals = makeKey(QStringLiteral("="), "cmdEquals", tr("Evaluate the expression (Enter)"));
  pad->addWidget(ans, 8, 0);
  pad->addWidget(equals, 8, 1, 1, 4);
  connect(ans, &QPushButton::clicked, this, [this] { insertText(QStringLiteral("ans")); });
  connect(equals, &QPushButton::clicked, this, &TinyCalculatorScreen::Evaluate);
  return pad;
}

// Tool tips and actions of the keys that do more than insert text.
void TinyCalculatorScreen::connectKeys() {
  auto find = [this](const char* name) { return findChild<QPushButton*>(QLatin1String(name)); };
  find("cmdMR")->setToolTip(tr("Memory recall"));
  find("cmdMS")->setToolTip(tr("Store the result in the memory"));
  find("cmdMPlus")->setToolTip(tr("Add the result to the memory"));
  find("cmdMMinus")->setToolTip(tr("Subtract the result from the memory"));
  find("cmdMC")->setToolTip(tr("Clear the memory"));
  find("cmdClear")->setToolTip(tr("Clear the expression and the result"));
  find("cmdBack")->setToolTip(tr("Delete one character (Backspace)"));
  connect(find("cmdMS"), &QPushButton::clicked, this, [this] { memoryKey(&TinyCalculator::MemoryStore); });
  connect(find("cmdMPlus"), &QPushButton::clicked, this, [this] { memoryKey(&TinyCalculator::MemoryAdd); });
  connect(find("cmdMMinus"), &QPushButton::clicked, this, [this] { memoryKey(&TinyCalculator::MemorySubtract); });
  connect(find("cmdMC"), &QPushButton::clicked, this, [this] { memoryKey(&TinyCalculator::MemoryClear); });
  connect(find("cmdClear"), &QPushButton::clicked, this, &TinyCalculatorScreen::clearAll);
  connect(find("cmdBack"), &QPushButton::clicked, this, [this] {
    expression_->backspace();
    expression_->setFocus();
  });
  connect(find("cmdSign"), &QPushButton::clicked, this, &TinyCalculatorScreen::toggleSign);
  connect(find("cmdReciprocal"), &QPushButton::clicked, this, [this] {
    const QString e = expression_->text();
    if (e.trimmed().isEmpty())
      insertText(calc_.history().empty() ? QStringLiteral("1/(") : QStringLiteral("1/ans"));
    else
      expression_->setText(QStringLiteral("1/(%1)").arg(e));
    expression_->setFocus();
  });
}

// The angle unit and the history list.
QVBoxLayout* TinyCalculatorScreen::buildSide() {
  QGroupBox* frameAngle = makeFrame(tr("Angles"), "FrameAngle");
  auto* al = new QHBoxLayout(frameAngle);
  auto* angleGroup = new QButtonGroup(frameAngle);
  const char* angleTexts[2] = {QT_TR_NOOP("Deg"), QT_TR_NOOP("Rad")};
  const char* angleTips[2] = {QT_TR_NOOP("Trigonometry in degrees"), QT_TR_NOOP("Trigonometry in radians")};
  for (int i = 0; i < 2; ++i) {
    optAngle_[i] = new QRadioButton(tr(angleTexts[i]), frameAngle);
    optAngle_[i]->setObjectName(QStringLiteral("OptAngle%1").arg(i));
    optAngle_[i]->setToolTip(tr(angleTips[i]));
    angleGroup->addButton(optAngle_[i], i);
    al->addWidget(optAngle_[i]);
  }
  optAngle_[0]->setChecked(true);
  connect(angleGroup, &QButtonGroup::idClicked, this, [this](int id) {
    calc_.SetAngleUnit(id == 1 ? AngleUnit::Radians : AngleUnit::Degrees);
    expression_->setFocus();
  });

  history_ = new QListWidget(this);
  history_->setObjectName("lstHistory");
  history_->setToolTip(
      tr("Calculations made since the program started; double click puts a result into the expression"));
  history_->setMinimumWidth(history_->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 28);
  connect(history_, &QListWidget::itemDoubleClicked, this, &TinyCalculatorScreen::historyChosen);
  history_->installEventFilter(this);  // Enter on a line does what a double click does

  auto* side = new QVBoxLayout;
  side->addWidget(frameAngle);
  side->addWidget(makeCaption(tr("History"), "lblHistory"));
  side->addWidget(history_, 1);
  return side;
}

QPushButton* TinyCalculatorScreen::makeKey(const QString& caption, const QString& name, const QString& toolTip) {
  auto* b = MakeButton(this, caption, name, toolTip);
  b->setMinimumWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("asin")) + 20);
  return b;
}

void TinyCalculatorScreen::insertText(const QString& text) {
  QString t = text;
  if (expression_->text().isEmpty() && !calc_.history().empty() && !t.isEmpty() && ContinuesFromResult(t[0]))
    t.prepend(QStringLiteral("ans"));
  expression_->insert(t);
  expression_->setFocus();
}

void TinyCalculatorScreen::toggleSign() {
  const QString e = expression_->text();
  if (e.isEmpty())
    expression_->setText(QStringLiteral("-"));
  else if (IsNegatedWhole(e))
    expression_->setText(e.mid(2, e.size() - 3));
  else
    expression_->setText(QStringLiteral("-(%1)").arg(e));
  expression_->setFocus();
}

void TinyCalculatorScreen::clearAll() {
  expression_->clear();
  result_->clear();
  result_->setToolTip({});
  expression_->setFocus();
}

void TinyCalculatorScreen::Evaluate() {
  const QString text = expression_->text();
  if (text.trimmed().isEmpty()) return;
  const CalcOutcome r = calc_.Evaluate(text.toStdString());
  result_->setText(Q(r.text));
  result_->setToolTip(Q(r.detail));
  SetTextColor(result_, r.ok() ? palette().color(QPalette::WindowText) : Colours().invalidText);
  if (r.ok()) {
    auto* item = new QListWidgetItem(text + QStringLiteral(" = ") + Q(r.text));
    item->setData(Qt::UserRole, Q(r.text));
    history_->insertItem(0, item);
    if (history_->count() > static_cast<int>(TinyCalculator::kHistoryLimit))
      delete history_->takeItem(history_->count() - 1);
    expression_->clear();
  }
  expression_->setFocus();
}

void TinyCalculatorScreen::memoryKey(void (TinyCalculator::*op)()) {
  (calc_.*op)();
  showMemory();
  expression_->setFocus();
}

void TinyCalculatorScreen::showMemory() {
  memoryMark_->setText(calc_.memorySet() ? QStringLiteral("M") : QString());
  memoryMark_->setToolTip(
      calc_.memorySet() ? tr("Memory: %1").arg(Q(FormatCalcResult(calc_.memory(), calc_.decimalSep()))) : QString());
}

void TinyCalculatorScreen::historyChosen(QListWidgetItem* item) {
  if (item) insertText(item->data(Qt::UserRole).toString());
}

bool TinyCalculatorScreen::eventFilter(QObject* watched, QEvent* event) {
  if (watched == history_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      historyChosen(history_->currentItem());
      return true;
    }
  }
  if (watched == expression_ && event->type() == QEvent::KeyPress) {
    auto* k = static_cast<QKeyEvent*>(event);
    const QString t = k->text();
    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter || t == QLatin1String("=")) {
      Evaluate();
      return true;
    }
    // Either separator key gives the program's own; an operator may continue from the result.
    if (t == QLatin1String(".") || t == QLatin1String(",")) {
      insertText(QString(QChar(App().decimalSep)));
      return true;
    }
    if (t.size() == 1 && ContinuesFromResult(t[0]) && expression_->text().isEmpty()) {
      insertText(t);
      return true;
    }
  }
  return CalculatorScreen::eventFilter(watched, event);
}

void TinyCalculatorScreen::prepareScreenshot() {
  const QString sep(QChar(App().decimalSep));
  expression_->setText(QStringLiteral("(3500+1200)*0") + sep + QStringLiteral("8"));
  Evaluate();
  memoryKey(&TinyCalculator::MemoryStore);
  expression_->setText(QStringLiteral("2*sin(30)+sqrt(2)^2"));
  Evaluate();
  expression_->setText(QStringLiteral("mem/60"));
}

}  // namespace norvane
