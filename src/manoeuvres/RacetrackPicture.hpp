#pragma once
// The ground track of one racetrack circuit to scale, north up as on the chart: the fix, the
// inbound course through it, the track with arrows in the flying direction, an arrow for the wind
// and a scale bar. Painted with QPainter in logical pixels, like the holding picture.

#include <QWidget>
#include <vector>

#include "manoeuvres/Racetrack.hpp"

namespace norvane {

class RacetrackPicture : public QWidget {
  Q_OBJECT
 public:
  explicit RacetrackPicture(QWidget* parent = nullptr);

  // `track` in NM along and across the inbound course `course`; the wind blows from `windDirection`.
  void setTrack(std::vector<RacetrackPoint> track, double course, double windDirection, double windSpeed);
  void clear();
  bool hasTrack() const { return !track_.empty(); }

  QSize sizeHint() const override { return {300, 300}; }
  QSize minimumSizeHint() const override { return {180, 180}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int w) const override { return w; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<RacetrackPoint> track_;
  double course_ = 0, windDirection_ = 0, windSpeed_ = 0;
};

}  // namespace norvane
