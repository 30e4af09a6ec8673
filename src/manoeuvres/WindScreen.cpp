#include "manoeuvres/WindScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/UiHelpers.hpp"
#include "manoeuvres/Wind.hpp"

namespace norvane {
namespace {

// The chosen mode is kept while the program runs and selected again when the screen reopens.
int gMode = 0;

struct BoxText {
  const char* caption;
  const char* tip;
  int maxLength;
  int min, max;
};

constexpr BoxText kTas{"TAS (kts)", "True air speed (50 to 1500 kts)", 4, kWindAirSpeedMin, kWindAirSpeedMax};
constexpr BoxText kTrack{"Route track (°)", "Route track (0 to 360°)", 3, kWindAngleMin, kWindAngleMax};
constexpr BoxText kWindSpeed{"Wind speed (kts)", "Wind speed (0 to 150 kts)", 3, kWindSpeedMin, kWindSpeedMax};
constexpr BoxText kWindDir{"Wind direction (°)", "Wind direction (0 to 360°)", 3, kWindAngleMin, kWindAngleMax};
constexpr BoxText kGroundSpeed{"Ground speed (kts)", "Ground speed (50 to 1500 kts)", 4, kWindAirSpeedMin,
                               kWindAirSpeedMax};
constexpr BoxText kHeading{"Aircraft heading (°)", "Current heading (0 to 360°)", 3, kWindAngleMin, kWindAngleMax};
constexpr BoxText kRunway{"Runway heading (°)", "Runway heading (0 to 360°)", 3, kWindAngleMin, kWindAngleMax};

const BoxText kBoxes[3][4] = {
    {kTas, kTrack, kWindSpeed, kWindDir},
    {kTas, kGroundSpeed, kTrack, kHeading},
    {kTas, kRunway, kWindSpeed, kWindDir},  // box 0 hidden
};

struct ResultText {
  const char* caption;
  const char* tip;
};
const char* const kHeadTailTip = "Head/Tail wind (kts ; head wind is negative)";
const ResultText kResults[3][4] = {
    {{"Ground speed (kts)", "Ground speed (kts)"},
     {"Aircraft heading (°)", "Heading to remain on track (°)"},
     {"WCA (°)", "Wind correction angle (°)"},
     {"Head/Tail wind (kts)", kHeadTailTip}},
    {{"Wind speed (kts)", ""},
     {"Wind direction (°)", ""},
     {"WCA (°)", "Wind correction angle (°)"},
     {"Head/Tail wind (kts)", kHeadTailTip}},
    {{"Crosswind (kts)", "Crosswind (kts, right is positive)"}, {"Head/Tail wind (kts)", kHeadTailTip}, {"", ""}, {"", ""}},
};

BoxRule RuleFor(const BoxText& b) {
  BoxRule r{KeyMode::UnsignedInt, double(b.min), double(b.max)};
  r.maxLength = b.maxLength;
  return r;
}

}  // namespace

WindScreen::WindScreen(QWidget* parent) : CalculatorScreen(5, "frmData5", tr("Wind calculations"), parent) {
  setHelpText(tr("Head wind is negative, tail wind is positive ; WCA is the wind correction angle ; for WCA and "
                 "runway crosswind right is positive and left is negative. Track/HDG and wind direction must be "
                 "both true or magnetic"));

  const auto [frameOpt, group] =
      makeOptionGroup(tr("Wind calculation"), "FrameOpt", "Optknown",
                      {tr("Known enroute wind"), tr("Unknown enroute wind"), tr("Runway wind calculator")}, optknown_,
                      Qt::Vertical);
  connect(group, &QButtonGroup::idClicked, this, &WindScreen::optknownClick);

  auto* inputs = new QGridLayout;
  for (int i = 0; i < 4; ++i) {
    lbldata_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i));
    InputBox* b = addBox(RuleFor(kBoxes[0][i]));
    b->setFixedWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    lbldata_[i]->setBuddy(b);
    inputs->addWidget(lbldata_[i], i, 0);
    inputs->addWidget(b, i, 1);
  }
  inputs->setColumnStretch(2, 1);

  auto* frameResults = makeFrame(tr("Results"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  for (int k = 1; k <= 4; ++k) {
    lbldata_[3 + k] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(3 + k));
    dataR_[k] = makeResult(QStringLiteral("dataR%1").arg(k));
    rl->addWidget(lbldata_[3 + k], k - 1, 0);
    rl->addWidget(dataR_[k], k - 1, 1);
  }

  auto* top = new QHBoxLayout;
  top->addWidget(frameOpt);
  auto* left = new QVBoxLayout;
  left->addLayout(inputs);
  left->addStretch();
  top->addLayout(left, 1);
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(frameResults);
  setTabOrder(box(3), calculateButton());
  setTabOrder(calculateButton(), closeButton());

  // Load: select the kept mode, which sets the captions and empties the boxes.
  optknown_[gMode]->setChecked(true);
  optknownClick(gMode);
}

int WindScreen::mode() const { return gMode; }

void WindScreen::SetDisplayOptions() {
  const int m = gMode;
  for (int i = 0; i < 4; ++i) {
    const BoxText& b = kBoxes[m][i];
    lbldata_[i]->setText(tr(b.caption));
    box(i)->setToolTip(tr(b.tip));
    box(i)->setRule(RuleFor(b));
  }
  for (int k = 1; k <= 4; ++k) {
    const ResultText& r = kResults[m][k - 1];
    lbldata_[3 + k]->setText(tr(r.caption));
    dataR_[k]->setToolTip(tr(r.tip));
  }
  const bool full = m != 2;
  for (QWidget* w : {static_cast<QWidget*>(lbldata_[0]), static_cast<QWidget*>(box(0)),
                     static_cast<QWidget*>(lbldata_[6]), static_cast<QWidget*>(lbldata_[7]),
                     static_cast<QWidget*>(dataR_[3]), static_cast<QWidget*>(dataR_[4])})
    w->setVisible(full);
}

void WindScreen::optknownClick(int index) {
  gMode = index;
  SetDisplayOptions();
  clearData();
  // Clearing an already empty box emits no change, so set every flag from its box: a TAS box
  // left valid by the runway mode must not arm Calculate once it is needed again.
  for (int i = 0; i < 4; ++i) {
    box(i)->clear();
    setInputValid(i, box(i)->isValid());
  }
  // The hidden TAS box must not keep Calculate disabled.
  if (gMode == 2) setInputValid(0, true);
}

bool WindScreen::calculate() {
  const double v0 = box(0)->value(), v1 = box(1)->value(), v2 = box(2)->value(), v3 = box(3)->value();
  WindTexts t;
  switch (gMode) {
    case 0: t = KnownWindTexts(v0, v1, v2, v3); break;
    case 1: t = UnknownWindTexts(v0, v1, v2, v3); break;
    default: t = RunwayWindTexts(v1, v2, v3); break;
  }
  if (!t.message.empty()) {
    showError(Q(t.message));
    return false;
  }
  for (int k = 0; k < t.count; ++k) dataR_[k + 1]->setText(LocaleText(t.text[k]));
  return true;
}

void WindScreen::prepareScreenshot() {
  if (gMode != 0) {
    optknown_[0]->setChecked(true);
    optknownClick(0);
  }
  const char* const example[4] = {"100", "0", "30", "90"};
  for (int i = 0; i < 4; ++i) box(i)->setText(example[i]);
  runCalculate();
}

}  // namespace norvane
