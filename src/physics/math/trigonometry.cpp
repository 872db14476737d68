#include "physics/math/trigonometry.h"

#include <cmath>
#include <initializer_list>
#include <limits>

namespace {

constexpr double kQuarterTurn = 1.57079632679489661923;
// The same in two parts: the first has so few digits that its product with a number of turns is exact.
constexpr double kQuarterTurnHead = 1.57079632673412561417e+00;
constexpr double kQuarterTurnTail = 6.07710050650619224932e-11;
constexpr double kMostExact = 1e5;  // radians; larger angles lose whole turns first

struct Reduced {
  double rest;       // from -pi/4 to pi/4
  unsigned quarter;  // how many quarter turns are to be added, modulo 4
};

Reduced Reduce(double angle) {
  if (std::abs(angle) > kMostExact) angle = std::fmod(angle, 4.0 * kQuarterTurn);
  const double turns = std::floor(angle / kQuarterTurn + 0.5);
  return {angle - turns * kQuarterTurnHead - turns * kQuarterTurnTail,
          static_cast<unsigned>(static_cast<long>(turns)) & 3U};
}

// Taylor's series, which end below a double's last digits this near to zero.
double SinNearZero(double x) {
  const double z = x * x;
  double sum = 1.0 / 1307674368000.0;  // 15!
  for (const double divisor : {6227020800.0, 39916800.0, 362880.0, 5040.0, 120.0, 6.0, 1.0})
    sum = 1.0 / divisor - z * sum;
  return x * sum;
}

double CosNearZero(double x) {
  const double z = x * x;
  double sum = 1.0 / 20922789888000.0;  // 16!
  for (const double divisor : {87178291200.0, 479001600.0, 3628800.0, 40320.0, 720.0, 24.0, 2.0, 1.0})
    sum = 1.0 / divisor - z * sum;
  return sum;
}

double SinOfQuarter(Reduced angle) {
  const double value = (angle.quarter & 1U) == 0 ? SinNearZero(angle.rest) : CosNearZero(angle.rest);
  return (angle.quarter & 2U) == 0 ? value : -value;
}

double SinOf(float angle) { return SinOfQuarter(Reduce(static_cast<double>(angle))); }

double CosOf(float angle) {
  Reduced reduced = Reduce(static_cast<double>(angle));
  ++reduced.quarter;
  return SinOfQuarter(reduced);
}

// For 0 to 1. Above an eighth of a half turn's tangent it is reckoned from a quarter of it, where the series is short.
double AtanToOne(double x) {
  constexpr double kTangentOfEighth = 0.41421356237309504880;
  if (x > kTangentOfEighth) return kQuarterTurn / 2.0 + AtanToOne((x - 1.0) / (x + 1.0));
  constexpr int kLast = 37;
  const double z = x * x;
  double sum = 1.0 / kLast;
  for (int i = kLast - 2; i >= 1; i -= 2) sum = 1.0 / i - z * sum;
  return x * sum;
}

}  // namespace

float Sin(float angle) {
  if (!std::isfinite(angle)) return std::numeric_limits<float>::quiet_NaN();
  if (angle == 0.0f) return angle;
  return static_cast<float>(SinOf(angle));
}

float Cos(float angle) {
  if (!std::isfinite(angle)) return std::numeric_limits<float>::quiet_NaN();
  return static_cast<float>(CosOf(angle));
}

float Tan(float angle) {
  if (!std::isfinite(angle)) return std::numeric_limits<float>::quiet_NaN();
  if (angle == 0.0f) return angle;
  return static_cast<float>(SinOf(angle) / CosOf(angle));
}

float Atan2(float y, float x) {
  if (std::isnan(x) || std::isnan(y)) return std::numeric_limits<float>::quiet_NaN();
  double run = std::abs(static_cast<double>(x));
  double rise = std::abs(static_cast<double>(y));
  if (std::isinf(run) && std::isinf(rise)) run = rise = 1.0;
  double angle = 0.0;
  if (rise > run)
    angle = kQuarterTurn - AtanToOne(run / rise);
  else if (run > 0.0)
    angle = AtanToOne(rise / run);
  if (std::signbit(x)) angle = 2.0 * kQuarterTurn - angle;
  return std::copysign(static_cast<float>(angle), y);
}
