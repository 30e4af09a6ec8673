#include "manoeuvres/RacetrackScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/UiHelpers.hpp"
#include "manoeuvres/RacetrackPicture.hpp"
#include "manoeuvres/Wind.hpp"

namespace norvane {

RacetrackScreen::RacetrackScreen(QWidget* parent)
    : RateTurnScreen(14, "frmData14", tr("Racetrack calculator"), parent) {
  setHelpText(tr("Headings and outbound time of a holding pattern in wind"));
  auto* left = new QVBoxLayout;
  left->addLayout(buildInputs());
  buildOptions(left);
  QGroupBox* frameResults = buildResults();
  picture_ = new RacetrackPicture(this);
  picture_->setToolTip(
      tr("North up: the ground track of one circuit to scale, the fix, the inbound course "
         "(dashed) and the wind"));
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addWidget(frameResults);
  top->addWidget(picture_, 1);
  contentLayout()->addLayout(top);
  setTabOrders();
}

QGridLayout* RacetrackScreen::buildInputs() {
  auto* grid = new QGridLayout;
  course_ = addInput(grid, tr("Inbound course (°)"), kRacetrackCourse, "360");
  tas_ = addInput(grid, tr("TAS (kts)"), kRacetrackTas, "180");
  windDirection_ = addInput(grid, tr("Wind direction (°)"), kRacetrackWindDirection, "360");
  windSpeed_ = addInput(grid, tr("Wind speed (kts)"), kWindSpeed, "0");
  leg_ = addInput(grid, tr("Inbound leg (min)"), kRacetrackLeg, "1.0");
  return grid;
}

InputBox* RacetrackScreen::addInput(QGridLayout* grid, const QString& caption, const Quantity& q, const char* text) {
  const int row = boxCount();
  InputBox* b = addBox(q, LocaleText(text));
  b->setFixedWidth(b->fontMetrics().horizontalAdvance("000000") + 16);
  QLabel* label = makeCaption(caption, QStringLiteral("lblIn%1").arg(row));
  label->setBuddy(b);
  grid->addWidget(label, row, 0);
  grid->addWidget(b, row, 1);
  return b;
}

void RacetrackScreen::buildOptions(QVBoxLayout* left) {
  // Right turns, 25 degrees maximum bank and the standard rate at first.
  const auto [turns, turnGroup] =
      makeOptionGroup(tr("Turns"), "FrameTurns", "OptTurn", {tr("Right"), tr("Left")}, optTurn_.data());
  optTurn_[0]->setChecked(true);
  connect(turnGroup, &QButtonGroup::idClicked, this, &RacetrackScreen::recalculateIfShown);
  for (QGroupBox* frame : {turns, makeMaxBankGroup(1), makeRateGroup(1)}) {
    static_cast<QBoxLayout*>(frame->layout())->addStretch();
    left->addWidget(frame);
  }
  left->addStretch();
}

QGroupBox* RacetrackScreen::buildResults() {
  auto* frameResults = makeFrame(tr("Racetrack"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  addResultRows(
      rl,
      {{tr("Inbound heading"), "dataR0", tr("Heading that holds the inbound course"), "lbldata0"},
       {tr("Inbound ground speed (kts)"), "dataR1", tr("Ground speed on the inbound leg"), "lbldata1"},
       {tr("Outbound heading"), "dataR2", tr("Heading to fly on the outbound leg"), "lbldata2"},
       {tr("Outbound correction (°)"), "dataR3", tr("Outbound heading minus the reciprocal of the inbound course"),
        "lbldata3"},
       {tr("Outbound time"), "dataR4", tr("Time on the outbound leg, from the end of the turn (minutes:seconds)"),
        "lbldata4"},
       {tr("Outbound ground speed (kts)"), "dataR5", tr("Ground speed along the flown outbound track"), "lbldata5"},
       {tr("Bank (°)"), "dataR6", tr("Bank angle in the turns"), "lbldata6"},
       {tr("Rate (°/s)"), "dataR7", tr("Rate of the turns"), "lbldata7"},
       {tr("Radius (NM)"), "dataR8", tr("Radius of the turns in the air"), "lbldata8"},
       {tr("Pattern time"), "dataR9", tr("Time of one whole circuit (minutes:seconds)"), "lbldata9"}},
      results_.data());
  // The last row holds two results.
  const QString extent = tr("Extent of the ground track along and across the inbound course");
  QLabel* caption = makeCaption(tr("Pattern length / width (NM)"), "lbldata10");
  caption->setToolTip(extent);
  rl->addWidget(caption, 10, 0);
  for (int k : {kRtLength, kRtWidth}) {
    results_[k] = makeResult(QStringLiteral("dataR%1").arg(k), extent);
    rl->addWidget(results_[k], 10, 1 + k - kRtLength);
  }
  for (QLabel* r : results_) r->setMinimumWidth(r->fontMetrics().horizontalAdvance("00:00") + 16);
  rl->setRowStretch(11, 1);
  return frameResults;
}

void RacetrackScreen::setTabOrders() {
  QWidget* prev = course_;
  for (QWidget* w : std::initializer_list<QWidget*>{tas_, windDirection_, windSpeed_, leg_, optTurn_[0], optTurn_[1],
                                                    optBank_[0], optBank_[1], optBank_[2], optBank_[3], optRate_[0],
                                                    optRate_[1], calculateButton(), closeButton()}) {
    setTabOrder(prev, w);
    prev = w;
  }
}

bool RacetrackScreen::calculate() {
  RacetrackInput in;
  in.course = course_->value();
  in.tas = tas_->value();
  in.windDirection = windDirection_->value();
  in.windSpeed = windSpeed_->value();
  in.legMinutes = leg_->value();
  in.right = optTurn_[0]->isChecked();
  in.maxBank = maxBank();
  in.rate = rate();
  RacetrackResult r = ComputeRacetrack(in);
  if (!r.error.empty()) {
    clearData();  // an option change may have brought the error: no results of the former choice stay
    showError(Q(r.error));
    return false;
  }
  for (int i = 0; i < kRacetrackResults; ++i) results_[i]->setText(LocaleText(r.text[i]));
  picture_->setTrack(std::move(r.track), in.course, in.windDirection, in.windSpeed);
  return true;
}

void RacetrackScreen::clearData() {
  CalculatorScreen::clearData();
  if (picture_) picture_->clear();
}

void RacetrackScreen::prepareScreenshot() {
  // A VOR hold, inbound course 090, at 160 kt in 30 kt from the north-east.
  course_->setText("90");
  tas_->setText("160");
  windDirection_->setText("45");
  windSpeed_->setText("30");
  leg_->setText(LocaleText("1.0"));
  CalculatorScreen::prepareScreenshot();
}

}  // namespace norvane
