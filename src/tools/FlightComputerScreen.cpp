#include "tools/FlightComputerScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

// "Fuel flow (L/h)".
QString Caption(const Quantity& q) { return Q(std::string(q.caption) + " (" + std::string(q.unit) + ")"); }

}  // namespace

FlightComputerScreen::FlightComputerScreen(QWidget* parent)
    : CalculatorScreen(20, "frmData20", tr("Time, speed, distance and fuel"), parent) {
  setHelpText(
      tr("Any two of ground speed, time and distance give the third; the fuel flow gives the fuel used "
         "and, with the fuel on board, the endurance"));
  auto* left = new QVBoxLayout;
  const auto [frameFind, findGroup] = makeOptionGroup(
      tr("Find"), "FrameFind", "OptFind", {tr("Ground speed"), tr("Time"), tr("Distance")}, optFind_.data());
  left->addWidget(frameFind);
  left->addLayout(buildInputs());
  left->addStretch();
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addSpacing(8);
  top->addLayout(buildOptions());
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(buildResults());
  setTabOrders();

  // Load: the distance to find, AVGAS by volume in the default unit system.
  optFind_[int(TsdFind::Distance)]->setChecked(true);
  optFuel_[0]->setChecked(true);
  optMeasure_[0]->setChecked(true);
  shownUnit_ = fuelUnit();
  findChosen();
  fuelUnitChosen();
  connect(findGroup, &QButtonGroup::idToggled, this, [this](int, bool on) {
    if (!on) return;
    findChosen();
    clearData();
  });
  for (QButtonGroup* g : {optUnits_[0]->group(), optMeasure_[0]->group()})
    connect(g, &QButtonGroup::idToggled, this, [this](int, bool on) {
      if (on) fuelUnitChosen();
    });
  connect(optFuel_[0]->group(), &QButtonGroup::idToggled, this, [this](int, bool on) {
    if (on) recalculateIfShown();
  });
}

QGridLayout* FlightComputerScreen::buildInputs() {
  struct Row {
    InputBox*& box;
    const Quantity& quantity;
    QLabel*& caption;
    const char* text;
  };
  QLabel* reserveCaption = nullptr;
  const Row rows[6] = {
      {groundSpeed_, kTsdGroundSpeed, triangleCaption_[0], ""},    {time_, kTsdTime, triangleCaption_[1], ""},
      {distance_, kTsdDistance, triangleCaption_[2], ""},          {fuelFlow_, kTsdFuelFlow[0], fuelFlowCaption_, ""},
      {fuelOnBoard_, kTsdFuelOnBoard[0], fuelOnBoardCaption_, ""}, {reserve_, kTsdReserve, reserveCaption, "45"},
  };
  auto* grid = new QGridLayout;
  for (int i = 0; i < 6; ++i) {
    const Row& r = rows[i];
    r.box = addBox(r.quantity, QString::fromLatin1(r.text));
    r.box->setFixedWidth(r.box->fontMetrics().horizontalAdvance(QStringLiteral("000000000")) + 16);
    r.caption = makeCaption(Caption(r.quantity), QStringLiteral("lblIn%1").arg(i));
    r.caption->setBuddy(r.box);
    const int row = i < 3 ? i : i + 1;  // a gap between the triangle and the fuel
    grid->addWidget(r.caption, row, 0);
    grid->addWidget(r.box, row, 1);
  }
  grid->setRowMinimumHeight(3, 6);
  grid->setColumnStretch(0, 1);
  return grid;
}

QVBoxLayout* FlightComputerScreen::buildOptions() {
  auto* right = new QVBoxLayout;
  right->addWidget(makeUnitsFrame(tr("Units"), optUnits_.data()));
  right->addWidget(
      makeOptionGroup(tr("Fuel"), "FrameFuel", "OptFuel", {tr("AVGAS"), tr("Jet A-1")}, optFuel_.data()).frame);
  right->addWidget(makeOptionGroup(tr("Fuel quantities"), "FrameMeasure", "OptMeasure", {tr("Volume"), tr("Mass")},
                                   optMeasure_.data())
                       .frame);
  right->addStretch();
  return right;
}

QGroupBox* FlightComputerScreen::buildResults() {
  struct Row {
    const char* caption;
    TsdResult first;
    int values;
    const char* toolTip;
  };
  static const Row kRows[6] = {
      {"Ground speed (kts)", kTsdGroundSpeedResult, 1, "Ground speed (kts)"},
      {"Time (h:mm / h)", kTsdTimeResult, 2, "Trip time, hours and minutes and decimal hours"},
      {"Distance (NM)", kTsdDistanceResult, 1, "Distance over the ground (NM)"},
      {"", kTsdFuelVolumeResult, 2, "Fuel used over the trip time, by volume and by mass"},
      {"Endurance (h:mm / h)", kTsdEnduranceResult, 2, "Time until the fuel on board is used up"},
      {"Usable endurance (h:mm / h)", kTsdUsableResult, 2, "Endurance less the reserve"},
  };
  auto* frame = makeFrame(tr("Results"), "FrameResults");
  auto* grid = new QGridLayout(frame);
  for (int row = 0; row < 6; ++row) {
    const Row& r = kRows[row];
    QLabel* caption = makeCaption(tr(r.caption), QStringLiteral("lbldata%1").arg(row));
    caption->setToolTip(tr(r.toolTip));
    if (r.first == kTsdFuelVolumeResult) fuelUsedCaption_ = caption;
    grid->addWidget(caption, row, 0);
    for (int k = 0; k < r.values; ++k) {
      const int n = r.first + k;
      results_[n] = makeResult(QStringLiteral("dataR%1").arg(n), tr(r.toolTip));
      grid->addWidget(results_[n], row, 1 + k);
    }
  }
  grid->setColumnStretch(0, 1);
  return frame;
}

