// The key table is written by hand: it is held against what the game reads, writes and shows on its bars.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <set>

#include "core/field_bar.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/script_registry.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "match/objective_factory.h"
#include "test_world.h"
#include "tools/lint/block_reader.h"
#include "tools/lint/canonical.h"

namespace {

// Distinct values within their ranges; of another kind or in another order they would not come back.
class SampleWriter {
 public:
  explicit SampleWriter(int first) : next_(first) {}

  std::string Block(const BlockSchema& schema) {
    text_ = "Component: \"" + std::string(schema.name) + "\" {\n";
    for (const FieldSchema& field : schema.fields) Write(field);
    return text_ + "}\n";
  }

 private:
  void Value(std::string_view key, const std::string& value) { text_ += std::string(key) + ": " + value + "\n"; }

  std::string Number(const FieldSchema& field, bool whole) {
    const auto step = static_cast<float>(++next_);
    const Range& range = field.range;
    if (range.low == range.high) return CanonicalNumber(range.low);
    if (whole) return std::to_string(range.high < 20.0f ? (next_ % 2) + 1 : next_);
    return CanonicalNumber(range.high < 20.0f ? step / 256.0f : step + 0.25f);
  }

  void Floats(const char* header, std::initializer_list<std::string_view> keys, const FieldSchema& field) {
    text_ += "Component: \"" + std::string(header) + "\" {\n";
    for (const std::string_view key : keys) Value(key, Number(field, false));
    if (std::string_view(header) == "Matrix34") Floats("Vec3", {"x_", "y_", "z_"}, field);
    text_ += "}\n";
  }

  void Write(const FieldSchema& field) {
    switch (field.type) {
      case FieldType::kFloat:
        return Value(field.key, Number(field, false));
      case FieldType::kInt:
        return Value(field.key, Number(field, true));
      case FieldType::kBool:
        return Value(field.key, ++next_ % 2 == 0 ? "true" : "false");
      case FieldType::kTrue:
        return Value(field.key, "true");
      case FieldType::kString:
        return Value(field.key, "word " + std::to_string(++next_));
      case FieldType::kGeneratorId:
        return Value(field.key, "42");
      case FieldType::kVec3:
        return Floats("Vec3", {"x_", "y_", "z_"}, field);
      case FieldType::kFlatVec3:
        for (const char* key : {"x", "y", "z"}) Value(key, Number(field, false));
        return;
      case FieldType::kQuaternion:
        return Floats("Vec3", {"r_", "i_", "j_", "k_"}, field);
      case FieldType::kMatrix33:
        return Floats("Matrix33", {"", "", "", "", "", "", "", "", ""}, field);
      case FieldType::kMatrix34:
        return Floats("Matrix34", {"", "", "", "", "", "", "", "", ""}, field);
      case FieldType::kGeneratorList:
        return Value(field.key, "0");
      case FieldType::kSegmentList:
        Value(field.key, "2");
        for (int i = 0; i < 2; ++i) {
          Value("levelName_", "piece " + std::to_string(++next_));
          for (const char* key : {"duration_", "rotationAngle_", "distance_"}) Value(key, Number(field, false));
        }
        return Value("SentinelSegment", "NoMoreSegments");
      case FieldType::kObjectiveList:
        Value(field.key, std::to_string(ObjectiveSchemas().size()));
        for (const BlockSchema& objective : ObjectiveSchemas()) {
          Value("Objective", std::string(objective.name));
          for (const FieldSchema& value : objective.fields) Write(value);
        }
        return Value("No more objectives", "Done");
    }
  }

