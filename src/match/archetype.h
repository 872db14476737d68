// Archetypes: files that hold the pattern of one object, from which code makes as many as it likes.
#pragma once

#include <string>

#include "core/game_object.h"

/// Reads the archetype and returns its object, passing over a copy of the generator host; null, with a line, when it
/// makes nothing.
GameObject* CreateFromArchetype(const std::string& name);
