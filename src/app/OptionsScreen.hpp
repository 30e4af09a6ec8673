#pragma once
// frmData19 "Options and default": edits the settings in memory; nothing is written to the file
// until the program ends.

#include "app/CalculatorScreen.hpp"

class QCheckBox;
class QComboBox;
class QScrollBar;

namespace norvane {

enum class MagModel;

class OptionsScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit OptionsScreen(QWidget* parent = nullptr);
  void save();

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  QGroupBox* buildProgramOptions();
  QGroupBox* buildMagVar();
  QGroupBox* buildLtOffset();
  QGroupBox* buildDatabase();
  QHBoxLayout* buildButtons();
  void loadSettings();
  void setDatabase();
  // The active database's name, or failureText and the reason of the refusal.
  void showDatabase(const QString& failureText);
  void showLtOffset(int v);
  // Fills "Magvar year" with the model's years.
  void showModelYears(MagModel model);

  QCheckBox* checkSynchro_;
  QCheckBox* checkRemindPos_;
  QCheckBox* checkAutoUpdate_;
  QRadioButton* optMetricUS_[2];
  QRadioButton* optColours_[2];  // day, night
  QRadioButton* defMVOpt_[4];
  QComboBox* mvCombo_;
  QCheckBox* checkAutoMV_;
  QScrollBar* ltOff_;
  QLabel* ltOffsetLbl_;
  QLabel* lblDBName_;
  QLabel* lblDBReason_;
};

}  // namespace norvane
