#include "editor/stage/outlines.h"

#include <cmath>

#include "core/transform.h"
#include "graphics/camera.h"
#include "graphics/viewport.h"
#include "physics/box_collider.h"
#include "physics/sphere_collider.h"

namespace {

constexpr int kCirclePoints = 40;
constexpr float kLeastReach = 0.15f;  // world units, so that a thing without size is seen too

using Points = std::vector<Vec3>;

Points Corners(const Vec3& half) {
  return {{-half.x, -half.y, 0.0f}, {half.x, -half.y, 0.0f}, {half.x, half.y, 0.0f}, {-half.x, half.y, 0.0f}};
}

Points Circle(float radius) {
  Points points;
  for (int i = 0; i < kCirclePoints; ++i) {
    const float angle = 2.0f * kPi * static_cast<float>(i) / static_cast<float>(kCirclePoints);
    points.push_back({radius * std::cos(angle), radius * std::sin(angle), 0.0f});
  }
  return points;
}

// In the object's own frame.
Points ShapeOf(const GameObject& object) {
  if (const auto* box = object.Get<GalePhysics::BoxCollider>()) return Corners(box->halfExtents);
  if (const auto* sphere = object.Get<GalePhysics::SphereCollider>())
    return Circle(std::max(sphere->radius, kLeastReach));
  const Vec3& scale = object.GetTransform().graphicsScale;
  return Corners({std::max(std::abs(scale.x) / 2, kLeastReach), std::max(std::abs(scale.y) / 2, kLeastReach), 0.0f});
}

}  // namespace

Outline OutlineOf(const GameObject& object, int windowWidth, int windowHeight) {
  const Camera* camera = GetMainCamera();
  if (camera == nullptr || windowWidth <= 0 || windowHeight <= 0) return {};
  const glm::mat4 toClip = camera->GetProjection() * camera->GetView();
  const Viewport view = FitViewport(windowWidth, windowHeight);
  const Transform& transform = object.GetTransform();
  const Matrix33 turn = ToMatrix(transform.orientation);
  Outline outline;
  for (const Vec3& point : ShapeOf(object)) {
    const Vec3 world = turn * point + transform.position;
    const glm::vec4 clip = toClip * glm::vec4(world.x, world.y, world.z, 1.0f);
    if (!(clip.w > 0.0f)) return {};  // behind the camera
    outline.push_back({static_cast<float>(view.x) + (clip.x / clip.w + 1.0f) / 2.0f * static_cast<float>(view.width),
                       static_cast<float>(windowHeight - view.y) -
                           (clip.y / clip.w + 1.0f) / 2.0f * static_cast<float>(view.height)});
  }
  return outline;
}
