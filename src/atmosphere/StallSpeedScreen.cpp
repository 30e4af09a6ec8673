#include "atmosphere/StallSpeedScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/Units.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

StallSpeedScreen::StallSpeedScreen(QWidget* parent)
    : CalculatorScreen(13, "frmData13", tr("Stall speed calculation"), parent) {
  setHelpText(tr("Stall speed calculated from Vs at sea level, standard, MTOW or  from aerodynamical data (CL max "
                 "and reference wing area)"));
  buildInputs();
  auto* row = new QHBoxLayout;
  auto* left = new QVBoxLayout;
  left->addWidget(buildReference());
  left->addWidget(buildConditions());
  row->addLayout(left);
  row->addSpacing(8);
  row->addLayout(buildResults());
  contentLayout()->addLayout(row);
  setTabOrders();
  load();
  connectSignals();
}

void StallSpeedScreen::buildInputs() {
  BoxRule clRule{KeyMode::UnsignedReal, kClMaxRange.min, kClMaxRange.max};
  clRule.maxLength = 5;
  BoxRule areaRule{KeyMode::UnsignedReal, 10, 1000};
  areaRule.maxLength = 7;
  BoxRule weightRule{KeyMode::UnsignedReal, 500, 700000};
  weightRule.maxLength = 9;
  BoxRule vsRule{KeyMode::UnsignedReal, kReferenceVsRange.min, kReferenceVsRange.max};
  vsRule.maxLength = 6;
  BoxRule altRule{KeyMode::UnsignedReal, kStallAltitudeRange.min, kStallAltitudeRange.max};
  altRule.maxLength = 7;
  InputBox* boxes[6] = {
      addBox(clRule, tr("Maximum lift coefficient (0.5 to 2.5)")),
      addBox(areaRule),
      addBox(weightRule),
      addBox(vsRule, tr("Stall speed at sea level and MTOW (CAS ; 20 to 300 kts)")),
      addBox(weightRule),
      addBox(altRule, tr("Geometric altitude (0 to 65000 ft)")),
  };
  for (int i = 0; i < 6; ++i) {
    boxes[i]->setFixedWidth(boxes[i]->fontMetrics().horizontalAdvance("0000000000") + 16);
    boxCaption_[i] = makeCaption(QString(), QStringLiteral("lblInput%1").arg(i));
    boxCaption_[i]->setBuddy(boxes[i]);
  }
  boxCaption_[kClMax]->setText(tr("CL max"));
  boxCaption_[kVs]->setText(tr("Vs (KCAS)"));
  boxCaption_[kAltitude]->setText(tr("Altitude (ft)"));
}

QGroupBox* StallSpeedScreen::buildReference() {
  // Reference data: the choice and its boxes.
  auto* frameRef = makeFrame(tr("Reference data (SL, standard)"), "FrameRef");
  auto* rfl = new QGridLayout(frameRef);
  auto* refGroup = new QButtonGroup(this);
  optRef_[0] = new QRadioButton(tr("Aerodynamical data"), frameRef);
  optRef_[1] = new QRadioButton(tr("Reference data"), frameRef);
  optRef_[0]->setToolTip(tr("CL max, wing area and MTOW"));
  optRef_[1]->setToolTip(tr("Stall speed at sea level and MTOW"));
  for (int i = 0; i < 2; ++i) {
    optRef_[i]->setObjectName(QStringLiteral("OptRef%1").arg(i));
    refGroup->addButton(optRef_[i], i);
    rfl->addWidget(optRef_[i], 0, i * 2, 1, 2);
  }
  int r = 1;
  for (int i : {kClMax, kWingArea, kVs, kMtow}) {
    rfl->addWidget(boxCaption_[i], r, 0, 1, 2);
    rfl->addWidget(box(i), r, 2, 1, 2);
    ++r;
  }
  return frameRef;
}

QGroupBox* StallSpeedScreen::buildConditions() {
  auto* frameNow = makeFrame(tr("Current conditions"), "FrameConditions");
  auto* nl = new QGridLayout(frameNow);
  nl->addWidget(boxCaption_[kWeight], 0, 0);
  nl->addWidget(box(kWeight), 0, 1, 1, 2);
  nl->addWidget(boxCaption_[kAltitude], 1, 0);
  nl->addWidget(box(kAltitude), 1, 1, 1, 2);
  const ValueScroll ba = MakeValueScroll(frameNow, tr("Bank (°)"), "BA", static_cast<int>(kBankRange.min),
                                         static_cast<int>(kBankRange.max), 5, "000", tr("Bank angle (0 to 60°)"));
  baScroll_ = ba.bar;
  baData_ = ba.value;
  nl->addWidget(ba.caption, 2, 0);
  nl->addWidget(baScroll_, 2, 1);
  nl->addWidget(baData_, 2, 2);
  nl->setColumnStretch(1, 1);
  return frameNow;
}

QVBoxLayout* StallSpeedScreen::buildResults() {
  // The units, and the two stall speeds.
  auto* right = new QVBoxLayout;
  right->addWidget(makeUnitsFrame(tr("Units"), optUnits_.data()));
  auto* frameVs = makeFrame(tr("Stall speed (Vs)"), "FrameVs");
  auto* vl = new QGridLayout(frameVs);
  dataR_[0] = makeResult("dataR0", tr("Straight level stall speed (TAS, kts)"));
  dataR_[1] = makeResult("dataR1", tr("Straight level stall speed (CAS, kts)"));
  QLabel* tasCaption = makeCaption(tr("Vs (KTAS)"), "lbldata0");
  QLabel* casCaption = makeCaption(tr("Vs (KCAS)"), "lbldata1");
  tasCaption->setToolTip(dataR_[0]->toolTip());
  casCaption->setToolTip(dataR_[1]->toolTip());
  vl->addWidget(tasCaption, 0, 0);
  vl->addWidget(dataR_[0], 0, 1);
  vl->addWidget(casCaption, 1, 0);
  vl->addWidget(dataR_[1], 1, 1);
  right->addWidget(frameVs);
  right->addStretch();
  return right;
}

