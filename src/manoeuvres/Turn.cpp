#include "manoeuvres/Turn.hpp"

#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "app/Units.hpp"

namespace norvane {
namespace {

constexpr double kKnotToMs = kNm / 3600.0;

}  // namespace

RateTurn ComputeRateTurn(double tas, std::optional<double> maxBank, double rate) {
  const double v = tas * kKnotToMs;
  double omega = rate * kDegToRad;
  double bank = std::atan(omega * v / kG0);
  if (maxBank && bank > *maxBank * kDegToRad) {
    bank = *maxBank * kDegToRad;
    omega = std::tan(bank) * kG0 / v;
  }
  return {omega * kRadToDeg, bank * kRadToDeg, v / omega};
}

TurnAnticipation ComputeTurnAnticipation(double interceptAngle, double distance, double radiusNm) {
  TurnAnticipation r;
  const double theta = interceptAngle * kDegToRad;
  r.x = std::tan(theta / 2) * radiusNm * std::sin(theta) / distance;
  if (r.x >= 1) return r;
  const double a = ArcSin(r.x);
  r.possible = true;
  r.angle = a * kRadToDeg;
  r.finalDistance = (std::sin(theta - a) - r.x) * distance / std::sin(theta);
  return r;
}

std::string RadiusCaption(RadiusUnit unit) {
  switch (unit) {
    case RadiusUnit::Metres:
      return "Radius (m)";
    case RadiusUnit::Feet:
      return "Radius (ft)";
    case RadiusUnit::NauticalMiles:
      break;
  }
  return "Radius (NM)";
}

TurnTexts CalculateTurnTexts(double tas, std::optional<double> maxBank, double rate, RadiusUnit unit,
                             std::optional<double> interceptAngle, std::optional<double> distance) {
  const RateTurn turn = ComputeRateTurn(tas, maxBank, rate);
  TurnTexts t;
  t.bankValue = turn.bank;
  t.rateValue = turn.rate;
  t.bank = FormatMask(turn.bank, "0.0");
  t.rate = FormatMask(turn.rate, "0.00");
  switch (unit) {
    case RadiusUnit::Metres:
      t.radiusValue = turn.radius;
      t.radius = FormatFixed(t.radiusValue, 1);
      break;
    case RadiusUnit::Feet:
      t.radiusValue = turn.radius / kFt;
      t.radius = FormatFixed(t.radiusValue, 1);
      break;
    case RadiusUnit::NauticalMiles:
      t.radiusValue = turn.radius / kNm;
      t.radius = FormatFixed(t.radiusValue, 3);
      break;
  }
  t.gLoadValue = 1 / std::cos(turn.bank * kDegToRad);
  t.gLoad = FormatMask(t.gLoadValue, "0.00");

  if (interceptAngle && distance) {
    const TurnAnticipation a = ComputeTurnAnticipation(*interceptAngle, *distance, turn.radius / kNm);
    if (!a.possible) {
      t.anticipation = t.finalDistance = "NA";
    } else {
      t.anticipationValue = a.angle;
      t.anticipation = FormatMask(a.angle, "0.0");
      if (a.finalDistance > 0) {
        t.finalDistanceValue = a.finalDistance;
        t.finalDistance = FormatMask(a.finalDistance, "0.0");
      } else {
        t.finalDistance = "past";
      }
    }
  }
  return t;
}

}  // namespace norvane
