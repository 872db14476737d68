#include "editor/bars/field_schema.h"

#include <algorithm>

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

const BlockSchema* BlockOfGroup(std::string_view group) {
  for (const GroupName& name : kGroups)
    if (name.shown == group) group = name.inFiles;
  const BlockSchema* block = FindComponentSchema(group);
  return block == nullptr ? FindScriptSchema(group) : block;
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

}  // namespace

std::vector<const BlockSchema*> BlocksOf(const TweakBar& bar) {
  std::vector<const BlockSchema*> blocks;
  std::vector<const BlockSchema*> around = {nullptr};  // of the open groups, or what they stand in
  for (const Entry& entry : bar.GetEntries()) {
    if (entry.kind == Entry::Kind::kEndGroup) around.pop_back();
    const BlockSchema* own = entry.kind == Entry::Kind::kGroup ? BlockOfGroup(entry.name) : around.back();
    blocks.push_back(own);
    if (entry.kind == Entry::Kind::kGroup) around.push_back(own == nullptr ? around.back() : own);
  }
  return blocks;
}

const FieldSchema* FindFieldSchema(const BlockSchema& block, std::string_view name) {
  const auto found = std::find_if(block.fields.begin(), block.fields.end(),
                                  [&](const FieldSchema& field) { return IsCalled(field.label, name); });
  return found == block.fields.end() ? nullptr : &*found;
}
