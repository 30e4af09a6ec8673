#pragma once
// frmData7 "Tracks and distance": distance and initial and final tracks between two points by the
// WGS-84 geodesic (GC), the rhumb line (RL) and the sphere (SPH), true or magnetic.

#include <array>

#include "navigation/NavigationScreen.hpp"

namespace norvane {

class TracksScreen : public NavigationScreen {
  Q_OBJECT
 public:
  explicit TracksScreen(QWidget* parent = nullptr);
  // Shows the distances in the unit of OptDist without recomputing (SetDistanceUnit).
  void setDistanceUnit(DistanceUnit unit);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  void showResults();
  DistanceUnit unit() const;

  Coordinate latO_, lonO_, latD_, lonD_;
  QRadioButton* optDist_[4];
  // The result table in the order of TracksTexts: distance, initial and final track of the GC,
  // RL and SPH rows.
  std::array<QLabel*, 9> table_{};
  TracksResult result_;
};

}  // namespace norvane
