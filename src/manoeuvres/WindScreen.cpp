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

struct BoxText {
  const char* caption;
  const Quantity* quantity;
};

// The runway mode does without the TAS: its hidden box may stay empty.
constexpr Quantity kUnusedTas = OptionalInput(kWindTas);

constexpr BoxText kTas{"TAS (kts)", &kWindTas};
constexpr BoxText kTrack{"Route track (°)", &kWindTrack};
constexpr BoxText kWindSpeedBox{"Wind speed (kts)", &kWindSpeed};
constexpr BoxText kWindDir{"Wind direction (°)", &kWindDirection};

const BoxText kBoxes[3][4] = {
    {kTas, kTrack, kWindSpeedBox, kWindDir},
    {kTas, {"Ground speed (kts)", &kWindGroundSpeed}, kTrack, {"Aircraft heading (°)", &kWindHeading}},
    {{"TAS (kts)", &kUnusedTas}, {"Runway heading (°)", &kRunwayHeading}, kWindSpeedBox, kWindDir},
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
    {{"Crosswind (kts)", "Crosswind (kts, right is positive)"},
     {"Head/Tail wind (kts)", kHeadTailTip},
     {"", ""},
     {"", ""}},
};

}  // namespace

WindScreen::WindScreen(QWidget* parent) : CalculatorScreen(5, "frmData5", tr("Wind calculations"), parent) {
  setHelpText(
      tr("Head wind is negative, tail wind is positive ; WCA is the wind correction angle ; for WCA and "
         "runway crosswind right is positive and left is negative. Track/HDG and wind direction must be "
         "both true or magnetic"));

  const auto [frameOpt, group] = makeOptionGroup(
      tr("Wind calculation"), "FrameOpt", "Optknown",
      {tr("Known enroute wind"), tr("Unknown enroute wind"), tr("Runway wind calculator")}, optknown_, Qt::Vertical);
  connect(group, &QButtonGroup::idClicked, this, &WindScreen::setMode);

  auto* inputs = new QGridLayout;
  for (int i = 0; i < 4; ++i) {
    inputCaptions_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i));
    inputs_[i] = addBox(*kBoxes[kKnownWind][i].quantity);
    inputs_[i]->setFixedWidth(inputs_[i]->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    inputCaptions_[i]->setBuddy(inputs_[i]);
    inputs->addWidget(inputCaptions_[i], i, 0);
    inputs->addWidget(inputs_[i], i, 1);
  }
  inputs->setColumnStretch(2, 1);

  auto* frameResults = makeFrame(tr("Results"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  for (int i = 0; i < 4; ++i) {
    resultCaptions_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(4 + i));
    results_[i] = makeResult(QStringLiteral("dataR%1").arg(1 + i));
    rl->addWidget(resultCaptions_[i], i, 0);
    rl->addWidget(results_[i], i, 1);
  }

  auto* top = new QHBoxLayout;
  top->addWidget(frameOpt);
  auto* left = new QVBoxLayout;
  left->addLayout(inputs);
  left->addStretch();
  top->addLayout(left, 1);
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(frameResults);
  setTabOrder(inputs_[3], calculateButton());
  setTabOrder(calculateButton(), closeButton());

  // The known wind at first, which sets the captions and empties the boxes.
  optknown_[kKnownWind]->setChecked(true);
  setMode(kKnownWind);
}

WindScreen::Mode WindScreen::mode() const { return static_cast<Mode>(optknown_[0]->group()->checkedId()); }

void WindScreen::setMode(int mode) {
  clearData();
  for (int i = 0; i < 4; ++i) {
    const BoxText& b = kBoxes[mode][i];
    inputCaptions_[i]->setText(tr(b.caption));
    inputs_[i]->setQuantity(*b.quantity);
    inputs_[i]->clear();
    // Clearing an already empty box emits no change, so the flag follows the box here: a TAS box
    // left valid by the runway mode must not arm Calculate once it is needed again.
    setInputValid(i, inputs_[i]->isValid());
    const ResultText& r = kResults[mode][i];
    resultCaptions_[i]->setText(tr(r.caption));
    results_[i]->setToolTip(tr(r.tip));
  }
  const bool full = mode != kRunwayWind;
  for (QWidget* w : std::initializer_list<QWidget*>{inputCaptions_[0], inputs_[0], resultCaptions_[2],
                                                    resultCaptions_[3], results_[2], results_[3]})
    w->setVisible(full);
}

bool WindScreen::calculate() {
  const auto v = [this](int row) { return inputs_[row]->value(); };
  WindTexts t;
  switch (mode()) {
    case kKnownWind:
      t = KnownWindTexts(v(0), v(1), v(2), v(3));
      break;
    case kUnknownWind:
      t = UnknownWindTexts(v(0), v(1), v(2), v(3));
      break;
    case kRunwayWind:
      t = RunwayWindTexts(v(1), v(2), v(3));
      break;
  }
  if (!t.message.empty()) {
    showError(Q(t.message));
    return false;
  }
  for (int k = 0; k < t.count; ++k) results_[k]->setText(LocaleText(t.text[k]));
  return true;
}

void WindScreen::prepareScreenshot() {
  if (mode() != kKnownWind) {
    optknown_[kKnownWind]->setChecked(true);
    setMode(kKnownWind);
  }
  const char* const example[4] = {"100", "0", "30", "90"};
  for (int i = 0; i < 4; ++i) inputs_[i]->setText(example[i]);
  runCalculate();
}

}  // namespace norvane
