#pragma once
// frmData9 "Radial intersection": where the great circles leaving two points on given tracks meet,
// on the sphere.

#include "navigation/NavigationScreen.hpp"

namespace norvane {

class IntersectionScreen : public NavigationScreen {
  Q_OBJECT
 public:
  explicit IntersectionScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  void addInputs();
  void buildPoints();
  QGroupBox* buildTracks();
  QGroupBox* buildResults();

  Coordinate lat1_, lon1_, lat2_, lon2_;
  InputBox* track1_;
  InputBox* var1_;
  InputBox* track2_;
  InputBox* var2_;
  QLabel* latitude_;
  QLabel* longitude_;
};

}  // namespace norvane
