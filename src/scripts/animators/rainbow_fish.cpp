#include "scripts/animators/rainbow_fish.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "scripts/animators/fish_animator.h"

void RainbowFish::Update(float /*step*/) {
  if (done_) return;
  done_ = true;
  if (auto* fish = static_cast<FishAnimator*>(owner->Get<ScriptBox>()->GetScript("fishanimator")))
    fish->ShowFrame(startingFrame_);
}

void RainbowFish::Serialize(Serializer& writer) const { writer.WriteInt("startingframe", startingFrame_); }
void RainbowFish::Deserialize(Serializer& reader) { startingFrame_ = reader.ReadInt(); }

void RainbowFish::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("rainbowfish");
  bar.Add("startingframe", &startingFrame_);
  bar.EndGroup();
}
