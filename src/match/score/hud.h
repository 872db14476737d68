// The objects that are seen only while the game runs.
#pragma once

#include <cstdint>

/// Forgets all; whether the HUD is shown stays as it is.
void ClearHudObjects();
/// Adds an object by ID; it may die at any time.
void AddHudObject(std::uint32_t objectId);
/// Switches the sprites of all HUD objects, only when this changes something.
void ShowHud(bool shown);
