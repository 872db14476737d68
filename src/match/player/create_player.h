// Builds one player: the octopus, and the gauge that feeds its launches.
#pragma once

#include <string>

#include "physics/math/vec3.h"

struct PlayerDefinition {
  int index;  ///< 0 to 3
  std::string playerName;
  std::string gaugeName;
  std::string image;      ///< file name in Texture/
  Vec3 position;          ///< world units
  std::string scoreName;  ///< object that shows the score
};

/// Adds the player object and then its gauge to the scene, both Core.
void CreatePlayer(const PlayerDefinition& definition);
