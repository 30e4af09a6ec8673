#pragma once
// frmData14 "Racetrack calculator": headings and outbound time of a holding pattern in wind, and
// the ground track of one circuit to scale.

#include <array>

#include "manoeuvres/Racetrack.hpp"
#include "manoeuvres/RateTurnScreen.hpp"

namespace norvane {

class RacetrackPicture;

class RacetrackScreen : public RateTurnScreen {
  Q_OBJECT
 public:
  explicit RacetrackScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;
  void clearData() override;

 private:
  QGridLayout* buildInputs();
  // A box for `q` in the next row of `grid`, under `caption`, holding `text` at first.
  InputBox* addInput(QGridLayout* grid, const QString& caption, const Quantity& q, const char* text);
  // The turn direction, bank and rate choices under `left`.
  void buildOptions(QVBoxLayout* left);
  QGroupBox* buildResults();
  void setTabOrders();

  InputBox* course_ = nullptr;
  InputBox* tas_ = nullptr;
  InputBox* windDirection_ = nullptr;
  InputBox* windSpeed_ = nullptr;
  InputBox* leg_ = nullptr;
  std::array<QRadioButton*, 2> optTurn_{};
  std::array<QLabel*, kRacetrackResults> results_{};  // by RacetrackResultIndex
  RacetrackPicture* picture_ = nullptr;
};

}  // namespace norvane
