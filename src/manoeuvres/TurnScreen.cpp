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
namespace {

// Option choices kept while the program runs: 30 degrees and standard rate at first.
int gMaxBank = 2;
int gRate = 1;
int gRadiusUnit = 0;

}  // namespace

TurnScreen::TurnScreen(QWidget* parent) : CalculatorScreen(6, "frmData6", tr("Turn parameters"), parent) {
  buildInputs();
  // Left: TAS and the options; right: the effective turn and its load factor.
  QVBoxLayout* left = buildOptions();
  QVBoxLayout* right = buildResults();
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addLayout(right);
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(buildAnticipation());
  setHelpText(tr("Anticipation angle for intercepting a given radial under known angle and distance at a specific "
                 "turn rate"));
  setTabOrder(box(0), box(1));
  setTabOrder(box(1), box(2));
  setTabOrder(box(2), calculateButton());
  setTabOrder(calculateButton(), closeButton());
  connectOptions();
}

void TurnScreen::buildInputs() {
  BoxRule tasRule{KeyMode::UnsignedInt, double(kTurnTasMin), double(kTurnTasMax)};
  tasRule.maxLength = 4;
  BoxRule angleRule{KeyMode::UnsignedInt, double(kInterceptAngleMin), double(kInterceptAngleMax)};
  angleRule.maxLength = 2;
  angleRule.allowEmpty = true;  // only the anticipation needs it
  BoxRule distRule{KeyMode::UnsignedReal, kInterceptDistanceMin, kInterceptDistanceMax};
  distRule.maxLength = 5;
  distRule.allowEmpty = true;
  InputBox* tas = addBox(tasRule, tr("True air speed (50 to 1500 kts)"));
  InputBox* angle = addBox(angleRule, tr("Interception angle (10 to 90°)"));
  InputBox* dist = addBox(distRule, tr("Distance to station at beginning of turn (5 to 50 NM)"));
  for (InputBox* b : {tas, angle, dist}) b->setFixedWidth(b->fontMetrics().horizontalAdvance("000000") + 16);
}

QVBoxLayout* TurnScreen::buildOptions() {
  auto* left = new QVBoxLayout;
  auto* tasRow = new QHBoxLayout;
  QLabel* tasCaption = makeCaption(tr("TAS (kts)"), "lbldata0");
  tasCaption->setBuddy(box(0));
  tasRow->addWidget(tasCaption);
  tasRow->addWidget(box(0));
  tasRow->addStretch();
  left->addLayout(tasRow);

  left->addWidget(makeOptionGroup(tr("Max bank (ul=unlimited)"), "FrameMaxBank", "Optbankinput",
                                  {tr("20°"), tr("25°"), tr("30°"), tr("ul")}, optBank_)
                      .frame);
  optBank_[3]->setToolTip(tr("Unlimited: the bank that the turn rate needs"));

  left->addWidget(makeOptionGroup(tr("Turn rate (deg/s)"), "FrameIFRTR", "OptTRinput",
                                  {tr("1.5 (1/2 std)"), tr("3 (std)")}, optRate_)
                      .frame);
  left->addStretch();
  return left;
}

