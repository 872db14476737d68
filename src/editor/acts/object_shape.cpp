#include "editor/acts/object_shape.h"

#include <algorithm>
#include <cmath>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/sphere_collider.h"

namespace {

constexpr int kCirclePoints = 40;
constexpr float kLeastReach = 0.15f;  // world units, so that a thing without size is seen too

using Points = std::vector<Vec3>;

Points Corners(const Vec3& half) {
  return {{-half.x, -half.y, 0.0f}, {half.x, -half.y, 0.0f}, {half.x, half.y, 0.0f}, {-half.x, half.y, 0.0f}};
}

// In the object's own frame.
Points OwnShapeOf(const GameObject& object) {
  if (const auto* box = object.Get<GalePhysics::BoxCollider>()) return Corners(box->halfExtents);
  if (const auto* sphere = object.Get<GalePhysics::SphereCollider>())
    return CirclePoints(std::max(sphere->radius, kLeastReach));
  const Vec3& scale = object.GetTransform().graphicsScale;
  return Corners({std::max(std::abs(scale.x) / 2, kLeastReach), std::max(std::abs(scale.y) / 2, kLeastReach), 0.0f});
}

}  // namespace

Points CirclePoints(float radius) {
  Points points;
  for (int i = 0; i < kCirclePoints; ++i) {
    const float angle = 2.0f * kPi * static_cast<float>(i) / static_cast<float>(kCirclePoints);
    points.push_back({radius * std::cos(angle), radius * std::sin(angle), 0.0f});
  }
  return points;
}

Points ShapeOf(const GameObject& object) {
  const Transform& transform = object.GetTransform();
  const Matrix33 turn = ToMatrix(transform.orientation);
  Points points = OwnShapeOf(object);
  for (Vec3& point : points) point = turn * point + transform.position;
  return points;
}

void Bounds::Add(const Bounds& other) {
  left = std::min(left, other.left);
  right = std::max(right, other.right);
  bottom = std::min(bottom, other.bottom);
  top = std::max(top, other.top);
}

Bounds BoundsOf(const GameObject& object) {
  const Points points = ShapeOf(object);
  Bounds bounds{points.front().x, points.front().x, points.front().y, points.front().y};
  for (const Vec3& point : points) bounds.Add({point.x, point.x, point.y, point.y});
  return bounds;
}

std::vector<GameObject*> SelectedObjects() {
  std::vector<GameObject*> selected;
  for (const std::uint32_t id : GetSelection())
    if (GameObject* object = Objects().GetObject(id); object != nullptr && object->alive) selected.push_back(object);
  return selected;
}

std::string ShownNameOf(const GameObject& object) { return object.name.empty() ? "Nameless-Object" : object.name; }
