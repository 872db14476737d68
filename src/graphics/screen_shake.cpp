#include "graphics/screen_shake.h"

#include <cmath>

#include "core/pause.h"
#include "core/random.h"
#include "core/scene_state.h"
#include "graphics/camera.h"

namespace {

struct Shake {
  bool shaking = false;
  Vec3 direction;
  float magnitude = 0.0f;
  float decay = 0.0f;
  float remaining = 0.0f;
};

Shake& Current() {
  static SceneState<Shake> shake;
  return *shake;
}

// The direction's projection onto a random vector of the first quadrant.
Vec3 RandomDisplacement(const Vec3& direction) {
  const float x = RandomUnit();
  const float y = RandomUnit();
  const float squared = x * x + y * y;
  if (squared == 0.0f) return {};
  const float scale = (direction.x * x + direction.y * y) / squared;
  return {x * scale, y * scale, 0.0f};
}

}  // namespace

void ScreenShake::Update(float step) {
  Shake& shake = Current();
  if (!shake.shaking || step == 0.0f || std::isnan(step) || IsPaused()) return;
  const Vec3 displacement = RandomDisplacement(shake.direction) * shake.magnitude;
  shake.magnitude -= shake.decay * step;
  shake.remaining -= step;
  if (shake.magnitude <= 0.0f || shake.remaining <= 0.0f) shake.shaking = false;
  if (Camera* camera = GetMainCamera()) camera->offset += displacement;
}

void StartShake(const Vec3& direction, float magnitude, float decay, float duration) {
  Current() = {true, Normalised(direction), magnitude, decay, duration};
}
