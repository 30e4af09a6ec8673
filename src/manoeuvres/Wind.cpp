#include "manoeuvres/Wind.hpp"

#include <cmath>
#include <initializer_list>
#include <string>
#include <utility>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"

namespace norvane {
namespace {

// Compass inputs are typed as 0 to 360; 360 and 0 are the same direction.
double NorthAsZero(double a) { return a == 360 ? 0 : a; }

std::string Signed(double v) { return SignedText(RoundToInt16(v)); }

// The error text alone, no results.
WindTexts Message(const char* message) {
  WindTexts t;
  t.message = message;
  return t;
}

// The result rows in order, each value with its text.
WindTexts Results(std::initializer_list<std::pair<double, std::string>> rows) {
  WindTexts t;
  for (const auto& [value, text] : rows) {
    t.value[t.count] = value;
    t.text[t.count++] = text;
  }
  return t;
}

// The rows of the known and unknown wind screens: a speed, a direction and two signed angles or
// components.
WindTexts SpeedDirectionTexts(double speed, double direction, double third, double fourth) {
  return Results({{speed, FormatMask(speed, "0")},
                  {direction, FormatMask(direction, "000")},
                  {third, Signed(third)},
                  {fourth, Signed(fourth)}});
}

}  // namespace

WindTriangle SolveWindTriangle(double tas, double track, double windSpeed, double windDirection) {
  WindTriangle r;
  if (windSpeed > tas) return r;
  const double rel = (windDirection - track) * kDegToRad;
  const double x = std::sin(rel) * windSpeed / tas;
  if (std::fabs(x) > 1) return r;
  r.wca = ArcSin(x) * kRadToDeg;
  r.groundSpeed = std::sqrt(1 - x * x) * tas - std::cos(rel) * windSpeed;
  r.failed = !(r.groundSpeed > 0);
  return r;
}

UnknownWind ComputeUnknownWind(double tas, double groundSpeed, double track, double heading) {
  UnknownWind r;
  r.drift = heading - track;
  if (r.drift > 180) r.drift -= 360;
  if (r.drift < -180) r.drift += 360;
  r.headTail = groundSpeed - tas;

  // Air vector minus ground vector, in a frame whose first axis is the track: along the track
  // TAS cos d - GS, across it TAS sin d. The law of cosines gives its length in the form
  // (TAS - GS)^2 + 4 TAS GS sin^2(d/2), which stays accurate for small drift.
  const double d = (heading - track) * kDegToRad;
  const double s = std::sin(d / 2);
  r.windSpeed = std::sqrt((tas - groundSpeed) * (tas - groundSpeed) + 4 * tas * groundSpeed * s * s);
  r.windDirection =
      Norm360((ArcTan2(tas * std::sin(d), tas * std::cos(d) - groundSpeed) + track * kDegToRad) * kRadToDeg);

  r.inconsistent = std::fabs(r.drift) >= 90 || r.windSpeed > kWindSpeed.max;
  return r;
}

RunwayWind ComputeRunwayWind(double runway, double windSpeed, double windDirection) {
  const double a = (windDirection - runway) * kDegToRad;
  return {windSpeed * std::sin(a), -windSpeed * std::cos(a)};
}

WindTexts KnownWindTexts(double tas, double track, double windSpeed, double windDirection) {
  track = NorthAsZero(track);
  windDirection = NorthAsZero(windDirection);
  const WindTriangle w = SolveWindTriangle(tas, track, windSpeed, windDirection);
  if (w.failed) return Message(kTooStrongWindText);
  return SpeedDirectionTexts(w.groundSpeed, Norm360(track + w.wca), w.wca, w.groundSpeed - tas);
}

WindTexts UnknownWindTexts(double tas, double groundSpeed, double track, double heading) {
  track = NorthAsZero(track);
  heading = NorthAsZero(heading);
  const UnknownWind w = ComputeUnknownWind(tas, groundSpeed, track, heading);
  if (w.inconsistent) return Message(kInconsistentWindText);
  return SpeedDirectionTexts(w.windSpeed, w.windDirection, w.drift, w.headTail);
}

WindTexts RunwayWindTexts(double runway, double windSpeed, double windDirection) {
  const RunwayWind w = ComputeRunwayWind(NorthAsZero(runway), windSpeed, NorthAsZero(windDirection));
  return Results({{w.crosswind, Signed(w.crosswind)}, {w.headTail, Signed(w.headTail)}});
}

}  // namespace norvane
