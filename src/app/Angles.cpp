#include "app/Angles.hpp"

#include <cmath>

namespace norvane {

double ArcTan2(double y, double x) {
  if (x > 0) return std::atan(y / x);
  if (x < 0) return y >= 0 ? std::atan(y / x) + kPi : std::atan(y / x) - kPi;
  if (y > 0) return kPi / 2;
  if (y < 0) return -kPi / 2;
  return 0;
}

double ArcSin(double x) {
  if (std::fabs(x) >= 1) return x > 0 ? kPi / 2 : -kPi / 2;
  return 2 * std::atan(x / (1 + std::sqrt(1 - x * x)));
}

double ArcCos(double x) {
  if (std::fabs(x) > 1) return x <= 0 ? kPi : 0;
  if (x < 0) return kPi - 2 * std::atan(std::sqrt((1 + x) / (1 - x)));
  return 2 * std::atan(std::sqrt((1 - x) / (1 + x)));
}

double Norm360(double a) {
  if (a < 0) return a + 360;
  if (a >= 360) return a - 360;
  return a;
}

}  // namespace norvane
