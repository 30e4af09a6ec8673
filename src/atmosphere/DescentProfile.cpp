#include "atmosphere/DescentProfile.hpp"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {
namespace {

// A round step (1, 2, 2.5 or 5 times a power of ten) giving about `count` intervals over `span`.
double RoundStep(double span, int count) {
  const double raw = span / count;
  const double decade = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double m : {1.0, 2.0, 2.5, 5.0})
    if (m * decade >= raw * 0.999) return m * decade;
  return 10 * decade;
}

}  // namespace

DescentProfile::DescentProfile(QWidget* parent) : QWidget(parent) {
  setObjectName("PictProfile");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void DescentProfile::setProfile(std::vector<DescentPoint> profile, std::optional<double> changeoverFt) {
  profile_ = std::move(profile);
  changeoverFt_ = changeoverFt;
  update();
}

void DescentProfile::clear() { setProfile({}, std::nullopt); }

void DescentProfile::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  const ColourScheme& colours = Colours();
  p.fillRect(rect(), colours.paper);
  p.setPen(colours.frame);
  p.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  if (!hasProfile()) {
    p.setPen(colours.label);
    p.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, tr("Calculate to draw the descent profile"));
    return;
  }

  // Round axes around the descent: whole steps of altitude and of distance from the top.
  const double top = profile_.front().altitudeFt, bottom = profile_.back().altitudeFt;
  const double length = profile_.back().distanceNm;
  const double ftStep = RoundStep(std::max(top - bottom, 400.0), 4);
  const double nmStep = RoundStep(std::max(length, 0.5), 6);
  const double ftLo = std::floor(bottom / ftStep) * ftStep, ftHi = std::ceil(top / ftStep) * ftStep;
  const double nmHi = std::max(nmStep, std::ceil(length / nmStep) * nmStep);

  const QFontMetricsF fm(font());
  const auto label = [&](double v, const char* mask) { return LocaleText(FormatMask(v, mask)); };
  const double labelWidth = std::max(fm.horizontalAdvance(label(ftHi, "0")), fm.horizontalAdvance(label(ftLo, "0")));
  const QRectF plot(labelWidth + 14, fm.height() + 8, width() - labelWidth - 30, height() - 3 * fm.height() - 14);
  const auto at = [&](double nm, double ft) {
    return QPointF(plot.left() + nm / nmHi * plot.width(), plot.bottom() - (ft - ftLo) / (ftHi - ftLo) * plot.height());
  };

  // Grid and scales.
  p.setPen(QPen(colours.grid, 1));
  for (double ft = ftLo; ft <= ftHi + ftStep * 1e-6; ft += ftStep) p.drawLine(at(0, ft), at(nmHi, ft));
  for (double nm = 0; nm <= nmHi + nmStep * 1e-6; nm += nmStep) p.drawLine(at(nm, ftLo), at(nm, ftHi));
  p.setPen(colours.frame);
  p.drawRect(plot);
  p.setPen(colours.label);
  for (double ft = ftLo; ft <= ftHi + ftStep * 1e-6; ft += ftStep) {
    const QPointF y = at(0, ft);
    p.drawText(QRectF(2, y.y() - fm.height() / 2, plot.left() - 8, fm.height()), Qt::AlignRight | Qt::AlignVCenter,
               label(ft, "0"));
  }
  for (double nm = 0; nm <= nmHi + nmStep * 1e-6; nm += nmStep) {
    const QPointF x = at(nm, ftLo);
    p.drawText(QRectF(x.x() - 40, plot.bottom() + 3, 80, fm.height()), Qt::AlignCenter, label(nm, "0.##"));
  }
  p.drawText(QRectF(2, 2, plot.left() + 40, fm.height()), Qt::AlignLeft | Qt::AlignVCenter, tr("ft"));
  p.drawText(QRectF(plot.left(), plot.bottom() + fm.height() + 5, plot.width(), fm.height()), Qt::AlignCenter,
             tr("Distance from top of descent (NM)"));

  // The changeover altitude across the view, its name at the right where the path has passed below.
  if (changeoverFt_) {
    const double y = at(0, *changeoverFt_).y();
    p.setPen(QPen(colours.changeover, 1.4, Qt::DashLine));
    p.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    p.setPen(colours.changeoverText);
    p.drawText(QRectF(plot.left(), y - fm.height() - 1, plot.width() - 4, fm.height()),
               Qt::AlignRight | Qt::AlignBottom, tr("Changeover %1 ft").arg(label(*changeoverFt_, "0")));
  }

  QPainterPath path(at(profile_.front().distanceNm, profile_.front().altitudeFt));
  for (const DescentPoint& d : profile_) path.lineTo(at(d.distanceNm, d.altitudeFt));
  p.setPen(QPen(colours.path, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(Qt::NoBrush);
  p.drawPath(path);
  p.setBrush(colours.path);
  p.setPen(Qt::NoPen);
  for (const DescentPoint* d : {&profile_.front(), &profile_.back()})
    p.drawEllipse(at(d->distanceNm, d->altitudeFt), 3.5, 3.5);
  if (changeoverFt_) {
    // Where the path meets the changeover altitude (a point of the profile: the integration splits there).
    const auto near =
        std::min_element(profile_.begin(), profile_.end(), [&](const DescentPoint& a, const DescentPoint& b) {
          return std::fabs(a.altitudeFt - *changeoverFt_) < std::fabs(b.altitudeFt - *changeoverFt_);
        });
    p.setBrush(colours.changeover);
    p.drawEllipse(at(near->distanceNm, near->altitudeFt), 4, 4);
  }
}

}  // namespace norvane
