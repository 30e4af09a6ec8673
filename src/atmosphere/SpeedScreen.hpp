#pragma once
// frmData1 "Speed calculations": CAS, TAS, Mach and EAS from one of them at a flight level, with
// total air temperature and dynamic pressure.

#include <array>

#include "app/CalculatorScreen.hpp"

class QLabel;
class QRadioButton;
class QScrollBar;

namespace norvane {

class SpeedScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit SpeedScreen(QWidget* parent = nullptr);

 protected:
  bool calculate() override;

 private:
  int inputKind() const;
  void setInputKind(int kind);
  void setUnitCaptions();

  QLabel* speedCaption_ = nullptr;
  std::array<QRadioButton*, 3> optInput_{};
  std::array<QRadioButton*, 2> optUnits_{};
  QScrollBar* disaScroll_ = nullptr;
  QLabel* disaData_ = nullptr;
  std::array<QLabel*, 6> lbldata_{};
  std::array<QLabel*, 6> dataR_{};
};

}  // namespace norvane
