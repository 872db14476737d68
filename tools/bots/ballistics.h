// How launched bodies move, as one who has played for a while knows it: they slow down evenly and stop.
#pragma once

#include <array>

#include "physics/math/vec3.h"

namespace Ballistics {

inline constexpr float kFullCharge = 10.0f;
inline constexpr float kChargeAFrame = kFullCharge / 45.0f;
inline constexpr float kPlayerRadius = 0.5f;
/// World units that a speed of 1 covers in a frame, slow motion apart.
float UnitsAFrame();
/// World units that a launch of speed 1 covers until it stops, 1.89.
float ReachOfLaunch();
/// Share of its speed that a player keeps in a frame.
float KeptAFrame();
/// Frames in which a launch of this speed covers the distance; below 0: it never does.
float FramesTo(float distance, float speed);
/// What is left of a launch's speed after the distance; below 0: it is out of reach.
inline float SpeedAfter(float distance, float speed) { return speed - distance / ReachOfLaunch(); }

/// The middle of the arena's free place for a player, each way.
inline constexpr float kFreeX = 14.5f;
inline constexpr float kFreeY = 9.5f;
/// Whether a player's middle can be there.
bool IsInside(const Vec3& place, float margin = 0.0f);

/// One frame of a player who flies by himself, off the arena's walls.
void Drift(Vec3& place, Vec3& velocity, float units);

}  // namespace Ballistics
