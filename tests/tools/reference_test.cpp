// The key table is written by hand: it is held against what the game reads, writes and shows on its bars.
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/script_registry.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "editor/tweak_bar.h"
#include "match/objective_factory.h"
#include "test_world.h"
#include "tools/lint/block_reader.h"
#include "tools/lint/canonical.h"

namespace {

/// A component or script in the scene.
struct Made {
  std::function<void(Serializer&)> write;
  std::function<void(Serializer&)> read;
  std::function<void(FieldBar&)> show;
};

template <class Part>
Made MadeOf(Part* part, std::function<void(Serializer&)> write) {
  return {std::move(write), [part](Serializer& reader) { part->Deserialize(reader); },
          [part](FieldBar& bar) { part->AddToTweakBar(bar); }};
}

Made MakeScript(TestWorld& world, std::string_view name) {
  Script* script = world.Add("holder").Insert(std::make_unique<ScriptBox>()).AddScript(name);
  return MadeOf(script, [script, name](Serializer& writer) {
    writer.BeginComponent(name);
    script->Serialize(writer);
    writer.EndBlock();
  });
}

Made MakeComponent(TestWorld& world, std::string_view name) {
  GameObject& object = world.Add("holder");
  Component* component = name == "Transform" ? &object.GetTransform() : object.AddComponent(name);
  return MadeOf(component, [component](Serializer& writer) { component->Serialize(writer); });
}

// A document of the one block.
std::string TextOf(const Made& made) {
  Serializer writer;
  writer.OpenInMemory(6);
  made.write(writer);
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
      break;
    case FieldType::kSegmentList:
      return "2\nlevelName_: one\nduration_: 1.5\nrotationAngle_: 2.5\ndistance_: 3.5"
             "\nlevelName_: two\nduration_: 4.5\nrotationAngle_: 5.5\ndistance_: 6.5";
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
void ExpectBarFits(const Made& made, const BlockSchema& schema) {
  TweakBar bar("bar");
  made.show(bar);
  std::set<std::string_view> labels;
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.kind != TweakBar::Entry::Kind::kVariable) continue;
    const Field& field = entry.field;
    const std::string old = TextOf(made);
    Edit(field.target);
    const std::string edited = TextOf(made);
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

void ExpectDescribed(const BlockSchema& schema) {
  EXPECT_FALSE(schema.meaning.empty()) << schema.name;
  for (const FieldSchema& field : schema.fields) {
    EXPECT_FALSE(field.meaning.empty()) << schema.name;
    EXPECT_NE(field.key.empty(), field.name.empty()) << schema.name << ": a key, or a name without one";
  }
}

void ExpectFits(const std::function<Made()>& make, const BlockSchema& schema) {
  SCOPED_TRACE(schema.name);
  for (const int first : {2, 9}) {
    const Made made = make();
    const std::string altered = Altered(TextOf(made), schema, first);
    Serializer reader;
    reader.OpenText("altered", altered);
    std::string_view key;
    std::string_view value;
    reader.ReadLine(key, value);
    made.read(reader);
    EXPECT_EQ(WithoutIds(TextOf(made)), WithoutIds(altered));
  }
  ExpectBarFits(make(), schema);
  ExpectDescribed(schema);
}

}  // namespace

TEST(Reference, HoldsTheScriptsThatTheGameReadsAndWrites) {
  TestWorld world;
  std::size_t scripts = 0;
  for (const std::string_view name : RegisteredScriptNames()) {
    if (name.starts_with("test ")) continue;  // entered by tests
    const BlockSchema* schema = FindScriptSchema(name);
    ASSERT_NE(schema, nullptr) << name;
    ExpectFits([&] { return MakeScript(world, name); }, *schema);
    ++scripts;
  }
  EXPECT_EQ(scripts, ScriptSchemas().size());
}

TEST(Reference, HoldsTheComponentsThatTheGameReadsAndWrites) {
  TestWorld world;
  for (const BlockSchema& schema : ComponentSchemas())
    if (schema.name != "ScriptBox") ExpectFits([&] { return MakeComponent(world, schema.name); }, schema);
}

// The samples of ObjectiveManager hold every rule of the table; the factory must know no other.
TEST(Reference, HoldsTheObjectivesOfTheFactory) {
  for (const BlockSchema& schema : ObjectiveSchemas()) {
    EXPECT_NE(CreateObjective(schema.name), nullptr) << schema.name;
    ExpectDescribed(schema);
  }
  EXPECT_EQ(ObjectiveNames().size(), ObjectiveSchemas().size());
}
