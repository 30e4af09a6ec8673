#pragma once
// frmData11 "Sunrise and sunset": sunrise, sunset and dawn / dusk of a chosen twilight kind for one
// place and date, in UTC or local time. After a first successful calculation, a change of
// hemisphere, date, time system, offset or twilight kind recomputes at once.

#include <optional>
#include "app/CalculatorScreen.hpp"

class QComboBox;
class QDateEdit;
class QScrollBar;

namespace norvane {

class SunScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit SunScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

  // Empties the four results and the error label and clears the Calculated flag.
  void ClearResetData() { clearData(); }

 protected:
  bool calculate() override;
  void boxEdited(int index) override;

 private:
  void buildPosition();
  void buildDateAndTime();
  void buildResults();
  void connectSignals();
  void setTabChain();
  void optionChanged();
  void timeSystemChanged();
  void ltOffsetChanged(int value);
  // The offset of the chosen time zone on the chosen date, while "Zone" is the time system.
  std::optional<int> zoneOffsetMinutes() const;
  void zoneChanged();
  void importPosition();

  InputBox* latDeg_;
  InputBox* latMin_;
  InputBox* lonDeg_;
  InputBox* lonMin_;
  QRadioButton* optLat_[2];
  QRadioButton* optLng_[2];
  QDateEdit* dtPicker_;
  QRadioButton* ttOpt_[3];
  QComboBox* tzCombo_;
  QLabel* tzOffsetLbl_;
  QScrollBar* ltOff_;
  QLabel* ltOffsetLbl_;
  QComboBox* twCombo_;
  QGroupBox* frameResults_;
  QGroupBox* frameTwilight_;
  QLabel* sunrise_;
  QLabel* sunset_;
  QLabel* dawn_;
  QLabel* dusk_;
  // The last result follows option changes: not so after "Permanent day/night".
  bool followsOptions_ = false;
  QPushButton* cmdImportInitial_;
  QLabel* importedName_ = nullptr;
};

}  // namespace norvane
