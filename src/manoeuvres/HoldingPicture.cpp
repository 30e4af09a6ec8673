#include "manoeuvres/HoldingPicture.hpp"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "app/Angles.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

enum Entry { kDirect = 0, kTeardrop = 1, kParallel = 2 };

// Unit vector of a compass bearing in widget coordinates (x east, y down = south).
QPointF Dir(double bearing) {
  const double b = bearing * kDegToRad;
  return {std::sin(b), -std::cos(b)};
}

int Width(int lo, int hi) { return ((hi - lo) % 360 + 360) % 360; }

}  // namespace

void Arrowhead(QPainter& p, QPointF tip, QPointF dir, double size, const QColor& color) {
  const QPointF side(-dir.y(), dir.x());
  QPainterPath head;
  head.moveTo(tip);
  head.lineTo(tip - dir * size + side * size * 0.45);
  head.lineTo(tip - dir * size * 0.7);
  head.lineTo(tip - dir * size - side * size * 0.45);
  head.closeSubpath();
  p.fillPath(head, color);
}

void FixSymbol(QPainter& p, QPointF at, const QColor& color) {
  const double h = 6;
  QPainterPath fix;
  fix.moveTo(at + QPointF(0, -h));
  fix.lineTo(at + QPointF(h * 0.87, h * 0.5));
  fix.lineTo(at + QPointF(-h * 0.87, h * 0.5));
  fix.closeSubpath();
  p.fillPath(fix, color);
}

HoldingPicture::HoldingPicture(QWidget* parent) : QWidget(parent) {
  setObjectName("PictBox");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAutoFillBackground(false);
}

void HoldingPicture::setPattern(std::optional<int> outbound, bool rightHand, const EntrySectors& limits) {
  outbound_ = outbound;
  rightHand_ = rightHand;
  limits_ = limits;
  update();
}

void HoldingPicture::setTrack(std::optional<int> track, const std::array<bool, 3>& marks) {
  track_ = track;
  marks_ = marks;
  update();
}

QColor HoldingPicture::sectorColor(int row, bool text) const {
  const QColor* colours = text ? Colours().entryText : Colours().entry;
  if (row == 0) return colours[kDirect];
  const bool teardrop = (row == 1) == rightHand_;
  return colours[teardrop ? kTeardrop : kParallel];
}

