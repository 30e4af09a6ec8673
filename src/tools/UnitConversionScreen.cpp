#include "tools/UnitConversionScreen.hpp"

#include <algorithm>

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/UiHelpers.hpp"

namespace norvane {

UnitConversionScreen::UnitConversionScreen(QWidget* parent)
    : CalculatorScreen(12, "frmData12", tr("Unit conversions"), parent) {
  setLive(true);
  value_ = addBox(kConvertValue);
  for (auto [part, input] : degreeInputs()) input->box = addBox(DegreeBoxFor(DegreeFormat::D, part).quantity);

  auto* columns = new QHBoxLayout;
  columns->addWidget(buildTypeList());
  auto* right = new QVBoxLayout;
  right->addWidget(buildConverter());
  right->addWidget(buildDegrees());
  right->addStretch();
  columns->addLayout(right, 1);
  contentLayout()->addLayout(columns);

  connect(listUT_, &QListWidget::currentRowChanged, this, &UnitConversionScreen::unitTypeChosen);
  connect(fCmb_, &QComboBox::currentIndexChanged, this, &UnitConversionScreen::ConvertUnits);
  connect(tCmb_, &QComboBox::currentIndexChanged, this, &UnitConversionScreen::ConvertUnits);

  setTabChain();

  // Load: the first unit type and the "D" input format.
  listUT_->setCurrentRow(0);
  optDin_[0]->setChecked(true);
  degreeFormatChosen(DegreeFormat::D);
}

std::array<std::pair<DegreePart, UnitConversionScreen::DegreeInput*>, 3> UnitConversionScreen::degreeInputs() {
  return {{{DegreePart::Degrees, &degrees_}, {DegreePart::Minutes, &minutes_}, {DegreePart::Seconds, &seconds_}}};
}

// The unit types, all twelve in view.
QGroupBox* UnitConversionScreen::buildTypeList() {
  QGroupBox* frameUT = makeFrame(tr("Unit type selector"), "FrameUT");
  auto* utl = new QVBoxLayout(frameUT);
  listUT_ = new QListWidget(frameUT);
  listUT_->setObjectName("ListUT");
  for (const UnitType& t : UnitTable()) listUT_->addItem(Q(t.name));
  listUT_->setSelectionMode(QAbstractItemView::SingleSelection);
  // Tall enough for all twelve types without a scroll bar.
  listUT_->setFixedHeight(listUT_->sizeHintForRow(0) * listUT_->count() + 2 * listUT_->frameWidth() + 4);
  int widest = 0;
  for (const UnitType& t : UnitTable()) widest = std::max(widest, listUT_->fontMetrics().horizontalAdvance(Q(t.name)));
  listUT_->setFixedWidth(widest + 2 * listUT_->frameWidth() + 24);
  utl->addWidget(listUT_);
  utl->addStretch();
  return frameUT;
}

// Value, From and To units, and the converted value.
QGroupBox* UnitConversionScreen::buildConverter() {
  frameUC_ = makeFrame(QString(), "FrameUC");
  auto* ucl = new QGridLayout(frameUC_);
  ucl->addWidget(makeCaption(tr("Value"), "lblValue"), 0, 0);
  ucl->addWidget(value_, 0, 1, 1, 3);
  fCmb_ = new QComboBox(frameUC_);
  fCmb_->setObjectName("FCmb");
  tCmb_ = new QComboBox(frameUC_);
  tCmb_->setObjectName("TCmb");
  for (QComboBox* c : {fCmb_, tCmb_}) c->setMinimumContentsLength(8);
  ucl->addWidget(makeCaption(tr("From"), "lblFrom"), 1, 0);
  ucl->addWidget(fCmb_, 1, 1);
  ucl->addWidget(makeCaption(tr("To"), "lblTo"), 1, 2);
  ucl->addWidget(tCmb_, 1, 3);
  converted_ = makeResult("DataR", tr("Converted value"));
  ucl->addWidget(makeCaption(tr("Result"), "lblResult"), 2, 0);
  ucl->addWidget(converted_, 2, 1, 1, 3);
  return frameUC_;
}

// The degrees converter: the input format, its three boxes and the two other formats.
QGroupBox* UnitConversionScreen::buildDegrees() {
  QGroupBox* frameDeg = makeFrame(tr("Degrees converter"), "FrameDeg");
  auto* dgl = new QGridLayout(frameDeg);
  auto* dinGroup = new QButtonGroup(frameDeg);
  auto* dinRow = new QHBoxLayout;
  const char* formats[] = {"D", "D-M", "D-M-S"};
  for (int i = 0; i < 3; ++i) {
    optDin_[i] = new QRadioButton(tr(formats[i]), frameDeg);
    optDin_[i]->setObjectName(QStringLiteral("OptDin%1").arg(i));
    dinGroup->addButton(optDin_[i], i);
    dinRow->addWidget(optDin_[i]);
  }
  dinRow->addStretch();
  dgl->addLayout(dinRow, 0, 0, 1, 2);
  int row = 1;
  for (auto [part, input] : degreeInputs()) {
    input->caption = makeCaption(QString(), QStringLiteral("lblDeg%1").arg(row));
    // Room for the longest caption of every format, so switching does not resize the window.
    input->caption->setMinimumWidth(
        input->caption->fontMetrics().horizontalAdvance(QString::fromStdString(ToolTipText(kDecimalDegrees))) + 4);
    dgl->addWidget(input->caption, row, 0);
    dgl->addWidget(input->box, row++, 1);
  }
  labelDC1_ = makeResult("LabelDC1");
  labelDC2_ = makeResult("LabelDC2");
  for (QLabel* l : {labelDC1_, labelDC2_})
    l->setMinimumWidth(l->fontMetrics().horizontalAdvance(QStringLiteral("180 59 59.9999 ")) + 16);
  for (int i = 0; i < 2; ++i) {
    dcCaption_[i] = makeCaption(QString(), QStringLiteral("lblDC%1").arg(i + 1));
    dgl->addWidget(dcCaption_[i], 4 + i, 0);
  }
  dgl->addWidget(labelDC1_, 4, 1);
  dgl->addWidget(labelDC2_, 5, 1);
  connect(dinGroup, &QButtonGroup::idClicked, this,
          [this](int id) { degreeFormatChosen(static_cast<DegreeFormat>(id)); });
  return frameDeg;
}

void UnitConversionScreen::setTabChain() {
  setTabSequence({listUT_, value_, fCmb_, tCmb_, optDin_[0], degrees_.box, minutes_.box, seconds_.box, closeButton()});
}

DegreeFormat UnitConversionScreen::degreeFormat() const {
  for (int i = 0; i < 3; ++i)
    if (optDin_[i]->isChecked()) return static_cast<DegreeFormat>(i);
  return DegreeFormat::D;
}

void UnitConversionScreen::unitTypeChosen(int type) {
  if (type < 0 || type >= static_cast<int>(UnitTable().size())) return;
  const UnitType& t = UnitTable()[type];
  frameUC_->setTitle(Q(t.name));
  for (QComboBox* c : {fCmb_, tCmb_}) {
    const QSignalBlocker block(c);
    c->clear();
    for (const UnitDef& u : t.units) c->addItem(Q(u.name));
  }
  // From the first unit to the second: a conversion that shows something for any value.
  fCmb_->setCurrentIndex(0);
  tCmb_->setCurrentIndex(1);
  value_->clear();  // invalid until a value is typed: the result stays empty
  converted_->clear();
}

void UnitConversionScreen::ConvertUnits() {
  if (!value_->isValid() || value_->isEmpty() || fCmb_->currentIndex() < 0 || tCmb_->currentIndex() < 0) {
    converted_->clear();
    return;
  }
  const double result =
      norvane::ConvertUnits(listUT_->currentRow(), fCmb_->currentIndex(), tCmb_->currentIndex(), value_->value());
  converted_->setText(LocaleText(FormatConversionResult(result)));
}

void UnitConversionScreen::degreeFormatChosen(DegreeFormat format) {
  for (auto [part, input] : degreeInputs()) {
    const DegreeBox d = DegreeBoxFor(format, part);
    input->caption->setText(QString::fromStdString(ToolTipText(d.quantity)));
    input->caption->setVisible(d.shown);
    input->box->setVisible(d.shown);
    input->box->setQuantity(d.quantity);  // re-validates the text under the new check
  }
  // The two result forms are the ones that are not the input format.
  static const char* const kForms[] = {"In D", "In D-M", "In D-M-S"};
  const int input = static_cast<int>(format);
  dcCaption_[0]->setText(tr(kForms[input == 0 ? 1 : 0]));
  dcCaption_[1]->setText(tr(kForms[input == 2 ? 1 : 2]));
  ConvertDegrees();
}

// Live: the Calculate flags play no part; only the boxes the format shows count here.
void UnitConversionScreen::ConvertDegrees() {
  const DegreeFormat format = degreeFormat();
  bool valid = !degrees_.box->isEmpty();
  for (auto [part, input] : degreeInputs())
    if (DegreeBoxFor(format, part).shown && !input->box->isValid()) valid = false;
  if (!valid) {
    labelDC1_->clear();
    labelDC2_->clear();
    return;
  }
  const auto optional = [](const InputBox* b) {
    return b->isEmpty() ? std::nullopt : std::optional<double>(b->value());
  };
  const double total = DegreesTotal(format, degrees_.box->value(), optional(minutes_.box), optional(seconds_.box));
  const DegreeTexts t = norvane::ConvertDegrees(format, total);
  labelDC1_->setText(LocaleText(t.first));
  labelDC2_->setText(LocaleText(t.second));
}

void UnitConversionScreen::boxEdited(int index) {
  if (box(index) == value_)
    ConvertUnits();
  else
    ConvertDegrees();
}

void UnitConversionScreen::prepareScreenshot() {
  listUT_->setCurrentRow(9);  // Speed
  value_->setText(QStringLiteral("100"));
  optDin_[2]->setChecked(true);
  degreeFormatChosen(DegreeFormat::DMS);
  degrees_.box->setText(QStringLiteral("45"));
  minutes_.box->setText(QStringLiteral("30"));
  seconds_.box->setText(LocaleText("15.5"));
}

}  // namespace norvane
