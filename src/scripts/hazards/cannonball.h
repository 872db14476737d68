// What fountains and ships fire.
#pragma once

#include "physics/math/vec3.h"

/// Makes a ball of the archetype "cannonball" at `place`, flying at `velocity` (units per body second). Without the
/// archetype there is none, and a line says so.
void FireCannonball(const Vec3& place, const Vec3& velocity);
