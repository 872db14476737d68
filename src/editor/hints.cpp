#include "editor/hints.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <vector>

#include "lint/key_table.h"

namespace {

using Entry = TweakBar::Entry;

struct GroupName {
  std::string_view shown;
  std::string_view inFiles;
};
// Groups that are not called as in files.
constexpr GroupName kGroups[] = {{"Spring Generator", "spring"},       {"Gravity Generator", "gravity"},
                                 {"Wobbly Generator", "wobblypuller"}, {"BasicParticleEmitter", "bpe"},
                                 {"BossHealth", "bosshealth"},         {"ColorChanger", "color-changer"}};

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

const BlockSchema* SchemaOf(std::string_view group) {
  for (const GroupName& name : kGroups)
    if (name.shown == group) group = name.inFiles;
  const BlockSchema* schema = FindComponentSchema(group);
  return schema == nullptr ? FindScriptSchema(group) : schema;
}

// A label of the description may name several fields: "x size, y size, z size".
bool IsCalled(std::string_view labels, std::string_view name) {
  while (!labels.empty()) {
    const std::size_t end = std::min(labels.find(", "), labels.size());
    if (labels.substr(0, end) == name) return true;
    labels.remove_prefix(std::min(end + 2, labels.size()));
  }
  return false;
}

// A vector that is set for several objects stands as three numbers, "position x" and so on.
std::string_view WithoutPart(std::string_view name) {
  return name.ends_with(" x") || name.ends_with(" y") || name.ends_with(" z") ? name.substr(0, name.size() - 2) : name;
}

std::string FindHint(const Entry& entry, const std::vector<const BlockSchema*>& around) {
  for (auto schema = around.rbegin(); schema != around.rend(); ++schema) {
    if (*schema == nullptr) continue;
    for (const FieldSchema& field : (*schema)->fields)
      if (IsCalled(field.label, entry.name) || IsCalled(field.label, WithoutPart(entry.name))) return HintOf(field);
    break;
  }
  for (const OwnHint& own : kOwn)
    if (entry.path.ends_with(own.path)) return std::string(own.hint);
  return {};
}

}  // namespace

void AddHints(TweakBar& bar) {
  std::vector<const BlockSchema*> around;
  for (std::size_t i = 0; i < bar.GetEntries().size(); ++i) {
    Entry& entry = bar.GetEntry(i);
    switch (entry.kind) {
      case Entry::Kind::kGroup:
        around.push_back(SchemaOf(entry.name));
        if (around.back() != nullptr) entry.hint = around.back()->meaning;
        break;
      case Entry::Kind::kEndGroup:
        around.pop_back();
        break;
      case Entry::Kind::kVariable:
        if (entry.hint.empty()) entry.hint = FindHint(entry, around);
        break;
      default:
        break;
    }
  }
}
