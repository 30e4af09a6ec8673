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

ChangeoverScreen::ChangeoverScreen(QWidget* parent)
    : CalculatorScreen(2, "frmData2", tr("Changeover level"), parent) {
  setHelpText(tr("Altitude and FL at which IAS and Mach number match (switch from IAS to Mach during climb and "
                 "Mach to IAS during descent)"));

  BoxRule iasRule{KeyMode::UnsignedReal, kChangeoverIasRange.min, kChangeoverIasRange.max};
  iasRule.maxLength = 7;
  BoxRule machRule{KeyMode::UnsignedReal, kChangeoverMachRange.min, kChangeoverMachRange.max};
  machRule.maxLength = 6;
  InputBox* ias = addBox(iasRule, tr("Indicated air speed (50 to 1500 kts)"));
  InputBox* mach = addBox(machRule, tr("Mach number (0.05 to 3.00)"));
  for (InputBox* b : {ias, mach}) b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000000") + 16);

  auto* row = new QHBoxLayout;
  auto* inputs = new QGridLayout;
  QLabel* iasCaption = makeCaption(tr("IAS (kts)"), "lbldata0");
  iasCaption->setBuddy(ias);
  QLabel* machCaption = makeCaption(tr("Mach number"), "lbldata1");
  machCaption->setBuddy(mach);
  inputs->addWidget(iasCaption, 0, 0);
  inputs->addWidget(ias, 0, 1);
  inputs->addWidget(machCaption, 1, 0);
  inputs->addWidget(mach, 1, 1);
  inputs->setRowStretch(2, 1);
  row->addLayout(inputs);
  row->addSpacing(8);

  auto* frame = makeFrame(tr("Changeover altitude/level"), "FrameResults");
  auto* fl = new QGridLayout(frame);
  dataR_[0] = makeResult("dataR0", tr("Pressure altitude of the changeover (ft)"));
  dataR_[1] = makeResult("dataR1", tr("Flight level of the changeover"));
  fl->addWidget(makeCaption(tr("Pressure Altitude (ft)"), "lbldata2"), 0, 0);
  fl->addWidget(dataR_[0], 0, 1);
  fl->addWidget(makeCaption(tr("Flight level"), "lbldata3"), 1, 0);
  fl->addWidget(dataR_[1], 1, 1);
  row->addWidget(frame, 1);
  contentLayout()->addLayout(row);

  setTabOrder(ias, mach);
  setTabOrder(mach, calculateButton());
  setTabOrder(calculateButton(), closeButton());

  ias->setText(QStringLiteral("300"));
  mach->setText(LocaleText("0.78"));
}

bool ChangeoverScreen::calculate() {
  const ChangeoverResult r = ComputeChangeover(box(0)->value(), box(1)->value());
  dataR_[0]->setText(LocaleText(r.altitude.text));
  dataR_[1]->setText(LocaleText(r.flightLevel.text));
  showError(Q(r.error));
  return true;
}

}  // namespace norvane
