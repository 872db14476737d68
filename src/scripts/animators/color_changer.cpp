#include "scripts/animators/color_changer.h"

#include "core/field_bar.h"
#include "core/game_time.h"
#include "core/player_colours.h"
#include "scripts/fast_player.h"

namespace {
constexpr float kFlashTime = 0.01f;  // seconds of game time: three frames are drawn in it
}

void ColorChanger::OnContact(const GalePhysics::Contact& contact) {
  Sprite* sprite = owner->Get<Sprite>();
  if (sprite == nullptr || contact.second == nullptr || !InvolvesFastPlayer(contact)) return;
  const int player = PlayerIndexFromName(contact.second->owner->name);
  if (player < 0) return;
  restoreTime_ = Time().elapsedTime + kFlashTime;
  if (!saved_)
    saved_ = {sprite->r * kFullColour, sprite->g * kFullColour, sprite->b * kFullColour, sprite->a * kFullColour};
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  SetColour255(*sprite, {colour.r, colour.g, colour.b, saved_->a});
}

void ColorChanger::Update(float /*step*/) {
  if (!saved_ || Time().elapsedTime < restoreTime_) return;
  if (Sprite* sprite = owner->Get<Sprite>()) SetColour255(*sprite, *saved_);
  saved_.reset();
  restoreTime_ = kNever;
}

void ColorChanger::Swap() {
  Sprite* sprite = saved_ ? owner->Get<Sprite>() : nullptr;
  if (sprite == nullptr) return;
  const Colour255 shown = {sprite->r * kFullColour, sprite->g * kFullColour, sprite->b * kFullColour,
                           sprite->a * kFullColour};
  SetColour255(*sprite, *saved_);
  saved_ = shown;
}

void ColorChanger::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("ColorChanger"); }
