// What brings points under each rule, and what costs time, told by the picture that a player sees of it. Computer
// players of the tool aim by it; the rules themselves do not read it.
#pragma once

#include <span>
#include <string_view>

enum class Pays {
  kHit,    ///< each contact of a fast player
  kTouch,  ///< an overlap, however slow, once
  kStay,   ///< as long as one is alone on it
  kOwn,    ///< as long as one was the last fast player to touch it
  kWear    ///< as long as it stands over one's head; whoever rams the wearer takes it
};

struct PayingThing {
  std::string_view rule;     ///< the factory's name for it; empty: whichever runs
  std::string_view picture;  ///< file name in Texture/
  Pays how;
  float points;    ///< of one hit or touch on average, or of a second of game time
  int owner = -1;  ///< kOwn: the player index whose picture it is; -1: nobody's
};

/// All of them.
std::span<const PayingThing> PayingThings();

/// The picture of what stuns by flying into a player, under every rule.
inline constexpr std::string_view kStunningPicture = "cannonball.png";
