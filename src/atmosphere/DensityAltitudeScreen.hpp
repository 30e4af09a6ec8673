#pragma once
// frmData4 "Density altitude": station pressure, relative humidity and density altitude of an
// aerodrome from its altimeter setting, elevation, temperature and dew point.

#include <array>

#include "app/CalculatorScreen.hpp"

class QGroupBox;
class QLabel;
class QRadioButton;
class QVBoxLayout;

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
  // Captions, tool tips and ranges of the boxes and results for the unit system.
  void setUnits();

  std::array<QRadioButton*, 2> optUnits_{};
  std::array<QLabel*, 4> boxCaption_{};
  std::array<QLabel*, 3> lbldata_{};
  std::array<QLabel*, 3> dataR_{};
};

}  // namespace norvane
