#pragma once
// The behaviour every calculator screen shares, written once.
//
// A screen derives from CalculatorScreen, declares its input boxes with addBox() (index order is
// the box table's order), creates its result labels with makeResult(), lays out its controls in
// contentLayout() and implements calculate(). It then gets, without further code:
//   - live validation of every box on every change, green / dark-red text;
//   - Calculate ("cmdCalculate") enabled, with a light-green background, only while every box is
//     valid (the InputValid flags);
//   - results and the error label cleared on any edit (boxEdited() may narrow that);
//   - Enter elsewhere than on a push button moving the focus to the next control; Esc closes;
//   - select-all when a box gets the focus;
//   - recalculateIfShown() recomputes after an option change whenever results or an error are on
//     screen;
//   - "Exit" ("cmdClose"), and on close the unloaded() signal the menu uses to return the
//     screen's item to idle;
//   - Enter or Space on a focused push button presses it, and the focused button is marked;
//   - the help line shows the tool tip (the admissible range) of a box while it is invalid;
//   - every option group in the Tab order whichever of its buttons is checked;
//   - its inputs and options kept while the program runs: on close the named boxes, checkable
//     buttons, scroll bars, combo boxes and date fields are stored by form name and given back
//     at the next opening, and results shown at close are calculated again;
//   - unit switches that convert: a box bound with convertOnSwitch() keeps its quantity when the
//     user changes the unit.
// Screens without a Calculate button (live screens) call setLive(true) and compute in
// boxEdited() / option handlers.
//
// Names: the screen's objectName() is its form name ("frmData0"); boxes are "InBox<i>"; the
// error label is "lblError"; result labels take the name given to makeResult() ("dataR0").

#include <QStringList>
#include <QWidget>
#include <initializer_list>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "app/InputBox.hpp"

// The widgets every screen builds with, declared once for the derived screens too.
class QBoxLayout;
class QButtonGroup;
class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;
class QVBoxLayout;
class QHBoxLayout;
class QGroupBox;
class QRadioButton;
class QAbstractButton;

namespace norvane {

// One unit a box's quantity can be entered in: base value = number * scale + offset.
struct BoxUnit {
  double scale = 1;
  double offset = 0;
};

class CalculatorScreen : public QWidget {
  Q_OBJECT
 public:
  CalculatorScreen(int menuIndex, const QString& formName, const QString& caption, QWidget* parent = nullptr);

  int menuIndex() const { return menuIndex_; }
  bool calculated() const { return calculated_; }
  bool resultsShown() const { return resultsShown_; }
  int boxCount() const { return static_cast<int>(boxes_.size()); }
  InputBox* box(int i) const { return boxes_.at(i); }
  QPushButton* calculateButton() const { return cmdCalculate_; }
  QPushButton* closeButton() const { return cmdClose_; }
  QLabel* errorLabel() const { return lblError_; }

  // True when every InputValid flag is set.
  bool allInputsValid() const;
  // Sets one InputValid flag directly (e.g. a hidden box that must not block Calculate).
  void setInputValid(int index, bool valid);
  void setInputValid(const InputBox* box, bool valid);

  // Runs Calculate if every box is valid (the button's click).
  void runCalculate();
  // Recomputes when results or the error text of a calculation are on screen.
  void recalculateIfShown();
  // Puts the screen in a state worth a screenshot (default: calculate when possible).
  virtual void prepareScreenshot();
  // Stores the named inputs and options in the application context (done on close), and gives
  // them back (done at the first show); a screen that shows settings rather than inputs opts out.
  void rememberInputs();
  void restoreInputs();
  void setRemembersInputs(bool on) { remembers_ = on; }

 signals:
  void unloaded(int menuIndex);

 protected:
  // Computes and writes the results and returns true; or shows the error text (showError) and
  // returns false. Nothing else: no results and no error is not an outcome. Not called while any
  // box is invalid.
  virtual bool calculate() { return false; }
  // Clears every result label made by makeResult() and the error label; clears Calculated.
  virtual void clearData();
  // Called after box `index` changed and was validated. Default: clear the results when shown.
  virtual void boxEdited(int index);

