// Archetypes: files that hold the pattern of an object, some of more than one, from which code makes as many as it
// likes.
#pragma once

#include <string>
#include <vector>

#include "core/game_object.h"

/// Reads the archetype and returns its objects without a copy of the generator host; prints a line when there are none.
std::vector<GameObject*> CreateAllFromArchetype(const std::string& name);
/// Likewise, but returns the first; null when there is none.
GameObject* CreateFromArchetype(const std::string& name);
