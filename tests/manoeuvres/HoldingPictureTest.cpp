// The holding picture drawn where a pilot expects it: pixels sampled at known bearings.
#include "manoeuvres/HoldingPicture.hpp"

#include <QDir>
#include <QImage>
#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "support/Golden.hpp"

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
  for (const test::GoldenRow& g : test::ReadGolden("manoeuvres/data/holding.txt", "picture")) {
    SCOPED_TRACE(g.where);
    const int outbound = std::stoi(g[0]), track = std::stoi(g[2]);
    const bool right = g[1] == "R";
    HoldingPicture w;
    const EntrySectors l = ComputeEntrySectors(outbound, right);
    const auto marks = MarkEntrySector(track, l);
    w.setPattern(outbound, right, l);
    w.setTrack(track, marks);
    const Rendered r = Render(w, g[3].c_str());

    // Each wedge holds the positions from which the sector's tracks lead to the fix, so its
    // middle lies at the reciprocal of the middle track. Direct is green, teardrop orange,
    // parallel blue; the marked one is shaded darker.
    QColor shade[3];
    for (int i = 0; i < 3; ++i) {
      const int width = (l[i + 3] - l[i] + 360) % 360;
      shade[i] = Sample(r, l[i] + 180 + width / 2.0, 0.45);
    }
    const QColor& direct = shade[0];
    const QColor& teardrop = shade[right ? 1 : 2];
    const QColor& parallel = shade[right ? 2 : 1];
    EXPECT_GT(direct.green(), direct.red() + 15) << direct.name().toStdString();
    EXPECT_GT(direct.green(), direct.blue() + 15) << direct.name().toStdString();
    EXPECT_GT(teardrop.red(), teardrop.blue() + 40) << teardrop.name().toStdString();
    EXPECT_GT(parallel.blue(), parallel.red() + 20) << parallel.name().toStdString();
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j)
        if (marks[i] && !marks[j]) {
          EXPECT_LT(shade[i].lightness(), shade[j].lightness()) << i << " " << j;
        }

    // The racetrack lies on the turn side of the inbound leg (right of the inbound track for
    // right-hand patterns): scan across the legs a third of the way out from the fix.
    const double o = outbound * kDegToRadTest;
    const QPointF u(std::sin(o), -std::cos(o));
    const QPointF rightward(u.y(), -u.x());  // right of the inbound track, which points along -u
    const QPointF s = right ? rightward : -rightward;
    int inkHolding = 0, inkOther = 0;
    for (int k = 12; k < r.radius * 0.45; ++k) {
      const QPointF base = r.centre + u * (r.radius * 0.25);
      inkHolding += IsInk(r.image.pixelColor((base + s * k).toPoint()));
      inkOther += IsInk(r.image.pixelColor((base - s * k).toPoint()));
    }
    EXPECT_GT(inkHolding, 0);
    EXPECT_EQ(inkOther, 0);

    // The track arrow comes from the reciprocal bearing.
    const QColor arrow = Sample(r, track + 180, 0.55);
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
