// Hops anywhere at any time: the game's own pilot, through stick and trigger.
#pragma once

#include "tools/bots/bot.h"

class HopBot final : public Bot {
 public:
  explicit HopBot(BotDice& dice) : dice_(dice) {}

  BotPlan Think(const Sight& sight, const BotMind& mind) override;

 private:
  BotDice& dice_;
  int lastLaunch_ = -2;  // frame of the launch before the one that is planned
  int nextLaunch_ = 0;   // frame
  Vec3 hop_;
};
