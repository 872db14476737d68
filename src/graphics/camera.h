// Looks straight down the negative z axis at the stage from its owner's place. Effects push it by adding to `offset`,
// which one update consumes. Matrices follow GLM: column-major, right-handed.
#pragma once

#include <glm/mat4x4.hpp>

#include "core/component.h"
#include "physics/math/vec3.h"

class Camera final : public Component {
 public:
  static constexpr Kind kKind = Kind::kCamera;

  Camera();

  void Update(float step) override;
  void Serialize(Serializer& writer) override;
  void Deserialize(Serializer& reader) override;

  /// `fov`: vertical, degrees; `aspect`: width over height; plane distances in world units.
  void SetPerspective(float fov, float aspect, float nearPlane, float farPlane);
  float GetFov() const { return fov_; }
  float GetAspect() const { return aspectRatio_; }
  float GetNear() const { return nearPlane_; }
  float GetFar() const { return farPlane_; }
  const glm::mat4& GetView() const { return view_; }
  const glm::mat4& GetProjection() const { return projection_; }

  /// The point of the plane z = `planeZ` under a window pixel; y grows downwards in the window.
  Vec3 ScreenToWorld(float mouseX, float mouseY, float planeZ) const;

  Vec3 offset;  ///< world units, for the next update only; any number of effects may add to it

 private:
  void LookAhead();
  void Project();

  Vec3 eye_ = {0.0f, 0.0f, 19.0f};
  Vec3 target_ = {0.0f, 0.0f, 1.0f};
  Vec3 up_ = {0.0f, 1.0f, 0.0f};
  float fov_ = 60.0f;
  float aspectRatio_ = 1.7777778f;
  float nearPlane_ = 1.0f;
  float farPlane_ = 60.0f;
  glm::mat4 view_;
  glm::mat4 projection_;
};

/// The object's camera, or null.
Camera* GetCamera(const GameObject& object);
/// The camera of the object manager's camera object, which every draw uses; null before that is built.
Camera* GetMainCamera();
