#include "tools/bots/bot_kind.h"

#include <algorithm>

namespace {
constexpr std::array<std::string_view, 4> kNames = {"none", "hop", "near", "lead"};
}

std::string_view NameOf(BotKind kind) { return kNames[static_cast<std::size_t>(kind)]; }

std::optional<BotKind> BotKindFromName(std::string_view name) {
  const auto found = std::find(kNames.begin(), kNames.end(), name);
  if (found == kNames.end()) return {};
  return static_cast<BotKind>(found - kNames.begin());
}

std::string ParseBotKinds(std::string_view text, BotKinds& kinds) {
  std::size_t count = 0;
  for (std::size_t from = 0; from <= text.size(); ++count) {
    const std::size_t end = std::min(text.find(',', from), text.size());
    const auto kind = BotKindFromName(text.substr(from, end - from));
    if (!kind) return "players are called hop, near, lead or none";
    if (count < kinds.size()) kinds[count] = *kind;
    from = end + 1;
  }
  if (count == 1) kinds.fill(kinds[0]);
  return count == 1 || count == kinds.size() ? "" : "must be four names with commas between, or one for all";
}
