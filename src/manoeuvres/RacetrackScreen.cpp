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
namespace {

// Options kept while the program runs: right turns, 25 degrees maximum bank, standard rate.
int gTurn = 0;
int gMaxBank = 1;
int gRate = 1;

}  // namespace

RacetrackScreen::RacetrackScreen(QWidget* parent)
    : CalculatorScreen(14, "frmData14", tr("Racetrack calculator"), parent) {
  setHelpText(tr("Headings and outbound time of a holding pattern in wind"));
  auto* left = new QVBoxLayout;
  left->addLayout(buildInputs());
  buildOptions(left);
  QGroupBox* frameResults = buildResults();
  picture_ = new RacetrackPicture(this);
  picture_->setToolTip(tr("North up: the ground track of one circuit to scale, the fix, the inbound course "
                          "(dashed) and the wind"));
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addWidget(frameResults);
  top->addWidget(picture_, 1);
  contentLayout()->addLayout(top);
  setTabOrders();
}

QGridLayout* RacetrackScreen::buildInputs() {
  struct Input {
    const char* caption;
    const char* toolTip;
    KeyMode mode;
    double min, max;
    int maxLength;
    const char* text;
  };
  const Input inputs[5] = {
      {"Inbound course (°)", "Inbound course to the fix (0 to 360°)", KeyMode::UnsignedInt, double(kWindAngleMin),
       double(kWindAngleMax), 3, "360"},
      {"TAS (kts)", "True air speed (50 to 600 kts)", KeyMode::UnsignedInt, double(kRacetrackTasMin),
       double(kRacetrackTasMax), 3, "180"},
      {"Wind direction (°)", "Direction the wind blows from (0 to 360°)", KeyMode::UnsignedInt,
       double(kWindAngleMin), double(kWindAngleMax), 3, "360"},
      {"Wind speed (kts)", "Wind speed (0 to 150 kts)", KeyMode::UnsignedInt, double(kWindSpeedMin),
       double(kWindSpeedMax), 3, "0"},
      {"Inbound leg (min)", "Time on the inbound leg (0.5 to 5.0 min)", KeyMode::UnsignedReal, kRacetrackLegMin,
       kRacetrackLegMax, 4, "1.0"},
  };
  auto* grid = new QGridLayout;
  for (int i = 0; i < 5; ++i) {
    BoxRule rule{inputs[i].mode, inputs[i].min, inputs[i].max};
    rule.maxLength = inputs[i].maxLength;
    InputBox* b = addBox(rule, tr(inputs[i].toolTip), LocaleText(inputs[i].text));
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("000000") + 16);
    QLabel* caption = makeCaption(tr(inputs[i].caption), QStringLiteral("lblIn%1").arg(i));
    caption->setBuddy(b);
    grid->addWidget(caption, i, 0);
    grid->addWidget(b, i, 1);
  }
  return grid;
}

void RacetrackScreen::buildOptions(QVBoxLayout* left) {
  // The three option groups; a change recalculates when results are shown.
  const auto options = [this](const QString& caption, const char* name, const char* optionName,
                              const QStringList& texts, QRadioButton** out, int* kept) {
    const auto [frame, group] = makeOptionGroup(caption, name, optionName, texts, out);
    static_cast<QBoxLayout*>(frame->layout())->addStretch();
    out[*kept]->setChecked(true);
    connect(group, &QButtonGroup::idClicked, this, [this, kept](int id) {
      *kept = id;
      recalculateIfShown();
    });
    return frame;
  };
  left->addWidget(options(tr("Turns"), "FrameTurns", "OptTurn", {tr("Right"), tr("Left")}, optTurn_.data(), &gTurn));
  left->addWidget(options(tr("Max bank (ul=unlimited)"), "FrameMaxBank", "Optbankinput",
                          {tr("20°"), tr("25°"), tr("30°"), tr("ul")}, optBank_.data(), &gMaxBank));
  optBank_[3]->setToolTip(tr("Unlimited: the bank that the turn rate needs"));
  left->addWidget(options(tr("Turn rate (deg/s)"), "FrameIFRTR", "OptTRinput",
                          {tr("1.5 (1/2 std)"), tr("3 (std)")}, optRate_.data(), &gRate));
  left->addStretch();
}

