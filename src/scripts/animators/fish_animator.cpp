#include "scripts/animators/fish_animator.h"

#include "core/field_bar.h"
#include "core/serializer.h"
#include "graphics/sprite.h"
#include "scripts/fast_player.h"

namespace {
constexpr float kAfterLast = 0.5f;  // where the strip goes on after its last frame
}

void FishAnimator::Update(float /*step*/) {
  if (started_) return;
  started_ = true;
  ShowOffset();
}

void FishAnimator::OnContact(const GalePhysics::Contact& contact) {
  if (!started_ || !InvolvesFastPlayer(contact)) return;
  offset_ += FrameWidth();
  if (offset_ > 1.0f) offset_ = 0.0f;
  if (offset_ == 1.0f) offset_ = kAfterLast;
  ShowOffset();
}

void FishAnimator::ShowFrame(int frame) {
  offset_ = static_cast<float>(frame) * FrameWidth();
  ShowOffset();
}

void FishAnimator::ShowOffset() const {
  Sprite* sprite = owner->Get<Sprite>();
  if (sprite == nullptr) return;
  sprite->row = FrameWidth();
  sprite->columns = 1.0f;
  sprite->startFrame = offset_;
  sprite->endFrame = 0.0f;
}

void FishAnimator::Serialize(Serializer& writer) const { writer.WriteInt("NumberOfAnimationFrames", frames_); }
void FishAnimator::Deserialize(Serializer& reader) { frames_ = reader.ReadInt(); }

void FishAnimator::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("fishanimator");
  bar.Add("NumberofFramesinAnimation", &frames_);
  bar.EndGroup();
}