  InputBox* addBox(const BoxRule& rule, const QString& toolTip = {}, const QString& text = {});
  // A box for `q`: its rule and its tool tip ("True air speed (50 to 1500 kts)") from the quantity.
  InputBox* addBox(const Quantity& q, const QString& text = {});
  // A result label registered for clearing, named `name`.
  QLabel* makeResult(const QString& name, const QString& toolTip = {});
  // A caption label for a box or result.
  QLabel* makeCaption(const QString& text, const QString& name = {});
  // A caption named `name` left of `box`, its buddy, in `row` of `grid`.
  QLabel* addBoxRow(QGridLayout* grid, int row, const QString& caption, const QString& name, InputBox* box);
  QGroupBox* makeFrame(const QString& caption, const QString& name = {});
  // An option group: the frame `frameName` captioned `caption` holding one radio button per text,
  // named `<optName><i>` with id i in one exclusive group, in a row (or a column). The buttons are
  // written to `options`; the group's idClicked() tells the user's choice.
  struct OptionGroup {
    QGroupBox* frame;
    QButtonGroup* group;
  };
  OptionGroup makeOptionGroup(const QString& caption, const QString& frameName, const QString& optName,
                              const QStringList& texts, QRadioButton** options,
                              Qt::Orientation orientation = Qt::Horizontal);
  // Result rows in `grid` from `row` on: the caption (named captionName when given) in `column`,
  // the result label named `name` beside it, both with the tool tip; the labels go to `out`.
  struct ResultRow {
    QString caption;
    QString name;
    QString toolTip = {};
    QString captionName = {};
  };
  void addResultRows(QGridLayout* grid, std::initializer_list<ResultRow> rows, QLabel** out, int row = 0,
                     int column = 0);
  // The same, each label written to its own member: addResultRows(grid, rows, {&tas_, &gs_}).
  void addResultRows(QGridLayout* grid, std::initializer_list<ResultRow> rows, std::initializer_list<QLabel**> out,
                     int row = 0, int column = 0);
  // A table of results: column headers across the top, row captions (with their tool tips) down the
  // side, the result labels named `<name><r * columns + c>` written to `out` in that order.
  void addResultTable(QGridLayout* grid, const QStringList& columns, const QStringList& rows, const QString& name,
                      QLabel** out, const QStringList& rowToolTips = {});
  // The unit-system frame "FrameUnits": options "Metric" (OptUnits0) and "US units" (OptUnits1),
  // written to options[0] and [1], side by side in one exclusive group, unitSystem()'s checked.
  QGroupBox* makeUnitsFrame(const QString& caption, QRadioButton** options);

  // Binds box `b` to a unit switch: while buttons[k] is checked the box holds its quantity in
  // units[k] with the range rangeOf(k). Changing the unit converts a valid number (rounded to
  // `decimals`, whole for integer boxes, clamped into the new range) and calculates again when
  // results were shown; a number that was not valid is kept and validated against the new range.
  using RangeOf = std::function<std::pair<double, double>(int unit)>;
  void convertOnSwitch(const std::vector<QAbstractButton*>& buttons, InputBox* b, std::vector<BoxUnit> units,
                       RangeOf rangeOf, int decimals = 2);

  // Tab walks the controls of `chain` in this order.
  void setTabSequence(std::initializer_list<QWidget*> chain);

  QVBoxLayout* contentLayout() const { return content_; }
  // `inputs` left of `results`, 8 pixels apart, as a row of the content; a results widget takes
  // the spare width.
  void addBesideResults(QLayout* inputs, QLayout* results);
  void addBesideResults(QLayout* inputs, QWidget* results);
  void setHelpText(const QString& text);
  void setLive(bool live);
  void showError(const QString& text);
  void updateCalculateState();
  int unitSystem() const { return unitSystem_; }

  void showEvent(QShowEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct UnitSwitch {
    std::vector<QAbstractButton*> buttons;
    struct Bound {
      InputBox* box;
      std::vector<BoxUnit> units;
      RangeOf rangeOf;
      int decimals;
      std::optional<double> base;  // the valid value in base units, taken as the old unit is left
    };
    std::vector<Bound> boxes;
  };
  void onBoxChanged(int index);
  void installEnterFilter();
  void orderOptionGroups();
  void unitLeft(UnitSwitch& s, int unit);
  void unitEntered(UnitSwitch& s, int unit);
  void showHint();
  void markFocus(QPushButton* b, bool focused);

  int menuIndex_;
  int unitSystem_ = 0;
  bool calculated_ = false;
  bool resultsShown_ = false;
  bool live_ = false;
  bool remembers_ = true;
  bool restored_ = false;
  bool restoring_ = false;
  bool converting_ = false;
  InputBox* hintBox_ = nullptr;
  QString helpText_;
  std::vector<std::unique_ptr<UnitSwitch>> unitSwitches_;
  std::vector<InputBox*> boxes_;
  std::vector<bool> inputValid_;
  std::vector<QLabel*> results_;
  QLabel* lblHelp_ = nullptr;
  QVBoxLayout* content_ = nullptr;
  QLabel* lblError_ = nullptr;
  QPushButton* cmdCalculate_ = nullptr;
  QPushButton* cmdClose_ = nullptr;
};

}  // namespace norvane
