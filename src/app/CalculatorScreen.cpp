#include "app/CalculatorScreen.hpp"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QGridLayout>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QHash>
#include <QScrollBar>
#include <QVariant>
#include <algorithm>
#include <cmath>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/Accessibility.hpp"
#include "app/AppContext.hpp"
#include "app/InputRules.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

CalculatorScreen::CalculatorScreen(int menuIndex, const QString& formName, const QString& caption, QWidget* parent)
    : QWidget(parent, Qt::Window), menuIndex_(menuIndex), unitSystem_(App().settings.DefaultUnitSystem) {
  setObjectName(formName);
  setWindowTitle(caption);
  setAttribute(Qt::WA_DeleteOnClose);

  auto* root = new QVBoxLayout(this);
  root->setSizeConstraint(QLayout::SetFixedSize);
  lblHelp_ = new QLabel(this);
  lblHelp_->setObjectName("lblhelp");
  lblHelp_->setWordWrap(true);
  lblHelp_->setVisible(false);
  QFont small = lblHelp_->font();
  small.setItalic(true);
  lblHelp_->setFont(small);
  root->addWidget(lblHelp_);

  content_ = new QVBoxLayout;
  root->addLayout(content_);

  auto* bottom = new QHBoxLayout;
  lblError_ = new QLabel(this);
  lblError_->setObjectName("lblError");
  lblError_->setWordWrap(true);
  lblError_->setMinimumWidth(160);
  SetTextColor(lblError_, Colours().invalidText);
  bottom->addWidget(lblError_, 1);
  cmdCalculate_ = MakeButton(this, tr("Calculate"), "cmdCalculate");
  connect(cmdCalculate_, &QPushButton::clicked, this, &CalculatorScreen::runCalculate);
  bottom->addWidget(cmdCalculate_);
  cmdClose_ = MakeButton(this, tr("Exit"), "cmdClose");
  connect(cmdClose_, &QPushButton::clicked, this, &QWidget::close);
  bottom->addWidget(cmdClose_);
  root->addLayout(bottom);

  inputValid_.assign(1, false);  // a screen without boxes still has one flag
  updateCalculateState();
}

bool CalculatorScreen::allInputsValid() const { return AllInputsValid(inputValid_); }

void CalculatorScreen::setInputValid(int index, bool valid) {
  if (index < 0 || index >= static_cast<int>(inputValid_.size())) return;
  inputValid_[index] = valid;
  updateCalculateState();
}

void CalculatorScreen::setInputValid(const InputBox* box, bool valid) {
  const auto it = std::find(boxes_.begin(), boxes_.end(), box);
  if (it != boxes_.end()) setInputValid(static_cast<int>(it - boxes_.begin()), valid);
}

void CalculatorScreen::updateCalculateState() {
  const bool armed = allInputsValid();
  cmdCalculate_->setEnabled(armed);
  if (armed) {
    SetBackground(cmdCalculate_, cmdCalculate_->hasFocus() ? Colours().focusedCalculate : Colours().calculateArmed);
  } else {
    cmdCalculate_->setPalette(QPalette());
    cmdCalculate_->setAutoFillBackground(false);
  }
}

InputBox* CalculatorScreen::addBox(const BoxRule& rule, const QString& toolTip, const QString& text) {
  const int index = static_cast<int>(boxes_.size());
  auto* b = new InputBox(rule, this);
  b->setObjectName(QStringLiteral("InBox%1").arg(index));
  b->setToolTip(toolTip);
  b->installEventFilter(this);
  boxes_.push_back(b);
  if (index == 0) inputValid_.clear();
  inputValid_.push_back(false);
  connect(b, &QLineEdit::textChanged, this, [this, index] { onBoxChanged(index); });
  b->setText(text);
  inputValid_[index] = b->isValid();
  updateCalculateState();
  return b;
}

InputBox* CalculatorScreen::addBox(const Quantity& q, const QString& text) {
  return addBox(RuleOf(q), QString::fromStdString(ToolTipText(q)), text);
}

QLabel* CalculatorScreen::makeResult(const QString& name, const QString& toolTip) {
  auto* l = new QLabel(this);
  l->setObjectName(name);
  l->setToolTip(toolTip);
  l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  l->setAlignment(Qt::AlignCenter);
  l->setMinimumWidth(96);
  l->setMinimumHeight(l->fontMetrics().height() + 8);
  l->setTextInteractionFlags(Qt::TextSelectableByMouse);
  l->setBackgroundRole(QPalette::Base);
  l->setAutoFillBackground(true);
  MarkResult(l);
  results_.push_back(l);
  return l;
}

