// A 3x3 matrix, row-major: m[0..2] is the first row. A plain value.
#pragma once

#include <array>
#include <type_traits>

#include "physics/math/trigonometry.h"
#include "physics/math/vec3.h"

/// Single-precision pi, as every angle conversion here uses it.
inline constexpr float kPi = 3.1415927f;

struct Matrix33 {
  std::array<float, 9> m = {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f};
};

/// M·v, row by row.
constexpr Vec3 operator*(const Matrix33& a, const Vec3& v) {
  return {a.m[0] * v.x + a.m[1] * v.y + a.m[2] * v.z, a.m[3] * v.x + a.m[4] * v.y + a.m[5] * v.z,
          a.m[6] * v.x + a.m[7] * v.y + a.m[8] * v.z};
}

/// The ordinary matrix product A·B.
constexpr Matrix33 operator*(const Matrix33& a, const Matrix33& b) {
  Matrix33 out;
  for (int row = 0; row < 3; ++row) {
    const auto r = static_cast<std::size_t>(row) * 3;
    for (std::size_t column = 0; column < 3; ++column)
      out.m[r + column] = a.m[r] * b.m[column] + a.m[r + 1] * b.m[column + 3] + a.m[r + 2] * b.m[column + 6];
  }
  return out;
}

constexpr Matrix33 operator*(Matrix33 a, float s) {
  for (float& value : a.m) value *= s;
  return a;
}

/// Determinant by the rule of Sarrus.
constexpr float Determinant(const Matrix33& a) {
  const auto& m = a.m;
  return m[0] * m[4] * m[8] + m[3] * m[7] * m[2] + m[1] * m[6] * m[5] -
         (m[1] * m[3] * m[8] + m[6] * m[4] * m[2] + m[0] * m[7] * m[5]);
}

/// Writes the inverse to `out` and returns true. A determinant of exactly 0 returns false and leaves `out` as it was:
/// callers fill it with the identity first.
constexpr bool Invert(const Matrix33& a, Matrix33& out) {
  const float determinant = Determinant(a);
  if (determinant == 0.0f) return false;
  const auto m = a.m;
  out.m = {m[8] * m[4] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[4] * m[2],
           m[6] * m[5] - m[8] * m[3], m[8] * m[0] - m[2] * m[6], m[2] * m[3] - m[5] * m[0],
           m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[4] * m[0] - m[1] * m[3]};
  out = out * (1.0f / determinant);
  return true;
}

/// Rotation about z by an angle in degrees.
inline Matrix33 RotationAboutZ(float degrees) {
  const float angle = degrees * kPi / 180.0f;
  Matrix33 out;
  out.m[0] = out.m[4] = Cos(angle);
  out.m[3] = Sin(angle);
  out.m[1] = -out.m[3];
  return out;
}

static_assert(sizeof(Matrix33) == 36 && std::is_trivially_copyable_v<Matrix33>);
