#include "atmosphere/AtmosphereScreen.hpp"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/TextFormat.hpp"
#include "app/Units.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"
#include "atmosphere/StandardAtmosphere.hpp"

namespace norvane {
namespace {

QScrollBar* MakeScroll(QWidget* parent, const QString& name) {
  return MakeValueScrollBar(parent, name, 0, 0, 10, 180);  // the range follows the units
}

}  // namespace

AtmosphereScreen::AtmosphereScreen(QWidget* parent)
    : CalculatorScreen(0, "frmData0", tr("Atmosphere data"), parent) {
  setHelpText(tr("ISA atmosphere model data up to 84852 m (geopotential altitude)"));
  buildAltitude();
  buildNonStandard();
  buildOutputOptions();
  buildResults();
  setTabOrders();
  load();
  connectSignals();
}

void AtmosphereScreen::buildAltitude() {
  // Altitude, its kind and its unit.
  BoxRule altRule{KeyMode::SignedReal, -500, 85999};
  altRule.maxLength = 8;
  InputBox* alt = addBox(altRule);
  alt->setFixedWidth(alt->fontMetrics().horizontalAdvance("-0000000") + 16);

  auto* top = new QHBoxLayout;
  auto* altCol = new QVBoxLayout;
  altCaption_ = makeCaption(QString(), "lblAlt");
  altCaption_->setBuddy(alt);
  altCol->addWidget(altCaption_);
  altCol->addWidget(alt);
  altCol->addStretch();
  top->addLayout(altCol);

  QGroupBox* frameAlt = makeOptionGroup(tr("Altitude type"), "FrameAlt", "OptAlt", {tr("True"), tr("Geopotential")},
                                        optAlt_.data(), Qt::Vertical)
                            .frame;
  optAlt_[0]->setToolTip(tr("Geometric altitude"));
  optAlt_[1]->setToolTip(tr("Geopotential altitude"));
  top->addWidget(frameAlt);

  top->addWidget(makeOptionGroup(tr("Altitude unit"), "FrameAltUnits", "OptAltUnits", {tr("Meters"), tr("Feet")},
                                 optAltUnits_.data(), Qt::Vertical)
                     .frame);
  contentLayout()->addLayout(top);
}

void AtmosphereScreen::buildNonStandard() {
  // Non-standard atmosphere: temperature offset and sea-level pressure.
  auto* nsaRow = new QHBoxLayout;
  checkNSA_ = new QCheckBox(this);
  checkNSA_->setObjectName("CheckNSA");
  checkNSA_->setToolTip(tr("Check this box for non-standard atmosphere calculations"));
  checkNSA_->setAccessibleName(tr("Non-standard atmosphere"));
  nsaRow->addWidget(checkNSA_, 0, Qt::AlignTop);
  auto* frameNSA = makeFrame(tr("Non-standard atmosphere"), "FrameNSA");
  auto* nl = new QGridLayout(frameNSA);
  disaCaption_ = makeCaption(tr("Delta ISA (°C)"), "lblDISA");
  disaScroll_ = MakeScroll(frameNSA, "DISAScroll");
  disaScroll_->setRange(static_cast<int>(kDisaRange.min), static_cast<int>(kDisaRange.max));
  disaData_ = makeCaption(QString(), "DISAData");
  const QString disaTip = tr("Temperature offset from standard atmosphere (-90 to +40°C)");
  for (QWidget* w : {static_cast<QWidget*>(disaCaption_), static_cast<QWidget*>(disaScroll_),
                     static_cast<QWidget*>(disaData_)})
    w->setToolTip(disaTip);
  mslpCaption_ = makeCaption(QString(), "lblMSLP");
  mslpScroll_ = MakeScroll(frameNSA, "MSLPScroll");
  mslpData_ = makeCaption(QString(), "MSLPData");
  const QString mslpTip = tr("Mean sea level pressure (hPa or inHg)");
  for (QWidget* w : {static_cast<QWidget*>(mslpCaption_), static_cast<QWidget*>(mslpScroll_),
                     static_cast<QWidget*>(mslpData_)})
    w->setToolTip(mslpTip);
  const int valueWidth = disaData_->fontMetrics().horizontalAdvance("00.00") + 8;
  disaData_->setMinimumWidth(valueWidth);
  mslpData_->setMinimumWidth(valueWidth);
  disaData_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  mslpData_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  nl->addWidget(disaCaption_, 0, 0);
  nl->addWidget(disaScroll_, 0, 1);
  nl->addWidget(disaData_, 0, 2);
  nl->addWidget(mslpCaption_, 1, 0);
  nl->addWidget(mslpScroll_, 1, 1);
  nl->addWidget(mslpData_, 1, 2);
  nl->setColumnStretch(1, 1);
  nsaRow->addWidget(frameNSA, 1);
  contentLayout()->addLayout(nsaRow);
}

void AtmosphereScreen::buildOutputOptions() {
  // Output units and format.
  auto* unitRow = new QHBoxLayout;
  unitRow->addWidget(makeUnitsFrame(tr("Output units"), optUnits_.data()));
  checkEDisplay_ = new QCheckBox(tr("Scientific format"), this);
  checkEDisplay_->setObjectName("CheckEDisplay");
  unitRow->addWidget(checkEDisplay_);
  unitRow->addStretch();
  contentLayout()->addLayout(unitRow);
}

void AtmosphereScreen::buildResults() {
  // The four quantities (captions follow the output units), and the three ratios in their own frame.
  static const char* const kTips[4] = {"Static air temperature", "Ambient air pressure", "Ambient air density",
                                       "Speed of sound"};
  auto* resultRow = new QHBoxLayout;
  auto* rl = new QGridLayout;
  for (int i = 0; i < 4; ++i) {
    lbldata_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i));
    dataR_[i] = makeResult(QStringLiteral("dataR%1").arg(i), tr(kTips[i]));
    lbldata_[i]->setToolTip(tr(kTips[i]));
    rl->addWidget(lbldata_[i], i, 0);
    rl->addWidget(dataR_[i], i, 1);
  }
  rl->setRowStretch(4, 1);
  resultRow->addLayout(rl);
  auto* frameRatio = makeFrame(tr("Standard ratio"), "FrameRatio");
  addResultRows(new QGridLayout(frameRatio),
                {{tr("Standard temperature ratio (theta)"), "dataR4", {}, "lbldata4"},
                 {tr("Standard pressure ratio (delta)"), "dataR5", {}, "lbldata5"},
                 {tr("Standard density ratio (sigma)"), "dataR6", {}, "lbldata6"}},
                &dataR_[4]);
  resultRow->addWidget(frameRatio);
  contentLayout()->addLayout(resultRow);
}

