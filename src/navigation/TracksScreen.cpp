#include "navigation/TracksScreen.hpp"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

TracksScreen::TracksScreen(QWidget* parent) : NavigationScreen(7, "frmData7", tr("Tracks and distance"), parent) {
  latO_ = addCoordinate(tr("Initial Lat"), tr("Origin"), false, true, "OptLato");
  lonO_ = addCoordinate(tr("Initial Long"), tr("Origin"), true, true, "OptLngo");
  latD_ = addCoordinate(tr("Final Lat"), tr("Destination"), false, true, "OptLatd");
  lonD_ = addCoordinate(tr("Final Long"), tr("Destination"), true, true, "OptLngd");

  auto* points = new QGridLayout;
  points->addWidget(latO_.frame, 0, 0);
  points->addWidget(lonO_.frame, 0, 1);
  points->addWidget(makeImportButton("cmdImportInitial", &latO_, &lonO_), 0, 2, Qt::AlignVCenter);
  points->addWidget(latD_.frame, 1, 0);
  points->addWidget(lonD_.frame, 1, 1);
  points->addWidget(makeImportButton("cmdImportFinal", &latD_, &lonD_), 1, 2, Qt::AlignVCenter);
  contentLayout()->addLayout(points);

  auto* options = new QHBoxLayout;
  auto* tracks = makeFrame(tr("Tracks"), "FrameTracks");
  auto* tl = new QGridLayout(tracks);
  makeTrackOptions(tracks);
  tl->addWidget(optTRK_[0], 0, 0);
  tl->addWidget(optTRK_[1], 0, 1);
  tl->addWidget(makeModelLabel(tr("Track (magvar %1)"), tracks), 1, 0, 1, 2);
  options->addWidget(tracks);

  const OptionGroup dist =
      makeOptionGroup(tr("Distance unit"), "FrameDist", "OptDist", {tr("NM"), tr("km"), tr("m"), tr("ft")}, optDist_);
  optDist_[int(DistanceUnit::Nm)]->setChecked(true);
  connect(dist.group, &QButtonGroup::idToggled, this, [this](int i, bool on) {
    if (on) setDistanceUnit(DistanceUnit(i));
  });
  options->addWidget(dist.frame);
  contentLayout()->addLayout(options);

  auto* results = makeFrame(tr("Tracks and distance"), "FrameResults");
  auto* rl = new QGridLayout(results);
  addResultTable(rl, {tr("Dist"), tr("TRK ini"), tr("TRK fin")}, {tr("GC"), tr("RL"), tr("SPH")}, "DataR",
                 table_.data(),
                 {tr("Geodesic on the WGS-84 ellipsoid"), tr("Rhumb line"),
                  tr("Great circle on the sphere (1 minute of arc = 1 NM)")});
  contentLayout()->addWidget(results);
}

DistanceUnit TracksScreen::unit() const {
  for (int i = 0; i < 4; ++i)
    if (optDist_[i]->isChecked()) return DistanceUnit(i);
  return DistanceUnit::Nm;
}

bool TracksScreen::calculate() {
  const MagSettings mag = magSettings();
  result_ = ComputeTracks(latO_.degrees(), lonO_.degrees(), latD_.degrees(), lonD_.degrees(),
                          magneticTracks() ? &mag : nullptr);
  showResults();
  return true;
}

void TracksScreen::showResults() {
  const auto texts = TracksTexts(result_, unit());
  for (size_t i = 0; i < texts.size(); ++i) table_[i]->setText(LocaleText(texts[i]));
}

void TracksScreen::setDistanceUnit(DistanceUnit u) {
  optDist_[int(u)]->setChecked(true);
  if (calculated()) showResults();  // same results, new unit: nothing is recomputed
}

void TracksScreen::prepareScreenshot() {
  // London Heathrow to New York Kennedy.
  latO_.set("51", "28", "39", false);
  lonO_.set("0", "27", "41", true);
  latD_.set("40", "38", "23", false);
  lonD_.set("73", "46", "44", true);
  runCalculate();
}

}  // namespace norvane
