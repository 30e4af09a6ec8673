#include "manoeuvres/TurnScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/UiHelpers.hpp"
#include "manoeuvres/Turn.hpp"

namespace norvane {

TurnScreen::TurnScreen(QWidget* parent) : RateTurnScreen(6, "frmData6", tr("Turn parameters"), parent) {
  tas_ = addBox(kTurnTas);
  interceptAngle_ = addBox(kInterceptAngle);
  interceptDistance_ = addBox(kInterceptDistance);
  for (InputBox* b : {tas_, interceptAngle_, interceptDistance_})
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("000000") + 16);
  // Left: TAS and the options; right: the effective turn and its load factor.
  QVBoxLayout* left = buildOptions();
  QVBoxLayout* right = buildResults();
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addLayout(right);
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(buildAnticipation());
  setHelpText(
      tr("Anticipation angle for intercepting a given radial under known angle and distance at a specific "
         "turn rate"));
  setTabOrders();
}

QVBoxLayout* TurnScreen::buildOptions() {
  auto* left = new QVBoxLayout;
  auto* tasRow = new QHBoxLayout;
  QLabel* tasCaption = makeCaption(tr("TAS (kts)"), "lbldata0");
  tasCaption->setBuddy(tas_);
  tasRow->addWidget(tasCaption);
  tasRow->addWidget(tas_);
  tasRow->addStretch();
  left->addLayout(tasRow);
  // 30 degrees and the standard rate at first.
  left->addWidget(makeMaxBankGroup(2));
  left->addWidget(makeRateGroup(1));
  left->addStretch();
  return left;
}

QVBoxLayout* TurnScreen::buildResults() {
  auto* frameResults = makeFrame(tr("Effective turn parameters"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  addResultRows(rl,
                {{tr("Bank (°)"), "dataR0", tr("Effective bank angle (°)"), "lbldata3"},
                 {tr("Rate (°/s)"), "dataR1", tr("Effective turn rate (°/s)"), "lbldata4"},
                 {QString(), "dataR2", tr("Turn radius"), "lbldata5"}},
                &results_[kBank]);
  radiusCaption_ = findChild<QLabel*>("lbldata5");
  // The radius unit: a row of its own under the radius, no frame; nautical miles at first.
  auto* unitRow = new QHBoxLayout;
  auto* unitGroup = new QButtonGroup(this);
  const char* const unitCaptions[3] = {"NM", "m", "ft"};
  for (int i = 0; i < 3; ++i) {
    rUnit_[i] = new QRadioButton(tr(unitCaptions[i]), frameResults);
    rUnit_[i]->setObjectName(QStringLiteral("RUnit%1").arg(i));
    rUnit_[i]->setToolTip(tr("Unit of the turn radius"));
    unitGroup->addButton(rUnit_[i], i);
    unitRow->addWidget(rUnit_[i]);
  }
  unitRow->addStretch();
  rl->addLayout(unitRow, 3, 0, 1, 2);
  rUnit_[0]->setChecked(true);
  radiusCaption_->setText(Q(RadiusCaption(RadiusUnit::NauticalMiles)));
  connect(unitGroup, &QButtonGroup::idClicked, this, &TurnScreen::rUnitClick);

  auto* frameG = makeFrame(tr("Turn g-force"), "Framegf");
  auto* gl = new QHBoxLayout(frameG);
  results_[kGLoad] = makeResult("dataR5", tr("Load factor in the level turn"));
  gl->addWidget(makeCaption(tr("g-load"), "lbldata8"));
  gl->addWidget(results_[kGLoad]);

  auto* right = new QVBoxLayout;
  right->addWidget(frameResults);
  right->addWidget(frameG);
  return right;
}

QGroupBox* TurnScreen::buildAnticipation() {
  // The anticipation: its two inputs and two results.
  auto* frameTAA = makeFrame(tr("Turn anticipation angle"), "FrameTAA");
  auto* al = new QGridLayout(frameTAA);
  addBoxRow(al, 0, tr("Intercept angle (°)"), "lbldata1", interceptAngle_);
  addBoxRow(al, 1, tr("Distance (NM)"), "lbldata2", interceptDistance_);
  addResultRows(al,
                {{tr("Anticipation (°)"), "dataR3", tr("Turn anticipation angle (°)"), "lbldata6"},
                 {tr("Final distance (NM)"), "dataR4", tr("Distance to station at end of turn (NM)"), "lbldata7"}},
                &results_[kAnticipation], 0, 3);
  al->setColumnMinimumWidth(2, 12);
  al->setColumnStretch(2, 1);
  return frameTAA;
}

void TurnScreen::setTabOrders() {
  setTabSequence({tas_, interceptAngle_, interceptDistance_, calculateButton(), closeButton()});
}

void TurnScreen::rUnitClick(int index) {
  radiusCaption_->setText(Q(RadiusCaption(static_cast<RadiusUnit>(index))));
  recalculateIfShown();
}

void TurnScreen::boxEdited(int index) {
  if (box(index) == tas_) {
    CalculatorScreen::boxEdited(index);
    return;
  }
  // The anticipation inputs only invalidate the anticipation.
  results_[kAnticipation]->clear();
  results_[kFinalDistance]->clear();
}

bool TurnScreen::calculate() {
  std::optional<double> angle, dist;
  if (!interceptAngle_->isEmpty() && !interceptDistance_->isEmpty()) {
    angle = interceptAngle_->value();
    dist = interceptDistance_->value();
  }
  const auto unit = static_cast<RadiusUnit>(rUnit_[0]->group()->checkedId());
  const TurnTexts t = CalculateTurnTexts(tas_->value(), maxBank(), rate(), unit, angle, dist);
  results_[kBank]->setText(LocaleText(t.bank));
  results_[kRate]->setText(LocaleText(t.rate));
  results_[kRadius]->setText(LocaleText(t.radius));
  results_[kGLoad]->setText(LocaleText(t.gLoad));
  results_[kAnticipation]->setText(LocaleText(t.anticipation));
  results_[kFinalDistance]->setText(LocaleText(t.finalDistance));
  return true;
}

void TurnScreen::prepareScreenshot() {
  tas_->setText("120");
  interceptAngle_->setText("90");
  interceptDistance_->setText("5");
  runCalculate();
}

}  // namespace norvane
