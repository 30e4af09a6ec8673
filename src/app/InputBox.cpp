#include "app/InputBox.hpp"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

InputBox::InputBox(const BoxRule& rule, QWidget* parent) : QLineEdit(parent), rule_(rule) {
  setMaxLength(rule.maxLength);
  connect(this, &QLineEdit::textChanged, this, [this] { validate(); });
  validate();
}

BoxRule RuleOf(const Quantity& q) {
  BoxRule r{KeyModeOf(q), q.min, q.max};
  r.allowEmpty = q.optional;
  r.maxLength = BoxLength(q);
  return r;
}

void InputBox::setQuantity(const Quantity& q) {
  setToolTip(QString::fromStdString(ToolTipText(q)));
  setRule(RuleOf(q));
}

void InputBox::setRule(const BoxRule& rule) {
  rule_ = rule;
  setMaxLength(rule.maxLength);
  validate();
}

void InputBox::setRange(double min, double max) {
  rule_.min = min;
  rule_.max = max;
  validate();
}

double InputBox::value() const {
  const auto v = ParseLocaleReal(text().toStdU16String(), App().decimalSep);
  return v ? *v : 0.0;
}

void InputBox::validate() {
  const std::u16string t = text().toStdU16String();
  bool ok = false;
  BoxRule::Check check = rule_.check;
  if (check == BoxRule::Check::ByMode)
    check = rule_.mode == KeyMode::UnsignedInt || rule_.mode == KeyMode::SignedInt     ? BoxRule::Check::Integer
            : rule_.mode == KeyMode::UnsignedReal || rule_.mode == KeyMode::SignedReal ? BoxRule::Check::Real
                                                                                       : BoxRule::Check::None;
  switch (check) {
    case BoxRule::Check::Integer:
      ok = IsValidIntText(t, rule_.allowEmpty, static_cast<int32_t>(rule_.min), static_cast<int32_t>(rule_.max));
      break;
    case BoxRule::Check::Real:
      ok = IsValidRealText(t, rule_.allowEmpty, rule_.min, rule_.max, App().decimalSep);
      break;
    default:
      ok = rule_.allowEmpty || !t.empty();
      break;
  }
  // An empty box keeps the invalid colour even where empty is allowed (there is no text to see).
  SetTextColor(this, ok && !t.empty() ? Colours().validText : Colours().invalidText);
  if (ok != valid_) {
    valid_ = ok;
    emit validityChanged(ok);
  }
}

void InputBox::insertFiltered(const QString& text) {
  if (isReadOnly()) return;
  BoxState state;
  state.text = this->text().toStdU16String();
  state.maxLength = maxLength();
  state.caret = hasSelectedText() ? selectionStart() : cursorPosition();
  state.selectionLength = static_cast<int>(selectedText().size());
  const std::u16string kept = FilterText(state, text.toStdU16String(), rule_.mode, rule_.toUpper, App().decimalSep);
  if (!kept.empty()) insert(QString::fromStdU16String(kept));
}

void InputBox::keyPressEvent(QKeyEvent* e) {
  if (e->matches(QKeySequence::Paste)) {
    insertFiltered(QGuiApplication::clipboard()->text());
    e->accept();
    return;
  }
  const QString typed = e->text();
  const bool plain = !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
  if (plain && typed.size() == 1 && typed[0].unicode() >= 32 && typed[0].unicode() != 127) {
    BoxState state;
    state.text = text().toStdU16String();
    state.maxLength = maxLength();
    state.caret = hasSelectedText() ? selectionStart() : cursorPosition();
    state.selectionLength = static_cast<int>(selectedText().size());
    const char16_t key = FilterKey(state, typed[0].unicode(), rule_.mode, rule_.toUpper, App().decimalSep);
    if (key == 0) {
      e->accept();
      return;
    }
    if (key != typed[0].unicode()) {
      insert(QString(QChar(key)));
      e->accept();
      return;
    }
  }
  QLineEdit::keyPressEvent(e);
}

void InputBox::focusInEvent(QFocusEvent* e) {
  QLineEdit::focusInEvent(e);
  selectAll();
  // A mouse click that gave the focus would place the caret on release: select all then too.
  selectOnRelease_ = e->reason() == Qt::MouseFocusReason;
}

void InputBox::mouseReleaseEvent(QMouseEvent* e) {
  // The middle button pastes the X11 selection.
  if (e->button() == Qt::MiddleButton && QGuiApplication::clipboard()->supportsSelection() && !isReadOnly()) {
    deselect();
    insertFiltered(QGuiApplication::clipboard()->text(QClipboard::Selection));
    e->accept();
    return;
  }
  QLineEdit::mouseReleaseEvent(e);
  if (selectOnRelease_ && !hasSelectedText()) selectAll();
  selectOnRelease_ = false;
}

void InputBox::contextMenuEvent(QContextMenuEvent* e) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  // The standard menu's Paste calls QLineEdit::paste(), which is not virtual: route it here.
  for (QAction* paste : menu->actions()) {
    if (!paste->text().startsWith(QLineEdit::tr("&Paste"))) continue;
    disconnect(paste, &QAction::triggered, nullptr, nullptr);
    connect(paste, &QAction::triggered, this, [this] { insertFiltered(QGuiApplication::clipboard()->text()); });
  }
  menu->popup(e->globalPos());
}

void InputBox::dropEvent(QDropEvent* e) {
  // A move within the box is the box's own text; anything from outside is filtered.
  if (e->source() == this || !e->mimeData()->hasText() || isReadOnly()) {
    QLineEdit::dropEvent(e);
    return;
  }
  deselect();
  setCursorPosition(cursorPositionAt(e->position().toPoint()));
  insertFiltered(e->mimeData()->text());
  e->acceptProposedAction();
}

}  // namespace norvane
