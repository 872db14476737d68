// What a player sees of the game at a time: places, speeds and pictures, the title of the rule, and who is dizzy.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "match/players.h"
#include "match/rules/what_pays.h"
#include "physics/math/vec3.h"

struct SeenThing {
  std::uint32_t id;  ///< the same thing in two sights
  Vec3 place;
  Vec3 velocity;  ///< units per body second
  float radius;
  const PayingThing* pays;  ///< under the present rule; null: what stuns, or what stands in the way
  bool stuns;
  bool taken;  ///< it wears a player's colour, so it is not to be had
};

struct SeenPlayer {
  bool there = false;
  Vec3 place;
  Vec3 velocity;
};

struct Sight {
  int frame = -1;
  std::string rule;
  float units = 0.0f;  ///< that a speed of 1 covers in the frame: less in slow motion
  std::array<SeenPlayer, kPlayers> players;
  std::vector<SeenThing> things;     ///< that pay or stun
  std::vector<SeenThing> obstacles;  ///< that stand fast
};

/// The player under a crown; -1 for none.
int WearerOf(const SeenThing& crown, const Sight& sight);

/// Fills in what is to be seen now, in the place of what was seen before.
void Look(int frame, Sight& sight);
