#include "manoeuvres/RateTurnScreen.hpp"

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>

#include "manoeuvres/Turn.hpp"

namespace norvane {

QGroupBox* RateTurnScreen::makeMaxBankGroup(int checked) {
  const auto [frame, group] = makeOptionGroup(tr("Max bank (ul=unlimited)"), "FrameMaxBank", "Optbankinput",
                                              {tr("20°"), tr("25°"), tr("30°"), tr("ul")}, optBank_);
  optBank_[3]->setToolTip(tr("Unlimited: the bank that the turn rate needs"));
  optBank_[checked]->setChecked(true);
  connect(group, &QButtonGroup::idClicked, this, &RateTurnScreen::recalculateIfShown);
  return frame;
}

QGroupBox* RateTurnScreen::makeRateGroup(int checked) {
  const auto [frame, group] = makeOptionGroup(tr("Turn rate (deg/s)"), "FrameIFRTR", "OptTRinput",
                                              {tr("1.5 (1/2 std)"), tr("3 (std)")}, optRate_);
  optRate_[checked]->setChecked(true);
  connect(group, &QButtonGroup::idClicked, this, &RateTurnScreen::recalculateIfShown);
  return frame;
}

std::optional<double> RateTurnScreen::maxBank() const { return kMaxBankChoices[optBank_[0]->group()->checkedId()]; }

double RateTurnScreen::rate() const { return kTurnRateChoices[optRate_[0]->group()->checkedId()]; }

}  // namespace norvane
