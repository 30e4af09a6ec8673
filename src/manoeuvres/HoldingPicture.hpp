#pragma once
// The holding pattern as a pilot draws it on the chart: north up, the fix in the middle, the
// inbound leg ending at the fix with the racetrack on the side of the turns, the 70-degree line
// through the fix, the three entry sectors shaded (each as the positions from which an aircraft
// flies the sector's tracks to the fix), and the typed track as an arrow into the fix.
// Painted with QPainter in logical pixels, so it scales with the widget and stays crisp at any
// device pixel ratio.

#include <QPointF>
#include <QWidget>
#include <array>
#include <optional>

#include "manoeuvres/Holding.hpp"

class QColor;
class QPainter;

namespace norvane {

// A filled arrowhead with its point at `tip`, pointing along the unit vector `dir`, `size` long;
// the pictures of the holding and racetrack screens draw their arrows with it.
void Arrowhead(QPainter& p, QPointF tip, QPointF dir, double size, const QColor& color);
// The fix at `at`: a filled triangle, the chart symbol of a reporting point.
void FixSymbol(QPainter& p, QPointF at, const QColor& color);

class HoldingPicture : public QWidget {
  Q_OBJECT
 public:
  explicit HoldingPicture(QWidget* parent = nullptr);

  // Shows the pattern of `outbound` (0 to 359) and its sector limits; nullopt shows only the
  // compass and a hint.
  void setPattern(std::optional<int> outbound, bool rightHand, const EntrySectors& limits);
  // The track to the fix and the sectors it marks; nullopt hides the arrow.
  void setTrack(std::optional<int> track, const std::array<bool, 3>& marks);

  QSize sizeHint() const override { return {300, 300}; }
  QSize minimumSizeHint() const override { return {180, 180}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int w) const override { return w; }

  // Fill colour of sector row i (0 direct, then the rows' order), shared with the legend labels;
  // with `text`, the colour of its name drawn over the fill.
  QColor sectorColor(int row, bool text = false) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<int> outbound_;
  bool rightHand_ = true;
  EntrySectors limits_{};
  std::optional<int> track_;
  std::array<bool, 3> marks_{};
};

}  // namespace norvane
