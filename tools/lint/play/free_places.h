// Where on the stage a player fits between what stands fast, and which of those places no other leads to.
#pragma once

#include <vector>

#include "physics/math/vec3.h"

/// Whether a player fits there beside everything solid.
bool IsRoomAt(const Vec3& place);

/// One place in each region that is shut off from the largest, the widest first.
std::vector<Vec3> FindShutPlaces();

/// The place of that number in a sequence that covers the stage evenly, or one after it where there is room.
Vec3 ScatteredPlace(int number);
