// The table of the four players, and who flies them. Player index 0 to 3; objects are kept by ID, which survives a
// restart.
#pragma once

#include <cstdint>

#include "core/game_object.h"

inline constexpr int kPlayers = 4;

/// Whether the number is one of the four players.
constexpr bool IsPlayerIndex(int index) { return index >= 0 && index < kPlayers; }

/// Enters a player's object; an index out of range is ignored.
void SetPlayerObject(int index, std::uint32_t objectId);
/// The player's object, or null when it is gone.
GameObject* GetPlayerObject(int index);

/// While it is on, the computer flies player 1 too unless a gamepad does.
bool IsDemoMode();
void SetDemoMode(bool on);
