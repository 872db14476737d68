// Setting up what the game and its tools share: the tables, the cursor and the camera, and the way into a first match.
#pragma once

/// Fills the script and component tables and builds the cursor and camera objects; after Objects().Reset() again.
void BuildWorld();

/// Binds the keys that work at any time.
void BindKeys();

/// Loads the pictures that exist and the effects, switches to the "wave" screen shader and starts the first match.
void StartFirstMatch();
