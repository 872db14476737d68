// The way from a player to the rules of the match, which level data brings.
#pragma once

#include "core/script_box.h"

/// The objectives' script of the match controller, or null while no match runs.
inline Script* FindObjectives() { return FindScript("segmentmanager", "ObjectiveManager"); }
