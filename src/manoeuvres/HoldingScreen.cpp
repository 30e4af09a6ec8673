#include "manoeuvres/HoldingScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/Angles.hpp"
#include "app/UiHelpers.hpp"
#include "manoeuvres/Holding.hpp"
#include "manoeuvres/HoldingPicture.hpp"

namespace norvane {

HoldingScreen::HoldingScreen(QWidget* parent)
    : CalculatorScreen(15, "frmData15", tr("Holding entry calculator"), parent) {
  setLive(true);
  auto* left = new QVBoxLayout;
  left->addLayout(buildInputs());
  QGroupBox* frameTurn =
      makeOptionGroup(tr("Holding pattern"), "FrameHDTurn", "HDTurn", {tr("Right-hand"), tr("Left-hand")}, hdTurn_)
          .frame;
  static_cast<QBoxLayout*>(frameTurn->layout())->addStretch();
  left->addWidget(frameTurn);
  left->addWidget(buildLimits());
  left->addStretch();

  picture_ = new HoldingPicture(this);
  picture_->setToolTip(
      tr("North up. Shaded: where an aircraft comes from for each entry; arrow: the track to the "
         "fix"));
  auto* top = new QHBoxLayout;
  top->addLayout(left);
  top->addWidget(picture_, 1);
  contentLayout()->addLayout(top);

  setTabSequence({outbound_, track_, hdTurn_[0], hdTurn_[1], closeButton()});

  // Standard (right-hand) patterns at first.
  hdTurn_[0]->setChecked(true);
  connect(hdTurn_[0]->group(), &QButtonGroup::idClicked, this, &HoldingScreen::hdTurnClick);
  hdTurnClick(0);
}

QGridLayout* HoldingScreen::buildInputs() {
  outbound_ = addBox(kHoldingOutbound);
  track_ = addBox(kHoldingTrack);
  // The captions say what the tool tips say: "Holding outbound course (0 to 360°)".
  auto* inputs = new QGridLayout;
  InputBox* const boxes[] = {outbound_, track_};
  for (int row = 0; row < 2; ++row) {
    InputBox* b = boxes[row];
    QLabel* caption = makeCaption(b->toolTip(), QStringLiteral("lbldata%1").arg(row));
    caption->setBuddy(b);
    b->setFixedWidth(b->fontMetrics().horizontalAdvance("00000") + 16);
    inputs->addWidget(caption, row, 0);
    inputs->addWidget(b, row, 1);
  }
  return inputs;
}

QGroupBox* HoldingScreen::buildLimits() {
  // One row per entry: its colour in the picture, its name and its sector's limits.
  auto* frameLimits = makeFrame(tr("Entry sector inbound course"), "FrameLimits");
  frameLimits->setToolTip(tr("Tracks to the fix, clockwise from the first to the second limit, both included"));
  auto* ll = new QGridLayout(frameLimits);
  const int swatchSize = fontMetrics().height() * 2 / 3;
  for (int i = 0; i < 3; ++i) {
    swatch_[i] = new QLabel(frameLimits);
    swatch_[i]->setObjectName(QStringLiteral("lblswatch%1").arg(i));
    swatch_[i]->setFixedSize(swatchSize, swatchSize);
    rowName_[i] = makeCaption(QString(), QStringLiteral("lbldata%1").arg(i + 2));
    lbllimit_[i] = new QLabel(frameLimits);
    lbllimit_[i]->setObjectName(QStringLiteral("lbllimit%1").arg(i));
    lbllimit_[i]->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lbllimit_[i]->setAlignment(Qt::AlignCenter);
    lbllimit_[i]->setMinimumWidth(lbllimit_[i]->fontMetrics().horizontalAdvance("000 -> 000") + 24);
    lbllimit_[i]->setMinimumHeight(lbllimit_[i]->fontMetrics().height() + 8);
    lbllimit_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ll->addWidget(swatch_[i], i, 0);
    ll->addWidget(rowName_[i], i, 1);
    ll->addWidget(lbllimit_[i], i, 2);
  }
  ll->setColumnStretch(1, 1);
  return frameLimits;
}

void HoldingScreen::hdTurnClick(int index) {
  const auto names = EntryRowNames(index == 0);
  for (int i = 0; i < 3; ++i) rowName_[i]->setText(tr(names[i].c_str()));
  refresh();
}

void HoldingScreen::boxEdited(int /*index*/) { refresh(); }

void HoldingScreen::ResetEntryMarks() {
  for (int i = 0; i < 3; ++i) {
    QFont f = rowName_[i]->font();
    f.setBold(false);
    rowName_[i]->setFont(f);
    rowName_[i]->setPalette(QPalette());
    lbllimit_[i]->setPalette(QPalette());
    lbllimit_[i]->setAutoFillBackground(false);
  }
}

void HoldingScreen::refresh() {
  const bool right = hdTurn_[0]->isChecked();
  ResetEntryMarks();
  // The row colours follow the picture's sectors, which swap with the turn direction.
  picture_->setPattern(std::nullopt, right, {});
  for (int i = 0; i < 3; ++i) SetBackground(swatch_[i], picture_->sectorColor(i));

  if (!outbound_->isValid()) {
    for (QLabel* l : lbllimit_) l->clear();
    picture_->setTrack(std::nullopt, {});
    return;
  }
  const int outbound = static_cast<int>(Norm360(outbound_->value()));
  const EntrySectors limits = ComputeEntrySectors(outbound, right);
  for (int i = 0; i < 3; ++i) lbllimit_[i]->setText(Q(EntryLimitsText(limits, i)));
  picture_->setPattern(outbound, right, limits);

  if (!track_->isValid()) {
    picture_->setTrack(std::nullopt, {});
    return;
  }
  const int track = static_cast<int>(track_->value());
  const auto marks = MarkEntrySector(track, limits);
  for (int i = 0; i < 3; ++i) {
    if (!marks[i]) continue;
    QFont f = rowName_[i]->font();
    f.setBold(true);
    rowName_[i]->setFont(f);
    SetTextColor(rowName_[i], Colours().invalidText);
    SetBackground(lbllimit_[i], Colours().marked);
  }
  picture_->setTrack(track, marks);
}

void HoldingScreen::prepareScreenshot() {
  outbound_->setText("180");
  track_->setText("150");
}

}  // namespace norvane
