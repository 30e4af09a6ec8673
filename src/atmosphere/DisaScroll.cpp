#include "atmosphere/DisaScroll.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/CalculatorScreen.hpp"
#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"

namespace norvane {

QScrollBar* AddDisaScroll(CalculatorScreen* screen, QVBoxLayout* column) {
  const ValueScroll disa =
      MakeValueScroll(screen, CalculatorScreen::tr("Delta ISA (°C)"), "DISA", static_cast<int>(kDisa.min),
                      static_cast<int>(kDisa.max), 10, "+000", Q(ToolTipText(kDisa)));
  auto* row = new QHBoxLayout;
  row->addWidget(disa.caption);
  row->addWidget(disa.bar, 1);
  row->addWidget(disa.value);
  column->addLayout(row);
  QObject::connect(disa.bar, &QScrollBar::valueChanged, screen, [screen, value = disa.value](int v) {
    value->setText(Q(SignedText(v)));
    screen->recalculateIfShown();
  });
  return disa.bar;
}

}  // namespace norvane
