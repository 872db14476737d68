// Levels and archetypes to and from the disk, as the tools bar does it. What is said is printed; only files of the
// game's own format are written over.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/game_object.h"

/// Where levels and archetypes are saved and Texture/ is, from the root on.
std::string SaveFolder();

/// Whether a save may write there: onto a level, an archetype, an empty file or nothing; a message otherwise.
bool IsLevelOrNothing(const std::string& name);

/// The scene as Save Level writes it, with a last object that carries `duration` as its name.
std::string TextWithDuration(float duration);

/// Writes the scene under `name` and again into autosaves/ under the number `autosave`, with a last object that carries
/// `duration` as its name, and counts the number on. What is dead goes first. True when the level itself was written;
/// whoever reads it next gets what it holds now.
/// Nothing happens, with a message, under a name that is not plain.
bool SaveLevelWithAutosave(const std::string& name, float duration, int& autosave);

/// Marks what is not Core dead and loads the level, as it is on the disk now; the IDs of its objects in the order of
/// the file. When its last object is named by a number alone, that is the duration: the object goes, every DeathTimer
/// of the level gets it, and so does `duration`.
std::vector<std::uint32_t> LoadLevelFile(const std::string& name, float& duration);

/// Writes the object alone; whoever reads the file next gets that. False when the name is empty or not plain, or the
/// file cannot be written.
bool SaveArchetype(const std::string& name, GameObject& object);
