#include "navigation/IntersectionScreen.hpp"

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

namespace norvane {
IntersectionScreen::IntersectionScreen(QWidget* parent)
    : NavigationScreen(9, "frmData9", tr("Radial intersection"), parent) {
  addInputs();
  buildPoints();

  auto* bottom = new QHBoxLayout;
  bottom->addWidget(buildTracks());
  bottom->addWidget(buildResults(), 1);
  contentLayout()->addLayout(bottom);
}

// Each point, its track and its magnetic variation, in the box table's order.
void IntersectionScreen::addInputs() {
  lat1_ = addCoordinate(tr("1st Lat"), tr("1st point"), false, true, "OptLato");
  lon1_ = addCoordinate(tr("1st Long"), tr("1st point"), true, true, "OptLngo");
  track1_ = addBox(kTrackFromFirstPoint);
  var1_ = addBox(kVariationAtFirstPoint);
  lat2_ = addCoordinate(tr("2nd Lat"), tr("2nd point"), false, true, "OptLatd");
  lon2_ = addCoordinate(tr("2nd Long"), tr("2nd point"), true, true, "OptLngd");
  track2_ = addBox(kTrackFromSecondPoint);
  var2_ = addBox(kVariationAtSecondPoint);
  bindVariation(var1_, lat1_, lon1_);
  bindVariation(var2_, lat2_, lon2_);
  for (InputBox* b : {track1_, var1_, track2_, var2_}) {
    b->setFixedWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 14);
    b->setAlignment(Qt::AlignRight);
    defaults_.emplace_back(b, QString());
  }
}

// One row per point: latitude, longitude, track and variation, database import.
void IntersectionScreen::buildPoints() {
  auto* grid = new QGridLayout;
  const auto trackFrame = [this](const QString& caption, InputBox* trackBox, InputBox* varBox) {
    auto* f = makeFrame(caption);
    auto* l = new QGridLayout(f);
    QLabel* t = makeCaption(tr("Track (\u00b0)"));
    t->setBuddy(trackBox);
    QLabel* v = makeCaption(tr("Var (\u00b0)"));
    v->setBuddy(varBox);
    v->setToolTip(varBox->toolTip());
    l->addWidget(t, 0, 0, Qt::AlignBottom);
    l->addWidget(v, 0, 1, Qt::AlignBottom);
    l->addWidget(trackBox, 1, 0);
    l->addWidget(varBox, 1, 1);
    return f;
  };
  grid->addWidget(lat1_.frame, 0, 0);
  grid->addWidget(lon1_.frame, 0, 1);
  grid->addWidget(trackFrame(tr("1st Track"), track1_, var1_), 0, 2);
  grid->addWidget(makeImportButton("cmdImportInitial", &lat1_, &lon1_), 0, 3, Qt::AlignVCenter);
  grid->addWidget(lat2_.frame, 1, 0);
  grid->addWidget(lon2_.frame, 1, 1);
  grid->addWidget(trackFrame(tr("2nd Track"), track2_, var2_), 1, 2);
  grid->addWidget(makeImportButton("cmdImportFinal", &lat2_, &lon2_), 1, 3, Qt::AlignVCenter);
  contentLayout()->addLayout(grid);
}

QGroupBox* IntersectionScreen::buildTracks() {
  auto* tracks = makeFrame(tr("Tracks"), "FrameTracks");
  auto* tl = new QVBoxLayout(tracks);
  makeTrackOptions(tracks);
  tl->addWidget(optTRK_[0]);
  tl->addWidget(optTRK_[1]);
  tl->addWidget(makeModelLabel(tr("Magvar %1"), tracks));
  return tracks;
}

QGroupBox* IntersectionScreen::buildResults() {
  auto* results = makeFrame(tr("Intersection coordinates"), "FrameResults");
  std::tie(latitude_, longitude_) = addLatLonResults(new QGridLayout(results), QStringLiteral("Not calculable"));
  return results;
}

bool IntersectionScreen::calculate() {
  const double lat1 = lat1_.degrees(), lon1 = lon1_.degrees(), lat2 = lat2_.degrees(), lon2 = lon2_.degrees();
  double t1 = track1_->value(), t2 = track2_->value();
  if (t1 == 360) t1 = 0;
  if (t2 == 360) t2 = 0;
  if (magneticTracks()) {
    const MagSettings mag = magSettings();
    const auto variation = [&](InputBox* box, double lat, double lon) {
      if (!box->isEmpty()) return box->value();
      const double v = ShownVariation(lat, lon, mag);
      writeVariation(box, v);
      return v;
    };
    t1 = MagneticToTrue(t1, variation(var1_, lat1, lon1));
    t2 = MagneticToTrue(t2, variation(var2_, lat2, lon2));
  }
  const GeoPoint p = RadialIntersection(lat1, lon1, t1, lat2, lon2, t2);
  latitude_->setText(LocaleText(IntersectionText(p.lat, false)));
  longitude_->setText(LocaleText(IntersectionText(p.lon, true)));
  return true;
}

void IntersectionScreen::prepareScreenshot() {
  // E. Williams' formulary example: REO on 051, BKE on 137.
  lat1_.set("42", "36", "0", false);
  lon1_.set("117", "51", "57.6", true);
  track1_->setText("51");
  lat2_.set("44", "50", "24", false);
  lon2_.set("117", "48", "21.6", true);
  track2_->setText("137");
  runCalculate();
}

}  // namespace norvane
