#include "manoeuvres/Wind.hpp"

#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"

namespace norvane {
namespace {

// Compass inputs are typed as 0 to 360; 360 and 0 are the same direction.
double NorthAsZero(double a) { return a == 360 ? 0 : a; }

std::string Signed(double v) { return SignedText(RoundToInt16(v)); }

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
  WindTexts t;
  const WindTriangle w = SolveWindTriangle(tas, track, windSpeed, windDirection);
  if (w.failed) {
    t.message = kTooStrongWindText;
    return t;
  }
  const double heading = Norm360(track + w.wca);
  const double headTail = w.groundSpeed - tas;
  t.value[0] = w.groundSpeed;
  t.value[1] = heading;
  t.value[2] = w.wca;
  t.value[3] = headTail;
  t.text[0] = FormatMask(w.groundSpeed, "0");
  t.text[1] = FormatMask(heading, "000");
  t.text[2] = Signed(w.wca);
  t.text[3] = Signed(headTail);
  t.count = 4;
  return t;
}

WindTexts UnknownWindTexts(double tas, double groundSpeed, double track, double heading) {
  track = NorthAsZero(track);
  heading = NorthAsZero(heading);
  WindTexts t;
  const UnknownWind w = ComputeUnknownWind(tas, groundSpeed, track, heading);
  if (w.inconsistent) {
    t.message = kInconsistentWindText;
    return t;
  }
  t.value[0] = w.windSpeed;
  t.value[1] = w.windDirection;
  t.value[2] = w.drift;
  t.value[3] = w.headTail;
  t.text[0] = FormatMask(w.windSpeed, "0");
  t.text[1] = FormatMask(w.windDirection, "000");
  t.text[2] = Signed(w.drift);
  t.text[3] = Signed(w.headTail);
  t.count = 4;
  return t;
}

WindTexts RunwayWindTexts(double runway, double windSpeed, double windDirection) {
  const RunwayWind w = ComputeRunwayWind(NorthAsZero(runway), windSpeed, NorthAsZero(windDirection));
  WindTexts t;
  t.value[0] = w.crosswind;
  t.value[1] = w.headTail;
  t.text[0] = Signed(w.crosswind);
  t.text[1] = Signed(w.headTail);
  t.count = 2;
  return t;
}

}  // namespace norvane
