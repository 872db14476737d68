#include "core/transform.h"

#include <cmath>
#include <limits>

#include "core/field_bar.h"
#include "core/serializer.h"

namespace {
// How far from 1 the squared length of an orientation may be to count as a rotation.
constexpr float kUnitTolerance = 1e-3f;
}  // namespace

Transform::Transform(const Vec3& startPosition, const Vec3& startScale, float angle)
    : position(startPosition),
      orientation(AddScaled(Quaternion{}, Vec3{0.0f, 0.0f, angle})),
      graphicsScale(startScale) {
  Rebuild();
}

void Transform::Update(float /*step*/) { Rebuild(); }

void Transform::BuildMatrix() {
  matrix_.translation = position;
  if (orientation == builtFrom_) return;
  matrix_.rotation = ToMatrix(orientation);
  builtFrom_ = orientation;
  const float squared = orientation.r * orientation.r + orientation.k * orientation.k;
  flat_ = IsAboutZ(orientation) && std::abs(squared - 1.0f) < kUnitTolerance;
}

std::array<float, 16> Transform::GetModelMatrix() const {
  const auto& m = matrix_.rotation.m;
  const Vec3& s = graphicsScale;
  const Vec3& t = matrix_.translation;
  return {m[0] * s.x, m[1] * s.y, m[2] * s.z, t.x, m[3] * s.x, m[4] * s.y, m[5] * s.z, t.y,
          m[6] * s.x, m[7] * s.y, m[8] * s.z, t.z, 0.0f,       0.0f,       0.0f,       1.0f};
}

void Transform::Serialize(Serializer& writer) {
  writer.BeginComponent("Transform");
  writer.WriteVec3(position);
  writer.WriteQuaternion(orientation);
  writer.WriteMatrix34(matrix_);
  writer.WriteVec3(graphicsScale);
  writer.EndBlock();
}

void Transform::Deserialize(Serializer& reader) {
  position = reader.ReadVec3();
  orientation = reader.ReadQuaternion();
  matrix_ = reader.ReadMatrix34();
  graphicsScale = reader.ReadVec3();
  // The file's matrix stands until the next rebuild, which must not be skipped: NaN equals no orientation.
  flat_ = false;
  builtFrom_.r = std::numeric_limits<float>::quiet_NaN();
}

void Transform::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Transform");
  bar.Add("position", &position);
  bar.Add("graphicsScale", &graphicsScale);
  bar.EndGroup();
}
