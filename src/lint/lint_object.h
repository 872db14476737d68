// One object of a level file as lint read it.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "lint/block_reader.h"

struct LintObject {
  int line = 0;
  std::string_view id;
  bool hasName = false;
  std::string_view name;
  bool core = false;
  std::vector<LintBlock> components;
  std::vector<LintBlock> scripts;

  const LintBlock* Find(std::string_view component) const { return Find(components, component); }
  const LintBlock* FindScript(std::string_view script) const { return Find(scripts, script); }
  bool HasScript(std::string_view script) const { return FindScript(script) != nullptr; }
  /// Whether it is the copy of the generator host.
  bool IsHost() const;

 private:
  static const LintBlock* Find(const std::vector<LintBlock>& blocks, std::string_view name) {
    const auto found =
        std::find_if(blocks.begin(), blocks.end(), [&](const auto& block) { return block.name == name; });
    return found == blocks.end() ? nullptr : &*found;
  }
};

/// The only line of that value, or null when the block is null or has none.
const LintLine* ValueOf(const LintBlock* block, std::string_view key);
/// Its number, or `none` when the block is null or has none.
float NumberOf(const LintBlock* block, std::string_view key, float none = 0.0f);
/// The numbers of a vector, a matrix or the like by the field's name; empty when the block is null or has none.
std::vector<float> NumbersOf(const LintBlock* block, std::string_view name);

/// Whether it has a collider that is a ghost, or one that is none.
bool HasCollider(const LintObject& object, bool ghost);