QLabel* CalculatorScreen::makeCaption(const QString& text, const QString& name) {
  auto* l = new QLabel(text, this);
  if (!name.isEmpty()) l->setObjectName(name);
  return l;
}

QLabel* CalculatorScreen::addBoxRow(QGridLayout* grid, int row, const QString& caption, const QString& name,
                                    InputBox* box) {
  QLabel* l = makeCaption(caption, name);
  l->setBuddy(box);
  grid->addWidget(l, row, 0);
  grid->addWidget(box, row, 1);
  return l;
}

QGroupBox* CalculatorScreen::makeUnitsFrame(const QString& caption, QRadioButton** options) {
  QGroupBox* frame = makeOptionGroup(caption, "FrameUnits", "OptUnits", {tr("Metric"), tr("US units")}, options).frame;
  options[unitSystem_ == 1 ? 1 : 0]->setChecked(true);
  return frame;
}

CalculatorScreen::OptionGroup CalculatorScreen::makeOptionGroup(const QString& caption, const QString& frameName,
                                                                const QString& optName, const QStringList& texts,
                                                                QRadioButton** options, Qt::Orientation orientation) {
  QGroupBox* frame = makeFrame(caption, frameName);
  QBoxLayout* layout =
      orientation == Qt::Horizontal ? static_cast<QBoxLayout*>(new QHBoxLayout(frame)) : new QVBoxLayout(frame);
  auto* group = new QButtonGroup(frame);
  for (int i = 0; i < texts.size(); ++i) {
    options[i] = new QRadioButton(texts[i], frame);
    options[i]->setObjectName(optName + QString::number(i));
    group->addButton(options[i], i);
    layout->addWidget(options[i]);
  }
  return {frame, group};
}

void CalculatorScreen::addResultRows(QGridLayout* grid, std::initializer_list<ResultRow> rows, QLabel** out, int row,
                                     int column) {
  for (const ResultRow& r : rows) {
    QLabel* caption = makeCaption(r.caption, r.captionName);
    caption->setToolTip(r.toolTip);
    *out = makeResult(r.name, r.toolTip);
    grid->addWidget(caption, row, column);
    grid->addWidget(*out++, row++, column + 1);
  }
}

void CalculatorScreen::addResultRows(QGridLayout* grid, std::initializer_list<ResultRow> rows,
                                     std::initializer_list<QLabel**> out, int row, int column) {
  Q_ASSERT(rows.size() == out.size());
  std::vector<QLabel*> labels(rows.size());
  addResultRows(grid, rows, labels.data(), row, column);
  auto member = out.begin();
  for (QLabel* l : labels) **member++ = l;
}

void CalculatorScreen::addResultTable(QGridLayout* grid, const QStringList& columns, const QStringList& rows,
                                      const QString& name, QLabel** out, const QStringList& rowToolTips) {
  const int n = static_cast<int>(columns.size());
  for (int c = 0; c < n; ++c) grid->addWidget(makeCaption(columns[c]), 0, c + 1, Qt::AlignHCenter);
  for (int r = 0; r < rows.size(); ++r) {
    const QString tip = r < rowToolTips.size() ? rowToolTips[r] : QString();
    QLabel* caption = makeCaption(rows[r]);
    caption->setToolTip(tip);
    grid->addWidget(caption, r + 1, 0);
    for (int c = 0; c < n; ++c) {
      out[r * n + c] = makeResult(name + QString::number(r * n + c), tip);
      grid->addWidget(out[r * n + c], r + 1, c + 1);
    }
  }
}

QGroupBox* CalculatorScreen::makeFrame(const QString& caption, const QString& name) {
  auto* g = new QGroupBox(caption, this);
  if (!name.isEmpty()) g->setObjectName(name);
  return g;
}

void CalculatorScreen::setTabSequence(std::initializer_list<QWidget*> chain) {
  QWidget* before = nullptr;
  for (QWidget* w : chain) {
    if (before) setTabOrder(before, w);
    before = w;
  }
}

