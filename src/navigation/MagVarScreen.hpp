#pragma once
// frmData10 "Magnetic variation": the declination at a point, altitude and date from WMM2005 or
// IGRF-10.

#include "navigation/NavigationScreen.hpp"

class QDateEdit;
class QLabel;

namespace norvane {

class MagVarScreen : public NavigationScreen {
  Q_OBJECT
 public:
  explicit MagVarScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  // The window title names the model in use (MakeTitle).
  void makeTitle();
  bool useWMM() const;

  Coordinate lat_, lon_;
  InputBox* altitude_;
  QDateEdit* dtPicker_;
  QRadioButton* optModel_[2];
  QLabel* lblMV_;
};

}  // namespace norvane
