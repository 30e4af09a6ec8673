#pragma once
// frmData20 "Time, speed, distance and fuel": two of ground speed, time and distance give the
// third; a fuel flow gives the fuel used, with the fuel on board the endurance, less a reserve
// the usable endurance, which the trip time must not exceed.

#include <array>

#include "app/CalculatorScreen.hpp"
#include "tools/FlightComputer.hpp"

namespace norvane {

class FlightComputerScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit FlightComputerScreen(QWidget* parent = nullptr);

  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void boxEdited(int index) override;

 private:
  QGridLayout* buildInputs();
  QVBoxLayout* buildOptions();
  QGroupBox* buildResults();
  void setTabOrders();
  TsdFind find() const;
  FuelUnit fuelUnit() const;
  FuelType fuelType() const;
  // Disables the box of the value to find and empties it (it no longer blocks Calculate).
  void findChosen();
  // Converts the fuel boxes into the chosen unit and renames their captions.
  void fuelUnitChosen();

  InputBox* groundSpeed_ = nullptr;
  InputBox* time_ = nullptr;
  InputBox* distance_ = nullptr;
  InputBox* fuelFlow_ = nullptr;
  InputBox* fuelOnBoard_ = nullptr;
  InputBox* reserve_ = nullptr;
  QLabel* fuelFlowCaption_ = nullptr;
  QLabel* fuelOnBoardCaption_ = nullptr;
  QLabel* fuelUsedCaption_ = nullptr;
  std::array<QLabel*, 3> triangleCaption_{};  // ground speed, time, distance
  std::array<QRadioButton*, 3> optFind_{};
  std::array<QRadioButton*, 2> optUnits_{};
  std::array<QRadioButton*, 2> optFuel_{};
  std::array<QRadioButton*, 2> optMeasure_{};
  std::array<QLabel*, kTsdResultCount> results_{};
  FuelUnit shownUnit_ = FuelUnit::Litre;  // the unit the fuel boxes hold
  bool converting_ = false;
};

}  // namespace norvane