  std::string text_;
  int next_;
};

/// A component or script in the scene.
struct Made {
  std::function<void(Serializer&)> write;
  std::function<void(Serializer&)> read;
  std::function<void(FieldBar&)> show;
};

Made MakeScript(TestWorld& world, std::string_view name) {
  GameObject& object = world.Add("holder");
  Script* script = object.Insert(std::make_unique<ScriptBox>()).AddScript(name);
  return {[script, name](Serializer& writer) {
            writer.BeginComponent(name);
            script->Serialize(writer);
            writer.EndBlock();
          },
          [script](Serializer& reader) { script->Deserialize(reader); },
          [script](FieldBar& bar) { script->AddToTweakBar(bar); }};
}

Made MakeComponent(TestWorld& world, std::string_view name) {
  GameObject& object = world.Add("holder");
  Component* component = &object.GetTransform();
  if (name != "Transform") component = object.AddComponent(name);
  return {[component](Serializer& writer) { component->Serialize(writer); },
          [component](Serializer& reader) { component->Deserialize(reader); },
          [component](FieldBar& bar) { component->AddToTweakBar(bar); }};
}

std::string TextOf(const Made& made) {
  Serializer writer;
  writer.OpenInMemory(6);
  made.write(writer);
  std::string text = writer.TakeText();
  std::erase(text, '\t');
  return text;
}

// The values of each field of a block that the game wrote, and a failure when it does not fit the schema.
std::vector<std::string> ValuesOf(const std::string& text, const BlockSchema& schema) {
  LintReport report("written", nullptr);
  const std::string document = "{\n" + text + "}\n";
  const auto lines = ScanLines(document, report);
  LintReport blocks("written", nullptr);
  BlockReader reader(lines, blocks);
  const LintBlock block = reader.ReadBlock(reader.Take(), schema);
  EXPECT_FALSE(blocks.IsUnreadable()) << text;
  std::vector<std::string> values;
  for (const auto& field : block.values) {
    values.emplace_back();
    for (const LintLine* line : field) values.back() += std::string(line->value) + " ";
  }
  EXPECT_EQ(values.size(), schema.fields.size()) << schema.name;
  return values;
}

// Keeps the fields instead of showing them.
class RecordingBar final : public FieldBar {
 public:
  using FieldBar::Add;
  void BeginGroup(std::string_view) override {}
  void EndGroup() override {}
  void Add(Field field) override { fields.push_back(std::move(field)); }
  void AddButton(std::string_view, std::string_view, std::function<void()>) override {}

  std::vector<Field> fields;

 private:
  float* Keep(float value) override { return &floats_.emplace_back(value); }
  int* Keep(int value) override { return &ints_.emplace_back(value); }
  std::deque<float> floats_;
  std::deque<int> ints_;
};

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
  RecordingBar bar;
  made.show(bar);
  std::set<std::string_view> labels;
  for (const Field& field : bar.fields) {
    const auto before = ValuesOf(TextOf(made), schema);
    Edit(field.target);
    const auto after = ValuesOf(TextOf(made), schema);
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

void ExpectFits(const std::function<Made()>& make, const BlockSchema& schema) {
  for (const int first : {2, 9}) {
    const Made made = make();
    const std::string sample = SampleWriter(first).Block(schema);
    const std::string document = "{\n" + sample + "}\n";
    Serializer reader;
    reader.OpenText("sample", document);
    std::string_view key;
    std::string_view value;
    reader.ReadLine(key, value);
    made.read(reader);
    EXPECT_EQ(WithoutIds(TextOf(made)), WithoutIds(sample)) << schema.name;
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

TEST(Reference, HoldsTheScriptsThatTheGameReadsAndWrites) {
  TestWorld world;
  std::size_t scripts = 0;
  for (const std::string_view name : RegisteredScriptNames()) {
    if (name.starts_with("test ")) continue;  // entered by tests
    const BlockSchema* schema = FindScriptSchema(name);
    ASSERT_NE(schema, nullptr) << name;
    SCOPED_TRACE(name);
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
  for (const BlockSchema& schema : ObjectiveSchemas()) EXPECT_NE(CreateObjective(schema.name), nullptr) << schema.name;
  EXPECT_EQ(ObjectiveNames().size(), ObjectiveSchemas().size());
}
