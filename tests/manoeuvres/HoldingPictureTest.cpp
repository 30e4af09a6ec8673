// The holding picture drawn where a pilot expects it: pixels sampled at known bearings.
#include "manoeuvres/HoldingPicture.hpp"

#include <QDir>
#include <QImage>
#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

using namespace norvane;

namespace {

constexpr double kDegToRadTest = 3.14159265358979 / 180;

struct Rendered {
  QImage image;
  double radius;
  QPointF centre;
};

Rendered Render(HoldingPicture& w, const char* shotName) {
  w.resize(320, 320);
  const QImage img = w.grab().toImage().convertToFormat(QImage::Format_RGB32);
  if (const char* dir = std::getenv("NORVANE_SHOT_DIR")) img.save(QDir(dir).filePath(shotName));
  const double margin = QFontMetricsF(w.font()).height() + 6;
  return {img, std::min(img.width(), img.height()) / 2.0 - margin, QPointF(img.width() / 2.0, img.height() / 2.0)};
}

QColor Sample(const Rendered& r, double bearing, double fraction) {
  const double b = bearing * kDegToRadTest;
  const QPointF p = r.centre + QPointF(std::sin(b), -std::cos(b)) * (r.radius * fraction);
  return r.image.pixelColor(p.toPoint());
}

bool IsInk(const QColor& c) { return c.red() < 110 && c.green() < 110 && c.blue() < 110; }

}  // namespace

TEST(HoldingPicture, SectorsRacetrackAndTrackWhereExpected) {
  struct Row {
    bool right;
    int track;
    double teardropBearing, parallelBearing, directBearing;  // positions inside each wedge
  };
  // Outbound 180: the inbound leg runs north into the fix and lies south of it.
  const Row rows[] = {
      {true, 150, 325, 55, 250},   // teardrop positions 290..360, parallel 000..110, direct 110..290
      {false, 200, 35, 305, 110},  // teardrop 000..070, parallel 250..360, direct 070..250
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.right ? "right-hand" : "left-hand");
    HoldingPicture w;
    const EntrySectors l = ComputeEntrySectors(180, row.right);
    w.setPattern(180, row.right, l);
    w.setTrack(row.track, MarkEntrySector(row.track, l));
    const Rendered r = Render(w, row.right ? "holding-right.png" : "holding-left.png");

    const QColor teardrop = Sample(r, row.teardropBearing, 0.45);
    const QColor parallel = Sample(r, row.parallelBearing, 0.45);
    const QColor direct = Sample(r, row.directBearing, 0.45);
    EXPECT_GT(teardrop.red(), teardrop.blue() + 60) << teardrop.name().toStdString();   // orange, marked
    EXPECT_GT(parallel.blue(), parallel.red() + 20) << parallel.name().toStdString();   // blue
    EXPECT_GT(direct.green(), direct.red() + 15) << direct.name().toStdString();        // green
    EXPECT_GT(direct.green(), direct.blue() + 15) << direct.name().toStdString();
    // The marked sector is shaded more strongly than the others.
    EXPECT_LT(teardrop.lightness(), parallel.lightness());

    // The outbound leg lies east of the inbound leg for right turns, west for left turns:
    // scan across the pattern a third of the way down the legs.
    const double y = r.centre.y() + r.radius * 0.25;
    int inkEast = 0, inkWest = 0;
    for (int dx = 12; dx < r.radius * 0.45; ++dx) {
      inkEast += IsInk(r.image.pixelColor(int(r.centre.x() + dx), int(y)));
      inkWest += IsInk(r.image.pixelColor(int(r.centre.x() - dx), int(y)));
    }
    EXPECT_GT(row.right ? inkEast : inkWest, 0);
    EXPECT_EQ(row.right ? inkWest : inkEast, 0);

    // The track arrow comes from the reciprocal bearing.
    const QColor arrow = Sample(r, row.track + 180, 0.55);
    EXPECT_GT(arrow.red(), 150);
    EXPECT_LT(arrow.green(), 80);
  }
}

TEST(HoldingPicture, NoPatternWithoutOutboundCourse) {
  HoldingPicture w;
  w.setPattern(std::nullopt, true, {});
  w.setTrack(std::nullopt, {});
  const Rendered r = Render(w, "holding-empty.png");
  // No shading anywhere inside the ring away from the hint text.
  for (int b = 0; b < 360; b += 45) {
    const QColor c = Sample(r, b, 0.8);
    EXPECT_LT(std::abs(c.red() - c.green()) + std::abs(c.green() - c.blue()), 12) << b;
  }
}