void HoldingPicture::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  const ColourScheme& colours = Colours();
  const QColor& ink = colours.ink;
  p.fillRect(rect(), colours.paper);

  const QFontMetricsF fm(font());
  const double margin = fm.height() + 6;
  const double radius = std::max(20.0, std::min(width(), height()) / 2.0 - margin);
  const QPointF c(width() / 2.0, height() / 2.0);
  const auto at = [&](double bearing, double dist) { return c + Dir(bearing) * dist; };
  const auto textAt = [&](QPointF centre, const QString& text) {
    const QSizeF s = QFontMetricsF(p.font()).size(Qt::TextSingleLine, text);
    p.drawText(QRectF(centre.x() - s.width() / 2, centre.y() - s.height() / 2, s.width(), s.height()), Qt::AlignCenter,
               text);
  };

  // Entry sectors: an aircraft flying track t to the fix comes from bearing t + 180 of it.
  if (outbound_) {
    const QRectF disc(c.x() - radius, c.y() - radius, 2 * radius, 2 * radius);
    for (int i = 0; i < 3; ++i) {
      const double from = limits_[i] + 180.0;
      const int sweep = Width(limits_[i], limits_[i + 3]);
      QPainterPath wedge;
      wedge.moveTo(c);
      wedge.arcTo(disc, 90.0 - from, -sweep);  // Qt angles: counter-clockwise from east
      wedge.closeSubpath();
      QColor fill = sectorColor(i);
      fill.setAlpha(marks_[i] && track_ ? 140 : 50);
      p.fillPath(wedge, fill);
    }
  }

  // Compass ring, north up.
  p.setPen(QPen(colours.frame, 1.0));
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(c, radius, radius);
  for (int b = 0; b < 360; b += 10) {
    const double len = b % 30 == 0 ? 8 : 4;
    p.drawLine(at(b, radius), at(b, radius - len));
  }
  static const char* const kCardinal[4] = {"N", "E", "S", "W"};
  for (int k = 0; k < 4; ++k) {
    QFont f = font();
    f.setBold(k == 0);
    p.setFont(f);
    p.setPen(k == 0 ? ink : colours.quietLabel);
    textAt(at(k * 90, radius + margin / 2), kCardinal[k]);
  }
  p.setFont(font());

  if (!outbound_) {
    p.setPen(colours.quietLabel);
    p.drawText(QRectF(c.x() - radius, c.y() - radius, 2 * radius, 2 * radius), Qt::AlignCenter | Qt::TextWordWrap,
               tr("Type the holding outbound course"));
    return;
  }

  const int o = *outbound_;
  const double side = rightHand_ ? o - 90.0 : o + 90.0;    // the holding side of the inbound leg
  const double line70 = rightHand_ ? o - 70.0 : o + 70.0;  // the 70-degree ray on that side

  // Sector boundaries: the 70-degree line through the fix and the inbound course beyond it.
  p.setPen(QPen(ink, 1.6));
  p.drawLine(at(line70, radius), at(line70 + 180, radius));
  p.setPen(QPen(ink, 1.2, Qt::DashLine));
  p.drawLine(c, at(o + 180.0, radius));

  // The 70-degree angle between the inbound leg and the line, on the holding side.
  {
    const double r70 = radius * 0.26;
    const QRectF arcRect(c.x() - r70, c.y() - r70, 2 * r70, 2 * r70);
    p.setPen(QPen(colours.label, 1.0));
    p.drawArc(arcRect, qRound((90.0 - o) * 16), qRound((rightHand_ ? 70.0 : -70.0) * 16));
    p.setPen(colours.darkLabel);
    // Beside the line, clear of the outbound leg.
    textAt(at(rightHand_ ? o - 61.0 : o + 61.0, radius * 0.46), QStringLiteral("70°"));
  }

  // Racetrack: inbound leg along the outbound course from the fix, turns on the holding side.
  const QPointF u = Dir(o), s = Dir(side);
  const double leg = radius * 0.5, r = radius * 0.14;
  const QPointF far = c + u * leg;
  QPainterPath track;
  track.moveTo(c);
  constexpr int kSteps = 48;
  for (int k = 1; k <= kSteps; ++k) {  // turn beyond the fix onto the outbound leg
    const double t = kPi * k / kSteps;
    track.lineTo(c + s * r + (-std::cos(t) * s - std::sin(t) * u) * r);
  }
  track.lineTo(far + s * (2 * r));
  for (int k = 1; k <= kSteps; ++k) {  // turn at the far end onto the inbound leg
    const double t = kPi * k / kSteps;
    track.lineTo(far + s * r + (std::cos(t) * s + std::sin(t) * u) * r);
  }
  track.closeSubpath();
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(ink, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(track);
  Arrowhead(p, c + u * (leg * 0.45), -u, 9, ink);               // inbound, towards the fix
  Arrowhead(p, c + u * (leg * 0.55) + s * (2 * r), u, 9, ink);  // outbound

  // Sector names inside their wedges, moved aside when the track arrow runs through the middle.
  const auto names = EntryRowNames(rightHand_);
  for (int i = 0; i < 3; ++i) {
    const double from = limits_[i] + 180.0;
    const int sweep = Width(limits_[i], limits_[i + 3]);
    double best = from + sweep / 2.0;
    if (track_) {
      const auto clearance = [&](double b) { return std::fabs(std::remainder(b - (*track_ + 180.0), 360.0)); };
      const double room = sweep / 2.0 - 16;
      // The direct sector holds the racetrack: move its name away from the turn side only.
      const double awayFromTurns = rightHand_ ? 1 : -1;
      for (double off = 0; off <= room; off += 4)
        for (double sign : {-1.0, 1.0}) {
          if (i == 0 && sign != awayFromTurns) continue;
          const double cand = from + sweep / 2.0 + sign * off;
          if (clearance(cand) > clearance(best) + 1e-9 && clearance(best) < 24) best = cand;
        }
    }
    QFont f = font();
    f.setBold(marks_[i] && track_);
    p.setFont(f);
    p.setPen(sectorColor(i, true));
    textAt(at(best, radius * (i == 0 ? 0.8 : 0.66)), QString::fromStdString(names[i]));
  }
  p.setFont(font());

  FixSymbol(p, c, ink);

  // The typed track: from the ring towards the fix.
  if (track_) {
    const double x = *track_;
    const QPointF d = Dir(x);
    const QPointF tail = at(x + 180.0, radius * 0.96);
    const QPointF tip = c - d * 9.0;
    p.setPen(QPen(colours.track, 2.6, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(tail, tip - d * 8.0);
    Arrowhead(p, tip, d, 14, colours.track);
    p.setPen(colours.track);
    QFont f = font();
    f.setBold(true);
    p.setFont(f);
    const QString label = QString::asprintf("%03d°", *track_);
    const QPointF normal(-d.y(), d.x());
    textAt(at(x + 180.0, radius * 0.76) + normal * (fm.height() * 1.1), label);
    p.setFont(font());
  }
}

}  // namespace norvane