QGroupBox* RacetrackScreen::buildResults() {
  struct Result {
    const char* caption;
    int values;
    const char* toolTip;
  };
  static const Result kResults[11] = {
      {"Inbound heading", 1, "Heading that holds the inbound course"},
      {"Inbound ground speed (kts)", 1, "Ground speed on the inbound leg"},
      {"Outbound heading", 1, "Heading to fly on the outbound leg"},
      {"Outbound correction (°)", 1, "Outbound heading minus the reciprocal of the inbound course"},
      {"Outbound time", 1, "Time on the outbound leg, from the end of the turn (minutes:seconds)"},
      {"Outbound ground speed (kts)", 1, "Ground speed along the flown outbound track"},
      {"Bank (°)", 1, "Bank angle in the turns"},
      {"Rate (°/s)", 1, "Rate of the turns"},
      {"Radius (NM)", 1, "Radius of the turns in the air"},
      {"Pattern time", 1, "Time of one whole circuit (minutes:seconds)"},
      {"Pattern length / width (NM)", 2, "Extent of the ground track along and across the inbound course"},
  };
  auto* frameResults = makeFrame(tr("Racetrack"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  int n = 0;
  for (int row = 0; row < 11; ++row) {
    rl->addWidget(makeCaption(tr(kResults[row].caption), QStringLiteral("lbldata%1").arg(row)), row, 0);
    for (int k = 0; k < kResults[row].values; ++k, ++n) {
      dataR_[n] = makeResult(QStringLiteral("dataR%1").arg(n), tr(kResults[row].toolTip));
      dataR_[n]->setMinimumWidth(dataR_[n]->fontMetrics().horizontalAdvance("00:00") + 16);
      rl->addWidget(dataR_[n], row, 1 + k);
    }
  }
  rl->setRowStretch(11, 1);
  return frameResults;
}

void RacetrackScreen::setTabOrders() {
  for (int i = 0; i + 1 < 5; ++i) setTabOrder(box(i), box(i + 1));
  QWidget* prev = box(4);
  for (QRadioButton* o : {optTurn_[0], optTurn_[1], optBank_[0], optBank_[1], optBank_[2], optBank_[3],
                          optRate_[0], optRate_[1]}) {
    setTabOrder(prev, o);
    prev = o;
  }
  setTabOrder(prev, calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

bool RacetrackScreen::calculate() {
  RacetrackInput in;
  in.course = box(0)->value();
  in.tas = box(1)->value();
  in.windDirection = box(2)->value();
  in.windSpeed = box(3)->value();
  in.legMinutes = box(4)->value();
  in.right = gTurn == 0;
  in.maxBankIndex = static_cast<int16_t>(gMaxBank);
  in.standardRate = gRate == 1;
  RacetrackResult r = ComputeRacetrack(in);
  if (!r.error.empty()) {
    clearData();
    showError(Q(r.error));
    return true;  // an option change recalculates all the same
  }
  for (int i = 0; i < kRacetrackResults; ++i) dataR_[i]->setText(LocaleText(r.text[i]));
  picture_->setTrack(std::move(r.track), in.course, in.windDirection, in.windSpeed);
  return true;
}

void RacetrackScreen::clearData() {
  CalculatorScreen::clearData();
  if (picture_) picture_->clear();
}

void RacetrackScreen::prepareScreenshot() {
  // A VOR hold, inbound course 090, at 160 kt in 30 kt from the north-east.
  const char* const example[5] = {"90", "160", "45", "30", "1.0"};
  for (int i = 0; i < 5; ++i) box(i)->setText(LocaleText(example[i]));
  CalculatorScreen::prepareScreenshot();
}

}  // namespace norvane
