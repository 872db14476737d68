// Archetypes: files that hold the pattern of one object, from which code makes as many as it likes.
#pragma once

#include <string>

#include "core/game_object.h"

/// Reads the archetype and returns its object, passing over a copy of the generator host; null when it makes nothing,
/// of which a missing file is told in a line.
GameObject* CreateFromArchetype(const std::string& name);
