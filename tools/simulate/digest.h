// One number for the whole state of a run: two runs that end alike have the same, wherever their objects lie in memory
// and whatever IDs they have.
#pragma once

#include <cstdint>

/// FNV-1a over every object's name, flags, Transform, body, sprite, colliders and script values, the random generator
/// and the clocks. Nothing of the scene changes.
std::uint64_t StateDigest();
