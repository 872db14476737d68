// Aims at the nearest thing that pays, where it is seen, and charges for the distance.
#pragma once

#include "tools/bots/bot.h"

class NearBot final : public Bot {
 public:
  BotPlan Think(const Sight& sight, const BotMind& mind) override;
};
