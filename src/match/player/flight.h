// What a rule set steers a player with, frame by frame.
#pragma once

#include <string>

#include "physics/math/vec3.h"

class GameObject;

struct Flight {
  const GameObject& octopus;
  const std::string& gauge;  ///< name of the object that carries the player's ForceCurrency
  int player;                ///< index
  Vec3& aim;                 ///< the stick's direction; a rule may stretch or shorten it for this frame
};
