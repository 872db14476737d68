// docs/format-reference.md, made of the key table and the table of rules.
#include "tools/lint/reference.h"

#include <string>

#include "lint/key_table.h"

namespace {

constexpr const char* kHead =
    "# Blocks of a level file\n\n"
    "<!-- Made by `brinewhirl-tool reference`; change src/lint/key_table.cpp and rules.h, not this page. -->\n\n"
    "Every component, script and objective that a file may name, with its values in the order in which they stand in\n"
    "a file, and what the editor calls them. [level-format.md](level-format.md) tells how a file is built, and what\n"
    "happens to a bad one.\n";

constexpr const char* kRulesHead =
    "\n## What lint finds\n\n"
    "`brinewhirl-tool lint FILE` and the editor, after a save, say what is wrong as `FILE:LINE: rule: text`. A level\n"
    "passes with notes alone. `lint --fix` writes a file as the game would save it: numbers, blanks and IDs, and\n"
    "nothing else. It mends what is marked so, and leaves a file alone that has an unreadable fault. What is marked\n"
    "\"played\" shows only when bots play the level: `lint --play`, or Let bots play in the editor.\n\n"
    "| rule | kind | what is right or happens | example |\n|---|---|---|---|\n";

const char* KindOf(FieldType type) {
  switch (type) {
    case FieldType::kFloat:
      return "float";
    case FieldType::kInt:
    case FieldType::kGeneratorId:
      return "integer";
    case FieldType::kBool:
    case FieldType::kTrue:
      return "bool";
    case FieldType::kString:
      return "text";
    case FieldType::kVec3:
    case FieldType::kFlatVec3:
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

// What the table calls the lines of a field.
std::string KeyOf(const FieldSchema& field) {
  if (field.type == FieldType::kFlatVec3) return "`x`, `y`, `z`";
  return field.key.empty() ? std::string(field.name) : "`" + std::string(field.key) + "`";
}

std::string Shown(std::string_view text) { return std::string(text); }

void PrintBlock(std::FILE* out, const BlockSchema& block) {
  std::fprintf(out, "\n### `%s`\n\n%s\n", Shown(block.name).c_str(), Shown(block.meaning).c_str());
  if (block.fields.empty()) return;
  std::fprintf(out, "\n| # | value | on the bar | kind | unit | range | meaning |\n|---|---|---|---|---|---|---|\n");
  int at = 1;
  for (const FieldSchema& field : block.fields) {
    const int lines = field.type == FieldType::kFlatVec3 ? 3 : 1;
    std::string number = std::to_string(at);
    if (lines != 1) number += '-' + std::to_string(at + lines - 1);
    std::fprintf(out, "| %s | %s | %s | %s | %s | %s | %s |\n", number.c_str(), KeyOf(field).c_str(),
                 Shown(field.label).c_str(), KindOf(field.type), Shown(field.unit).c_str(),
                 RangeText(field.range).c_str(), Shown(field.meaning).c_str());
    at += lines;
  }
}

void PrintBlocks(std::FILE* out, const char* title, std::span<const BlockSchema> blocks) {
  std::fprintf(out, "\n## %s\n", title);
  for (const BlockSchema& block : blocks) PrintBlock(out, block);
}

const char* NameOf(RuleKind kind) {
  switch (kind) {
    case RuleKind::kFault:
      return "fault";
    case RuleKind::kFixed:
      return "mended";
    case RuleKind::kUnreadable:
      return "unreadable";
    case RuleKind::kNote:
      return "note";
  }
  return "";
}

void PrintRules(std::FILE* out) {
  std::fputs(kRulesHead, out);
  for (const Rule& rule : kLintRules)
    std::fprintf(out, "| `%s` | %s%s | %s | %s |\n", Shown(rule.name).c_str(), NameOf(rule.kind),
                 rule.played ? ", played" : "", Shown(rule.meaning).c_str(), Shown(rule.example).c_str());
}

}  // namespace

void PrintReference(std::FILE* out) {
  std::fputs(kHead, out);
  PrintBlocks(out, "Components", ComponentSchemas());
  PrintBlocks(out, "Scripts", ScriptSchemas());
  PrintBlocks(out, "Objectives", ObjectiveSchemas());
  PrintRules(out);
}
