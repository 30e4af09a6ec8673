#include "navigation/TracksScreen.hpp"

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
namespace {
// Choices kept while the program runs: -1 until the screen was first used.
int gTrackChoice = -1;
int gDistChoice = 0;
}  // namespace

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
  optTRK_[0] = makeOption(tr("True"), "OptTRK0", tracks);
  optTRK_[1] = makeOption(tr("Magnetic"), "OptTRK1", tracks);
  tl->addWidget(optTRK_[0], 0, 0);
  tl->addWidget(optTRK_[1], 0, 1);
  tl->addWidget(makeModelLabel(tr("Track (magvar %1)"), tracks), 1, 0, 1, 2);
  options->addWidget(tracks);

  auto* dist = makeFrame(tr("Distance unit"), "FrameDist");
  auto* dl = new QHBoxLayout(dist);
  const QString unitNames[4] = {tr("NM"), tr("km"), tr("m"), tr("ft")};
  for (int i = 0; i < 4; ++i) {
    optDist_[i] = new QRadioButton(unitNames[i], dist);
    optDist_[i]->setObjectName(QStringLiteral("OptDist%1").arg(i));
    connect(optDist_[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (!on) return;
      gDistChoice = i;
      setDistanceUnit(DistanceUnit(i));
    });
    dl->addWidget(optDist_[i]);
  }
  options->addWidget(dist);
  contentLayout()->addLayout(options);

  auto* results = makeFrame(tr("Tracks and distance"), "FrameResults");
  auto* rl = new QGridLayout(results);
  const QString columns[3] = {tr("Dist"), tr("TRK ini"), tr("TRK fin")};
  const QString rows[3] = {tr("GC"), tr("RL"), tr("SPH")};
  const QString rowHelp[3] = {tr("Geodesic on the WGS-84 ellipsoid"), tr("Rhumb line"),
                              tr("Great circle on the sphere (1 minute of arc = 1 NM)")};
  for (int c = 0; c < 3; ++c) rl->addWidget(makeCaption(columns[c]), 0, c + 1, Qt::AlignHCenter);
  for (int r = 0; r < 3; ++r) {
    QLabel* caption = makeCaption(rows[r]);
    caption->setToolTip(rowHelp[r]);
    rl->addWidget(caption, r + 1, 0);
    for (int c = 0; c < 3; ++c) {
      dataR_[size_t(r * 3 + c)] = makeResult(QStringLiteral("DataR%1").arg(r * 3 + c), rowHelp[r]);
      rl->addWidget(dataR_[size_t(r * 3 + c)], r + 1, c + 1);
    }
  }
  contentLayout()->addWidget(results);

  const int track = gTrackChoice >= 0 ? gTrackChoice : (App().settings.AutoMV == 1 ? 1 : 0);
  optTRK_[track]->setChecked(true);
  optDist_[gDistChoice]->setChecked(true);
  for (int i = 0; i < 2; ++i)
    connect(optTRK_[i], &QRadioButton::toggled, this, [i](bool on) {
      if (on) gTrackChoice = i;
    });
}

DistanceUnit TracksScreen::unit() const {
  for (int i = 0; i < 4; ++i)
    if (optDist_[i]->isChecked()) return DistanceUnit(i);
  return DistanceUnit::Nm;
}

bool TracksScreen::calculate() {
  const MagSettings mag = magSettings();
  result_ = ComputeTracks(latO_.degrees(), lonO_.degrees(), latD_.degrees(), lonD_.degrees(),
                          optTRK_[1]->isChecked() ? &mag : nullptr);
  showResults();
  return true;
}

void TracksScreen::showResults() {
  const auto texts = TracksTexts(result_, unit());
  for (size_t i = 0; i < texts.size(); ++i) dataR_[i]->setText(LocaleText(texts[i]));
}

void TracksScreen::setDistanceUnit(DistanceUnit u) {
  optDist_[int(u)]->setChecked(true);
  if (calculated()) showResults();  // same results, new unit: nothing is recomputed
}

void TracksScreen::prepareScreenshot() {
  // London Heathrow to New York Kennedy.
  const char* texts[12] = {"51", "28", "39", "0", "27", "41", "40", "38", "23", "73", "46", "44"};
  for (int i = 0; i < 12; ++i) box(i)->setText(texts[i]);
  lonO_.opt[1]->setChecked(true);
  lonD_.opt[1]->setChecked(true);
  runCalculate();
}

}  // namespace norvane
