// The match in which a level is tried: one piece, one rule, in a level's own text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/game_object.h"

/// How a level is tried.
struct TryWishes {
  int rule = 0;            ///< 0: the level's own, else one of ObjectiveNames counted from 1
  bool pilots = false;     ///< the computer flies player 1 too
  float duration = 60.0f;  ///< of the piece, game seconds
};

/// The text of a level that runs an episode of that piece alone, with the rule begun again until it is over.
std::string MatchText(const std::string& piece, std::string_view rule, float duration);

/// The objects that are not Core, and whether the match controller is one of them.
std::vector<GameObject*> ObjectsOfLevel();
bool HasController(const std::vector<GameObject*>& objects);
