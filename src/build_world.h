// Setting up what the game and its tools share: the tables, the cursor and the camera, and the way into a first match.
#pragma once

/// Fills the script and component tables and builds the cursor and camera objects; after Objects().Reset() again.
void BuildWorld();

/// Binds the keys that work from the first frame on.
void BindKeys();

/// Loads everything at once and starts the first match, as the title does when it ends; for runs without the screens.
void StartFirstMatch();
