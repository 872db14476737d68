// A 3-vector of single-precision floats: positions, velocities, directions. A plain value; nothing allocates.
#pragma once

#include <cmath>
#include <type_traits>

struct Vec3 {
  float x = 0.0f;
  float y = 0.0f;
  float z = 0.0f;

  constexpr Vec3& operator+=(const Vec3& v) {
    x += v.x;
    y += v.y;
    z += v.z;
    return *this;
  }
  constexpr Vec3& operator-=(const Vec3& v) {
    x -= v.x;
    y -= v.y;
    z -= v.z;
    return *this;
  }
  constexpr Vec3& operator*=(float s) {
    x *= s;
    y *= s;
    z *= s;
    return *this;
  }
  /// Exact comparison: meant for sentinel values, not for computed ones.
  constexpr bool operator==(const Vec3& v) const { return x == v.x && y == v.y && z == v.z; }
};

constexpr Vec3 operator+(Vec3 a, const Vec3& b) { return a += b; }
constexpr Vec3 operator-(Vec3 a, const Vec3& b) { return a -= b; }
constexpr Vec3 operator-(const Vec3& v) { return {-v.x, -v.y, -v.z}; }
constexpr Vec3 operator*(Vec3 v, float s) { return v *= s; }

constexpr float Dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
constexpr Vec3 Cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
constexpr float SquaredLength(const Vec3& v) { return Dot(v, v); }
inline float Length(const Vec3& v) { return std::sqrt(SquaredLength(v)); }

/// The vector at length 1. A zero vector stays zero: there is no direction to keep.
inline Vec3 Normalised(const Vec3& v) {
  const float length = Length(v);
  return length > 0.0f ? v * (1.0f / length) : v;
}

inline bool IsFinite(const Vec3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

static_assert(sizeof(Vec3) == 12 && std::is_trivially_copyable_v<Vec3>);
