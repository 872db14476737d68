// A rotation quaternion r + i·x + j·y + k·z; r is the scalar part. A plain value.
#pragma once

#include <bit>
#include <cstdint>

#include "physics/math/matrix33.h"
#include "physics/math/trigonometry.h"
#include "physics/math/vec3.h"

struct Quaternion {
  float r = 1.0f;
  float i = 0.0f;
  float j = 0.0f;
  float k = 0.0f;

  constexpr bool operator==(const Quaternion& q) const { return r == q.r && i == q.i && j == q.j && k == q.k; }
};

/// Whether both are 0, asked by their bits in one comparison.
constexpr bool AreZero(float a, float b) {
  return ((std::bit_cast<std::uint32_t>(a) | std::bit_cast<std::uint32_t>(b)) << 1) == 0;
}

/// Whether the rotation is about z alone, as everything on the stage is; the operations have a short way for it that
/// gives the same numbers.
constexpr bool IsAboutZ(const Quaternion& q) { return AreZero(q.i, q.j); }

/// Rotation by `angle` radians about the z axis.
inline Quaternion QuaternionFromZ(float angle) { return {Cos(angle * 0.5f), 0.0f, 0.0f, Sin(angle * 0.5f)}; }

/// The rotation's part about the z axis, radians from -pi to pi.
inline float AngleAboutZ(const Quaternion& q) {
  return Atan2(2.0f * (q.i * q.j + q.k * q.r), 1.0f - 2.0f * (q.j * q.j + q.k * q.k));
}

/// First-order integration of an angular displacement v (angular velocity times time step, radians):
/// q + (0, v)·q / 2 with the pure quaternion on the left. The result is not of unit length.
constexpr Quaternion AddScaled(const Quaternion& q, const Vec3& v) {
  if (IsAboutZ(q) && AreZero(v.x, v.y)) return {q.r + 0.5f * (0.0f - v.z * q.k), 0.0f, 0.0f, q.k + 0.5f * (v.z * q.r)};
  return {q.r + 0.5f * (-v.x * q.i - v.y * q.j - v.z * q.k), q.i + 0.5f * (v.x * q.r + v.y * q.k - v.z * q.j),
          q.j + 0.5f * (v.y * q.r + v.z * q.i - v.x * q.k), q.k + 0.5f * (v.z * q.r + v.x * q.j - v.y * q.i)};
}

/// The quaternion at length 1; one that has decayed to all zeros becomes the identity.
inline Quaternion Normalised(const Quaternion& q) {
  const bool aboutZ = IsAboutZ(q);
  const float squared = aboutZ ? q.r * q.r + q.k * q.k : q.r * q.r + q.i * q.i + q.j * q.j + q.k * q.k;
  if (squared == 0.0f) return {1.0f, q.i, q.j, q.k};
  const float scale = 1.0f / std::sqrt(squared);
  if (aboutZ) return {q.r * scale, q.i, q.j, q.k * scale};
  return {q.r * scale, q.i * scale, q.j * scale, q.k * scale};
}

/// The standard rotation matrix of a unit quaternion.
constexpr Matrix33 ToMatrix(const Quaternion& q) {
  if (IsAboutZ(q)) {
    const float cosine = 1.0f - 2.0f * q.k * q.k;
    const float sine = 2.0f * q.r * q.k;
    return {{cosine, 0.0f - sine, 0.0f, 0.0f + sine, cosine, 0.0f, 0.0f, 0.0f, 1.0f}};
  }
  return {{1.0f - 2.0f * q.j * q.j - 2.0f * q.k * q.k, 2.0f * q.i * q.j - 2.0f * q.r * q.k,
           2.0f * q.i * q.k + 2.0f * q.r * q.j, 2.0f * q.i * q.j + 2.0f * q.r * q.k,
           1.0f - 2.0f * q.i * q.i - 2.0f * q.k * q.k, 2.0f * q.j * q.k - 2.0f * q.r * q.i,
           2.0f * q.i * q.k - 2.0f * q.r * q.j, 2.0f * q.j * q.k + 2.0f * q.r * q.i,
           1.0f - 2.0f * q.i * q.i - 2.0f * q.j * q.j}};
}

static_assert(sizeof(Quaternion) == 16 && std::is_trivially_copyable_v<Quaternion>);
