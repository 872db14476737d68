// An affine map: a 3x3 rotation part followed by a translation. A plain value. The renderer makes its own matrices of
// place, turn and size with GLM; nothing needs one of these as one of those, so there is no exchange.
#pragma once

#include "physics/math/matrix33.h"
#include "physics/math/vec3.h"

struct Matrix34 {
  Matrix33 rotation;
  Vec3 translation;
};

/// R·p + t.
constexpr Vec3 operator*(const Matrix34& a, const Vec3& p) { return a.rotation * p + a.translation; }

/// The inverse map (R⁻¹, −R⁻¹·t); a rotation part that cannot be inverted counts as the identity.
constexpr Matrix34 Inverted(const Matrix34& a) {
  Matrix34 out;
  Invert(a.rotation, out.rotation);
  out.translation = -(out.rotation * a.translation);
  return out;
}

static_assert(sizeof(Matrix34) == 48 && std::is_trivially_copyable_v<Matrix34>);
