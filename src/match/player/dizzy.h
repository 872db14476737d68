// What a stun does to a player: for a moment it has no control, spins, and wears stars.
#pragma once

#include "core/script.h"

class Dizzy final : public Script {
 public:
  static constexpr float kDuration = 1.0f;   ///< of a stun, seconds of game time
  static constexpr float kSpinSpeed = 6.0f;  ///< radians per body second

  /// Gives control back when the time is over.
  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "dizzy"; }

  /// Starts or restarts the stun; each one spins the other way round than the one before.
  void Stun();
  /// True until the stun's own time is over, even if somebody else gave control back before.
  bool IsStunned() const { return stunned_; }

 private:
  void TakeControl(bool taken) const;
  void Spin();
  void ShowStars() const;

  static constexpr float kNever = -1337.0f;

  float stunStart_ = kNever;  // game time
  bool stunned_ = false;
  bool spinBack_ = false;
};

/// The object's Dizzy, or null: only players have one.
Dizzy* FindDizzy(const GameObject& object);
