#pragma once
// frmData3 "Descent calculator": distance, time and rate of descent from one altitude to another at
// a Mach/IAS schedule, with temperature and wind, and the side view of the descent.

#include <array>

#include "app/CalculatorScreen.hpp"

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
  QGridLayout* buildInputs();
  // The "Given" choice above its box in `grid`, and the Delta ISA scroll bar under `left`.
  void buildOptions(QGridLayout* grid, QVBoxLayout* left);
  QGroupBox* buildResults();
  void setTabOrders();
  void connectSignals();
  int given() const;
  // The given box's caption, quantity and default for the chosen "Given".
  void setGiven(int given);

  InputBox *initial_ = nullptr, *final_ = nullptr, *ias_ = nullptr, *mach_ = nullptr, *wind_ = nullptr,
           *givenValue_ = nullptr;
  QLabel* givenCaption_ = nullptr;
  std::array<QRadioButton*, 3> optGiven_{};
  QScrollBar* disaScroll_ = nullptr;
  QLabel *altitudeToLose_ = nullptr, *time_ = nullptr, *distance_ = nullptr, *rodTop_ = nullptr, *rodBottom_ = nullptr,
         *angle_ = nullptr, *gradient_ = nullptr, *meanGs_ = nullptr, *tasTop_ = nullptr, *tasBottom_ = nullptr,
         *changeover_ = nullptr;
  DescentProfile* profile_ = nullptr;
};

}  // namespace norvane
