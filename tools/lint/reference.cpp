// docs/format-reference.md, made of the key table and the descriptions.
#include <string>

#include "tools/lint/descriptions.h"
#include "tools/lint/key_table.h"

namespace {

constexpr const char* kHead =
    "# Blocks of a level file\n\n"
    "<!-- Made by `brinewhirl-tool reference`; change tools/lint/descriptions.cpp, not this page. -->\n\n"
    "Every component, script and objective that a file may name, with its values in the order in which they stand in "
    "a\n"
    "file. [level-format.md](level-format.md) tells how a file is built, and what happens to a bad one.\n";

const char* KindOf(FieldType type) {
  switch (type) {
    case FieldType::kFloat:
      return "float";
    case FieldType::kInt:
      return "integer";
    case FieldType::kBool:
      return "bool";
    case FieldType::kString:
      return "text";
    case FieldType::kVec3:
      return "vector";
    case FieldType::kQuaternion:
      return "quaternion";
    case FieldType::kMatrix33:
      return "3 x 3 matrix";
    case FieldType::kMatrix34:
      return "3 x 4 matrix";
    case FieldType::kGeneratorList:
    case FieldType::kSegmentList:
    case FieldType::kObjectiveList:
      return "list";
  }
  return "";
}

std::string Shown(std::string_view text) { return std::string(text); }

// The keys of the lines that belong together: `x`, `y`, `z`.
std::string Keys(const BlockSchema& schema, std::size_t first, const FieldText& text) {
  if (schema.fields[first].key.empty()) return Shown(text.name);
  std::string keys;
  for (std::size_t i = first; i < first + static_cast<std::size_t>(text.lines); ++i) {
    if (!keys.empty()) keys += ", ";
    keys += '`';
    keys += schema.fields[i].key;
    keys += '`';
  }
  return keys;
}

void PrintBlock(std::FILE* out, const BlockText& text, const BlockSchema& schema) {
  std::fprintf(out, "\n### `%s`\n\n%s\n", Shown(text.name).c_str(), Shown(text.meaning).c_str());
  if (text.fields.empty()) return;
  std::fprintf(out, "\n| # | value | kind | unit | range | meaning |\n|---|---|---|---|---|---|\n");
  std::size_t at = 0;
  for (const FieldText& field : text.fields) {
    std::string number = std::to_string(at + 1);
    if (field.lines != 1) number += '-' + std::to_string(at + static_cast<std::size_t>(field.lines));
    std::fprintf(out, "| %s | %s | %s | %s | %s | %s |\n", number.c_str(), Keys(schema, at, field).c_str(),
                 KindOf(schema.fields[at].type), Shown(field.unit).c_str(), Shown(field.range).c_str(),
                 Shown(field.meaning).c_str());
    at += static_cast<std::size_t>(field.lines);
  }
}

void PrintBlocks(std::FILE* out, const char* title, std::span<const BlockText> texts,
                 const BlockSchema* (*find)(std::string_view)) {
  std::fprintf(out, "\n## %s\n", title);
  for (const BlockText& text : texts)
    if (const BlockSchema* schema = find(text.name)) PrintBlock(out, text, *schema);
}

}  // namespace

void PrintReference(std::FILE* out) {
  std::fputs(kHead, out);
  PrintBlocks(out, "Components", ComponentTexts(), FindComponentSchema);
  PrintBlocks(out, "Scripts", ScriptTexts(), FindScriptSchema);
  PrintBlocks(out, "Objectives", ObjectiveTexts(), FindObjectiveSchema);
}
