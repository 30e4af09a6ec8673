#pragma once
// frmData4 "Density altitude": station pressure, relative humidity and density altitude of an
// aerodrome from its altimeter setting, elevation, temperature and dew point.

#include <array>

#include "app/CalculatorScreen.hpp"

namespace norvane {

class DensityAltitudeScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit DensityAltitudeScreen(QWidget* parent = nullptr);

 protected:
  bool calculate() override;

 private:
  QVBoxLayout* buildInputs();
  QGroupBox* buildResults();
  void setTabOrders();
  void load();
  void connectSignals();
  bool us() const;
  // Captions and quantities of the boxes, and the pressure's caption, for the unit system.
  void setUnits();

  std::array<QRadioButton*, 2> optUnits_{};
  InputBox *qnh_ = nullptr, *temperature_ = nullptr, *dewPoint_ = nullptr, *elevation_ = nullptr;
  QLabel *qnhCaption_ = nullptr, *temperatureCaption_ = nullptr, *dewPointCaption_ = nullptr;
  QLabel* pressureCaption_ = nullptr;
  QLabel *pressure_ = nullptr, *humidity_ = nullptr, *densityAltitude_ = nullptr;
};

}  // namespace norvane
