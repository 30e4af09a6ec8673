#pragma once
// frmData10 "Magnetic variation": the declination at a point, altitude and date from WMM2005,
// IGRF-10, WMM2025 or IGRF-14.

#include "navigation/NavigationScreen.hpp"

class QDateEdit;

namespace norvane {

class MagVarScreen : public NavigationScreen {
  Q_OBJECT
 public:
  explicit MagVarScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

 protected:
  bool calculate() override;

 private:
  void addInputs();
  void buildPositionRow();
  QGroupBox* buildDate();
  QGroupBox* buildModels();
  void loadModel();
  // The window title names the model in use (MakeTitle).
  void makeTitle();
  MagModel model() const;
  // "lblNotice": says when the date lies outside the chosen model's years.
  void showNotice();

  Coordinate lat_, lon_;
  InputBox* altitude_;
  QDateEdit* dtPicker_;
  QRadioButton* optModel_[kMagModelCount];
  QLabel* lblMV_;
  QLabel* lblNotice_;
};

}  // namespace norvane
