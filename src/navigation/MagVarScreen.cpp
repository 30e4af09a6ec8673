#include "navigation/MagVarScreen.hpp"

#include <QDate>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/Angles.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"
#include "app/Units.hpp"

namespace norvane {
namespace {
// The models of the options OptModel0..3.
constexpr MagModel kOptionModels[kMagModelCount] = {MagModel::WMM2005, MagModel::IGRF10, MagModel::WMM2025,
                                                    MagModel::IGRF14};
}  // namespace

MagVarScreen::MagVarScreen(QWidget* parent) : NavigationScreen(10, "frmData10", tr("Magnetic variation"), parent) {
  setHelpText(
      tr("Magnetic variation calculated from IGRF-10 and WMM2005 magnetic models for 2005-2010, "
         "WMM2025 and IGRF-14 for 2025-2030 (WGS 84 geodetic latitude, longitude and altitude)"));
  addInputs();
  buildPositionRow();

  auto* middle = new QHBoxLayout;
  middle->addWidget(buildDate());
  middle->addWidget(buildModels());

  auto* resultFrame = makeFrame(tr("Magnetic variation"), "FrameResults");
  auto* rl = new QVBoxLayout(resultFrame);
  lblMV_ = makeResult("lblMV", tr("East positive: E, west: W"));
  rl->addWidget(lblMV_);
  middle->addWidget(resultFrame, 1);
  contentLayout()->addLayout(middle);
  lblNotice_ = new QLabel(this);
  lblNotice_->setObjectName("lblNotice");
  lblNotice_->setWordWrap(true);
  contentLayout()->addWidget(lblNotice_);

  loadModel();
}

void MagVarScreen::addInputs() {
  lat_ = addCoordinate(tr("Latitude"), QString(), false, false, "OptLat");
  lon_ = addCoordinate(tr("Longitude"), QString(), true, false, "OptLng");
  altitude_ = addBox(kGeodeticAltitude, "0");
  altitude_->setFixedWidth(altitude_->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 14);
  altitude_->setAlignment(Qt::AlignRight);
  defaults_.emplace_back(altitude_, QStringLiteral("0"));
}

// Latitude, longitude and altitude side by side, with the database import.
void MagVarScreen::buildPositionRow() {
  auto* top = new QHBoxLayout;
  top->addWidget(lat_.frame);
  top->addWidget(lon_.frame);
  auto* altLayout = new QVBoxLayout;
  QLabel* altCaption = makeCaption(tr("Alt (ft)"));
  altCaption->setBuddy(altitude_);
  altLayout->addStretch();
  altLayout->addWidget(altCaption);
  altLayout->addWidget(altitude_);
  top->addLayout(altLayout);
  top->addWidget(makeImportButton("cmdImportInitial", &lat_, &lon_), 0, Qt::AlignVCenter);
  contentLayout()->addLayout(top);
}

QGroupBox* MagVarScreen::buildDate() {
  auto* dateFrame = makeFrame(tr("Date"), "FrameDate");
  auto* dl = new QVBoxLayout(dateFrame);
  dtPicker_ = new QDateEdit(QDate::currentDate(), dateFrame);
  dtPicker_->setObjectName("DTPicker");
  dtPicker_->setCalendarPopup(true);
  dtPicker_->setDateRange(QDate(1900, 1, 1), QDate(2100, 12, 31));
  dtPicker_->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
  dtPicker_->setToolTip(
      tr("Each model describes five years from its epoch (2005.0 or 2025.0); earlier dates "
         "use the epoch field, later ones extrapolate the secular variation"));
  dl->addWidget(dtPicker_);
  connect(dtPicker_, &QDateEdit::dateChanged, this, [this] {
    showNotice();
    recalculateIfShown();
  });
  return dateFrame;
}

QGroupBox* MagVarScreen::buildModels() {
  auto* modelFrame = makeFrame(tr("Model"), "FrameModel");
  auto* ml = new QGridLayout(modelFrame);
  for (int i = 0; i < kMagModelCount; ++i) {
    optModel_[i] =
        makeOption(QString::fromUtf8(MagModelName(kOptionModels[i])), QStringLiteral("OptModel%1").arg(i), modelFrame);
    ml->addWidget(optModel_[i], i / 2, i % 2);
  }
  return modelFrame;
}

// The default model of the settings, until the user chooses one while the program runs.
void MagVarScreen::loadModel() {
  int choice = 1;  // IGRF-10
  for (int i = 0; i < kMagModelCount; ++i)
    if (kOptionModels[i] == MagModel(App().settings.DefMVModel)) choice = i;
  optModel_[choice]->setChecked(true);
  followSetting(std::vector<QAbstractButton*>(optModel_, optModel_ + kMagModelCount));
  for (QRadioButton* b : optModel_)
    connect(b, &QRadioButton::toggled, this, [this](bool on) {
      if (!on) return;
      makeTitle();
      showNotice();
    });
  makeTitle();
  showNotice();
}

MagModel MagVarScreen::model() const {
  for (int i = 0; i < kMagModelCount; ++i)
    if (optModel_[i]->isChecked()) return kOptionModels[i];
  return MagModel::IGRF10;
}

void MagVarScreen::makeTitle() {
  setWindowTitle(tr("Magnetic variation - %1").arg(QString::fromUtf8(MagModelName(model()))));
}

void MagVarScreen::showNotice() {
  const QDate d = dtPicker_->date();
  lblNotice_->setText(QString::fromStdString(MagValidityNotice(model(), {d.year(), d.month(), d.day()})));
}

bool MagVarScreen::calculate() {
  const double lat = lat_.degrees() * kDegToRad;
  const double lon = lon_.degrees() * kDegToRad;
  const double altitudeKm = altitude_->value() * kFt / 1000;
  const QDate d = dtPicker_->date();
  const double variation = ComputeMagVar(lat, lon, altitudeKm, {d.year(), d.month(), d.day()}, model());
  lblMV_->setText(LocaleText(MagVarText(variation)));
  return true;
}

void MagVarScreen::prepareScreenshot() {
  lat_.set("51", "28", {}, false);
  lon_.set("0", "28", {}, true);
  dtPicker_->setDate(QDate(2007, 6, 1));
  runCalculate();
}

}  // namespace norvane
