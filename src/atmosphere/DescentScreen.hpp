#pragma once
// frmData3 "Descent calculator": distance, time and rate of descent from one altitude to another at
// a Mach/IAS schedule, with temperature and wind, and the side view of the descent.

#include <array>

#include "app/CalculatorScreen.hpp"

class QLabel;
class QRadioButton;
class QScrollBar;

namespace norvane {

class DescentProfile;

class DescentScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit DescentScreen(QWidget* parent = nullptr);

  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void clearData() override;

 private:
  int given() const;
  void setGiven(int given);

  QLabel* givenCaption_ = nullptr;
  std::array<QRadioButton*, 3> optGiven_{};
  QScrollBar* disaScroll_ = nullptr;
  std::array<QLabel*, 11> dataR_{};
  DescentProfile* profile_ = nullptr;
};

}  // namespace norvane
