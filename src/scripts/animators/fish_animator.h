// A strip of frames side by side, of which the next one shows each time that a fast player smacks the owner. The first
// two frames of a strip of four are shown once.
#pragma once

#include "core/script.h"

class Sprite;

class FishAnimator final : public Script {
 public:
  void Update(float step) override;
  /// Before the first update a smack has no effect.
  void OnContact(const GalePhysics::Contact& contact) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "fishanimator"; }

  /// Shows another frame at once; frame 0 is the leftmost.
  void ShowFrame(int frame);

 private:
  float FrameWidth() const { return frames_ > 0 ? 1.0f / static_cast<float>(frames_) : 1.0f; }
  void ShowOffset() const;

  bool started_ = false;
  float offset_ = 0.0f;  // of the frame shown, as a fraction of the strip
  int frames_ = 4;
};
