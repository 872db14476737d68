#include "graphics/camera_centerer.h"

#include "core/object_manager.h"
#include "core/pause.h"
#include "core/player_name.h"
#include "core/transform.h"
#include "graphics/camera.h"

namespace {

constexpr float kThird = 0.33333334f;
constexpr float kRest = 1e-5f;  // world units; less than a thousandth of a pixel

struct Average {
  Vec3 sum;
  int count = 0;

  void Add(const Vec3& position) {
    sum += position;
    ++count;
  }
  Vec3 Get() const { return count == 0 ? Vec3{} : sum * (1.0f / static_cast<float>(count)); }
};

}  // namespace

// Frames under the editor's freeze leave no trace: the mouse is seen through the camera.
void CameraCenterer::Update(float /*step*/) {
  if (!IsFrozen()) Lean();
  if (Camera* camera = GetCamera(*owner)) camera->offset += lean_;
}

void CameraCenterer::Lean() {
  Average all;
  Average players;
  for (const auto& object : Objects().GetObjects()) {
    const Vec3& position = object->GetTransform().position;
    if (position == Vec3{} || !IsFinite(position)) continue;
    all.Add(position);
    if (IsPlayerName(object->name)) players.Add(position);
  }
  Vec3 aim = (all.Get() + players.Get()) * kThird;
  if (!IsFinite(aim)) aim = {};  // two far places may add up to infinity
  if (const float length = Length(aim); length >= kMaxAim) aim = aim * (1.0f / length) * kMaxAim;
  lean_ = (lean_ * kSmoothing + aim) * (1.0f / (kSmoothing + 1.0f));
  // While the game stands still the picture comes to rest, where it would creep on for hundreds of frames unseen: each
  // takes a tenth off what is left, and nothing of it shows long before it is too small a number.
  if (IsPaused() && Length(aim - lean_) < kRest) lean_ = aim;
}
