// What a mirror turns beside the form of objects: velocities, and the ways and places that their scripts hold.
#pragma once

#include <vector>

#include "core/game_object.h"
#include "physics/math/vec3.h"

class History;

/// Mirrors the vectors among the objects' fields along that side, by what the description of level files says of them.
/// A generator that others use too stays as it is.
void MirrorFields(History& history, const std::vector<GameObject*>& objects, float Vec3::*side);
