#include "atmosphere/SpeedScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/TextFormat.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

struct InputText {
  const char* caption;
  const char* toolTip;
};
constexpr InputText kInputTexts[3] = {
    {"CAS (kts)", "Calibrated air speed (0 to 1500 kts)"},
    {"TAS (kts)", "True air speed (0 to 1500 kts)"},
    {"Mach number", "Mach number (0 to 3.00)"},
};

}  // namespace

SpeedScreen::SpeedScreen(QWidget* parent) : CalculatorScreen(1, "frmData1", tr("Speed calculations"), parent) {
  setHelpText(tr("CAS is IAS corrected for pitot position and measurement errors and compressibility (CAS is "
                 "calibrated to read TAS at sea level in standard conditions).  EAS is not defined for supersonic "
                 "speeds Dynamic pressure is 1/2 * density * (TAS)^2"));
  // Left: the inputs and options; right: the results.
  auto* left = new QVBoxLayout;
  left->addLayout(buildInputs());
  buildOptions(left);
  auto* row = new QHBoxLayout;
  row->addLayout(left);
  row->addSpacing(8);
  row->addLayout(buildResults());
  contentLayout()->addLayout(row);
  setTabOrders();
  load();
  connectSignals();
}

QGridLayout* SpeedScreen::buildInputs() {
  BoxRule flRule{KeyMode::UnsignedInt, kFlightLevelRange.min, kFlightLevelRange.max};
  flRule.maxLength = 3;
  BoxRule speedRule{KeyMode::UnsignedReal, 0, 1500};
  speedRule.maxLength = 7;
  InputBox* fl = addBox(flRule, tr("Flight level (0 to 650)"));
  InputBox* speed = addBox(speedRule);
  for (InputBox* b : {fl, speed}) b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);

  auto* inputs = new QGridLayout;
  QLabel* flCaption = makeCaption(tr("Flight Level"), "lblFL");
  flCaption->setBuddy(fl);
  speedCaption_ = makeCaption(QString(), "lblSpeed");
  speedCaption_->setBuddy(speed);
  inputs->addWidget(flCaption, 0, 0);
  inputs->addWidget(fl, 0, 1);
  inputs->addWidget(speedCaption_, 1, 0);
  inputs->addWidget(speed, 1, 1);
  inputs->setColumnStretch(2, 1);
  return inputs;
}

void SpeedScreen::buildOptions(QVBoxLayout* left) {
  left->addWidget(makeOptionGroup(tr("From"), "FrameFrom", "Optinput", {tr("CAS"), tr("TAS"), tr("Mach")},
                                  optInput_.data())
                      .frame);

  auto* disaRow = new QHBoxLayout;
  const ValueScroll disa =
      MakeValueScroll(this, tr("Delta ISA (°C)"), "DISA", static_cast<int>(kDisaRange.min),
                      static_cast<int>(kDisaRange.max), 10, "+000",
                      tr("Temperature offset from standard atmosphere (-90 to +40°C)"));
  disaScroll_ = disa.bar;
  disaScroll_->setMinimumWidth(140);
  disaData_ = disa.value;
  disaRow->addWidget(disa.caption);
  disaRow->addWidget(disaScroll_, 1);
  disaRow->addWidget(disaData_);
  left->addLayout(disaRow);

  auto* frameUnits = makeUnitsFrame(tr("Units"), optUnits_.data());
  for (QRadioButton* o : optUnits_) o->setToolTip(tr("Units of the total air temperature and the dynamic pressure"));
  left->addWidget(frameUnits);
  left->addStretch();
}

