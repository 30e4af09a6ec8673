#pragma once
// frmData2 "Changeover level": the pressure altitude and flight level at which an IAS and a Mach
// number coincide.

#include "app/CalculatorScreen.hpp"

namespace norvane {

class ChangeoverScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit ChangeoverScreen(QWidget* parent = nullptr);

 protected:
  bool calculate() override;

 private:
  InputBox* ias_ = nullptr;
  InputBox* mach_ = nullptr;
  QLabel* altitude_ = nullptr;
  QLabel* flightLevel_ = nullptr;
};

}  // namespace norvane