void CalculatorScreen::addBesideResults(QLayout* inputs, QLayout* results) {
  auto* row = new QHBoxLayout;
  row->addLayout(inputs);
  row->addSpacing(8);
  row->addLayout(results);
  content_->addLayout(row);
}

void CalculatorScreen::addBesideResults(QLayout* inputs, QWidget* results) {
  auto* row = new QHBoxLayout;
  row->addLayout(inputs);
  row->addSpacing(8);
  row->addWidget(results, 1);
  content_->addLayout(row);
}

void CalculatorScreen::setHelpText(const QString& text) {
  helpText_ = text;
  showHint();
}

void CalculatorScreen::showHint() {
  // An invalid box says why: its tool tip names the admissible range.
  const bool hint = hintBox_ && !hintBox_->isValid() && !hintBox_->toolTip().isEmpty();
  if (hintBox_ && !hint) hintBox_ = nullptr;
  const QString text = hint ? hintBox_->toolTip() : helpText_;
  if (lblHelp_->text() != text) lblHelp_->setText(text);
  SetTextColor(lblHelp_, hint ? Colours().invalidText : palette().color(QPalette::WindowText));
  lblHelp_->setVisible(!text.isEmpty());
}

void CalculatorScreen::setLive(bool live) {
  live_ = live;
  cmdCalculate_->setVisible(!live);
}

void CalculatorScreen::showError(const QString& text) { lblError_->setText(text); }

void CalculatorScreen::clearData() {
  for (QLabel* l : results_) l->clear();
  lblError_->clear();
  NameResults(results_);
  calculated_ = false;
  resultsShown_ = false;
}

void CalculatorScreen::boxEdited(int /*index*/) {
  if (resultsShown_ || !lblError_->text().isEmpty()) clearData();
}

void CalculatorScreen::onBoxChanged(int index) {
  if (index < static_cast<int>(inputValid_.size())) inputValid_[index] = boxes_[index]->isValid();
  if (!converting_) boxEdited(index);
  if (live_) NameResults(results_);
  updateCalculateState();
  InputBox* b = boxes_[index];
  if (!b->isValid() && focusWidget() == b) hintBox_ = b;
  if (hintBox_) showHint();
}

void CalculatorScreen::runCalculate() {
  if (!allInputsValid()) return;
  lblError_->clear();
  calculated_ = calculate();
  // A failed calculation has put its error text on show: it is recalculated like results.
  Q_ASSERT(calculated_ || !lblError_->text().isEmpty());
  resultsShown_ = true;
  NameResults(results_);
}

void CalculatorScreen::recalculateIfShown() {
  if (resultsShown_ && allInputsValid()) runCalculate();
}

void CalculatorScreen::prepareScreenshot() {
  // Only a Calculate the user could press: Options hides it and computes nothing.
  if (!live_ && cmdCalculate_->isVisibleTo(this) && cmdCalculate_->isEnabled()) runCalculate();
}

void CalculatorScreen::installEnterFilter() {
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
}

void CalculatorScreen::orderOptionGroups() {
  // Tab reaches only the checked button of an exclusive group, at that button's own place in the
  // chain: keep every button of a group next to the first one, so the group has one place in
  // the order whichever button is checked.
  std::vector<std::vector<QAbstractButton*>> groups;
  for (QButtonGroup* g : findChildren<QButtonGroup*>())
    if (g->exclusive()) {
      const QList<QAbstractButton*> buttons = g->buttons();
      groups.emplace_back(buttons.begin(), buttons.end());
    }
  for (QRadioButton* r : findChildren<QRadioButton*>()) {
    if (r->group() || !r->autoExclusive() || !r->parentWidget()) continue;
    std::vector<QAbstractButton*> siblings;
    for (QRadioButton* o : r->parentWidget()->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly))
      if (!o->group() && o->autoExclusive()) siblings.push_back(o);
    if (siblings.front() == r) groups.push_back(siblings);
  }
  for (auto& g : groups) {
    if (g.size() < 2) continue;
    QAbstractButton* first = nullptr;  // the group's member met first in the chain
    for (QWidget* w = nextInFocusChain(); w != this && !first; w = w->nextInFocusChain())
      for (QAbstractButton* b : g)
        if (b == w) first = b;
    if (!first) continue;
    QWidget* prev = first;
    for (QAbstractButton* b : g)
      if (b != first) {
        setTabOrder(prev, b);
        prev = b;
      }
  }
}

