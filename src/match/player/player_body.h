// Paints a player's body under the picture that is its face: the newest particle is the body, with its mantle as large
// as the collider, and what it leaves behind in flight is the tail of a comet.
#pragma once

#include "graphics/basic_particle_emitter.h"

class PlayerBody final : public BasicParticleEmitter {
 public:
  /// Of the player with that index, 0 to 3; `diameter`: of the collider, world units.
  PlayerBody(int player, float diameter);

  /// Lays the body where its owner will be when the frame is drawn. Draws no random number.
  void Update(float step) override;
};
