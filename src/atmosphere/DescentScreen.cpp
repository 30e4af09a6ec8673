#include "atmosphere/DescentScreen.hpp"

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
#include "atmosphere/Descent.hpp"
#include "atmosphere/DescentProfile.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

struct GivenText {
  const char* option;
  const char* caption;
  const char* toolTip;
  const char* mask;  // of the default typed into the box
};
constexpr GivenText kGivenTexts[3] = {
    {"Rate of descent", "Rate of descent (ft/min)", "Rate of descent (100 to 10000 ft/min)", "0"},
    {"Flight path angle", "Flight path angle (°)", "Flight path angle over the ground (0.5 to 10.0°)", "0.0"},
    {"Distance", "Distance (NM)", "Distance from the top to the bottom of the descent (1 to 500 NM)", "0"},
};

// The "Given" choice is kept while the program runs; the rate of descent at first.
int gGiven = 0;

}  // namespace

DescentScreen::DescentScreen(QWidget* parent) : CalculatorScreen(3, "frmData3", tr("Descent calculator"), parent) {
  setHelpText(tr("Distance, time and rate of descent from one altitude to another at a Mach/IAS schedule, with "
                 "temperature and wind"));
  QGridLayout* grid = buildInputs();
  auto* left = new QVBoxLayout;
  left->addLayout(grid);
  buildOptions(grid, left);
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addSpacing(8);
  top->addWidget(buildResults(), 1);
  contentLayout()->addLayout(top);
  profile_ = new DescentProfile(this);
  profile_->setToolTip(tr("Pressure altitude against distance from the top of descent; dashed: the changeover "
                          "altitude"));
  contentLayout()->addWidget(profile_);
  setTabOrders();
  optGiven_[gGiven]->setChecked(true);
  setGiven(gGiven);
  connectSignals();
}

QGridLayout* DescentScreen::buildInputs() {
  const auto rule = [](KeyMode mode, const InputRange& r, int maxLength, bool allowEmpty = false) {
    BoxRule b{mode, r.min, r.max, allowEmpty};
    b.maxLength = maxLength;
    return b;
  };
  struct Input {
    const char* caption;
    const char* toolTip;
    BoxRule rule;
    const char* text;
  };
  const Input inputs[5] = {
      {"Initial altitude (ft)", "Initial pressure altitude (0 to 65000 ft)",
       rule(KeyMode::UnsignedInt, kDescentInitialRange, 5), "35000"},
      {"Final altitude (ft)", "Final pressure altitude (-1500 to 65000 ft)",
       rule(KeyMode::SignedInt, kDescentFinalRange, 6), "3000"},
      {"IAS (kts)", "Indicated air speed below the changeover (50 to 450 kts)",
       rule(KeyMode::UnsignedReal, kDescentIasRange, 6), "250"},
      {"Mach", "Mach number above the changeover (0.30 to 0.95; empty: the IAS all the way)",
       rule(KeyMode::UnsignedReal, kDescentMachRange, 5, true), ""},
      {"Wind component (kts)", "Wind component (-150 to 150 kts, tail wind positive)",
       rule(KeyMode::SignedReal, kDescentWindRange, 6), "0"},
  };
  auto* grid = new QGridLayout;
  for (int i = 0; i < 5; ++i) {
    InputBox* b = addBox(inputs[i].rule, tr(inputs[i].toolTip), LocaleText(inputs[i].text));
    QLabel* caption = makeCaption(tr(inputs[i].caption), QStringLiteral("lblIn%1").arg(i));
    caption->setBuddy(b);
    grid->addWidget(caption, i, 0);
    grid->addWidget(b, i, 1);
  }
  InputBox* givenBox = addBox(rule(KeyMode::UnsignedReal, DescentGivenRange(DescentGiven::Rate), 6));
  givenCaption_ = makeCaption(QString(), "lblIn5");
  givenCaption_->setBuddy(givenBox);
  grid->addWidget(givenCaption_, 6, 0);
  grid->addWidget(givenBox, 6, 1);
  for (int i = 0; i < boxCount(); ++i) box(i)->setFixedWidth(box(i)->fontMetrics().horizontalAdvance("00000000") + 16);
  return grid;
}

void DescentScreen::buildOptions(QGridLayout* grid, QVBoxLayout* left) {
  QStringList given;
  for (const auto& t : kGivenTexts) given << tr(t.option);
  QGroupBox* frameGiven =
      makeOptionGroup(tr("Given"), "FrameGiven", "OptGiven", given, optGiven_.data(), Qt::Vertical).frame;
  grid->addWidget(frameGiven, 5, 0, 1, 2);  // the choice, then the box it governs
  const ValueScroll disa = MakeValueScroll(this, tr("Delta ISA (°C)"), "DISA", static_cast<int>(kDisaRange.min),
                                           static_cast<int>(kDisaRange.max), 10, "+000",
                                           tr("Temperature offset from standard atmosphere (-90 to +40°C)"));
  disaScroll_ = disa.bar;
  disaData_ = disa.value;
  auto* disaRow = new QHBoxLayout;
  disaRow->addWidget(disa.caption);
  disaRow->addWidget(disaScroll_, 1);
  disaRow->addWidget(disaData_);
  left->addLayout(disaRow);
  left->addStretch();
}