void CalculatorScreen::showEvent(QShowEvent* e) {
  installEnterFilter();  // installing twice is harmless: Qt keeps one entry per filter object
  if (!restored_) {
    restored_ = true;
    // Calculate and Exit are made first but come last: Tab walks the inputs, then Calculate.
    QWidget* last = nullptr;  // the last control Tab reaches (Qt orders only those)
    for (QWidget* w = nextInFocusChain(); w != this; w = w->nextInFocusChain())
      if (w->focusPolicy() & Qt::TabFocus) last = w;
    if (last && last != cmdClose_) {
      if (last != cmdCalculate_) setTabOrder(last, cmdCalculate_);
      setTabOrder(cmdCalculate_, cmdClose_);
    }
    orderOptionGroups();
    NameControls(this);
    restoreInputs();
  }
  NameResults(results_);
  QWidget::showEvent(e);
}

void CalculatorScreen::markFocus(QPushButton* b, bool focused) {
  if (b == cmdCalculate_) {
    updateCalculateState();
  } else if (focused) {
    SetBackground(b, Colours().focusedButton);
  } else {
    b->setPalette(QPalette());
    b->setAutoFillBackground(false);
  }
}

bool CalculatorScreen::eventFilter(QObject* watched, QEvent* event) {
  auto* button = qobject_cast<QPushButton*>(watched);
  if (event->type() == QEvent::KeyPress) {
    auto* k = static_cast<QKeyEvent*>(event);
    if ((k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) &&
        !(k->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier))) {
      if (button && button->isEnabled())
        button->click();  // a focused button does what it says
      else
        focusNextChild();  // elsewhere Enter moves on like Tab and never computes
      return true;
    }
  } else if (button && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
    markFocus(button, event->type() == QEvent::FocusIn);
  } else if (event->type() == QEvent::FocusIn) {
    auto* b = qobject_cast<InputBox*>(watched);
    if (b && !b->isValid() && !b->isEmpty() && std::find(boxes_.begin(), boxes_.end(), b) != boxes_.end()) {
      hintBox_ = b;
      showHint();
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CalculatorScreen::convertOnSwitch(const std::vector<QAbstractButton*>& buttons, InputBox* b,
                                       std::vector<BoxUnit> units, RangeOf rangeOf, int decimals) {
  UnitSwitch* s = nullptr;
  for (auto& u : unitSwitches_)
    if (u->buttons == buttons) s = u.get();
  if (!s) {
    unitSwitches_.push_back(std::make_unique<UnitSwitch>());
    s = unitSwitches_.back().get();
    s->buttons = buttons;
    for (int k = 0; k < static_cast<int>(buttons.size()); ++k)
      connect(buttons[size_t(k)], &QAbstractButton::toggled, this, [this, s, k](bool on) {
        if (on)
          unitEntered(*s, k);
        else
          unitLeft(*s, k);
      });
  }
  s->boxes.push_back({b, std::move(units), std::move(rangeOf), decimals, std::nullopt});
}

void CalculatorScreen::unitLeft(UnitSwitch& s, int unit) {
  // An exclusive group unchecks the old button before it reports the new one.
  for (auto& bound : s.boxes) {
    bound.base.reset();
    if (bound.box->isValid() && !bound.box->isEmpty() && unit < static_cast<int>(bound.units.size()))
      bound.base = bound.box->value() * bound.units[size_t(unit)].scale + bound.units[size_t(unit)].offset;
  }
}

void CalculatorScreen::unitEntered(UnitSwitch& s, int unit) {
  const bool wasShown = resultsShown_;
  converting_ = true;
  for (auto& bound : s.boxes) {
    if (unit >= static_cast<int>(bound.units.size())) continue;
    InputBox* b = bound.box;
    const auto [lo, hi] = bound.rangeOf(unit);
    b->setRange(lo, hi);
    if (bound.base && !restoring_) {
      const BoxUnit& u = bound.units[size_t(unit)];
      const KeyMode mode = b->rule().mode;
      const bool whole = mode == KeyMode::UnsignedInt || mode == KeyMode::SignedInt;
      const double v = std::clamp((*bound.base - u.offset) / u.scale, lo, hi);
      QString t;
      for (int d = whole ? 0 : bound.decimals; d >= 0; --d) {  // as many decimals as the box holds
        t = QString::number(std::clamp(std::round(v * std::pow(10, d)) / std::pow(10, d), lo, hi), 'f', d);
        if (t.contains('.')) {
          while (t.endsWith('0')) t.chop(1);
          if (t.endsWith('.')) t.chop(1);
        }
        if (t == QLatin1String("-0")) t = QStringLiteral("0");
        if (t.size() <= b->maxLength()) break;
      }
      b->setText(t.replace('.', QChar(App().decimalSep)));
    }
    bound.base.reset();
    const auto it = std::find(boxes_.begin(), boxes_.end(), b);
    if (it != boxes_.end()) setInputValid(static_cast<int>(it - boxes_.begin()), b->isValid());
  }
  converting_ = false;
  if (restoring_) return;
  if (wasShown && allInputsValid())
    runCalculate();
  else if (resultsShown_ || !lblError_->text().isEmpty())
    clearData();
}

void CalculatorScreen::rememberInputs() {
  if (!remembers_) return;
  QVariantMap state;
  QHash<QString, int> seen;
  const auto key = [&seen](QObject* o) {
    const int n = seen[o->objectName()]++;
    return n == 0 ? o->objectName() : o->objectName() + '#' + QString::number(n);
  };
  for (QWidget* w : findChildren<QWidget*>()) {
    if (w->objectName().isEmpty()) continue;
    if (auto* b = qobject_cast<InputBox*>(w)) {
      if (b->isVisibleTo(this)) state[key(w)] = b->text();  // a box not in use keeps its default
    } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
      if (b->isCheckable()) state[key(w)] = b->isChecked();
    } else if (auto* s = qobject_cast<QAbstractSlider*>(w)) {
      state[key(w)] = s->value();
    } else if (auto* c = qobject_cast<QComboBox*>(w)) {
      state[key(w)] = c->currentIndex();
    } else if (auto* d = qobject_cast<QDateTimeEdit*>(w)) {
      state[key(w)] = d->dateTime();
    }
  }
  state[QStringLiteral(":calculated")] = resultsShown_;
  App().screenInputs[objectName()] = state;
}

void CalculatorScreen::restoreInputs() {
  if (!remembers_) return;
  const auto found = App().screenInputs.find(objectName());
  if (found == App().screenInputs.end()) return;
  const QVariantMap& state = found->second;
  // Options first (their handlers set captions and ranges, and may reset boxes), then values.
  restoring_ = true;
  for (int pass = 0; pass < 3; ++pass) {
    QHash<QString, int> seen;
    for (QWidget* w : findChildren<QWidget*>()) {
      if (w->objectName().isEmpty()) continue;
      const int n = seen[w->objectName()]++;
      const auto v = state.find(n == 0 ? w->objectName() : w->objectName() + '#' + QString::number(n));
      if (v == state.end()) continue;
      if (auto* b = qobject_cast<QAbstractButton*>(w); b && pass == 0) {
        if (b->isCheckable() && b->isChecked() != v->toBool() && (v->toBool() || !b->autoExclusive())) {
          if (b->isEnabled())
            b->click();  // as the user did: the screen's handlers follow
          else
            b->setChecked(v->toBool());
        }
      } else if (auto* s = qobject_cast<QAbstractSlider*>(w); s && pass == 1) {
        s->setValue(v->toInt());
      } else if (auto* c = qobject_cast<QComboBox*>(w); c && pass == 1) {
        c->setCurrentIndex(v->toInt());
      } else if (auto* d = qobject_cast<QDateTimeEdit*>(w); d && pass == 1) {
        d->setDateTime(v->toDateTime());
      } else if (auto* b = qobject_cast<InputBox*>(w); b && pass == 2) {
        b->setText(v->toString());
      }
    }
  }
  restoring_ = false;
  if (state.value(QStringLiteral(":calculated")).toBool() && allInputsValid()) runCalculate();
}

void CalculatorScreen::keyPressEvent(QKeyEvent* e) {
  if (e->key() == Qt::Key_Escape) {
    close();
    return;
  }
  if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
    focusNextChild();
    return;
  }
  QWidget::keyPressEvent(e);
}

void CalculatorScreen::closeEvent(QCloseEvent* e) {
  rememberInputs();
  emit unloaded(menuIndex_);
  QWidget::closeEvent(e);
}

}  // namespace norvane
