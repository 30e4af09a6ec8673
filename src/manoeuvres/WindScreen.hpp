#pragma once
// frmData5 "Wind calculations": the wind triangle for a known wind, the wind from heading and
// ground speed, and the runway crosswind and head/tail wind.

#include "app/CalculatorScreen.hpp"

class QRadioButton;

namespace norvane {

class WindScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit WindScreen(QWidget* parent = nullptr);

  int mode() const;
  // Applies the captions, tool tips, maximum lengths, ranges and visibility of the current mode.
  void SetDisplayOptions();
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  void optknownClick(int index);

  QRadioButton* optknown_[3];
  QLabel* lbldata_[8];
  QLabel* dataR_[5] = {};  // dataR1..dataR4 (index 0 unused)
};

}  // namespace norvane
