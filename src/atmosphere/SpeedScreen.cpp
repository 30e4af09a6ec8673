#include "atmosphere/SpeedScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/TextFormat.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"
#include "atmosphere/DisaScroll.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

// The speed box's caption for each input kind.
constexpr const char* kSpeedCaptions[3] = {"CAS (kts)", "TAS (kts)", "Mach number"};

}  // namespace

SpeedScreen::SpeedScreen(QWidget* parent) : CalculatorScreen(1, "frmData1", tr("Speed calculations"), parent) {
  setHelpText(
      tr("CAS is IAS corrected for pitot position and measurement errors and compressibility (CAS is "
         "calibrated to read TAS at sea level in standard conditions).  EAS is not defined for supersonic "
         "speeds Dynamic pressure is 1/2 * density * (TAS)^2"));
  // Left: the inputs and options; right: the results.
  auto* left = new QVBoxLayout;
  left->addLayout(buildInputs());
  buildOptions(left);
  addBesideResults(left, buildResults());
  setTabOrders();
  load();
  connectSignals();
}

QGridLayout* SpeedScreen::buildInputs() {
  flightLevel_ = addBox(kFlightLevel);
  speed_ = addBox(InputSpeed(SpeedInput::CAS));
  for (InputBox* b : {flightLevel_, speed_}) b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);

  auto* inputs = new QGridLayout;
  addBoxRow(inputs, 0, tr("Flight Level"), "lblFL", flightLevel_);
  speedCaption_ = addBoxRow(inputs, 1, QString(), "lblSpeed", speed_);
  inputs->setColumnStretch(2, 1);
  return inputs;
}

void SpeedScreen::buildOptions(QVBoxLayout* left) {
  left->addWidget(
      makeOptionGroup(tr("From"), "FrameFrom", "Optinput", {tr("CAS"), tr("TAS"), tr("Mach")}, optInput_.data()).frame);

  disaScroll_ = AddDisaScroll(this, left);
  disaScroll_->setMinimumWidth(140);

  auto* frameUnits = makeUnitsFrame(tr("Units"), optUnits_.data());
  for (QRadioButton* o : optUnits_) o->setToolTip(tr("Units of the total air temperature and the dynamic pressure"));
  left->addWidget(frameUnits);
  left->addStretch();
}

QVBoxLayout* SpeedScreen::buildResults() {
  auto* right = new QVBoxLayout;
  auto* frameSpeeds = makeFrame(tr("Calculated speeds"), "FrameSpeeds");
  addResultRows(new QGridLayout(frameSpeeds),
                {{tr("CAS (kts)"), "dataR0", tr("Calibrated air speed (kts)"), "lbldata0"},
                 {tr("TAS (kts)"), "dataR1", tr("True air speed (kts)"), "lbldata1"},
                 {tr("Mach number"), "dataR2", tr("Mach number"), "lbldata2"},
                 {tr("EAS (kts)"), "dataR3", tr("Equivalent air speed (kts) [incompressible model]"), "lbldata3"}},
                {&cas_, &tas_, &mach_, &eas_});
  right->addWidget(frameSpeeds);
  auto* frameTat = makeFrame(tr("TAT and dynamic pressure"), "FrameTAT");
  auto* tl = new QGridLayout(frameTat);
  tatCaption_ = makeCaption(QString(), "lbldata4");
  tat_ = makeResult("dataR4");
  qCaption_ = makeCaption(QString(), "lbldata5");
  q_ = makeResult("dataR5");
  tl->addWidget(tatCaption_, 0, 0);
  tl->addWidget(tat_, 0, 1);
  tl->addWidget(qCaption_, 1, 0);
  tl->addWidget(q_, 1, 1);
  right->addWidget(frameTat);
  right->addStretch();
  return right;
}

void SpeedScreen::setTabOrders() {
  setTabSequence({flightLevel_, speed_, optInput_[0], disaScroll_, optUnits_[0], calculateButton(), closeButton()});
}

void SpeedScreen::load() {
  optInput_[0]->setChecked(true);
  optUnits_[unitSystem() == 1 ? 1 : 0]->setChecked(true);
  setInputKind(0);
  setUnitCaptions();
  flightLevel_->setText(QStringLiteral("350"));
  speed_->setText(QStringLiteral("250"));
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
}

int SpeedScreen::inputKind() const { return optInput_[0]->group()->checkedId(); }

void SpeedScreen::setInputKind(int kind) {
  speedCaption_->setText(tr(kSpeedCaptions[kind]));
  speed_->setQuantity(InputSpeed(static_cast<SpeedInput>(kind)));
  setInputValid(speed_, speed_->isValid());
}

void SpeedScreen::setUnitCaptions() {
  const bool us = optUnits_[1]->isChecked();
  tatCaption_->setText(us ? tr("TAT (°F)") : tr("TAT (°C)"));
  qCaption_->setText(us ? tr("q (lb/ft2)") : tr("q (Pa)"));
  const QString tatTip = us ? tr("Total air temperature (°F)") : tr("Total air temperature (°C)");
  const QString qTip = us ? tr("Dynamic pressure (lb/ft2)") : tr("Dynamic pressure (Pa)");
  tatCaption_->setToolTip(tatTip);
  tat_->setToolTip(tatTip);
  qCaption_->setToolTip(qTip);
  q_->setToolTip(qTip);
}

bool SpeedScreen::calculate() {
  SpeedCalculationInput in;
  in.flightLevel = flightLevel_->value();
  in.kind = static_cast<SpeedInput>(inputKind());
  in.speed = speed_->value();
  in.disa = disaScroll_->value();
  in.us = optUnits_[1]->isChecked();
  const SpeedCalculationResult r = ComputeSpeeds(in);
  ShowLocaleTexts({cas_, tas_, mach_, eas_, tat_, q_},
                  {r.cas.text, r.tas.text, r.mach.text, r.eas.text, r.tat.text, r.q.text});
  return true;
}

}  // namespace norvane