void AtmosphereScreen::setTabOrders() {
  setTabOrder(box(0), optAlt_[0]);
  setTabOrder(optAlt_[0], optAltUnits_[0]);
  setTabOrder(optAltUnits_[0], checkNSA_);
  setTabOrder(checkNSA_, disaScroll_);
  setTabOrder(disaScroll_, mslpScroll_);
  setTabOrder(mslpScroll_, optUnits_[0]);
  setTabOrder(optUnits_[0], checkEDisplay_);
  setTabOrder(checkEDisplay_, calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

void AtmosphereScreen::load() {
  // Options, captions for the unit system, the scroll bars at standard, the default altitude.
  optAlt_[0]->setChecked(true);
  optAltUnits_[0]->setChecked(true);
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  disaScroll_->setValue(0);
  setUnitCaptions();
  setAltMinMax();
  nsaChanged();
  box(0)->setText(QStringLiteral("0"));
}

void AtmosphereScreen::connectSignals() {
  connect(optAlt_[0]->group(), &QButtonGroup::idClicked, this, [this] { altitudeOptionChanged(); });
  // Metres and feet: a unit change converts the altitude.
  convertOnSwitch({optAltUnits_[0], optAltUnits_[1]}, box(0), {{1, 0}, {kFt, 0}}, [this](int u) {
    const InputRange r = AtmosphereAltitudeRange(u == 1, geopotential());
    return std::pair{r.min, r.max};
  }, 1);
  connect(optAltUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] { altitudeOptionChanged(); });
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setUnitCaptions();
    recalculateIfShown();
  });
  connect(checkNSA_, &QCheckBox::toggled, this, [this] {
    nsaChanged();
    recalculateIfShown();
  });
  connect(checkEDisplay_, &QCheckBox::toggled, this, [this] { recalculateIfShown(); });
  for (QScrollBar* s : {disaScroll_, mslpScroll_})
    connect(s, &QScrollBar::valueChanged, this, [this] {
      updateScrollLabels();
      if (!resetting_) recalculateIfShown();
    });
}

