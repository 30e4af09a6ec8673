#pragma once
// frmData15 "Holding entry calculator": live (no Calculate) entry sectors of a holding pattern,
// the entry that applies to the typed track, and the pattern drawn north up.

#include <array>

#include "app/CalculatorScreen.hpp"

namespace norvane {

class HoldingPicture;

class HoldingScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit HoldingScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  void boxEdited(int index) override;

 private:
  QGridLayout* buildInputs();
  QGroupBox* buildLimits();
  void hdTurnClick(int index);
  // Recomputes the limits, the marks and the picture from the boxes.
  void refresh();
  void ResetEntryMarks();

  InputBox* outbound_ = nullptr;
  InputBox* track_ = nullptr;
  QRadioButton* hdTurn_[2];
  QLabel* rowName_[3];  // lbldata2..4
  QLabel* lbllimit_[3];
  QLabel* swatch_[3];
  HoldingPicture* picture_;
};

}  // namespace norvane
