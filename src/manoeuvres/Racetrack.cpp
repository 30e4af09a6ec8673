#include "manoeuvres/Racetrack.hpp"

#include <algorithm>
#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "app/Units.hpp"
#include "manoeuvres/Turn.hpp"
#include "manoeuvres/Wind.hpp"

namespace norvane {
namespace {

constexpr double kHour = 3600;  // s; knots times seconds over this are NM

double NorthAsZero(double a) { return a == 360 ? 0 : a; }

struct Vec {
  double along = 0, across = 0;
};

// The ground track in the course frame, sampled for the extent and the picture.
class TrackBuilder {
 public:
  TrackBuilder(double tas, Vec wind, double sign, double rateRad) : v_(tas), w_(wind), s_(sign), omega_(rateRad) {
    points_.push_back({0, 0});
  }

  // A turn from relative heading a0 through `angle` radians in the turn direction: in the air a
  // circle of radius TAS / rate, over the ground that circle plus the wind drift.
  void Turn(double a0, double angle) {
    const RacetrackPoint start = points_.back();
    const int steps = std::max(1, static_cast<int>(std::ceil(angle * kRadToDeg)));  // 1-degree samples
    const double k = v_ / (s_ * omega_) / kHour;
    for (int i = 1; i <= steps; ++i) {
      const double t = angle / omega_ * i / steps;
      const double a = a0 + s_ * omega_ * t;
      points_.push_back({start.along + k * (std::sin(a) - std::sin(a0)) + w_.along * t / kHour,
                         start.across + k * (std::cos(a0) - std::cos(a)) + w_.across * t / kHour});
    }
  }

  void Straight(double a, double seconds) {
    const RacetrackPoint p = points_.back();
    points_.push_back({p.along + (v_ * std::cos(a) + w_.along) * seconds / kHour,
                       p.across + (v_ * std::sin(a) + w_.across) * seconds / kHour});
  }

  std::vector<RacetrackPoint>& points() { return points_; }

 private:
  double v_;
  Vec w_;
  double s_, omega_;
  std::vector<RacetrackPoint> points_;
};

}  // namespace

RacetrackResult ComputeRacetrack(const RacetrackInput& in) {
  RacetrackResult out;
  const double course = NorthAsZero(in.course);
  const double windDir = NorthAsZero(in.windDirection);
  const double v = in.tas;

  const WindTriangle inbound = SolveWindTriangle(v, course, in.windSpeed, windDir);
  if (inbound.failed) {
    out.error = kTooStrongWindText;
    return out;
  }
  const RateTurn turn = ComputeRateTurn(v, in.maxBank, in.rate);
  const double turnsTime = 360 / turn.rate;  // s, both turns
  const double legTime = in.legMinutes * 60;
  const double legNm = inbound.groundSpeed * legTime / kHour;

  // The wind (towards) vector in the course frame.
  const double b = (windDir - course) * kDegToRad;
  const Vec wind{-in.windSpeed * std::cos(b), -in.windSpeed * std::sin(b)};
  const Vec r{-legNm - wind.along * turnsTime / kHour, -wind.across * turnsTime / kHour};
  // Drifted back so far in the turns that the "outbound" leg would head towards the fix.
  if (!(r.along < 0)) {
    out.error = kNoRacetrackText;
    return out;
  }
  const double outTrack = Norm360(course + ArcTan2(r.across, r.along) * kRadToDeg);
  const WindTriangle outbound = SolveWindTriangle(v, outTrack, in.windSpeed, windDir);
  if (outbound.failed) {
    out.error = kTooStrongWindText;
    return out;
  }
  const double outTime = std::hypot(r.along, r.across) / outbound.groundSpeed * kHour;
  const double inHeading = Norm360(course + inbound.wca);
  const double outHeading = Norm360(outTrack + outbound.wca);

  // Ground track: turn, outbound leg, turn back, inbound leg. The turns add up to 360 degrees.
  const double sign = in.right ? 1 : -1;
  const double aIn = inbound.wca * kDegToRad, aOut = (outHeading - course) * kDegToRad;
  const double first = std::fmod(std::fmod(sign * (aOut - aIn), kTwoPi) + kTwoPi, kTwoPi);
  TrackBuilder track(v, wind, sign, turn.rate * kDegToRad);
  track.Turn(aIn, first);
  track.Straight(aOut, outTime);
  track.Turn(aOut, kTwoPi - first);
  out.rollOut = track.points().back();
  track.Straight(aIn, legTime);
  out.track = std::move(track.points());
  const auto [alongMin, alongMax] = std::minmax_element(out.track.begin(), out.track.end(),
                                                        [](const auto& p, const auto& q) { return p.along < q.along; });
  const auto [acrossMin, acrossMax] = std::minmax_element(
      out.track.begin(), out.track.end(), [](const auto& p, const auto& q) { return p.across < q.across; });

  auto& val = out.value;
  val[kRtInboundHeading] = inHeading;
  val[kRtInboundGs] = inbound.groundSpeed;
  val[kRtOutboundHeading] = outHeading;
  val[kRtOutboundCorrection] = std::remainder(outHeading - course - 180, 360.0);
  val[kRtOutboundTime] = outTime;
  val[kRtOutboundGs] = outbound.groundSpeed;
  val[kRtBank] = turn.bank;
  val[kRtRate] = turn.rate;
  val[kRtRadius] = turn.radius / kNm;
  val[kRtPatternTime] = turnsTime + outTime + legTime;
  val[kRtLength] = alongMax->along - alongMin->along;
  val[kRtWidth] = acrossMax->across - acrossMin->across;

  auto& t = out.text;
  t[kRtInboundHeading] = FormatMask(inHeading, "000");
  t[kRtInboundGs] = FormatMask(inbound.groundSpeed, "0");
  t[kRtOutboundHeading] = FormatMask(outHeading, "000");
  t[kRtOutboundCorrection] = SignedText(RoundToInt16(val[kRtOutboundCorrection]));
  t[kRtOutboundTime] = FormatMinutesSeconds(outTime);
  t[kRtOutboundGs] = FormatMask(outbound.groundSpeed, "0");
  t[kRtBank] = FormatMask(turn.bank, "0.0");
  t[kRtRate] = FormatMask(turn.rate, "0.00");
  t[kRtRadius] = FormatMask(val[kRtRadius], "0.00");
  t[kRtPatternTime] = FormatMinutesSeconds(val[kRtPatternTime]);
  t[kRtLength] = FormatMask(val[kRtLength], "0.0");
  t[kRtWidth] = FormatMask(val[kRtWidth], "0.0");
  return out;
}

}  // namespace norvane
