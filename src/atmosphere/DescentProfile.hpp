#pragma once
// The side view of a planned descent: pressure altitude against distance from the top of descent,
// on round-number axes, with the changeover altitude marked where the schedule switches from the
// Mach number to the IAS. Painted with QPainter in logical pixels, so it scales with the widget.

#include <QWidget>
#include <optional>
#include <vector>

#include "atmosphere/Descent.hpp"

namespace norvane {

class DescentProfile : public QWidget {
  Q_OBJECT
 public:
  explicit DescentProfile(QWidget* parent = nullptr);

  // Shows `profile` (top first); the changeover is marked when given.
  void setProfile(std::vector<DescentPoint> profile, std::optional<double> changeoverFt);
  void clear();
  bool hasProfile() const { return profile_.size() >= 2; }

  QSize sizeHint() const override { return {460, 220}; }
  QSize minimumSizeHint() const override { return {260, 140}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<DescentPoint> profile_;
  std::optional<double> changeoverFt_;
};

}  // namespace norvane