void FlightComputerScreen::setTabOrders() {
  // The choice of what to find, its three boxes, the fuel boxes, then the units and the fuel.
  QWidget* const chain[] = {optFind_[0], optFind_[1],    optFind_[2],    groundSpeed_,      time_,        distance_,
                            fuelFlow_,   fuelOnBoard_,   reserve_,       optUnits_[0],      optUnits_[1], optFuel_[0],
                            optFuel_[1], optMeasure_[0], optMeasure_[1], calculateButton(), closeButton()};
  for (size_t i = 0; i + 1 < std::size(chain); ++i) setTabOrder(chain[i], chain[i + 1]);
}

TsdFind FlightComputerScreen::find() const { return static_cast<TsdFind>(optFind_[0]->group()->checkedId()); }

FuelUnit FlightComputerScreen::fuelUnit() const {
  return FuelUnitOf(optUnits_[1]->isChecked(), optMeasure_[1]->isChecked());
}

FuelType FlightComputerScreen::fuelType() const { return optFuel_[1]->isChecked() ? FuelType::JetA1 : FuelType::Avgas; }

void FlightComputerScreen::findChosen() {
  // In TsdFind order, which is also the order of the first three boxes (their InputValid flags).
  const Quantity* quantities[3] = {&kTsdGroundSpeed, &kTsdTime, &kTsdDistance};
  InputBox* boxes[3] = {groundSpeed_, time_, distance_};
  for (int i = 0; i < 3; ++i) {
    const bool found = i == int(find());
    BoxRule rule = RuleOf(*quantities[i]);
    rule.allowEmpty = found;  // the box found stays empty and valid
    if (found) boxes[i]->clear();
    boxes[i]->setRule(rule);
    boxes[i]->setEnabled(!found);
    triangleCaption_[size_t(i)]->setEnabled(!found);
    setInputValid(i, boxes[i]->isValid());
  }
}

void FlightComputerScreen::fuelUnitChosen() {
  const FuelUnit unit = fuelUnit();
  if (unit != shownUnit_) {
    // The same fuel in the new unit, to two decimals at most.
    converting_ = true;
    for (InputBox* b : {fuelFlow_, fuelOnBoard_}) {
      if (!b->isValid() || b->isEmpty()) continue;
      std::string t = FormatMask(ConvertFuel(b->value(), shownUnit_, unit, fuelType()), "0.0#");
      if (t.ends_with(".0")) t.resize(t.size() - 2);
      b->setText(LocaleText(t));
    }
    converting_ = false;
    shownUnit_ = unit;
  }
  const auto u = static_cast<size_t>(unit);
  fuelFlow_->setQuantity(kTsdFuelFlow[u]);
  fuelOnBoard_->setQuantity(kTsdFuelOnBoard[u]);
  fuelFlowCaption_->setText(Caption(kTsdFuelFlow[u]));
  fuelOnBoardCaption_->setText(Caption(kTsdFuelOnBoard[u]));
  const bool us = optUnits_[1]->isChecked();
  fuelUsedCaption_->setText(tr("Fuel used (%1 / %2)")
                                .arg(Q(std::string(FuelUnitName(FuelUnitOf(us, false)))),
                                     Q(std::string(FuelUnitName(FuelUnitOf(us, true))))));
  recalculateIfShown();
}

// A unit switch's conversion is no edit: the results stay, to be calculated again in the new unit.
void FlightComputerScreen::boxEdited(int index) {
  if (!converting_) CalculatorScreen::boxEdited(index);
}

bool FlightComputerScreen::calculate() {
  TsdInput in;
  in.find = find();
  in.groundSpeed = groundSpeed_->value();
  in.hours = time_->value();
  in.distance = distance_->value();
  if (!fuelFlow_->isEmpty()) in.fuelFlow = fuelFlow_->value();
  if (!fuelOnBoard_->isEmpty()) in.fuelOnBoard = fuelOnBoard_->value();
  if (!reserve_->isEmpty()) in.reserveMinutes = reserve_->value();
  in.unit = fuelUnit();
  in.fuel = fuelType();
  const TsdTexts t = ComputeTsdTexts(in);
  for (int r = 0; r < kTsdResultCount; ++r) results_[size_t(r)]->setText(LocaleText(t.text[size_t(r)]));
  showError(Q(t.message));
  return !t.failed;
}

void FlightComputerScreen::prepareScreenshot() {
  // A light aeroplane's leg: 120 kt for 1:30 on 35 L/h of AVGAS, 150 L on board, 45 minutes' reserve.
  optFind_[int(TsdFind::Distance)]->setChecked(true);
  optUnits_[0]->setChecked(true);
  optMeasure_[0]->setChecked(true);
  optFuel_[0]->setChecked(true);
  const std::pair<InputBox*, const char*> example[] = {
      {groundSpeed_, "120"}, {time_, "1.5"}, {fuelFlow_, "35"}, {fuelOnBoard_, "150"}, {reserve_, "45"}};
  for (const auto& [box, text] : example) box->setText(LocaleText(text));
  CalculatorScreen::prepareScreenshot();
}

}  // namespace norvane
