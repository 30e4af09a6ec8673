#pragma once
// What the turn and racetrack screens share: their turns are rate turns limited by a maximum
// bank, chosen in the option groups "Max bank (ul=unlimited)" and "Turn rate (deg/s)".

#include <optional>

#include "app/CalculatorScreen.hpp"

namespace norvane {

class RateTurnScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  using CalculatorScreen::CalculatorScreen;

 protected:
  // The option groups with choice `checked` at first; a change recalculates when results are shown.
  QGroupBox* makeMaxBankGroup(int checked);
  QGroupBox* makeRateGroup(int checked);
  std::optional<double> maxBank() const;  // degrees; nullopt: no limit
  double rate() const;                    // deg/s

  QRadioButton* optBank_[4] = {};
  QRadioButton* optRate_[2] = {};
};

}  // namespace norvane
