#pragma once
// frmData5 "Wind calculations": the wind triangle for a known wind, the wind from heading and
// ground speed, and the runway crosswind and head/tail wind.

#include <array>

#include "app/CalculatorScreen.hpp"

namespace norvane {

class WindScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  enum Mode { kKnownWind, kUnknownWind, kRunwayWind };

  explicit WindScreen(QWidget* parent = nullptr);

  Mode mode() const;
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  // Applies the mode's captions, quantities, tool tips and visibility, and empties the boxes.
  void setMode(int mode);

  QRadioButton* optknown_[3];
  // The four rows of boxes (InBox0 to InBox3) and results (dataR1 to dataR4) with their
  // captions: what each holds is the mode's (the first box is always the TAS).
  std::array<InputBox*, 4> inputs_{};
  std::array<QLabel*, 4> inputCaptions_{};
  std::array<QLabel*, 4> results_{};
  std::array<QLabel*, 4> resultCaptions_{};
};

}  // namespace norvane
