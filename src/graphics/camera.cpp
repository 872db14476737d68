#include "graphics/camera.h"

#include <glm/gtc/matrix_transform.hpp>

#include "core/object_manager.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "input/input.h"
#include "physics/math/trigonometry.h"

namespace {

glm::vec3 ToGlm(const Vec3& v) { return {v.x, v.y, v.z}; }

Vec3 MapPoint(const glm::mat4& matrix, float x, float y, float z) {
  const glm::vec4 p = matrix * glm::vec4(x, y, z, 1.0f);
  return {p.x / p.w, p.y / p.w, p.z / p.w};
}

}  // namespace

Camera::Camera() {
  LookAhead();
  Project();
}

void Camera::Update(float /*step*/) {
  const Vec3& p = owner->GetTransform().position;
  eye_ = p + offset;
  target_ = Vec3{p.x, p.y, p.z - 1.0f} + offset;
  up_ = {0.0f, 1.0f, 0.0f};
  offset = {};
  LookAhead();
}

void Camera::LookAhead() { view_ = glm::lookAt(ToGlm(eye_), ToGlm(target_), ToGlm(up_)); }

// As glm::perspective has it, but for the tangent: the mouse's place in the world hangs on it.
void Camera::Project() {
  const float tangent = Tan(glm::radians(fov_) / 2.0f);
  projection_ = glm::mat4(0.0f);
  projection_[0][0] = 1.0f / (aspectRatio_ * tangent);
  projection_[1][1] = 1.0f / tangent;
  projection_[2][2] = -(farPlane_ + nearPlane_) / (farPlane_ - nearPlane_);
  projection_[2][3] = -1.0f;
  projection_[3][2] = -(2.0f * farPlane_ * nearPlane_) / (farPlane_ - nearPlane_);
}

void Camera::SetPerspective(float fov, float aspect, float nearPlane, float farPlane) {
  fov_ = fov;
  aspectRatio_ = aspect;
  nearPlane_ = nearPlane;
  farPlane_ = farPlane;
  Project();
}

Vec3 Camera::ScreenToWorld(float mouseX, float mouseY, float planeZ) const {
  const WindowRect& window = Input::GetPointer().window;
  const glm::mat4 flipY = glm::scale(glm::mat4(1.0f), glm::vec3(1.0f, -1.0f, 1.0f));
  const glm::mat4 toWorld = glm::inverse(projection_ * flipY * view_);
  const float x = 2.0f * mouseX / static_cast<float>(window.width) - 1.0f;
  const float y = 2.0f * mouseY / static_cast<float>(window.height) - 1.0f;
  const Vec3 a = MapPoint(toWorld, x, y, 1.0f);
  const Vec3 b = MapPoint(toWorld, x, y, -3.0f);
  if (a.z == b.z) return {Input::GetPointer().worldX, Input::GetPointer().worldY, planeZ};  // the last one stands
  const float t = (planeZ - a.z) / (b.z - a.z);
  return a + (b - a) * t;
}

void Camera::Serialize(Serializer& writer) {
  writer.BeginComponent("Camera");
  writer.WriteVec3(eye_);
  writer.WriteVec3(target_);
  writer.WriteVec3(up_);
  writer.WriteFloat("fov", fov_);
  writer.WriteFloat("Aspect Ratio", aspectRatio_);
  writer.WriteFloat("NearPlane", nearPlane_);
  writer.WriteFloat("FarPlane", farPlane_);
  writer.EndBlock();
}

void Camera::Deserialize(Serializer& reader) {
  eye_ = reader.ReadVec3();
  target_ = reader.ReadVec3();
  up_ = reader.ReadVec3();
  fov_ = reader.ReadFloat();
  aspectRatio_ = reader.ReadFloat();
  nearPlane_ = reader.ReadFloat();
  farPlane_ = reader.ReadFloat();
  LookAhead();
  Project();
}

Camera* GetCamera(const GameObject& object) { return object.Get<Camera>(); }

Camera* GetMainCamera() { return GetCamera(Objects().GetCamera()); }
