#pragma once
// frmData6 "Turn parameters": bank, rate, radius and load factor of a rate turn limited by a
// maximum bank, and the turn anticipation for intercepting a radial.

#include <array>

#include "manoeuvres/RateTurnScreen.hpp"

namespace norvane {

class TurnScreen : public RateTurnScreen {
  Q_OBJECT
 public:
  explicit TurnScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void boxEdited(int index) override;

 private:
  QVBoxLayout* buildOptions();
  QVBoxLayout* buildResults();
  QGroupBox* buildAnticipation();
  void setTabOrders();
  void rUnitClick(int index);

  InputBox* tas_;
  InputBox* interceptAngle_;
  InputBox* interceptDistance_;
  QRadioButton* rUnit_[3];
  QLabel* radiusCaption_;
  // The results in the order of their names dataR0 to dataR5.
  enum Result { kBank, kRate, kRadius, kAnticipation, kFinalDistance, kGLoad, kResults };
  std::array<QLabel*, kResults> results_{};
};

}  // namespace norvane