bool AtmosphereScreen::feet() const { return optAltUnits_[1]->isChecked(); }
bool AtmosphereScreen::geopotential() const { return optAlt_[1]->isChecked(); }
bool AtmosphereScreen::us() const { return optUnits_[1]->isChecked(); }

void AtmosphereScreen::setAltMinMax() {
  const InputRange r = AtmosphereAltitudeRange(feet(), geopotential());
  altCaption_->setText(tr("Altitude (%1)").arg(feet() ? "ft" : "m"));
  box(0)->setToolTip(Q(AtmosphereAltitudeToolTip(feet(), geopotential())));
  box(0)->setRange(r.min, r.max);
  setInputValid(0, box(0)->isValid());
}

void AtmosphereScreen::setUnitCaptions() {
  const bool u = us();
  static const char* const kMetric[4] = {"Temperature (°C)", "Pressure (hPa)", "Density (kg/m3)", "Sound (km/h)"};
  static const char* const kUs[4] = {"Temperature (°F)", "Pressure (inHg)", "Density (sl/ft3)", "Sound (kts)"};
  for (int i = 0; i < 4; ++i) lbldata_[i]->setText(tr(u ? kUs[i] : kMetric[i]));
  mslpCaption_->setText(u ? tr("MSLP (inHg)") : tr("MSLP (hPa)"));
  const InputRange r = MslpScrollRange(u);
  resetting_ = true;
  mslpScroll_->setRange(static_cast<int>(r.min), static_cast<int>(r.max));
  mslpScroll_->setValue(0);
  resetting_ = false;
  mslpScroll_->setPageStep(u ? 10 : 5);
  updateScrollLabels();
}

void AtmosphereScreen::altitudeOptionChanged() {
  // A new altitude type keeps the number (a unit change has converted it already); it is
  // validated anew against the new range.
  const bool wasCalculated = calculated();
  setAltMinMax();
  const QString t = box(0)->text();
  if (t.isEmpty() || t == QLatin1String("-")) return;
  clearData();
  if (wasCalculated && box(0)->isValid()) runCalculate();
}

void AtmosphereScreen::nsaChanged() {
  const bool on = checkNSA_->isChecked();
  if (!on) {
    resetting_ = true;
    disaScroll_->setValue(0);
    mslpScroll_->setValue(0);
    resetting_ = false;
    updateScrollLabels();
  }
  for (QWidget* w : {static_cast<QWidget*>(disaScroll_), static_cast<QWidget*>(mslpScroll_),
                     static_cast<QWidget*>(disaData_), static_cast<QWidget*>(mslpData_),
                     static_cast<QWidget*>(disaCaption_), static_cast<QWidget*>(mslpCaption_)})
    w->setEnabled(on);
}

void AtmosphereScreen::updateScrollLabels() {
  disaData_->setText(Q(SignedText(disaScroll_->value())));
  mslpData_->setText(LocaleText(MslpScrollText(mslpScroll_->value(), us())));
}

bool AtmosphereScreen::calculate() {
  AtmosphereDataInput in;
  in.altitude = box(0)->value();
  in.feet = feet();
  in.geopotential = geopotential();
  in.us = us();
  in.scientific = checkEDisplay_->isChecked();
  if (checkNSA_->isChecked()) {
    in.disa = disaScroll_->value();
    in.mslpHpa = MslpHpaFromScroll(mslpScroll_->value(), in.us);
  }
  const AtmosphereDataResult r = ComputeAtmosphereData(in);
  for (int i = 0; i < kAtmosphereResults; ++i) dataR_[i]->setText(LocaleText(r.results[i].text));
  return true;
}

}  // namespace norvane
