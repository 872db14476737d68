// The key table is written by hand: it is held against what the game reads, writes and shows on its bars.
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <span>
#include <type_traits>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/script_registry.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "editor/bars/tweak_bar.h"
#include "lint/block_reader.h"
#include "lint/number.h"
#include "match/rules/objective_factory.h"
#include "test_world.h"

namespace {

Component& MakePart(TestWorld& world, const BlockSchema& schema, Component*) {
  GameObject& object = world.Add("holder");
  return schema.name == "Transform" ? object.GetTransform() : *object.AddComponent(schema.name);
}
Script& MakePart(TestWorld& world, const BlockSchema& schema, Script*) {
  return *world.Add("holder").Insert(std::make_unique<ScriptBox>()).AddScript(schema.name);
}

// A document of the one block, whose head a component writes itself.
template <class Part>
std::string TextOf(Part& part) {
  Serializer writer;
  writer.OpenInMemory(6);
  if constexpr (std::is_same_v<Part, Script>) writer.BeginComponent(part.GetName());
  part.Serialize(writer);
  if constexpr (std::is_same_v<Part, Script>) writer.EndBlock();
  std::string text = writer.TakeText();
  std::erase(text, '\t');
  return "{\n" + text + "}\n";
}

using Values = std::vector<std::string_view>;

// The values of each field of a block that the game wrote, and a failure when it does not fit the schema.
std::vector<Values> ValuesOf(const std::string& document, const BlockSchema& schema) {
  LintReport report("written", nullptr);
  const auto lines = ScanLines(document, report);
  LintReport blocks("written", nullptr);
  BlockReader reader(lines, blocks);
  const LintBlock block = reader.ReadBlock(reader.Take(), schema);
  EXPECT_FALSE(blocks.IsUnreadable()) << document;
  EXPECT_EQ(block.values.size(), schema.fields.size()) << schema.name;
  std::vector<Values> values;
  for (const auto& field : block.values) {
    values.emplace_back();
    // An empty value would not point into the document.
    for (const LintLine* line : field)
      values.back().emplace_back(line->key.data() + line->key.size() + 2, line->value.size());
  }
  return values;
}

// Another value of a field's kind, within its range; of another kind it would not come back.
std::string Other(const FieldSchema& field, std::string_view present, int& next) {
  ++next;
  const bool isSmall = field.range.high < 20.0f;
  switch (field.type) {
    case FieldType::kBool:
      return next % 2 == 0 ? "true" : "false";
    case FieldType::kString:
      return "word " + std::to_string(next);
    case FieldType::kInt:
      if (field.range.low == field.range.high) break;
      return std::to_string(isSmall ? next % 2 + 1 : next);
    case FieldType::kTrue:
    case FieldType::kGeneratorId:
    case FieldType::kGeneratorList:
    case FieldType::kSegmentList:  // the shipped match comes back with its own
      break;
    case FieldType::kObjectiveList: {
      std::string list = std::to_string(ObjectiveSchemas().size());
      for (const BlockSchema& objective : ObjectiveSchemas()) {
        list.append("\nObjective: ").append(objective.name);
        for (const FieldSchema& value : objective.fields)
          list.append("\n").append(value.key).append(": ").append(Other(value, "", next));
      }
      return list;
    }
    default:
      return CanonicalNumber(static_cast<float>(next) * (isSmall ? 1.0f / 256.0f : 1.25f));
  }
  return std::string(present);
}

std::string Altered(const std::string& document, const BlockSchema& schema, int next) {
  std::string text;
  const char* copied = document.data();
  const auto values = ValuesOf(document, schema);
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (const std::string_view value : values[i]) {
      text.append(copied, value.data()).append(Other(schema.fields[i], value, next));
      copied = value.data() + value.size();
    }
  }
  return text + copied;
}

void Edit(const FieldTarget& target) {
  if (auto* const* flag = std::get_if<bool*>(&target)) **flag = !**flag;
  if (auto* const* number = std::get_if<int*>(&target)) ++**number;
  if (auto* const* number = std::get_if<std::uint32_t*>(&target)) ++**number;
  if (auto* const* number = std::get_if<float*>(&target)) **number += 0.5f;
  if (auto* const* vector = std::get_if<Vec3*>(&target)) **vector = **vector + Vec3{0.5f, 0.5f, 0.5f};
  if (auto* const* text = std::get_if<std::string*>(&target)) **text += "x";
}

