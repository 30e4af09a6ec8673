#pragma once
// frmData1 "Speed calculations": CAS, TAS, Mach and EAS from one of them at a flight level, with
// total air temperature and dynamic pressure.

#include <array>

#include "app/CalculatorScreen.hpp"

class QScrollBar;

namespace norvane {

class SpeedScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit SpeedScreen(QWidget* parent = nullptr);

 protected:
  bool calculate() override;

 private:
  QGridLayout* buildInputs();
  // The "From" choice, the Delta ISA scroll bar and the units, under `left`.
  void buildOptions(QVBoxLayout* left);
  QVBoxLayout* buildResults();
  void setTabOrders();
  void load();
  void connectSignals();
  int inputKind() const;
  void setInputKind(int kind);
  void setUnitCaptions();

  InputBox* flightLevel_ = nullptr;
  InputBox* speed_ = nullptr;
  QLabel* speedCaption_ = nullptr;
  std::array<QRadioButton*, 3> optInput_{};
  std::array<QRadioButton*, 2> optUnits_{};
  QScrollBar* disaScroll_ = nullptr;
  QLabel *cas_ = nullptr, *tas_ = nullptr, *mach_ = nullptr, *eas_ = nullptr;
  // TAT and q: their captions follow the units.
  QLabel *tatCaption_ = nullptr, *qCaption_ = nullptr;
  QLabel *tat_ = nullptr, *q_ = nullptr;
};

}  // namespace norvane
