#include "navigation/PointScreen.hpp"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <tuple>

#include "app/AppContext.hpp"
#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"
#include "app/Units.hpp"

namespace norvane {

PointScreen::PointScreen(QWidget* parent) : NavigationScreen(8, "frmData8", tr("Point from track-distance"), parent) {
  setHelpText(
      tr("Calculation based on classical sphere (GC, 1\u00b0= 60 NM) or on spheroidal model (WGS-84). "
         "Leave blank magnetic variation field for automatic calculation "));
  addInputs();

  auto* points = new QHBoxLayout;
  points->addWidget(lat_.frame);
  points->addWidget(lon_.frame);
  points->addWidget(makeImportButton("cmdImportInitial", &lat_, &lon_), 0, Qt::AlignVCenter);
  contentLayout()->addLayout(points);

  buildOptions();

  auto* varRow = new QHBoxLayout;
  QLabel* varCaption = makeCaption(tr("Magnetic variation (\u00b0)"));
  varCaption->setBuddy(variation_);
  varRow->addWidget(varCaption);
  varRow->addWidget(variation_);
  varRow->addWidget(makeModelLabel(tr("(%1)"), this));
  varRow->addStretch();
  contentLayout()->addLayout(varRow);

  buildResults();
  loadOptions();
}

// The origin, then track, distance and magnetic variation, in the box table's order.
void PointScreen::addInputs() {
  lat_ = addCoordinate(tr("Start Lat"), tr("Origin"), false, true, "OptLato");
  lon_ = addCoordinate(tr("Start Long"), tr("Origin"), true, true, "OptLngo");

  track_ = addBox(kTrackFromOrigin);
  distance_ = addBox(PointDistance(DistanceUnit::Nm));
  variation_ = addBox(kMagneticVariation);
  bindVariation(variation_, lat_, lon_);
  for (InputBox* b : {track_, distance_, variation_}) {
    b->setFixedWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("00000000")) + 14);
    b->setAlignment(Qt::AlignRight);
    defaults_.emplace_back(b, QString());
  }
}

// Track (true or magnetic), distance with its unit, and the earth model.
void PointScreen::buildOptions() {
  auto* middle = new QHBoxLayout;
  auto* trackFrame = makeFrame(tr("Track"), "FrameTrack");
  auto* tl = new QGridLayout(trackFrame);
  tl->addWidget(track_, 0, 0, 2, 1, Qt::AlignVCenter);
  makeTrackOptions(trackFrame);
  tl->addWidget(optTRK_[0], 0, 1);
  tl->addWidget(optTRK_[1], 1, 1);
  middle->addWidget(trackFrame);

  auto* distFrame = makeFrame(tr("Distance"), "FrameDist");
  auto* dl = new QGridLayout(distFrame);
  dl->addWidget(distance_, 0, 0, 1, 4, Qt::AlignLeft);
  const QString unitNames[4] = {tr("NM"), tr("km"), tr("m"), tr("ft")};
  for (int i = 0; i < 4; ++i) {
    optDist_[i] = new QRadioButton(unitNames[i], distFrame);
    optDist_[i]->setObjectName(QStringLiteral("OptDist%1").arg(i));
    connect(optDist_[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) setDistDisplay(DistanceUnit(i));
    });
    dl->addWidget(optDist_[i], 1, i);
  }
  middle->addWidget(distFrame);

  auto* modelFrame = makeFrame(tr("Model"), "FrameModel");
  auto* ml = new QVBoxLayout(modelFrame);
  optModel_[0] = makeOption(tr("GC"), "Optmodel0", modelFrame);
  optModel_[1] = makeOption(tr("Spheroid"), "Optmodel1", modelFrame);
  optModel_[0]->setToolTip(tr("Great circle on the sphere, 1 minute of arc = 1 NM"));
  optModel_[1]->setToolTip(tr("Geodesic on the WGS-84 spheroid"));
  ml->addWidget(optModel_[0]);
  ml->addWidget(optModel_[1]);
  middle->addWidget(modelFrame);
  contentLayout()->addLayout(middle);
}

void PointScreen::buildResults() {
  auto* results = makeFrame(tr("Destination coordinates"), "FrameResults");
  std::tie(latitude_, longitude_) = addLatLonResults(new QGridLayout(results), QStringLiteral("W000 00 00.00"));
  contentLayout()->addWidget(results);
}

// The defaults (kept while the program runs by the screen's remembered inputs); a unit change
// converts the distance typed.
void PointScreen::loadOptions() {
  optModel_[1]->setChecked(true);  // Spheroid
  optDist_[int(DistanceUnit::Nm)]->setChecked(true);
  convertOnSwitch(
      {optDist_[0], optDist_[1], optDist_[2], optDist_[3]}, distance_,
      {{1, 0}, {1 / kKmPerNm, 0}, {1 / kNm, 0}, {kFt / kNm, 0}},
      [](int u) {
        const Quantity q = PointDistance(DistanceUnit(u));
        return std::pair{q.min, q.max};
      },
      1);
}

DistanceUnit PointScreen::unit() const {
  for (int i = 0; i < 4; ++i)
    if (optDist_[i]->isChecked()) return DistanceUnit(i);
  return DistanceUnit::Nm;
}

void PointScreen::setDistDisplay(DistanceUnit u) {
  optDist_[int(u)]->setChecked(true);
  distance_->setQuantity(PointDistance(u));  // the conversion follows, and validates the box again
}

bool PointScreen::calculate() {
  const bool magnetic = magneticTracks();
  const MagSettings mag = magSettings();
  const PointResult r = ComputePointFromTrack(
      lat_.degrees(), lon_.degrees(), track_->value(), UnitToNm(distance_->value(), unit()), optModel_[1]->isChecked(),
      magnetic ? &mag : nullptr, magnetic ? OptionalValue(variation_) : std::nullopt);
  if (r.variationComputed) writeVariation(variation_, *r.variation);
  latitude_->setText(LocaleText(FormatLatLong(r.point.lat, false)));
  longitude_->setText(LocaleText(FormatLatLong(r.point.lon, true)));
  return true;
}

void PointScreen::prepareScreenshot() {
  lat_.set("51", "28", "39", false);
  lon_.set("0", "27", "41", true);
  track_->setText("288");
  distance_->setText("3000");
  runCalculate();
}

}  // namespace norvane