QVBoxLayout* SpeedScreen::buildResults() {
  auto* right = new QVBoxLayout;
  auto* frameSpeeds = makeFrame(tr("Calculated speeds"), "FrameSpeeds");
  auto* sl = new QGridLayout(frameSpeeds);
  static const InputText kSpeedResults[4] = {
      {"CAS (kts)", "Calibrated air speed (kts)"},
      {"TAS (kts)", "True air speed (kts)"},
      {"Mach number", "Mach number"},
      {"EAS (kts)", "Equivalent air speed (kts) [incompressible model]"},
  };
  for (int i = 0; i < 6; ++i) {
    lbldata_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i));
    dataR_[i] = makeResult(QStringLiteral("dataR%1").arg(i));
  }
  for (int i = 0; i < 4; ++i) {
    lbldata_[i]->setText(tr(kSpeedResults[i].caption));
    lbldata_[i]->setToolTip(tr(kSpeedResults[i].toolTip));
    dataR_[i]->setToolTip(tr(kSpeedResults[i].toolTip));
    sl->addWidget(lbldata_[i], i, 0);
    sl->addWidget(dataR_[i], i, 1);
  }
  right->addWidget(frameSpeeds);
  // TAT and q: their captions follow the units.
  auto* frameTat = makeFrame(tr("TAT and dynamic pressure"), "FrameTAT");
  auto* tl = new QGridLayout(frameTat);
  for (int i = 4; i < 6; ++i) {
    tl->addWidget(lbldata_[i], i - 4, 0);
    tl->addWidget(dataR_[i], i - 4, 1);
  }
  right->addWidget(frameTat);
  right->addStretch();
  return right;
}

void SpeedScreen::setTabOrders() {
  setTabOrder(box(0), box(1));
  setTabOrder(box(1), optInput_[0]);
  setTabOrder(optInput_[0], disaScroll_);
  setTabOrder(disaScroll_, optUnits_[0]);
  setTabOrder(optUnits_[0], calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

void SpeedScreen::load() {
  optInput_[0]->setChecked(true);
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setInputKind(0);
  setUnitCaptions();
  box(0)->setText(QStringLiteral("350"));
  box(1)->setText(QStringLiteral("250"));
}

void SpeedScreen::connectSignals() {
  connect(optInput_[0]->group(), &QButtonGroup::idClicked, this, [this](int id) {
    setInputKind(id);
    clearData();  // the entered number now means another quantity
  });
  connect(optUnits_[0]->group(), &QButtonGroup::idClicked, this, [this] {
    setUnitCaptions();
    recalculateIfShown();
  });
  connect(disaScroll_, &QScrollBar::valueChanged, this, [this](int v) {
    disaData_->setText(Q(SignedText(v)));
    recalculateIfShown();
  });
}

int SpeedScreen::inputKind() const {
  for (int i = 0; i < 3; ++i)
    if (optInput_[i]->isChecked()) return i;
  return 0;
}

void SpeedScreen::setInputKind(int kind) {
  speedCaption_->setText(tr(kInputTexts[kind].caption));
  box(1)->setToolTip(tr(kInputTexts[kind].toolTip));
  const InputRange r = SpeedInputRange(static_cast<SpeedInput>(kind));
  box(1)->setRange(r.min, r.max);
  setInputValid(1, box(1)->isValid());
}

void SpeedScreen::setUnitCaptions() {
  const bool us = optUnits_[1]->isChecked();
  lbldata_[4]->setText(us ? tr("TAT (°F)") : tr("TAT (°C)"));
  lbldata_[5]->setText(us ? tr("q (lb/ft2)") : tr("q (Pa)"));
  const QString tatTip = us ? tr("Total air temperature (°F)") : tr("Total air temperature (°C)");
  const QString qTip = us ? tr("Dynamic pressure (lb/ft2)") : tr("Dynamic pressure (Pa)");
  lbldata_[4]->setToolTip(tatTip);
  dataR_[4]->setToolTip(tatTip);
  lbldata_[5]->setToolTip(qTip);
  dataR_[5]->setToolTip(qTip);
}

bool SpeedScreen::calculate() {
  SpeedCalculationInput in;
  in.flightLevel = box(0)->value();
  in.kind = static_cast<SpeedInput>(inputKind());
  in.speed = box(1)->value();
  in.disa = disaScroll_->value();
  in.us = optUnits_[1]->isChecked();
  const SpeedCalculationResult r = ComputeSpeeds(in);
  const ShownValue* values[6] = {&r.cas, &r.tas, &r.mach, &r.eas, &r.tat, &r.q};
  for (int i = 0; i < 6; ++i) dataR_[i]->setText(LocaleText(values[i]->text));
  return true;
}

}  // namespace norvane
