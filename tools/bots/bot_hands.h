// The hands of a bot: they hold the trigger while there is something to charge for and let go when the charge is
// there, with an error of the aim. By a pad's stick and trigger, or by the mouse.
#pragma once

#include "core/scripted_platform.h"
#include "physics/math/vec3.h"
#include "tools/bots/bot.h"
#include "tools/bots/bot_dice.h"

class BotHands {
 public:
  /// Largest error of an aim to either side, radians.
  static constexpr float kAimError = 0.08f;

  /// `dice` must outlive it.
  BotHands(int player, bool mouse, BotDice& dice) : dice_(dice), player_(player), mouse_(mouse) {}

  /// One frame, before the platform is pumped. `plan`: the last that was made.
  void Move(int frame, const BotPlan& plan, ScriptedPlatform& platform);
  /// Lets everything go: no match runs, or it stands still.
  void Rest(ScriptedPlatform& platform);

  /// Of the launch that is being charged.
  float GetCharge() const;
  int GetLaunchFrame() const { return launchFrame_; }
  const Vec3& GetLaunch() const { return launch_; }

 private:
  void Hold(bool held, ScriptedPlatform& platform);
  void Aim(const Vec3& aim, const Vec3& place, ScriptedPlatform& platform) const;

  BotDice& dice_;
  int player_;
  bool mouse_;
  bool held_ = false;
  int chargedFrames_ = 0;
  float error_ = 0.0f;  // of the next launch
  int launchFrame_ = -1;
  Vec3 launch_;
};