QGroupBox* DescentScreen::buildResults() {
  // One value, or top and bottom side by side.
  struct Result {
    const char* caption;
    int values;
    const char* toolTip;
  };
  static const Result kResults[9] = {
      {"Altitude to lose (ft)", 1, "Initial minus final pressure altitude"},
      {"Time", 1, "Time from the top to the bottom of the descent (minutes:seconds)"},
      {"Distance (NM)", 1, "Ground distance from the top to the bottom of the descent"},
      {"Rate of descent top / bottom (ft/min)", 2, "Vertical speed indicator at the top and at the bottom"},
      {"Flight path angle (°)", 1, "Angle of the true height lost over the ground distance"},
      {"Gradient (ft/NM)", 1, "Altitude to lose over the distance"},
      {"Mean ground speed (kts)", 1, "Distance over time"},
      {"TAS top / bottom (kts)", 2, "True air speed at the top and at the bottom"},
      {"Changeover altitude (ft)", 1, "Where the Mach number gives way to the IAS, when within the descent"},
  };
  auto* frameResults = makeFrame(tr("Descent"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  int n = 0;
  for (int row = 0; row < 9; ++row) {
    rl->addWidget(makeCaption(tr(kResults[row].caption), QStringLiteral("lbldata%1").arg(row)), row, 0);
    for (int k = 0; k < kResults[row].values; ++k, ++n) {
      dataR_[n] = makeResult(QStringLiteral("dataR%1").arg(n), tr(kResults[row].toolTip));
      rl->addWidget(dataR_[n], row, 1 + k);
    }
  }
  return frameResults;
}

void DescentScreen::setTabOrders() {
  for (int i = 0; i + 1 < 5; ++i) setTabOrder(box(i), box(i + 1));
  setTabOrder(box(4), optGiven_[0]);
  setTabOrder(optGiven_[0], optGiven_[1]);  // Tab leaves the group from whichever option is checked
  setTabOrder(optGiven_[1], optGiven_[2]);
  setTabOrder(optGiven_[2], box(5));
  setTabOrder(box(5), disaScroll_);
  setTabOrder(disaScroll_, calculateButton());
  setTabOrder(calculateButton(), closeButton());
}

void DescentScreen::connectSignals() {
  connect(optGiven_[0]->group(), &QButtonGroup::idClicked, this, [this](int id) {
    gGiven = id;
    setGiven(id);
    clearData();
  });
  connect(disaScroll_, &QScrollBar::valueChanged, this, [this](int v) {
    disaData_->setText(Q(SignedText(v)));
    recalculateIfShown();
  });
}

int DescentScreen::given() const {
  for (int i = 0; i < 3; ++i)
    if (optGiven_[i]->isChecked()) return i;
  return 0;
}

void DescentScreen::setGiven(int given) {
  const auto kind = static_cast<DescentGiven>(given);
  givenCaption_->setText(tr(kGivenTexts[given].caption));
  box(5)->setToolTip(tr(kGivenTexts[given].toolTip));
  const InputRange r = DescentGivenRange(kind);
  box(5)->setRange(r.min, r.max);
  box(5)->setText(LocaleText(FormatMask(DescentGivenDefault(kind), kGivenTexts[given].mask)));
}

bool DescentScreen::calculate() {
  DescentInput in;
  in.initialFt = box(0)->value();
  in.finalFt = box(1)->value();
  in.ias = box(2)->value();
  if (!box(3)->isEmpty()) in.mach = box(3)->value();
  in.windKt = box(4)->value();
  in.disa = disaScroll_->value();
  in.given = static_cast<DescentGiven>(given());
  in.value = box(5)->value();
  DescentResult r = ComputeDescent(in);
  if (!r.error.empty()) {
    clearData();
    showError(Q(r.error));
    return true;  // a Delta ISA move recalculates all the same
  }
  const ShownValue* values[11] = {&r.altitudeToLose, &r.time,     &r.distance, &r.rodTop, &r.rodBottom, &r.angle,
                                  &r.gradient,       &r.meanGs,   &r.tasTop,   &r.tasBottom, &r.changeover};
  for (int i = 0; i < 11; ++i) dataR_[i]->setText(LocaleText(values[i]->text));
  profile_->setProfile(std::move(r.profile), r.changeoverFt);
  return true;
}

void DescentScreen::clearData() {
  CalculatorScreen::clearData();
  if (profile_) profile_->clear();
}

void DescentScreen::prepareScreenshot() {
  // A jet's descent: FL370 to 3000 ft at Mach 0.78 / 280 kt into a 30 kt head wind, ISA +10.
  const char* const example[5] = {"37000", "3000", "280", "0.78", "-30"};
  for (int i = 0; i < 5; ++i) box(i)->setText(LocaleText(example[i]));
  disaScroll_->setValue(10);
  CalculatorScreen::prepareScreenshot();
}

}  // namespace norvane
