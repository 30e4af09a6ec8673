#pragma once
// frmData14 "Racetrack calculator": headings and outbound time of a holding pattern in wind, and
// the ground track of one circuit to scale.

#include <array>

#include "app/CalculatorScreen.hpp"
#include "manoeuvres/Racetrack.hpp"

class QGridLayout;
class QGroupBox;
class QRadioButton;
class QVBoxLayout;

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
  QGridLayout* buildInputs();
  // The turn, bank and rate choices under `left`, each kept while the program runs.
  void buildOptions(QVBoxLayout* left);
  QGroupBox* buildResults();
  void setTabOrders();

  std::array<QRadioButton*, 2> optTurn_{};
  std::array<QRadioButton*, 4> optBank_{};
  std::array<QRadioButton*, 2> optRate_{};
  std::array<QLabel*, kRacetrackResults> dataR_{};
  RacetrackPicture* picture_ = nullptr;
};

}  // namespace norvane
