#pragma once
// frmData12 "Unit conversions": a value between units of one quantity, and an angle between
// decimal degrees, degrees-minutes and degrees-minutes-seconds. Both work live: every valid edit
// and every change of unit or format converts at once; there is no Calculate button.

#include <array>
#include <utility>

#include "app/CalculatorScreen.hpp"
#include "tools/UnitConversion.hpp"

class QComboBox;
class QListWidget;

namespace norvane {

class UnitConversionScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit UnitConversionScreen(QWidget* parent = nullptr);
  void prepareScreenshot() override;

  // Converts InBox0 between the chosen units and writes DataR (emptied while the box is invalid).
  void ConvertUnits();
  // Converts the degree boxes and writes LabelDC1 / LabelDC2 (emptied while a shown box is invalid).
  void ConvertDegrees();

 protected:
  void boxEdited(int index) override;

 private:
  QGroupBox* buildTypeList();
  QGroupBox* buildConverter();
  QGroupBox* buildDegrees();
  void setTabChain();
  void unitTypeChosen(int type);
  void degreeFormatChosen(DegreeFormat format);
  DegreeFormat degreeFormat() const;
  // One box of the degrees converter with its caption.
  struct DegreeInput {
    InputBox* box = nullptr;
    QLabel* caption = nullptr;
  };
  std::array<std::pair<DegreePart, DegreeInput*>, 3> degreeInputs();

  InputBox* value_;
  DegreeInput degrees_, minutes_, seconds_;
  QListWidget* listUT_;
  QGroupBox* frameUC_;
  QComboBox* fCmb_;
  QComboBox* tCmb_;
  QLabel* converted_;
  QRadioButton* optDin_[3];
  QLabel* dcCaption_[2];
  QLabel* labelDC1_;
  QLabel* labelDC2_;
};

}  // namespace norvane
