// A player's force gauge. Under charge rules a charge fills from 0 while the trigger is held and is paid out whole as
// the launch; under budget rules launches spend a budget that a refill restores. It talks to its player by events only.
#pragma once

#include <string>

#include "core/script.h"

class ForceCurrency final : public Script {
 public:
  ForceCurrency() = default;
  /// `target`: name of the player object that gets the answers; `maximum`: largest force; `resetTime`: seconds from 0
  /// to the maximum at 60 frames per second, at once when not above 0.
  ForceCurrency(int playerTeam, std::string target, int maximum, float resetTime);

  void Update(float step) override;
  void Initialize() override;
  void HandleEvent(const Event& event) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  const char* GetName() const override { return "ForceCurrency"; }

 private:
  void Fill();
  void ShowGauge();
  /// Sends to the reply target; a target that is gone drops the event.
  void Reply(const Event& event) const;

  std::string replyTarget_ = "Errar";
  int max_ = 10;
  int team_ = 9;  // player index whose requests are answered
  float current_ = 10.0f;
  float resetSpeed_ = 2.0f;  // seconds of a whole fill
  float startY_ = 0.0f;
  float startScaleY_ = 1.0f;
  float fillPerFrame_ = 0.0f;
  bool filling_ = false;
  bool chargeRules_ = false;
};
