// Flashes in the colour of a player who slams into the owner.
#pragma once

#include <limits>
#include <optional>

#include "core/script.h"
#include "graphics/sprite_colour.h"

class ColorChanger final : public Script {
 public:
  /// Gives the colour back when the flash is over.
  void Update(float step) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  void GiveBack() override { Swap(); }
  void TakeAgain() override { Swap(); }
  const char* GetName() const override { return "color-changer"; }

 private:
  void Swap();

  static constexpr float kNever = std::numeric_limits<float>::max();

  std::optional<Colour255> saved_;  // the owner's own colour, during a flash
  float restoreTime_ = kNever;      // game time
};
