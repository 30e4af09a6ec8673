#include "atmosphere/DensityAltitudeScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "atmosphere/StandardAtmosphere.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

DensityAltitudeScreen::DensityAltitudeScreen(QWidget* parent)
    : CalculatorScreen(4, "frmData4", tr("Density altitude"), parent) {
  setHelpText(
      tr("Altimeter setting is the value of Kollsman window when altimeter is adjusted to read the correct "
         "altitude (local QNH)"));
  QVBoxLayout* inputs = buildInputs();  // before the results: the order of the children
  addBesideResults(inputs, buildResults());
  setTabOrders();
  load();
  connectSignals();
}

QVBoxLayout* DensityAltitudeScreen::buildInputs() {
  // The four boxes (captions follow the units) above the units; setUnits() gives them their
  // quantities in the unit system.
  qnh_ = addBox(Qnh(false));
  temperature_ = addBox(AirTemperature(false));
  dewPoint_ = addBox(DewPoint(false));
  elevation_ = addBox(kFieldElevation);

  auto* left = new QVBoxLayout;
  auto* inputs = new QGridLayout;
  int row = 0;
  const auto inputRow = [&](InputBox* b) {
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);
    QLabel* caption = addBoxRow(inputs, row, QString(), QStringLiteral("lblInput%1").arg(row), b);
    ++row;
    return caption;
  };
  qnhCaption_ = inputRow(qnh_);
  temperatureCaption_ = inputRow(temperature_);
  dewPointCaption_ = inputRow(dewPoint_);
  inputRow(elevation_)->setText(tr("Altitude (ft)"));
  left->addLayout(inputs);
  left->addWidget(makeUnitsFrame(tr("Units"), optUnits_.data()));
  left->addStretch();
  return left;
}

QGroupBox* DensityAltitudeScreen::buildResults() {
  auto* frameResults = makeFrame(tr("Results"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  // The pressure's caption follows the units; the other two name their results' tool tips.
  pressureCaption_ = makeCaption(QString(), "lbldata0");
  pressure_ = makeResult("DataR0");
  QLabel* humidityCaption = makeCaption(tr("Relative humidity (%)"), "lbldata1");
  humidity_ = makeResult("DataR1", humidityCaption->text());
  QLabel* densityAltitudeCaption = makeCaption(tr("Density altitude (ft)"), "lbldata2");
  densityAltitude_ = makeResult("DataR2", densityAltitudeCaption->text());
  rl->addWidget(pressureCaption_, 0, 0);
  rl->addWidget(pressure_, 0, 1);
  rl->addWidget(humidityCaption, 1, 0);
  rl->addWidget(humidity_, 1, 1);
  rl->addWidget(densityAltitudeCaption, 2, 0);
  rl->addWidget(densityAltitude_, 2, 1);
  rl->setRowStretch(3, 1);
  return frameResults;
}

void DensityAltitudeScreen::setTabOrders() {
  setTabSequence({qnh_, temperature_, dewPoint_, elevation_, optUnits_[0], calculateButton(), closeButton()});
}

void DensityAltitudeScreen::load() {
  // The standard atmosphere at sea level with a dry-ish dew point.
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setUnits();
  const bool u = us();
  qnh_->setText(u ? LocaleText("29.92") : LocaleText("1013.25"));
  temperature_->setText(u ? QStringLiteral("59") : QStringLiteral("15"));
  dewPoint_->setText(u ? QStringLiteral("41") : QStringLiteral("5"));
  elevation_->setText(QStringLiteral("0"));
}

void DensityAltitudeScreen::connectSignals() {
  // A unit change converts the numbers: the same pressure and temperatures in the other unit.
  const std::vector<QAbstractButton*> units{optUnits_[0], optUnits_[1]};
  const BoxUnit celsius{1, 0}, fahrenheit{1 / 1.8, -32 / 1.8};
  convertOnSwitch(units, qnh_, {{1, 0}, {kInHg, 0}}, [](int u) { return std::pair{Qnh(u == 1).min, Qnh(u == 1).max}; });
  const auto temperatureRange = [](int u) { return std::pair{AirTemperature(u == 1).min, AirTemperature(u == 1).max}; };
  for (InputBox* b : {temperature_, dewPoint_}) convertOnSwitch(units, b, {celsius, fahrenheit}, temperatureRange, 1);
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setUnits();
    recalculateIfShown();  // the results in the other units
  });
}

bool DensityAltitudeScreen::us() const { return optUnits_[1]->isChecked(); }

void DensityAltitudeScreen::setUnits() {
  const bool u = us();
  qnhCaption_->setText(u ? tr("Alt setting (inHg)") : tr("Alt setting (hPa)"));
  temperatureCaption_->setText(u ? tr("Temperature (°F)") : tr("Temperature (°C)"));
  dewPointCaption_->setText(u ? tr("Dew point (°F)") : tr("Dew point (°C)"));
  qnh_->setQuantity(Qnh(u));
  temperature_->setQuantity(AirTemperature(u));
  dewPoint_->setQuantity(DewPoint(u));
  for (InputBox* b : {qnh_, temperature_, dewPoint_}) setInputValid(b, b->isValid());
  pressureCaption_->setText(u ? tr("Pressure (inHg)") : tr("Pressure (hPa)"));
  const QString pTip = u ? tr("Actual (station) pressure (inHg)") : tr("Actual (station) pressure (hPa)");
  pressureCaption_->setToolTip(pTip);
  pressure_->setToolTip(pTip);
}

bool DensityAltitudeScreen::calculate() {
  DensityAltitudeInput in;
  in.us = us();
  in.qnh = qnh_->value();
  in.temperature = temperature_->value();
  in.dewPoint = dewPoint_->value();
  in.elevationFt = elevation_->value();
  const DensityAltitudeResult r = ComputeDensityAltitude(in);
  // A dew point above the temperature is taken as the temperature, and the box shows it.
  if (r.dewPointLowered) dewPoint_->setText(temperature_->text());
  pressure_->setText(LocaleText(r.pressure.text));
  humidity_->setText(LocaleText(r.humidity.text));
  densityAltitude_->setText(LocaleText(r.densityAltitude.text));
  return true;
}

}  // namespace norvane
