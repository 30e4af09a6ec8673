#pragma once
// A numeric (or letter) input box: filters keys as its mode allows, turns either separator key
// into the locale's, selects all on focus, and validates its text live against a range,
// showing green text when valid and dark red when not.

#include <QLineEdit>
#include <QString>

#include "app/InputRules.hpp"
#include "app/Quantity.hpp"

namespace norvane {

struct BoxRule {
  KeyMode mode = KeyMode::SignedReal;
  double min = 0;
  double max = 0;
  bool allowEmpty = false;
  bool toUpper = false;
  int maxLength = 8;
  // Integer check (ValidateIntBox) or real check (ValidateRealBox); by default integer for the
  // integer modes and real for the decimal ones.
  enum class Check { ByMode, Integer, Real, None } check = Check::ByMode;
};

// The rule of a box that holds `q`: its key mode, range, length and whether it may stay empty.
BoxRule RuleOf(const Quantity& q);

class InputBox : public QLineEdit {
  Q_OBJECT
 public:
  explicit InputBox(const BoxRule& rule, QWidget* parent = nullptr);

  const BoxRule& rule() const { return rule_; }
  // Changes the rule (range, mode, length) and validates the current text again.
  void setRule(const BoxRule& rule);
  void setRange(double min, double max);
  // Takes the quantity's rule and tool tip (a unit switch changes the quantity a box holds).
  void setQuantity(const Quantity& q);

  bool isValid() const { return valid_; }
  // The number in the box (locale rules); 0 when empty or not a number.
  double value() const;
  bool isEmpty() const { return text().isEmpty(); }

  // Re-runs the range check and colouring (also done on every text change).
  void validate();
  // Inserts text at the caret (replacing the selection) filtered as if typed key by key: the
  // path of pasted and dropped text, which bypasses the key filter.
  void insertFiltered(const QString& text);

 signals:
  void validityChanged(bool valid);

 protected:
  void keyPressEvent(QKeyEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void contextMenuEvent(QContextMenuEvent* e) override;
  void dropEvent(QDropEvent* e) override;

 private:
  BoxRule rule_;
  bool valid_ = false;
  bool selectOnRelease_ = false;
};

}  // namespace norvane
