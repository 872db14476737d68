// Where an object is, how it is turned, and how large it is drawn. The matrix is a cache: it is rebuilt by Update, by
// each physics sub-step and by the paused frame, and everything between sees the last one built.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "core/component.h"
#include "physics/math/matrix34.h"
#include "physics/math/quaternion.h"

class Transform final : public Component {
 public:
  static constexpr Kind kKind = Kind::kTransform;

  Transform() = default;
  /// `angle` (radians about z) is applied as one first-order integration step, which is exact for 0 only; code that
  /// wants a true angle sets `orientation`.
  Transform(const Vec3& startPosition, const Vec3& startScale, float angle);

  void Update(float step) override;
  void Serialize(Serializer& writer) override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;

  /// Rebuilds the cached matrix from `orientation` and `position`; what stayed the same is not made again. Returns
  /// whether anything changed.
  bool Rebuild() {
    if (IsBuilt()) return false;
    BuildMatrix();
    return true;
  }
  /// Whether the cached rotation is a true one about z alone: it neither tilts nor stretches.
  bool IsFlat() const { return flat_; }
  /// The cached matrix.
  const Matrix34& GetMatrix() const { return matrix_; }
  /// 4x4 row-major: cached rotation times diag(graphicsScale), cached translation, (0, 0, 0, 1).
  std::array<float, 16> GetModelMatrix() const;

  Vec3 position;                            ///< world units
  Quaternion orientation;                   ///< kept at unit length by the physics
  Vec3 graphicsScale = {1.0f, 1.0f, 1.0f};  ///< drawing only; a sprite's quad is 1 x 1

 private:
  bool IsBuilt() const;
  void BuildMatrix();

  Matrix34 matrix_;
  Quaternion builtFrom_;  // orientation that matrix_.rotation was made of; the rotation is a pure function of it
  bool flat_ = true;
};

// By their bits: two zeros that differ in sign are no reason to leave the matrix with the wrong one. Float by float:
// what was just stored so cannot be loaded in one piece without waiting for it.
inline bool Transform::IsBuilt() const {
  const auto difference = [](float a, float b) {
    return std::bit_cast<std::uint32_t>(a) ^ std::bit_cast<std::uint32_t>(b);
  };
  const Vec3& t = matrix_.translation;
  const Quaternion& q = orientation;
  return (difference(position.x, t.x) | difference(position.y, t.y) | difference(position.z, t.z) |
          difference(q.r, builtFrom_.r) | difference(q.i, builtFrom_.i) | difference(q.j, builtFrom_.j) |
          difference(q.k, builtFrom_.k)) == 0;
}
