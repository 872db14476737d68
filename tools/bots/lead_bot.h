// Aims where things will be, chooses by what they pay for the time, keeps what pays for staying, avoids what stuns,
// and rams rivals who hold the crown or stand on the hill.
#pragma once

#include "tools/bots/bot.h"

class LeadBot final : public Bot {
 public:
  BotPlan Think(const Sight& sight, const BotMind& mind) override;
};
