#include "navigation/GeoMag.hpp"

#include <cmath>

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"
#include "navigation/GeomagTables.hpp"

namespace norvane {
namespace {

constexpr int kN = kGeomagMaxDegree + 1;

struct ModelInfo {
  const char* name;
  int secularDegree;
  const GaussCoefficients* table;
  MagModel successor;  // the same family's current model (itself when it is the current one)
};

// Indexed by MagModel. The published secular variation of IGRF-10, WMM2005 and IGRF-14 stops at
// degree 8; WMM2025 gives it to degree 12.
const ModelInfo kModels[kMagModelCount] = {
    {"IGRF-10", 8, &geomag_tables::kIGRF10, MagModel::IGRF14},
    {"WMM2005", 8, &geomag_tables::kWMM2005, MagModel::WMM2025},
    {"WMM2025", 12, &geomag_tables::kWMM2025, MagModel::WMM2025},
    {"IGRF-14", 8, &geomag_tables::kIGRF14, MagModel::IGRF14},
};

const ModelInfo& Info(MagModel model) {
  const int i = static_cast<int>(model);
  return kModels[i >= 0 && i < kMagModelCount ? i : 0];
}

// WGS-84 in km^2 (a^2, b^2 and their difference), as the geodetic conversion of the WMM report.
constexpr double kA2 = 40680631.59076899;
constexpr double kB2 = 40408299.98408706;
constexpr double kA2MinusB2 = 272331.60668194084;
constexpr double kA4 = kA2 * kA2;
constexpr double kB4 = kB2 * kB2;

// Factors of the Schmidt semi-normalised Legendre recursion in the colatitude theta
// (Langel, "The main field", in Geomagnetism vol. 1, 1987):
//   P(n, n) = k(n) sin(theta) P(n-1, n-1),          k(n) = sqrt((2n - 1) / (2n)), k(1) = 1
//   P(n, m) = a(n, m) cos(theta) P(n-1, m) - b(n, m) P(n-2, m)         for m < n
//   a(n, m) = (2n - 1) / sqrt(n^2 - m^2),  b(n, m) = sqrt((n - 1)^2 - m^2) / sqrt(n^2 - m^2)
struct LegendreFactors {
  double k[kN]{};
  double a[kN][kN]{};
  double b[kN][kN]{};
  LegendreFactors() {
    k[1] = 1;
    for (int n = 2; n < kN; ++n) k[n] = std::sqrt((2.0 * n - 1) / (2.0 * n));
    for (int n = 1; n < kN; ++n)
      for (int m = 0; m < n; ++m) {
        const double root = std::sqrt(static_cast<double>(n * n - m * m));
        a[n][m] = (2.0 * n - 1) / root;
        b[n][m] = std::sqrt(static_cast<double>((n - 1) * (n - 1) - m * m)) / root;
      }
  }
};

const LegendreFactors& Factors() {
  static const LegendreFactors factors;
  return factors;
}

// Days from 1970-01-01 of a proleptic Gregorian date (H. Hinnant's days_from_civil).
long DaysFromCivil(long y, long m, long d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const long yoe = y - era * 400;
  const long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

}  // namespace

GaussCoefficients LoadWMM2005() { return geomag_tables::kWMM2005; }
GaussCoefficients LoadIGRF10() { return geomag_tables::kIGRF10; }
GaussCoefficients LoadWMM2025() { return geomag_tables::kWMM2025; }
GaussCoefficients LoadIGRF14() { return geomag_tables::kIGRF14; }
GaussCoefficients LoadMagModel(MagModel model) { return *Info(model).table; }

const char* MagModelName(MagModel model) { return Info(model).name; }
int MagModelSecularDegree(MagModel model) { return Info(model).secularDegree; }

GeocentricCoordinates GeodeticToGeocentric(double latitude, double altitude) {
  const double s = std::sin(latitude), c = std::cos(latitude);
  const double h = altitude;
  const double q = std::sqrt(kA2 - kA2MinusB2 * s * s);
  const double r = std::sqrt(h * h + 2 * h * q + (kA4 - (kA4 - kB4) * s * s) / (q * q));
  GeocentricCoordinates g;
  g.r = r;
  g.cosDelta = (h + q) / r;
  g.sinDelta = kA2MinusB2 * s * c / (q * r);
  g.cosTheta = s * g.cosDelta - c * g.sinDelta;
  g.sinTheta = c * g.cosDelta + s * g.sinDelta;
  return g;
}

MagneticVector MainField(const GaussCoefficients& c, double latitude, double longitude, double altitude) {
  const LegendreFactors& f = Factors();
  const GeocentricCoordinates geo = GeodeticToGeocentric(latitude, altitude);
  const double st = geo.sinTheta, ct = geo.cosTheta;
  const int nmax = c.maxDegree < kGeomagMaxDegree ? c.maxDegree : kGeomagMaxDegree;

  // cos(m lambda), sin(m lambda) by angle addition.
  double cosM[kN], sinM[kN];
  cosM[0] = 1;
  sinM[0] = 0;
  cosM[1] = std::cos(longitude);
  sinM[1] = std::sin(longitude);
  for (int m = 2; m <= nmax; ++m) {
    cosM[m] = cosM[m - 1] * cosM[1] - sinM[m - 1] * sinM[1];
    sinM[m] = sinM[m - 1] * cosM[1] + cosM[m - 1] * sinM[1];
  }

  // Legendre functions P(n, m) and dP/dtheta, built row by row.
  double P[kN][kN]{}, dP[kN][kN]{};
  P[0][0] = 1;
  for (int n = 1; n <= nmax; ++n) {
    for (int m = 0; m < n; ++m) {
      const double p2 = n >= 2 ? P[n - 2][m] : 0, dp2 = n >= 2 ? dP[n - 2][m] : 0;
      P[n][m] = f.a[n][m] * ct * P[n - 1][m] - f.b[n][m] * p2;
      dP[n][m] = f.a[n][m] * (ct * dP[n - 1][m] - st * P[n - 1][m]) - f.b[n][m] * dp2;
    }
    P[n][n] = f.k[n] * st * P[n - 1][n - 1];
    dP[n][n] = f.k[n] * (ct * P[n - 1][n - 1] + st * dP[n - 1][n - 1]);
  }

  // B = -grad V with V = a sum (a/r)^(n+1) sum (g cos m lambda + h sin m lambda) P(n, m):
  //   Br (outward) = sum (n+1) (a/r)^(n+2) sum (g cos + h sin) P
  //   Btheta       = -sum (a/r)^(n+2) sum (g cos + h sin) dP
  //   Bphi         = sum (a/r)^(n+2) sum m (g sin - h cos) P / sin(theta)
  const double ratio = kGeomagReferenceRadiusKm / geo.r;
  double power = ratio * ratio;
  double br = 0, bt = 0, bp = 0;
  for (int n = 1; n <= nmax; ++n) {
    power *= ratio;
    double sr = 0, sTheta = 0, sPhi = 0;
    for (int m = 0; m <= n; ++m) {
      const double gnm = c.g[n][m], hnm = c.h[n][m];
      const double cosTerm = gnm * cosM[m] + hnm * sinM[m];
      sr += cosTerm * P[n][m];
      sTheta += cosTerm * dP[n][m];
      sPhi += m * (gnm * sinM[m] - hnm * cosM[m]) * P[n][m];
    }
    br += (n + 1) * power * sr;
    bt -= power * sTheta;
    bp += power * sPhi;
  }
  bp /= st;

  // Rotate from the geocentric to the geodetic frame by psi = theta + latitude - pi/2.
  const double theta = ArcTan2(st, ct);
  const double psi = theta + latitude - kPi / 2;
  const double cp = std::cos(psi), sp = std::sin(psi);
  return {-bt * cp - br * sp, bp, bt * sp - br * cp};
}

long DaysSince2005(const CalendarDate& date) {
  return DaysFromCivil(date.year, date.month, date.day) - DaysFromCivil(2005, 1, 1);
}

MagneticVector ModelField(MagModel model, double latitude, double longitude, double altitude, double years) {
  // A fresh copy every call, so the secular variation never accumulates.
  GaussCoefficients c = LoadMagModel(model);
  if (years > 0) {
    // Before the epoch the epoch coefficients are used unchanged.
    const int nmax = MagModelSecularDegree(model);
    for (int n = 1; n <= nmax; ++n)
      for (int m = 0; m <= n; ++m) {
        c.g[n][m] += years * c.gdot[n][m];
        c.h[n][m] += years * c.hdot[n][m];
      }
  }
  return MainField(c, latitude, longitude, altitude);
}

double ComputeMagVar(double latitude, double longitude, double altitude, const CalendarDate& date, MagModel model) {
  const long days = DaysFromCivil(date.year, date.month, date.day) - DaysFromCivil(MagModelEpoch(model), 1, 1);
  const MagneticVector b = ModelField(model, latitude, longitude, altitude, days / 365.25);
  return ArcTan2(b.y, b.x) * kRadToDeg;
}

double TrackMagVar(double latDeg, double lonDeg, int year, MagModel model) {
  constexpr double kLatitudeLimit = 1.57050543858;  // 89 degrees 59 minutes
  double lat = latDeg * kDegToRad;
  if (std::fabs(latDeg) > 89.98) lat = std::copysign(kLatitudeLimit, latDeg);
  return ComputeMagVar(lat, lonDeg * kDegToRad, 0, {year, 1, 1}, model);
}

std::string MagValidityNotice(MagModel model, const CalendarDate& date) {
  const ModelInfo& info = Info(model);
  const int epochYear = MagModelEpoch(model);
  const long day = DaysFromCivil(date.year, date.month, date.day);
  const bool early = day < DaysFromCivil(epochYear, 1, 1);
  if (!early && day <= DaysFromCivil(epochYear + 5, 1, 1)) return {};
  const std::string epoch = std::to_string(epochYear);
  std::string text = std::string(info.name) + " is valid " + epoch + "\u2013" + std::to_string(epochYear + 5) + "; ";
  if (!early && info.successor != model) return text + MagModelName(info.successor) + " gives today's variation";
  if (!early) return text + "later dates extrapolate its secular variation";
  return text + "earlier dates take its " + epoch + ".0 field";
}

std::string MagVarText(double variation) {
  // The side is the shown value's: -0.04 reads "0.0E", not "0.0W".
  const std::string degrees = FormatMask(std::fabs(variation), "0.0");
  return degrees + (variation >= 0 || degrees == "0.0" ? "E" : "W");
}

}  // namespace norvane
