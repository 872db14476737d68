// What a stun does to a player: for a moment it has no control, spins, and wears stars.
#pragma once

#include "core/script.h"

class CharacterController;
class ScriptBox;

class Dizzy final : public Script {
 public:
  static constexpr float kDuration = 1.0f;   ///< seconds of game time
  static constexpr float kSpinSpeed = 6.0f;  ///< radians per second

  /// Gives control back when the time is over.
  void Update(float step) override;
  void Initialize() override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "dizzy"; }

  /// Starts or restarts the stun; each one spins the other way round than the one before.
  void Stun();
  /// True until the stun's own time is over, even if somebody else gave control back before.
  bool IsStunned() const { return stunned_; }

 private:
  CharacterController* FindController() const;
  void Spin();
  void ShowStars() const;

  static constexpr float kNever = -1337.0f;

  ScriptBox* scripts_ = nullptr;  // the owner's, which holds this
  float stunStart_ = kNever;      // game time
  bool stunned_ = false;
  bool spinBack_ = false;
};

/// The object's Dizzy, or null: only players have one.
Dizzy* FindDizzy(const GameObject& object);
