// What the fields on a bar mean, from the one description of level files.
#pragma once

#include "editor/bars/tweak_bar.h"

/// Gives every variable that the description knows, and every group of a component or script, its hint: meaning, unit
/// and range. Those that have one keep it.
void AddHints(TweakBar& bar);
