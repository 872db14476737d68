#include "editor/hints.h"

#include <cctype>
#include <vector>

#include "editor/bars/field_schema.h"

namespace {

using Entry = TweakBar::Entry;

struct OwnHint {
  std::string_view path;
  std::string_view hint;
};
// What files hold in lists, or beside the blocks, or what only the running scene has.
constexpr OwnHint kOwn[] = {
    {"/name", "What the object is called; scripts, springs and rules look for it by this name"},
    {"/Core Level Object?", "True: no level holds it, and a level that is loaded leaves it where it is"},
    {"/episode length", "Game seconds of all segments together"},
    {"/active", "False: the episode stands still"},
    {"/current segment", "Which one runs, counted from 0"},
    {"/duration", "Of the segment, in game seconds (one is 1.96 seconds of the clock), 0 and up"},
    {"/rotation", "By which the piece is turned about the middle, in degrees"},
    {"/distance", "By which it is shifted along the turned y axis, in world units"},
    {"/SectionTime", "Of the rule that runs, in game seconds"},
    {"/ObjectiveName",
     "Of the rule that the button below adds: CannonFall, HitObjects, KingOfTheHill, Crown, "
     "CollectTheRings, OctoMiners, WhaleBoss, lotbb, or NULL for a pause"},
    {"/TextureName", "A PNG in the folder Texture/ beside the levels, named without the folder"},
    {"/Script Name", "Of the script that Add Script adds; ... shows all of them"},
    {"/Component Type To Add", "What Add Component gives the object that was selected first"},
    {"/Find", "Components and scripts by a part of their name"}};

std::string Capital(std::string text) {
  if (!text.empty()) text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

std::string HintOf(const FieldSchema& field) {
  std::string hint = Capital(std::string(field.meaning));
  std::erase(hint, '`');
  std::string numbers(field.unit);
  if (const std::string range = RangeText(field.range); !range.empty())
    numbers += (numbers.empty() ? "" : ", ") + range;
  return numbers.empty() ? hint : hint + " (" + numbers + ")";
}

// A vector that is set for several objects stands as three numbers, "position x" and so on.
std::string_view WithoutPart(std::string_view name) {
  return name.ends_with(" x") || name.ends_with(" y") || name.ends_with(" z") ? name.substr(0, name.size() - 2) : name;
}

std::string FindHint(const Entry& entry, const BlockSchema* block) {
  const FieldSchema* field = block == nullptr ? nullptr : FindFieldSchema(*block, entry.name);
  if (block != nullptr && field == nullptr) field = FindFieldSchema(*block, WithoutPart(entry.name));
  if (field != nullptr) return HintOf(*field);
  for (const OwnHint& own : kOwn)
    if (entry.path.ends_with(own.path)) return std::string(own.hint);
  return {};
}

}  // namespace

void AddHints(TweakBar& bar) {
  const std::vector<const BlockSchema*> blocks = BlocksOf(bar);
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    Entry& entry = bar.GetEntry(i);
    if (entry.kind == Entry::Kind::kGroup && blocks[i] != nullptr) entry.hint = blocks[i]->meaning;
    if (entry.kind == Entry::Kind::kVariable && entry.hint.empty()) entry.hint = FindHint(entry, blocks[i]);
  }
}
