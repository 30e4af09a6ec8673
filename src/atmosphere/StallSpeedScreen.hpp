#pragma once
// frmData13 "Stall speed calculation": stall speed at a weight, altitude and bank angle from
// aerodynamic data (CL max, wing area) or from a reference stall speed at MTOW.

#include <array>

#include "app/CalculatorScreen.hpp"

class QScrollBar;

namespace norvane {

class StallSpeedScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit StallSpeedScreen(QWidget* parent = nullptr);

  // The boxes' numbers in their object names (InBox<n>).
  enum Box { kClMax = 0, kWingArea = 1, kMtow = 2, kVs = 3, kWeight = 4, kAltitude = 5 };

 protected:
  bool calculate() override;

 private:
  void buildInputs();
  QGroupBox* buildReference();
  QGroupBox* buildConditions();
  QVBoxLayout* buildResults();
  void setTabOrders();
  void load();
  void connectSignals();
  bool us() const;
  bool fromVs() const;
  // Shows the boxes of the chosen reference data; the hidden ones do not block Calculate.
  void setReference();
  void setUnits();
  void refreshValidity();

  std::array<QRadioButton*, 2> optRef_{};
  std::array<QRadioButton*, 2> optUnits_{};
  InputBox *clMax_ = nullptr, *wingArea_ = nullptr, *mtow_ = nullptr, *vs_ = nullptr, *weight_ = nullptr,
           *altitude_ = nullptr;
  QLabel *clMaxCaption_ = nullptr, *wingAreaCaption_ = nullptr, *mtowCaption_ = nullptr, *vsCaption_ = nullptr,
         *weightCaption_ = nullptr, *altitudeCaption_ = nullptr;
  QScrollBar* baScroll_ = nullptr;
  QLabel* baData_ = nullptr;
  QLabel *ktas_ = nullptr, *kcas_ = nullptr;
};

}  // namespace norvane
