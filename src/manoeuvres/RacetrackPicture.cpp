#include "manoeuvres/RacetrackPicture.hpp"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "app/Angles.hpp"
#include "app/UiHelpers.hpp"
#include "manoeuvres/HoldingPicture.hpp"

namespace norvane {
namespace {

// Unit vector of a compass bearing in widget coordinates (x east, y down = south).
QPointF Dir(double bearing) {
  const double b = bearing * kDegToRad;
  return {std::sin(b), -std::cos(b)};
}

// 1, 2 or 5 times a power of ten, no longer than `maxNm`.
double ScaleStep(double maxNm) {
  const double decade = std::pow(10.0, std::floor(std::log10(maxNm)));
  for (double m : {5.0, 2.0, 1.0})
    if (m * decade <= maxNm) return m * decade;
  return decade;
}

}  // namespace

RacetrackPicture::RacetrackPicture(QWidget* parent) : QWidget(parent) {
  setObjectName("PictBox");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void RacetrackPicture::setTrack(std::vector<RacetrackPoint> track, double course, double windDirection,
                                double windSpeed) {
  track_ = std::move(track);
  course_ = course;
  windDirection_ = windDirection;
  windSpeed_ = windSpeed;
  update();
}

void RacetrackPicture::clear() {
  track_.clear();
  update();
}

void RacetrackPicture::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const ColourScheme& colours = Colours();
  const QColor& ink = colours.ink;
  p.fillRect(rect(), colours.paper);
  p.setPen(colours.frame);
  p.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  const QFontMetricsF fm(font());
  const double margin = fm.height() * 1.5 + 8;

  if (track_.empty()) {
    p.setPen(colours.quietLabel);
    p.drawText(QRectF(rect()).adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
               tr("Calculate to draw the ground track of one circuit"));
    return;
  }

  // Ground positions north up, east right, in NM; then fitted into the widget.
  const QPointF u = Dir(course_), s = Dir(course_ + 90);
  std::vector<QPointF> pts;
  pts.reserve(track_.size());
  for (const RacetrackPoint& q : track_) pts.push_back(u * q.along + s * q.across);
  double x0 = 0, x1 = 0, y0 = 0, y1 = 0;
  for (const QPointF& q : pts) {
    x0 = std::min(x0, q.x()), x1 = std::max(x1, q.x());
    y0 = std::min(y0, q.y()), y1 = std::max(y1, q.y());
  }
  const double span = std::max({x1 - x0, y1 - y0, 1e-6});
  const double scale = std::min(width() - 2 * margin, height() - 2 * margin) / span;  // px per NM
  const QPointF centre((x0 + x1) / 2, (y0 + y1) / 2);
  const QPointF mid(width() / 2.0, height() / 2.0);
  const auto px = [&](QPointF nm) { return mid + (nm - centre) * scale; };
  const QPointF fix = px({0, 0});

  // The inbound course line through the fix, across the whole picture.
  const double reach = std::hypot(width(), height());
  p.setPen(QPen(colours.course, 1.0, Qt::DashLine));
  p.drawLine(fix - u * reach, fix + u * reach);

  QPainterPath path;
  path.moveTo(px(pts.front()));
  for (size_t i = 1; i < pts.size(); ++i) path.lineTo(px(pts[i]));
  p.setPen(QPen(ink, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(Qt::NoBrush);
  p.drawPath(path);
  // Arrows halfway along the outbound and the inbound leg (the last two and the closing segment).
  const size_t n = pts.size();
  const auto legArrow = [&](QPointF a, QPointF b) {
    const QPointF d = b - a;
    const double len = std::hypot(d.x(), d.y());
    if (len > 0) Arrowhead(p, px((a + b) / 2) + d / len * 5.0, d / len, 10, ink);
  };
  legArrow(pts[n - 2], pts[n - 1]);
  for (size_t i = 1; i + 1 < n; ++i)
    if (std::hypot(pts[i + 1].x() - pts[i].x(), pts[i + 1].y() - pts[i].y()) * scale > 20) {
      legArrow(pts[i], pts[i + 1]);  // the outbound leg: the one long straight step before the roll-out
      break;
    }

  FixSymbol(p, fix, ink);

  // North mark, top left; wind arrow (blowing towards) top right; scale bar bottom left.
  p.setPen(ink);
  QFont bold = font();
  bold.setBold(true);
  p.setFont(bold);
  const QPointF north(margin / 2 + 4, margin / 2 + 4);
  p.drawLine(north + QPointF(0, fm.height()), north);
  Arrowhead(p, north, {0, -1}, 8, ink);
  p.drawText(north + QPointF(6, fm.ascent()), QStringLiteral("N"));
  p.setFont(font());
  if (windSpeed_ > 0) {
    const QPointF d = Dir(windDirection_ + 180);
    const QPointF c(width() - margin, margin);
    const double len = fm.height() * 1.6;
    p.setPen(QPen(colours.wind, 2.0, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(c - d * (len / 2), c + d * (len / 2 - 6));
    Arrowhead(p, c + d * (len / 2), d, 10, colours.wind);
    p.setPen(colours.wind);
    const long from = std::lround(windDirection_) % 360;
    const QString label = QString::asprintf("%03ld/%ld", from == 0 ? 360 : from, std::lround(windSpeed_));  // "360/25"
    const double w = fm.horizontalAdvance(label);
    p.drawText(QPointF(std::min(c.x() - w / 2, width() - w - 4), c.y() + len / 2 + fm.ascent() + 2), label);
  }
  const double step = ScaleStep((width() - 2 * margin) / 3 / scale);
  const QPointF a(margin / 2 + 4, height() - margin / 2), b = a + QPointF(step * scale, 0);
  p.setPen(QPen(ink, 1.2));
  p.drawLine(a, b);
  p.drawLine(a + QPointF(0, -4), a + QPointF(0, 4));
  p.drawLine(b + QPointF(0, -4), b + QPointF(0, 4));
  p.drawText(QPointF(b.x() + 6, a.y() + fm.ascent() / 2 - 1), QString::number(step) + tr(" NM"));
}

}  // namespace norvane
