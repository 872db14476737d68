// Starting a match over: everything in the scene goes, the match is set up, and the stage is loaded.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Starts a new match on that level, the shipped one if none is named; the old objects go with the next sweep. The IDs
/// of the level's objects, in the order of the file.
std::vector<std::uint32_t> NewGame(const std::string& level = "level1");
/// True from a NewGame to the podium of its match.
bool IsMatchRunning();
/// The match is decided: the podium is about to be read.
void EndMatch();

/// Asked before somebody starts a new game over the scene by a button or the demo key; null: it may always start.
void SetNewGameGuard(bool (*mayStart)());
/// Starts one if it may.
void AskForNewGame();

/// Called at the start of every new game, to put away what a floor above has open over the old one; null for nobody.
void SetNewGameListener(void (*listener)());

/// Adds the scenery, the HUD, the score displays, the four players and the match clock to the scene.
void SetupMatch();

/// The demo key: the computer flies player 1 too, or no longer; switching it on starts a new match.
void ToggleDemoMode();
