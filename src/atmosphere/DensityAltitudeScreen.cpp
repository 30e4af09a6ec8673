#include "atmosphere/DensityAltitudeScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
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
  setHelpText(tr("Altimeter setting is the value of Kollsman window when altimeter is adjusted to read the correct "
                 "altitude (local QNH)"));
  auto* row = new QHBoxLayout;
  row->addLayout(buildInputs());
  row->addSpacing(8);
  row->addWidget(buildResults(), 1);
  contentLayout()->addLayout(row);
  setTabOrders();
  load();
  connectSignals();
}

QVBoxLayout* DensityAltitudeScreen::buildInputs() {
  // The four boxes (captions follow the units) above the units.
  BoxRule qnhRule{KeyMode::UnsignedReal, 870, 1084};
  qnhRule.maxLength = 7;
  BoxRule tRule{KeyMode::SignedReal, -75, 55};
  tRule.maxLength = 6;
  BoxRule elevRule{KeyMode::SignedReal, kElevationRange.min, kElevationRange.max};
  elevRule.maxLength = 7;
  InputBox* boxes[4] = {addBox(qnhRule), addBox(tRule), addBox(tRule),
                        addBox(elevRule, tr("Geometric altitude (-1500 to 15000 ft)"))};

  auto* left = new QVBoxLayout;
  auto* inputs = new QGridLayout;
  for (int i = 0; i < 4; ++i) {
    boxes[i]->setFixedWidth(boxes[i]->fontMetrics().horizontalAdvance("00000000") + 16);
    boxCaption_[i] = makeCaption(QString(), QStringLiteral("lblInput%1").arg(i));
    boxCaption_[i]->setBuddy(boxes[i]);
    inputs->addWidget(boxCaption_[i], i, 0);
    inputs->addWidget(boxes[i], i, 1);
  }
  boxCaption_[3]->setText(tr("Altitude (ft)"));
  left->addLayout(inputs);
  left->addWidget(makeUnitsFrame(tr("Units"), optUnits_.data()));
  left->addStretch();
  return left;
}

QGroupBox* DensityAltitudeScreen::buildResults() {
  auto* frameResults = makeFrame(tr("Results"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  for (int i = 0; i < 3; ++i) {
    lbldata_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i));
    dataR_[i] = makeResult(QStringLiteral("DataR%1").arg(i));
    rl->addWidget(lbldata_[i], i, 0);
    rl->addWidget(dataR_[i], i, 1);
  }
  rl->setRowStretch(3, 1);
  lbldata_[1]->setText(tr("Relative humidity (%)"));
  lbldata_[2]->setText(tr("Density altitude (ft)"));
  for (int i = 1; i < 3; ++i) dataR_[i]->setToolTip(lbldata_[i]->text());
  return frameResults;
}

void DensityAltitudeScreen::setTabOrders() {
  for (int i = 0; i < 3; ++i) setTabOrder(box(i), box(i + 1));
  setTabOrder(box(3), optUnits_[0]);
  setTabOrder(optUnits_[0], calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

void DensityAltitudeScreen::load() {
  // The standard atmosphere at sea level with a dry-ish dew point.
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setUnits();
  const bool u = us();
  box(0)->setText(u ? LocaleText("29.92") : LocaleText("1013.25"));
  box(1)->setText(u ? QStringLiteral("59") : QStringLiteral("15"));
  box(2)->setText(u ? QStringLiteral("41") : QStringLiteral("5"));
  box(3)->setText(QStringLiteral("0"));
}

void DensityAltitudeScreen::connectSignals() {
  // A unit change converts the numbers: the same pressure and temperatures in the other unit.
  const std::vector<QAbstractButton*> units{optUnits_[0], optUnits_[1]};
  const BoxUnit celsius{1, 0}, fahrenheit{1 / 1.8, -32 / 1.8};
  convertOnSwitch(units, box(0), {{1, 0}, {kInHg, 0}}, [](int u) {
    const InputRange r = QnhRange(u == 1);
    return std::pair{r.min, r.max};
  });
  for (int i : {1, 2})
    convertOnSwitch(units, box(i), {celsius, fahrenheit}, [](int u) {
      const InputRange r = AirTemperatureRange(u == 1);
      return std::pair{r.min, r.max};
    }, 1);
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    const bool wasCalculated = calculated();
    setUnits();
    clearData();
    if (wasCalculated && allInputsValid()) runCalculate();
  });
}

bool DensityAltitudeScreen::us() const { return optUnits_[1]->isChecked(); }

void DensityAltitudeScreen::setUnits() {
  const bool u = us();
  const InputRange qnh = QnhRange(u);
  const InputRange t = AirTemperatureRange(u);
  boxCaption_[0]->setText(u ? tr("Alt setting (inHg)") : tr("Alt setting (hPa)"));
  boxCaption_[1]->setText(u ? tr("Temperature (°F)") : tr("Temperature (°C)"));
  boxCaption_[2]->setText(u ? tr("Dew point (°F)") : tr("Dew point (°C)"));
  box(0)->setToolTip(u ? tr("Altimeter setting (25.69 to 32.01 inHg)") : tr("Altimeter setting (870 to 1084 hPa)"));
  box(1)->setToolTip(u ? tr("Air temperature (-103 to 131°F)") : tr("Air temperature (-75 to 55°C)"));
  box(2)->setToolTip(u ? tr("Dew point (-103 to 131°F)") : tr("Dew point (-75 to 55°C)"));
  box(0)->setRange(qnh.min, qnh.max);
  box(1)->setRange(t.min, t.max);
  box(2)->setRange(t.min, t.max);
  for (int i = 0; i < 3; ++i) setInputValid(i, box(i)->isValid());
  lbldata_[0]->setText(u ? tr("Pressure (inHg)") : tr("Pressure (hPa)"));
  const QString pTip = u ? tr("Actual (station) pressure (inHg)") : tr("Actual (station) pressure (hPa)");
  lbldata_[0]->setToolTip(pTip);
  dataR_[0]->setToolTip(pTip);
}

bool DensityAltitudeScreen::calculate() {
  DensityAltitudeInput in;
  in.us = us();
  in.qnh = box(0)->value();
  in.temperature = box(1)->value();
  in.dewPoint = box(2)->value();
  in.elevationFt = box(3)->value();
  const DensityAltitudeResult r = ComputeDensityAltitude(in);
  // A dew point above the temperature is taken as the temperature, and the box shows it.
  if (r.dewPointLowered) box(2)->setText(box(1)->text());
  dataR_[0]->setText(LocaleText(r.pressure.text));
  dataR_[1]->setText(LocaleText(r.humidity.text));
  dataR_[2]->setText(LocaleText(r.densityAltitude.text));
  return true;
}

}  // namespace norvane