void StallSpeedScreen::setTabOrders() {
  setTabOrder(optRef_[0], box(kClMax));
  setTabOrder(box(kClMax), box(kWingArea));
  setTabOrder(box(kWingArea), box(kVs));
  setTabOrder(box(kVs), box(kMtow));
  setTabOrder(box(kMtow), box(kWeight));
  setTabOrder(box(kWeight), box(kAltitude));
  setTabOrder(box(kAltitude), baScroll_);
  setTabOrder(baScroll_, optUnits_[0]);
  setTabOrder(optUnits_[0], calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

void StallSpeedScreen::load() {
  // A light single-engine aeroplane as the example.
  optRef_[0]->setChecked(true);
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setUnits();
  const bool u = us();
  box(kClMax)->setText(LocaleText("1.6"));
  box(kWingArea)->setText(u ? QStringLiteral("174") : LocaleText("16.2"));
  box(kMtow)->setText(u ? QStringLiteral("2450") : QStringLiteral("1111"));
  box(kVs)->setText(QStringLiteral("48"));
  box(kWeight)->setText(u ? QStringLiteral("2200") : QStringLiteral("1000"));
  box(kAltitude)->setText(QStringLiteral("0"));
  setReference();
}

void StallSpeedScreen::connectSignals() {
  connect(optRef_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setReference();
    clearData();
  });
  // A unit change converts the numbers: the same wing and weights in the other unit.
  const std::vector<QAbstractButton*> units{optUnits_[0], optUnits_[1]};
  const auto weightRange = [](int u) {
    const InputRange r = WeightRange(u == 1);
    return std::pair{r.min, r.max};
  };
  convertOnSwitch(units, box(kWingArea), {{1, 0}, {kFt * kFt, 0}}, [](int u) {
    const InputRange r = WingAreaRange(u == 1);
    return std::pair{r.min, r.max};
  }, 1);
  for (int i : {kMtow, kWeight}) convertOnSwitch(units, box(i), {{1, 0}, {kKgPerLb, 0}}, weightRange, 0);
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    const bool wasCalculated = calculated();
    setUnits();
    clearData();
    if (wasCalculated && allInputsValid()) runCalculate();
  });
  connect(baScroll_, &QScrollBar::valueChanged, this, [this](int v) {
    baData_->setText(QString::number(v));
    recalculateIfShown();
  });
}

bool StallSpeedScreen::us() const { return optUnits_[1]->isChecked(); }
bool StallSpeedScreen::fromVs() const { return optRef_[1]->isChecked(); }

void StallSpeedScreen::setReference() {
  const bool vs = fromVs();
  for (int i : {kClMax, kWingArea}) {
    box(i)->setVisible(!vs);
    boxCaption_[i]->setVisible(!vs);
  }
  box(kVs)->setVisible(vs);
  boxCaption_[kVs]->setVisible(vs);
  refreshValidity();
}

void StallSpeedScreen::setUnits() {
  const bool u = us();
  boxCaption_[kWingArea]->setText(u ? tr("Wing area (sqft)") : tr("Wing area (m2)"));
  boxCaption_[kMtow]->setText(u ? tr("MTOW (lb)") : tr("MTOW (kg)"));
  boxCaption_[kWeight]->setText(u ? tr("Weight (lb)") : tr("Weight (kg)"));
  box(kWingArea)->setToolTip(u ? tr("Wing reference area (100 to 10000 sqft)")
                               : tr("Wing reference area (10 to 1000 m2)"));
  box(kMtow)->setToolTip(u ? tr("Maximum takeoff weight (1000 to 1 500 000 lb)")
                           : tr("Maximum takeoff weight (500 to 700 000 kg)"));
  box(kWeight)->setToolTip(u ? tr("Current weight (1000 to 1 500 000 lb)") : tr("Current weight (500 to 700 000 kg)"));
  const InputRange area = WingAreaRange(u);
  const InputRange weight = WeightRange(u);
  box(kWingArea)->setRange(area.min, area.max);
  box(kMtow)->setRange(weight.min, weight.max);
  box(kWeight)->setRange(weight.min, weight.max);
  refreshValidity();
}

void StallSpeedScreen::refreshValidity() {
  for (int i = 0; i < boxCount(); ++i) {
    const bool inUse = fromVs() ? (i != kClMax && i != kWingArea) : i != kVs;
    setInputValid(i, !inUse || box(i)->isValid());
  }
}

bool StallSpeedScreen::calculate() {
  StallSpeedInput in;
  in.us = us();
  in.fromVs = fromVs();
  in.clMax = box(kClMax)->value();
  in.wingArea = box(kWingArea)->value();
  in.vs = box(kVs)->value();
  in.mtow = box(kMtow)->value();
  in.weight = box(kWeight)->value();
  in.altitudeFt = box(kAltitude)->value();
  in.bankDeg = baScroll_->value();
  const StallSpeedResult r = ComputeStallSpeed(in);
  dataR_[0]->setText(LocaleText(r.ktas.text));
  dataR_[1]->setText(LocaleText(r.kcas.text));
  return true;
}

}  // namespace norvane
