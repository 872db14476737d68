// One object of a level file as lint read it.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/lint/block_reader.h"

struct LintObject {
  int line = 0;
  bool hasName = false;
  std::string_view name;
  std::vector<LintBlock> components;
  std::vector<LintBlock> scripts;

  const LintBlock* Find(std::string_view component) const { return Find(components, component); }
  const LintBlock* FindScript(std::string_view script) const { return Find(scripts, script); }
  bool HasScript(std::string_view script) const { return FindScript(script) != nullptr; }

 private:
  static const LintBlock* Find(const std::vector<LintBlock>& blocks, std::string_view name) {
    const auto found =
        std::find_if(blocks.begin(), blocks.end(), [&](const auto& block) { return block.name == name; });
    return found == blocks.end() ? nullptr : &*found;
  }
};

/// The line of that value, or null when the block is null or has none.
inline const LintLine* ValueOf(const LintBlock* block, std::string_view key) {
  if (block == nullptr) return nullptr;
  const auto found = block->values.find(key);
  return found == block->values.end() ? nullptr : found->second;
}

/// Whether it has a collider that is a ghost, or one that is none.
inline bool HasCollider(const LintObject& object, bool ghost) {
  for (const LintBlock& block : object.components) {
    const LintLine* value = ValueOf(&block, "ghost");
    if (value != nullptr && (value->value == "true") == ghost) return true;
  }
  return false;
}
