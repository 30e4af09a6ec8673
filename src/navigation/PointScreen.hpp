#pragma once
// frmData8 "Point from track-distance": the point reached from an origin along a true or magnetic
// track for a distance, on the sphere or the WGS-84 spheroid.

#include "navigation/NavigationScreen.hpp"

namespace norvane {

class PointScreen : public NavigationScreen {
  Q_OBJECT
 public:
  explicit PointScreen(QWidget* parent = nullptr);
  // Switches the distance box's range and help text to the unit (SetDistDisplay).
  void setDistDisplay(DistanceUnit unit);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  void addInputs();
  void buildOptions();
  void buildResults();
  void loadOptions();
  DistanceUnit unit() const;

  Coordinate lat_, lon_;
  InputBox* track_;
  InputBox* distance_;
  InputBox* variation_;
  QRadioButton* optDist_[4];
  QRadioButton* optModel_[2];
  QLabel* latitude_;
  QLabel* longitude_;
};

}  // namespace norvane
