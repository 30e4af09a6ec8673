#pragma once
// frmData14 "Racetrack calculator": headings and outbound time of a holding pattern in wind, and
// the ground track of one circuit to scale.

#include <array>

#include "app/CalculatorScreen.hpp"
#include "manoeuvres/Racetrack.hpp"

class QRadioButton;

namespace norvane {

class RacetrackPicture;

class RacetrackScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit RacetrackScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void clearData() override;

 private:
  std::array<QRadioButton*, 2> optTurn_{};
  std::array<QRadioButton*, 4> optBank_{};
  std::array<QRadioButton*, 2> optRate_{};
  std::array<QLabel*, kRacetrackResults> dataR_{};
  RacetrackPicture* picture_ = nullptr;
};

}  // namespace norvane
