#include "tools/bots/hop_bot.h"

#include <algorithm>

#include "tools/bots/ballistics.h"

namespace {

constexpr float kSpeed = 8.0f;           // along each axis at most
constexpr float kShortestPause = 59.0f;  // frames: half a game second
constexpr float kLongestPause = 412.0f;

}  // namespace

BotPlan HopBot::Think(const Sight& /*sight*/, const BotMind& mind) {
  if (lastLaunch_ != mind.launchFrame) {
    lastLaunch_ = mind.launchFrame;
    const float x = dice_.Between(-kSpeed, kSpeed);
    const float y = dice_.Between(-kSpeed, kSpeed);
    hop_ = {x, y, 0.0f};
    nextLaunch_ = mind.frame + static_cast<int>(dice_.Between(kShortestPause, kLongestPause));
  }
  const float strength = std::min(Length(hop_), Ballistics::kFullCharge);
  const float left = static_cast<float>(nextLaunch_ - mind.frame);
  return {left * Ballistics::kChargeAFrame <= strength - mind.charge, false, Normalised(hop_), strength, {}};
}
