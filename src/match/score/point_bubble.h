// Makes the bubbles in which points travel; what flies them is PointMovment.
#pragma once

#include <cstdint>

#include "physics/math/vec3.h"

/// Makes the bubbles of `points` (above 0) around `place`, of 1 or 2 points each.
void CreatePointBubbles(int points, int player, const Vec3& place, std::uint32_t creditTargetId);
/// All points awarded since the program started, whether they have arrived or not; for whoever measures a run.
long long GetPointsAwarded();
