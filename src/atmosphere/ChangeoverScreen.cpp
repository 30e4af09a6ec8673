#include "atmosphere/ChangeoverScreen.hpp"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "atmosphere/AtmosphereCalculations.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

ChangeoverScreen::ChangeoverScreen(QWidget* parent) : CalculatorScreen(2, "frmData2", tr("Changeover level"), parent) {
  setHelpText(
      tr("Altitude and FL at which IAS and Mach number match (switch from IAS to Mach during climb and "
         "Mach to IAS during descent)"));

  ias_ = addBox(kChangeoverIas, QStringLiteral("300"));
  mach_ = addBox(kChangeoverMach, LocaleText("0.78"));
  for (InputBox* b : {ias_, mach_}) b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);

  auto* row = new QHBoxLayout;
  auto* inputs = new QGridLayout;
  addBoxRow(inputs, 0, tr("IAS (kts)"), "lbldata0", ias_);
  addBoxRow(inputs, 1, tr("Mach number"), "lbldata1", mach_);
  inputs->setRowStretch(2, 1);
  row->addLayout(inputs);
  row->addSpacing(8);

  auto* frame = makeFrame(tr("Changeover altitude/level"), "FrameResults");
  auto* fl = new QGridLayout(frame);
  altitude_ = makeResult("dataR0", tr("Pressure altitude of the changeover (ft)"));
  flightLevel_ = makeResult("dataR1", tr("Flight level of the changeover"));
  fl->addWidget(makeCaption(tr("Pressure Altitude (ft)"), "lbldata2"), 0, 0);
  fl->addWidget(altitude_, 0, 1);
  fl->addWidget(makeCaption(tr("Flight level"), "lbldata3"), 1, 0);
  fl->addWidget(flightLevel_, 1, 1);
  row->addWidget(frame, 1);
  contentLayout()->addLayout(row);

  setTabSequence({ias_, mach_, calculateButton(), closeButton()});
}

bool ChangeoverScreen::calculate() {
  const ChangeoverResult r = ComputeChangeover(ias_->value(), mach_->value());
  // Without a changeover level both results read "NA" beside the error text.
  altitude_->setText(LocaleText(r.altitude.text));
  flightLevel_->setText(LocaleText(r.flightLevel.text));
  if (!r.error.empty()) {
    showError(Q(r.error));
    return false;
  }
  return true;
}

}  // namespace norvane
