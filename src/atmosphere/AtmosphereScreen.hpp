#pragma once
// frmData0 "Atmosphere data": the standard (or a shifted) atmosphere at one altitude.

#include <array>

#include "app/CalculatorScreen.hpp"

class QCheckBox;
class QScrollBar;

namespace norvane {

class AtmosphereScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit AtmosphereScreen(QWidget* parent = nullptr);

 protected:
  bool calculate() override;

 private:
  void buildAltitude();
  void buildNonStandard();
  void buildOutputOptions();
  void buildResults();
  void setTabOrders();
  void load();
  void connectSignals();
  bool feet() const;
  bool geopotential() const;
  bool us() const;
  // The altitude's quantity (range and tool tip) and caption for the chosen unit and kind.
  void setAltMinMax();
  // Captions and the sea-level pressure scroll range for the output units.
  void setUnitCaptions();
  void altitudeOptionChanged();
  void nsaChanged();
  void updateScrollLabels();

  InputBox* altitude_ = nullptr;
  QLabel* altCaption_ = nullptr;
  std::array<QRadioButton*, 2> optAlt_{};
  std::array<QRadioButton*, 2> optAltUnits_{};
  std::array<QRadioButton*, 2> optUnits_{};
  QCheckBox* checkNSA_ = nullptr;
  QCheckBox* checkEDisplay_ = nullptr;
  QScrollBar* disaScroll_ = nullptr;
  QScrollBar* mslpScroll_ = nullptr;
  QLabel* disaData_ = nullptr;
  QLabel* mslpData_ = nullptr;
  QLabel* disaCaption_ = nullptr;
  QLabel* mslpCaption_ = nullptr;
  // The four quantities, their captions following the output units, and the three ratios.
  QLabel *temperatureCaption_ = nullptr, *pressureCaption_ = nullptr, *densityCaption_ = nullptr,
         *soundCaption_ = nullptr;
  QLabel *temperature_ = nullptr, *pressure_ = nullptr, *density_ = nullptr, *sound_ = nullptr;
  QLabel *theta_ = nullptr, *delta_ = nullptr, *sigma_ = nullptr;
  bool resetting_ = false;
};

}  // namespace norvane
