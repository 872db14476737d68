#include "tools/bots/bot.h"

#include "tools/bots/hop_bot.h"
#include "tools/bots/lead_bot.h"
#include "tools/bots/near_bot.h"

std::unique_ptr<Bot> MakeBot(BotKind kind, BotDice& dice) {
  switch (kind) {
    case BotKind::kNone:
      break;
    case BotKind::kHop:
      return std::make_unique<HopBot>(dice);
    case BotKind::kNear:
      return std::make_unique<NearBot>();
    case BotKind::kLead:
      return std::make_unique<LeadBot>();
  }
  return nullptr;
}
