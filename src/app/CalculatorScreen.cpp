#include "app/CalculatorScreen.hpp"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

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
  SetTextColor(lblError_, kInvalidText);
  bottom->addWidget(lblError_, 1);
  cmdCalculate_ = new QPushButton(tr("Calculate"), this);
  cmdCalculate_->setObjectName("cmdCalculate");
  cmdCalculate_->setAutoDefault(false);
  connect(cmdCalculate_, &QPushButton::clicked, this, &CalculatorScreen::runCalculate);
  bottom->addWidget(cmdCalculate_);
  cmdClose_ = new QPushButton(tr("Exit"), this);
  cmdClose_->setObjectName("cmdClose");
  cmdClose_->setAutoDefault(false);
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

void CalculatorScreen::updateCalculateState() {
  const bool armed = allInputsValid();
  cmdCalculate_->setEnabled(armed);
  if (armed) {
    SetBackground(cmdCalculate_, kCalculateArmed);
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
  results_.push_back(l);
  return l;
}

QLabel* CalculatorScreen::makeCaption(const QString& text, const QString& name) {
  auto* l = new QLabel(text, this);
  if (!name.isEmpty()) l->setObjectName(name);
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
  QBoxLayout* layout = orientation == Qt::Horizontal ? static_cast<QBoxLayout*>(new QHBoxLayout(frame))
                                                     : new QVBoxLayout(frame);
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

void CalculatorScreen::setHelpText(const QString& text) {
  lblHelp_->setText(text);
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
  calculated_ = false;
  resultsShown_ = false;
}

void CalculatorScreen::boxEdited(int /*index*/) {
  if (resultsShown_ || !lblError_->text().isEmpty()) clearData();
}

void CalculatorScreen::onBoxChanged(int index) {
  if (index < static_cast<int>(inputValid_.size())) inputValid_[index] = boxes_[index]->isValid();
  boxEdited(index);
  updateCalculateState();
}

void CalculatorScreen::runCalculate() {
  if (!allInputsValid()) return;
  lblError_->clear();
  const bool ok = calculate();
  calculated_ = ok;
  resultsShown_ = true;
}

void CalculatorScreen::recalculateIfCalculated() {
  if (calculated_ && allInputsValid()) runCalculate();
}

void CalculatorScreen::prepareScreenshot() {
  if (!live_ && cmdCalculate_->isEnabled()) runCalculate();
}

void CalculatorScreen::installEnterFilter() {
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
}

void CalculatorScreen::showEvent(QShowEvent* e) {
  installEnterFilter();  // installing twice is harmless: Qt keeps one entry per filter object
  QWidget::showEvent(e);
}

bool CalculatorScreen::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* k = static_cast<QKeyEvent*>(event);
    if ((k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) &&
        !(k->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier))) {
      focusNextChild();  // Enter moves on like Tab and never computes
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
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
  emit unloaded(menuIndex_);
  QWidget::closeEvent(e);
}

}  // namespace norvane
