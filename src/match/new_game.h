// Starting a match over: everything in the scene goes, the match is set up, and the stage is loaded.
#pragma once

/// Starts a new match; the old objects go with the next sweep.
void NewGame();
/// True from the first NewGame on.
bool IsMatchRunning();

/// Adds the scenery, the HUD and the four players to the scene.
void SetupMatch();

/// The demo key: the computer flies player 1 too, or no longer; switching it on starts a new match.
void ToggleDemoMode();
