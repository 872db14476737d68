#include "physics/slow_motion.h"

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/scene_state.h"
#include "physics/rigid_body.h"

using GalePhysics::RigidBody;

namespace {

constexpr float kTimerStep = 0.017f;    // real seconds a frame, whatever the frame step is
constexpr float kRampOutStep = 0.017f;  // frame step that the ramp-out rises to

enum class Phase { kRampIn, kHold, kRampOut };

struct SlowMotion {
  bool active = false;
  Phase phase = Phase::kRampIn;
  float phaseTimer = 0.0f;
  float rampIn = 0.0f;
  float hold = 0.0f;
  float rampOut = 0.0f;
};

SlowMotion& State() {
  static SceneState<SlowMotion> state;
  return *state;
}

template <class Action>
void ForEachBody(Action action) {
  for (const auto& object : Objects().GetObjects())
    if (RigidBody* body = object->Get<RigidBody>()) action(*body);
}

void RestoreDamping() {
  ForEachBody([](RigidBody& body) {
    if (body.storedDamping != 0.0f) body.damping = body.storedDamping;
    body.storedDamping = 0.0f;
  });
}

void Enter(Phase phase, float spent) {
  State().phase = phase;
  State().phaseTimer -= spent;
}

}  // namespace

void StartSlowMotion(float hold, float rampIn, float rampOut) {
  Time().frameStep = Time().baseFrameStep;
  RestoreDamping();
  State() = {true, Phase::kRampIn, 0.0f, rampIn, hold, rampOut};
  ForEachBody([](RigidBody& body) {
    body.storedDamping = body.damping;
    body.damping = 1.0f;
  });
}

void StopSlowMotion() {
  State().active = false;
  Time().frameStep = Time().baseFrameStep;
  RestoreDamping();
}

void UpdateSlowMotion() {
  SlowMotion& state = State();
  if (!state.active) return;
  state.phaseTimer += kTimerStep;
  switch (state.phase) {
    case Phase::kRampIn:
      if (state.rampIn > state.phaseTimer) {
        Time().frameStep *= 1.0f - state.phaseTimer / state.rampIn;
      } else {
        // The decay never reaches 0 by itself, and a tiny step would still deliver contacts while nothing moves.
        Time().frameStep = 0.0f;
        Enter(Phase::kHold, state.rampIn);
      }
      break;
    case Phase::kHold:
      if (state.hold <= state.phaseTimer) Enter(Phase::kRampOut, state.hold);
      break;
    case Phase::kRampOut:
      if (state.rampOut > state.phaseTimer)
        Time().frameStep = state.phaseTimer / state.rampOut * kRampOutStep;
      else
        StopSlowMotion();
      break;
  }
}
