// Ends its owner after a time: removes it, or lets a thing that gives points break.
#pragma once

#include "core/script.h"

class DeathTimer final : public Script {
 public:
  static constexpr float kDefaultTime = 3.0f;  ///< game seconds

  DeathTimer() : DeathTimer(kDefaultTime) {}
  /// `seconds` of game time from now on.
  explicit DeathTimer(float seconds) : endTime(seconds) {}

  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "DeathTimer"; }

  float endTime;  ///< seconds of game time since the timer was made

 private:
  float timer_ = 0.0f;
};

/// The timer among the object's scripts, or null.
DeathTimer* FindDeathTimer(const GameObject& object);
