// Whether an object's numbers can be those of anything in the game.
#pragma once

#include <string>

#include "core/game_object.h"

/// World units from the middle along each axis. The farthest that anything of a match has been seen is 430; at this
/// distance a float's steps are a thousandth of a unit, and collisions begin to tremble.
inline constexpr float kWorldReach = 10000.0f;

/// The first number of transform, body and collider that is not finite, or what else tells that the body has left the
/// finite numbers, in words; empty when all is well.
std::string FindWrongNumber(const GameObject& object);

/// The place of an object, if it is farther out than kWorldReach, in words; empty otherwise.
std::string FindFarPlace(const GameObject& object);