// What a bar edits is called in the table as on the bar, and kept within the same limits.
template <class Part>
void ExpectBarFits(Part& part, const BlockSchema& schema) {
  TweakBar bar("bar");
  part.AddToTweakBar(bar);
  std::set<std::string_view> labels;
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.kind != TweakBar::Entry::Kind::kVariable) continue;
    const Field& field = entry.field;
    const std::string old = TextOf(part);
    Edit(field.target);
    const std::string edited = TextOf(part);
    const auto before = ValuesOf(old, schema);
    const auto after = ValuesOf(edited, schema);
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
      if (before[i] == after[i]) continue;
      const FieldSchema& changed = schema.fields[i];
      EXPECT_NE(changed.label.find(field.label), std::string_view::npos) << schema.name << ": " << field.label;
      labels.insert(changed.label);
      const bool hasLow = field.lowest > std::numeric_limits<double>::lowest();
      const bool hasHigh = field.highest < double{std::numeric_limits<int>::max()};
      EXPECT_TRUE(!hasLow || field.lowest == double{changed.range.low}) << schema.name << ": " << field.label;
      EXPECT_TRUE(!hasHigh || field.highest == double{changed.range.high}) << schema.name << ": " << field.label;
    }
  }
  for (const FieldSchema& field : schema.fields) {
    EXPECT_TRUE(field.label.empty() || labels.contains(field.label)) << schema.name << " shows no " << field.label;
  }
}

// Whatever values the block holds, it is read and written by the table.
template <class Part>
void ExpectFits(TestWorld& world, const BlockSchema& schema) {
  SCOPED_TRACE(schema.name);
  const auto make = [&]() -> Part& { return MakePart(world, schema, static_cast<Part*>(nullptr)); };
  for (const int first : {2, 9}) {
    Part& part = make();
    const std::string altered = Altered(TextOf(part), schema, first);
    Serializer reader;
    reader.OpenText("altered", altered);
    std::string_view key;
    std::string_view value;
    reader.ReadLine(key, value);
    part.Deserialize(reader);
    EXPECT_EQ(WithoutIds(TextOf(part)), WithoutIds(altered));
  }
  ExpectBarFits(make(), schema);
}

void ExpectDescribed(std::span<const BlockSchema> schemas) {
  std::set<std::string_view> names;
  for (const BlockSchema& schema : schemas) {
    EXPECT_TRUE(names.insert(schema.name).second) << schema.name << " twice";
    EXPECT_FALSE(schema.meaning.empty()) << schema.name;
    for (const FieldSchema& field : schema.fields) {
      EXPECT_FALSE(field.meaning.empty()) << schema.name;
      EXPECT_NE(field.key.empty(), field.name.empty()) << schema.name << ": a key, or a name without one";
    }
  }
}

}  // namespace

TEST(Reference, DescribesEveryLineOfEveryBlock) {
  ExpectDescribed(ComponentSchemas());
  ExpectDescribed(ScriptSchemas());
  ExpectDescribed(ObjectiveSchemas());
}

TEST(Reference, HoldsWhatTheGameReadsAndWrites) {
  TestWorld world;
  for (const BlockSchema& schema : ComponentSchemas())
    if (schema.name != "ScriptBox") ExpectFits<Component>(world, schema);
  std::size_t scripts = 0;
  for (const std::string_view name : RegisteredScriptNames()) {
    if (name.starts_with("test ")) continue;  // entered by tests
    const BlockSchema* schema = FindScriptSchema(name);
    ASSERT_NE(schema, nullptr) << name;
    ExpectFits<Script>(world, *schema);
    ++scripts;
  }
  EXPECT_EQ(scripts, ScriptSchemas().size());
  // The samples of ObjectiveManager hold every rule of the table; the factory must know no other.
  for (const BlockSchema& schema : ObjectiveSchemas()) EXPECT_NE(CreateObjective(schema.name), nullptr) << schema.name;
  EXPECT_EQ(ObjectiveNames().size(), ObjectiveSchemas().size());
}
