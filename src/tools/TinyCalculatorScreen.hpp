#pragma once
// frmData16 "Tiny math calculator": an expression line, typed or built with the buttons, a large
// result line, one memory with its "M" indicator, Deg/Rad for the trigonometry and the list of the
// calculations made since the program started. Enter or "=" evaluates; a failed expression stays
// in the line for correction. The evaluation itself is TinyCalculator's (muParser).

#include "app/CalculatorScreen.hpp"
#include "tools/TinyCalculator.hpp"

class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace norvane {

class TinyCalculatorScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit TinyCalculatorScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

  // Evaluates the expression line: the result (or the error text) goes to the result line, a
  // success into the history and clears the line.
  void Evaluate();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QHBoxLayout* buildDisplay();
  QGridLayout* buildKeyPad();
  void connectKeys();
  QVBoxLayout* buildSide();
  QPushButton* makeKey(const QString& caption, const QString& name, const QString& toolTip = {});
  // Inserts `text` at the cursor; an operator typed into an empty line after a result continues
  // from that result ("ans+").
  void insertText(const QString& text);
  void toggleSign();
  void clearAll();
  void memoryKey(void (TinyCalculator::*op)());
  void showMemory();
  void historyChosen(QListWidgetItem* item);

  TinyCalculator calc_;
  QLineEdit* expression_;
  QLabel* result_;
  QLabel* memoryMark_;
  QListWidget* history_;
  QRadioButton* optAngle_[2];
};

}  // namespace norvane
