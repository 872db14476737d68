// What the blocks of a level file mean, in words; lint's key table says what they hold. The two are printed together as
// docs/format-reference.md.
#pragma once

#include <cstdio>
#include <span>
#include <string_view>

struct FieldText {
  std::string_view name;  ///< of a value whose lines have no key of its own; else empty
  std::string_view unit;  ///< empty for none
  std::string_view range;
  std::string_view meaning;
  int lines = 1;  ///< fields of the key table that this describes together
};

struct BlockText {
  std::string_view name;
  std::string_view meaning;  ///< one sentence
  std::span<const FieldText> fields = {};
};

std::span<const BlockText> ComponentTexts();
std::span<const BlockText> ScriptTexts();
std::span<const BlockText> ObjectiveTexts();

/// Writes the reference of components, scripts and objectives, in Markdown.
void PrintReference(std::FILE* out);
