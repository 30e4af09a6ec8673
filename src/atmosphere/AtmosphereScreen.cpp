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

AtmosphereScreen::AtmosphereScreen(QWidget* parent) : CalculatorScreen(0, "frmData0", tr("Atmosphere data"), parent) {
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
  altitude_ = addBox(AtmosphereAltitude(false, false));
  altitude_->setFixedWidth(altitude_->fontMetrics().horizontalAdvance("-0000000") + 16);

  auto* top = new QHBoxLayout;
  auto* altCol = new QVBoxLayout;
  altCaption_ = makeCaption(QString(), "lblAlt");
  altCaption_->setBuddy(altitude_);
  altCol->addWidget(altCaption_);
  altCol->addWidget(altitude_);
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
  disaScroll_->setRange(static_cast<int>(kDisa.min), static_cast<int>(kDisa.max));
  disaData_ = makeCaption(QString(), "DISAData");
  const QString disaTip = Q(ToolTipText(kDisa));
  for (QWidget* w :
       {static_cast<QWidget*>(disaCaption_), static_cast<QWidget*>(disaScroll_), static_cast<QWidget*>(disaData_)})
    w->setToolTip(disaTip);
  mslpCaption_ = makeCaption(QString(), "lblMSLP");
  mslpScroll_ = MakeScroll(frameNSA, "MSLPScroll");
  mslpData_ = makeCaption(QString(), "MSLPData");
  const QString mslpTip = tr("Mean sea level pressure (hPa or inHg)");
  for (QWidget* w :
       {static_cast<QWidget*>(mslpCaption_), static_cast<QWidget*>(mslpScroll_), static_cast<QWidget*>(mslpData_)})
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
  auto* resultRow = new QHBoxLayout;
  auto* rl = new QGridLayout;
  int row = 0;
  const auto quantityRow = [&](QLabel** caption, const QString& toolTip) {
    *caption = makeCaption(QString(), QStringLiteral("lbldata%1").arg(row));
    (*caption)->setToolTip(toolTip);
    QLabel* result = makeResult(QStringLiteral("dataR%1").arg(row), toolTip);
    rl->addWidget(*caption, row, 0);
    rl->addWidget(result, row++, 1);
    return result;
  };
  temperature_ = quantityRow(&temperatureCaption_, tr("Static air temperature"));
  pressure_ = quantityRow(&pressureCaption_, tr("Ambient air pressure"));
  density_ = quantityRow(&densityCaption_, tr("Ambient air density"));
  sound_ = quantityRow(&soundCaption_, tr("Speed of sound"));
  rl->setRowStretch(row, 1);
  resultRow->addLayout(rl);
  auto* frameRatio = makeFrame(tr("Standard ratio"), "FrameRatio");
  addResultRows(new QGridLayout(frameRatio),
                {{tr("Standard temperature ratio (theta)"), "dataR4", {}, "lbldata4"},
                 {tr("Standard pressure ratio (delta)"), "dataR5", {}, "lbldata5"},
                 {tr("Standard density ratio (sigma)"), "dataR6", {}, "lbldata6"}},
                {&theta_, &delta_, &sigma_});
  resultRow->addWidget(frameRatio);
  contentLayout()->addLayout(resultRow);
}

void AtmosphereScreen::setTabOrders() {
  setTabSequence({altitude_, optAlt_[0], optAltUnits_[0], checkNSA_, disaScroll_, mslpScroll_, optUnits_[0],
                  checkEDisplay_, calculateButton(), closeButton()});
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
  altitude_->setText(QStringLiteral("0"));
}

void AtmosphereScreen::connectSignals() {
  connect(optAlt_[0]->group(), &QButtonGroup::idClicked, this, [this] { altitudeOptionChanged(); });
  // Metres and feet: a unit change converts the altitude.
  convertOnSwitch(
      {optAltUnits_[0], optAltUnits_[1]}, altitude_, {{1, 0}, {kFt, 0}},
      [this](int u) {
        const Quantity q = AtmosphereAltitude(u == 1, geopotential());
        return std::pair{q.min, q.max};
      },
      1);
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
  altCaption_->setText(tr("Altitude (%1)").arg(feet() ? "ft" : "m"));
  altitude_->setQuantity(AtmosphereAltitude(feet(), geopotential()));
  setInputValid(altitude_, altitude_->isValid());
}

void AtmosphereScreen::setUnitCaptions() {
  const bool u = us();
  temperatureCaption_->setText(u ? tr("Temperature (°F)") : tr("Temperature (°C)"));
  pressureCaption_->setText(u ? tr("Pressure (inHg)") : tr("Pressure (hPa)"));
  densityCaption_->setText(u ? tr("Density (sl/ft3)") : tr("Density (kg/m3)"));
  soundCaption_->setText(u ? tr("Sound (kts)") : tr("Sound (km/h)"));
  mslpCaption_->setText(u ? tr("MSLP (inHg)") : tr("MSLP (hPa)"));
  const auto [lo, hi] = MslpScrollRange(u);
  resetting_ = true;
  mslpScroll_->setRange(lo, hi);
  mslpScroll_->setValue(0);
  resetting_ = false;
  mslpScroll_->setPageStep(u ? 10 : 5);
  updateScrollLabels();
}

void AtmosphereScreen::altitudeOptionChanged() {
  // A new altitude type keeps the number (a unit change has converted it already); it is
  // validated anew against the new range.
  setAltMinMax();
  if (altitude_->isValid())
    recalculateIfShown();
  else
    clearData();
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
  for (QWidget* w :
       {static_cast<QWidget*>(disaScroll_), static_cast<QWidget*>(mslpScroll_), static_cast<QWidget*>(disaData_),
        static_cast<QWidget*>(mslpData_), static_cast<QWidget*>(disaCaption_), static_cast<QWidget*>(mslpCaption_)})
    w->setEnabled(on);
}

void AtmosphereScreen::updateScrollLabels() {
  disaData_->setText(Q(SignedText(disaScroll_->value())));
  mslpData_->setText(LocaleText(MslpScrollText(mslpScroll_->value(), us())));
}

bool AtmosphereScreen::calculate() {
  AtmosphereDataInput in;
  in.altitude = altitude_->value();
  in.feet = feet();
  in.geopotential = geopotential();
  in.us = us();
  in.scientific = checkEDisplay_->isChecked();
  if (checkNSA_->isChecked()) {
    in.disa = disaScroll_->value();
    in.mslpHpa = MslpHpaFromScroll(mslpScroll_->value(), in.us);
  }
  const AtmosphereDataResult r = ComputeAtmosphereData(in);
  ShowLocaleTexts(
      {temperature_, pressure_, density_, sound_, theta_, delta_, sigma_},
      {r.temperature.text, r.pressure.text, r.density.text, r.sound.text, r.theta.text, r.delta.text, r.sigma.text});
  return true;
}

}  // namespace norvane
