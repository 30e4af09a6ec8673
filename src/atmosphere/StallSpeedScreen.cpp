#include "atmosphere/StallSpeedScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
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
  setHelpText(
      tr("Stall speed calculated from Vs at sea level, standard, MTOW or  from aerodynamical data (CL max "
         "and reference wing area)"));
  buildInputs();
  auto* left = new QVBoxLayout;
  left->addWidget(buildReference());
  left->addWidget(buildConditions());
  addBesideResults(left, buildResults());
  setTabOrders();
  load();
  connectSignals();
}

void StallSpeedScreen::buildInputs() {
  // Metric quantities to begin with; setUnits() gives the unit system's.
  clMax_ = addBox(kMaxLiftCoefficient);
  wingArea_ = addBox(WingArea(false));
  mtow_ = addBox(Mtow(false));
  vs_ = addBox(kReferenceStallSpeed);
  weight_ = addBox(CurrentWeight(false));
  altitude_ = addBox(kStallAltitude);
  // In the boxes' order, each caption named after its box's number.
  const std::pair<InputBox*, QLabel**> boxes[] = {{clMax_, &clMaxCaption_},   {wingArea_, &wingAreaCaption_},
                                                  {mtow_, &mtowCaption_},     {vs_, &vsCaption_},
                                                  {weight_, &weightCaption_}, {altitude_, &altitudeCaption_}};
  int n = 0;
  for (const auto& [b, caption] : boxes) {
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("0000000000") + 16);
    *caption = makeCaption(QString(), QStringLiteral("lblInput%1").arg(n++));
    (*caption)->setBuddy(b);
  }
  clMaxCaption_->setText(tr("CL max"));
  vsCaption_->setText(tr("Vs (KCAS)"));
  altitudeCaption_->setText(tr("Altitude (ft)"));
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
  int row = 1;
  for (auto [caption, b] :
       {std::pair{clMaxCaption_, clMax_}, {wingAreaCaption_, wingArea_}, {vsCaption_, vs_}, {mtowCaption_, mtow_}}) {
    rfl->addWidget(caption, row, 0, 1, 2);
    rfl->addWidget(b, row++, 2, 1, 2);
  }
  return frameRef;
}

QGroupBox* StallSpeedScreen::buildConditions() {
  auto* frameNow = makeFrame(tr("Current conditions"), "FrameConditions");
  auto* nl = new QGridLayout(frameNow);
  nl->addWidget(weightCaption_, 0, 0);
  nl->addWidget(weight_, 0, 1, 1, 2);
  nl->addWidget(altitudeCaption_, 1, 0);
  nl->addWidget(altitude_, 1, 1, 1, 2);
  const ValueScroll ba = MakeValueScroll(frameNow, tr("Bank (°)"), "BA", static_cast<int>(kBankAngle.min),
                                         static_cast<int>(kBankAngle.max), 5, "000", Q(ToolTipText(kBankAngle)));
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
  addResultRows(new QGridLayout(frameVs),
                {{tr("Vs (KTAS)"), "dataR0", tr("Straight level stall speed (TAS, kts)"), "lbldata0"},
                 {tr("Vs (KCAS)"), "dataR1", tr("Straight level stall speed (CAS, kts)"), "lbldata1"}},
                {&ktas_, &kcas_});
  right->addWidget(frameVs);
  right->addStretch();
  return right;
}

void StallSpeedScreen::setTabOrders() {
  setTabSequence({optRef_[0], clMax_, wingArea_, vs_, mtow_, weight_, altitude_, baScroll_, optUnits_[0],
                  calculateButton(), closeButton()});
}

void StallSpeedScreen::load() {
  // A light single-engine aeroplane as the example.
  optRef_[0]->setChecked(true);
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setUnits();
  const bool u = us();
  clMax_->setText(LocaleText("1.6"));
  wingArea_->setText(u ? QStringLiteral("174") : LocaleText("16.2"));
  mtow_->setText(u ? QStringLiteral("2450") : QStringLiteral("1111"));
  vs_->setText(QStringLiteral("48"));
  weight_->setText(u ? QStringLiteral("2200") : QStringLiteral("1000"));
  altitude_->setText(QStringLiteral("0"));
  setReference();
}

void StallSpeedScreen::connectSignals() {
  connect(optRef_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setReference();
    clearData();
  });
  // A unit change converts the numbers: the same wing and weights in the other unit.
  const std::vector<QAbstractButton*> units{optUnits_[0], optUnits_[1]};
  convertOnSwitch(
      units, wingArea_, {{1, 0}, {kFt * kFt, 0}},
      [](int u) {
        return std::pair{WingArea(u == 1).min, WingArea(u == 1).max};
      },
      1);
  const auto weightRange = [](int u) { return std::pair{Mtow(u == 1).min, Mtow(u == 1).max}; };
  for (InputBox* b : {mtow_, weight_}) convertOnSwitch(units, b, {{1, 0}, {kKgPerLb, 0}}, weightRange, 0);
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setUnits();
    recalculateIfShown();
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
  for (QWidget* w : std::initializer_list<QWidget*>{clMax_, clMaxCaption_, wingArea_, wingAreaCaption_})
    w->setVisible(!vs);
  vs_->setVisible(vs);
  vsCaption_->setVisible(vs);
  refreshValidity();
}

void StallSpeedScreen::setUnits() {
  const bool u = us();
  wingAreaCaption_->setText(u ? tr("Wing area (sqft)") : tr("Wing area (m2)"));
  mtowCaption_->setText(u ? tr("MTOW (lb)") : tr("MTOW (kg)"));
  weightCaption_->setText(u ? tr("Weight (lb)") : tr("Weight (kg)"));
  wingArea_->setQuantity(WingArea(u));
  mtow_->setQuantity(Mtow(u));
  weight_->setQuantity(CurrentWeight(u));
  refreshValidity();
}

void StallSpeedScreen::refreshValidity() {
  // The boxes of the reference data not chosen are hidden and do not block Calculate.
  const bool vs = fromVs();
  for (InputBox* b : {clMax_, wingArea_}) setInputValid(b, vs || b->isValid());
  setInputValid(vs_, !vs || vs_->isValid());
  for (InputBox* b : {mtow_, weight_, altitude_}) setInputValid(b, b->isValid());
}

bool StallSpeedScreen::calculate() {
  StallSpeedInput in;
  in.us = us();
  in.fromVs = fromVs();
  in.clMax = clMax_->value();
  in.wingArea = wingArea_->value();
  in.vs = vs_->value();
  in.mtow = mtow_->value();
  in.weight = weight_->value();
  in.altitudeFt = altitude_->value();
  in.bankDeg = baScroll_->value();
  const StallSpeedResult r = ComputeStallSpeed(in);
  ktas_->setText(LocaleText(r.ktas.text));
  kcas_->setText(LocaleText(r.kcas.text));
  return true;
}

}  // namespace norvane
