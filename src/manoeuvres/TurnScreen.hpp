#pragma once
// frmData6 "Turn parameters": bank, rate, radius and load factor of a rate turn limited by a
// maximum bank, and the turn anticipation for intercepting a radial.

#include "app/CalculatorScreen.hpp"

class QGroupBox;
class QRadioButton;
class QVBoxLayout;

namespace norvane {

class TurnScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit TurnScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void boxEdited(int index) override;

 private:
  void buildInputs();
  QVBoxLayout* buildOptions();
  QVBoxLayout* buildResults();
  QGroupBox* buildAnticipation();
  // Checks the kept options and connects their changes.
  void connectOptions();
  void rUnitClick(int index);

  QRadioButton* optBank_[4];
  QRadioButton* optRate_[2];
  QRadioButton* rUnit_[3];
  QLabel* radiusCaption_;
  QLabel* dataR_[6];
};

}  // namespace norvane
