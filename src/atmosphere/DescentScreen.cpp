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
#include "atmosphere/DisaScroll.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

struct GivenText {
  const char* option;
  const char* caption;
  const char* mask;  // of the default typed into the box
};
constexpr GivenText kGivenTexts[3] = {
    {"Rate of descent", "Rate of descent (ft/min)", "0"},
    {"Flight path angle", "Flight path angle (°)", "0.0"},
    {"Distance", "Distance (NM)", "0"},
};

}  // namespace

DescentScreen::DescentScreen(QWidget* parent) : CalculatorScreen(3, "frmData3", tr("Descent calculator"), parent) {
  setHelpText(
      tr("Distance, time and rate of descent from one altitude to another at a Mach/IAS schedule, with "
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
  profile_->setToolTip(
      tr("Pressure altitude against distance from the top of descent; dashed: the changeover "
         "altitude"));
  contentLayout()->addWidget(profile_);
  setTabOrders();
  optGiven_[0]->setChecked(true);  // the rate of descent; a later opening restores the user's choice
  setGiven(0);
  connectSignals();
}

QGridLayout* DescentScreen::buildInputs() {
  initial_ = addBox(kDescentInitial, QStringLiteral("35000"));
  final_ = addBox(kDescentFinal, QStringLiteral("3000"));
  ias_ = addBox(kDescentIas, QStringLiteral("250"));
  mach_ = addBox(kDescentMach);
  wind_ = addBox(kDescentWind, QStringLiteral("0"));
  givenValue_ = addBox(DescentGivenValue(DescentGiven::Rate));
  auto* grid = new QGridLayout;
  int row = 0;
  for (auto [b, caption] : {std::pair{initial_, "Initial altitude (ft)"},
                            {final_, "Final altitude (ft)"},
                            {ias_, "IAS (kts)"},
                            {mach_, "Mach"},
                            {wind_, "Wind component (kts)"}}) {
    addBoxRow(grid, row, tr(caption), QStringLiteral("lblIn%1").arg(row), b);
    ++row;
  }
  givenCaption_ = addBoxRow(grid, 6, QString(), "lblIn5", givenValue_);  // under the "Given" choice, in row 5
  for (InputBox* b : {initial_, final_, ias_, mach_, wind_, givenValue_})
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);
  return grid;
}

void DescentScreen::buildOptions(QGridLayout* grid, QVBoxLayout* left) {
  QStringList given;
  for (const auto& t : kGivenTexts) given << tr(t.option);
  QGroupBox* frameGiven =
      makeOptionGroup(tr("Given"), "FrameGiven", "OptGiven", given, optGiven_.data(), Qt::Vertical).frame;
  grid->addWidget(frameGiven, 5, 0, 1, 2);  // the choice, then the box it governs
  disaScroll_ = AddDisaScroll(this, left);
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
  // The labels in the order of their names (dataR<n>).
  QLabel** const labels[] = {&altitudeToLose_, &time_,   &distance_, &rodTop_,    &rodBottom_, &angle_,
                             &gradient_,       &meanGs_, &tasTop_,   &tasBottom_, &changeover_};
  auto* frameResults = makeFrame(tr("Descent"), "FrameResults");
  auto* rl = new QGridLayout(frameResults);
  int n = 0;
  for (int row = 0; row < 9; ++row) {
    rl->addWidget(makeCaption(tr(kResults[row].caption), QStringLiteral("lbldata%1").arg(row)), row, 0);
    for (int k = 0; k < kResults[row].values; ++k, ++n) {
      *labels[n] = makeResult(QStringLiteral("dataR%1").arg(n), tr(kResults[row].toolTip));
      rl->addWidget(*labels[n], row, 1 + k);
    }
  }
  return frameResults;
}

void DescentScreen::setTabOrders() {
  setTabSequence({initial_, final_, ias_, mach_, wind_, optGiven_[0]});
  setTabOrder(optGiven_[0], optGiven_[1]);  // Tab leaves the group from whichever option is checked
  setTabSequence({optGiven_[1], optGiven_[2], givenValue_, disaScroll_, calculateButton(), closeButton()});
}

void DescentScreen::connectSignals() {
  connect(optGiven_[0]->group(), &QButtonGroup::idClicked, this, [this](int id) {
    setGiven(id);
    clearData();
  });
}

int DescentScreen::given() const { return optGiven_[0]->group()->checkedId(); }

void DescentScreen::setGiven(int given) {
  const auto kind = static_cast<DescentGiven>(given);
  givenCaption_->setText(tr(kGivenTexts[given].caption));
  givenValue_->setQuantity(DescentGivenValue(kind));
  givenValue_->setText(LocaleText(FormatMask(DescentGivenDefault(kind), kGivenTexts[given].mask)));
}

bool DescentScreen::calculate() {
  DescentInput in;
  in.initialFt = initial_->value();
  in.finalFt = final_->value();
  in.ias = ias_->value();
  if (!mach_->isEmpty()) in.mach = mach_->value();
  in.windKt = wind_->value();
  in.disa = disaScroll_->value();
  in.given = static_cast<DescentGiven>(given());
  in.value = givenValue_->value();
  DescentResult r = ComputeDescent(in);
  if (!r.error.empty()) {
    clearData();  // the results of an earlier calculation go with the error
    showError(Q(r.error));
    return false;
  }
  ShowLocaleTexts({altitudeToLose_, time_, distance_, rodTop_, rodBottom_, angle_, gradient_, meanGs_, tasTop_,
                   tasBottom_, changeover_},
                  {r.altitudeToLose.text, r.time.text, r.distance.text, r.rodTop.text, r.rodBottom.text, r.angle.text,
                   r.gradient.text, r.meanGs.text, r.tasTop.text, r.tasBottom.text, r.changeover.text});
  profile_->setProfile(std::move(r.profile), r.changeoverFt);
  return true;
}

void DescentScreen::clearData() {
  CalculatorScreen::clearData();
  if (profile_) profile_->clear();
}

void DescentScreen::prepareScreenshot() {
  // A jet's descent: FL370 to 3000 ft at Mach 0.78 / 280 kt into a 30 kt head wind, ISA +10.
  initial_->setText(QStringLiteral("37000"));
  final_->setText(QStringLiteral("3000"));
  ias_->setText(QStringLiteral("280"));
  mach_->setText(LocaleText("0.78"));
  wind_->setText(QStringLiteral("-30"));
  disaScroll_->setValue(10);
  CalculatorScreen::prepareScreenshot();
}

}  // namespace norvane