QVBoxLayout* TurnScreen::buildResults() {
  auto* frameResults = makeFrame(tr("Effective turn parameters"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  dataR_[0] = makeResult("dataR0", tr("Effective bank angle (°)"));
  dataR_[1] = makeResult("dataR1", tr("Effective turn rate (°/s)"));
  dataR_[2] = makeResult("dataR2", tr("Turn radius"));
  rl->addWidget(makeCaption(tr("Bank (°)"), "lbldata3"), 0, 0);
  rl->addWidget(dataR_[0], 0, 1);
  rl->addWidget(makeCaption(tr("Rate (°/s)"), "lbldata4"), 1, 0);
  rl->addWidget(dataR_[1], 1, 1);
  radiusCaption_ = makeCaption(QString(), "lbldata5");
  rl->addWidget(radiusCaption_, 2, 0);
  rl->addWidget(dataR_[2], 2, 1);
  // The radius unit: a row of its own under the radius, no frame.
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

  auto* frameG = makeFrame(tr("Turn g-force"), "Framegf");
  auto* gl = new QHBoxLayout(frameG);
  dataR_[5] = makeResult("dataR5", tr("Load factor in the level turn"));
  gl->addWidget(makeCaption(tr("g-load"), "lbldata8"));
  gl->addWidget(dataR_[5]);

  auto* right = new QVBoxLayout;
  right->addWidget(frameResults);
  right->addWidget(frameG);
  return right;
}

QGroupBox* TurnScreen::buildAnticipation() {
  // The anticipation: its two inputs and two results.
  auto* frameTAA = makeFrame(tr("Turn anticipation angle"), "FrameTAA");
  auto* al = new QGridLayout(frameTAA);
  QLabel* angleCaption = makeCaption(tr("Intercept angle (°)"), "lbldata1");
  angleCaption->setBuddy(box(1));
  QLabel* distCaption = makeCaption(tr("Distance (NM)"), "lbldata2");
  distCaption->setBuddy(box(2));
  dataR_[3] = makeResult("dataR3", tr("Turn anticipation angle (°)"));
  dataR_[4] = makeResult("dataR4", tr("Distance to station at end of turn (NM)"));
  al->addWidget(angleCaption, 0, 0);
  al->addWidget(box(1), 0, 1);
  al->addWidget(makeCaption(tr("Anticipation (°)"), "lbldata6"), 0, 3);
  al->addWidget(dataR_[3], 0, 4);
  al->addWidget(distCaption, 1, 0);
  al->addWidget(box(2), 1, 1);
  al->addWidget(makeCaption(tr("Final distance (NM)"), "lbldata7"), 1, 3);
  al->addWidget(dataR_[4], 1, 4);
  al->setColumnMinimumWidth(2, 12);
  al->setColumnStretch(2, 1);
  return frameTAA;
}

void TurnScreen::connectOptions() {
  // The kept options; a change recalculates when results are shown.
  optBank_[gMaxBank]->setChecked(true);
  optRate_[gRate]->setChecked(true);
  rUnit_[gRadiusUnit]->setChecked(true);
  radiusCaption_->setText(Q(RadiusCaption(static_cast<RadiusUnit>(gRadiusUnit))));
  connect(optBank_[0]->group(), &QButtonGroup::idClicked, this, [this](int id) {
    gMaxBank = id;
    recalculateIfShown();
  });
  connect(optRate_[0]->group(), &QButtonGroup::idClicked, this, [this](int id) {
    gRate = id;
    recalculateIfShown();
  });
  connect(rUnit_[0]->group(), &QButtonGroup::idClicked, this, &TurnScreen::rUnitClick);
}

void TurnScreen::rUnitClick(int index) {
  gRadiusUnit = index;
  radiusCaption_->setText(Q(RadiusCaption(static_cast<RadiusUnit>(index))));
  recalculateIfShown();
}

void TurnScreen::boxEdited(int index) {
  if (index == 0) {
    CalculatorScreen::boxEdited(index);
    return;
  }
  // The anticipation inputs only invalidate the anticipation.
  dataR_[3]->clear();
  dataR_[4]->clear();
}

bool TurnScreen::calculate() {
  std::optional<double> angle, dist;
  if (!box(1)->isEmpty() && !box(2)->isEmpty()) {
    angle = box(1)->value();
    dist = box(2)->value();
  }
  const int16_t bankIndex = static_cast<int16_t>(gMaxBank);
  const TurnTexts t = CalculateTurnTexts(box(0)->value(), bankIndex, gRate == 1,
                                         static_cast<RadiusUnit>(gRadiusUnit), angle, dist);
  dataR_[0]->setText(LocaleText(t.bank));
  dataR_[1]->setText(LocaleText(t.rate));
  dataR_[2]->setText(LocaleText(t.radius));
  dataR_[5]->setText(LocaleText(t.gLoad));
  dataR_[3]->setText(LocaleText(t.anticipation));
  dataR_[4]->setText(LocaleText(t.finalDistance));
  return true;
}

void TurnScreen::prepareScreenshot() {
  box(0)->setText("120");
  box(1)->setText("90");
  box(2)->setText("5");
  runCalculate();
}

}  // namespace norvane
