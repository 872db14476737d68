// The way to the rules of the match: the object that carries them comes from level data.
#pragma once

#include "core/script_box.h"

/// Name of the match controller, which carries the SegmentManager and, after it, the ObjectiveManager.
inline constexpr char kMatchController[] = "segmentmanager";

/// The objectives' script of the match controller, or null while no match runs.
inline Script* FindObjectives() { return FindScript(kMatchController, "ObjectiveManager"); }
