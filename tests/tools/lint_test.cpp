#include "tools/lint/lint.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "core/component_factory.h"
#include "core/object_manager.h"
#include "core/script_registry.h"
#include "core/serializer.h"
#include "test_world.h"
#include "tools/lint/block_reader.h"

namespace {

std::string Lint(const std::string& file, int& result) {
  char* buffer = nullptr;
  std::size_t size = 0;
  std::FILE* out = ::open_memstream(&buffer, &size);
  result = LintFiles({file}, out);
  std::fclose(out);
  std::string text(buffer, size);
  std::free(buffer);
  return text;
}

// Faults of a block as the game writes it, read against its schema.
std::string FaultsOf(const std::string& text, const BlockSchema& schema) {
  char* buffer = nullptr;
  std::size_t size = 0;
  std::FILE* out = ::open_memstream(&buffer, &size);
  LintReport report("written", out);
  const std::string document = "{\n" + text + "}\n";
  const auto lines = ScanLines(document, report);
  BlockReader reader(lines, report);
  reader.ReadBlock(reader.Take(), schema);
  std::fclose(out);
  std::string faults(buffer, size);
  std::free(buffer);
  return report.HasFaults() ? faults : "";
}

std::string ReadShipped(const std::string& name) {
  std::ifstream file(std::string(BRINEWHIRL_GAME_DIR) + "/" + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void Replace(std::string& text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

}  // namespace

// The table is written by hand: every block that the game writes must fit it, and every script must be in it.
TEST(Lint, TheKeyTableIsWhatTheGameWrites) {
  TestWorld world;
  for (const std::string_view name : RegisteredScriptNames()) {
    if (name == HookScript::kName) continue;
    const BlockSchema* schema = FindScriptSchema(name);
    ASSERT_NE(schema, nullptr) << name;
    const NewScript created = CreateScript(name);
    Serializer writer;
    writer.OpenInMemory(6);
    writer.BeginComponent(created.script->GetName());
    created.script->Serialize(writer);
    writer.EndBlock();
    EXPECT_EQ(FaultsOf(writer.TakeText(), *schema), "") << name;
  }
  for (const char* name : {"Transform", "RigidBody", "Sprite", "SphereCollider", "BoxCollider"}) {
    GameObject& object = world.Add("thing");
    Serializer writer;
    writer.OpenInMemory(6);
    object.AddComponent(name)->Serialize(writer);
    EXPECT_EQ(FaultsOf(writer.TakeText(), *FindComponentSchema(name)), "") << name;
  }
}

// Each kind of damage is found at its line, under the name of its rule, and nothing else is blamed for it.
TEST(Lint, NamesWhatIsWrongAndWhere) {
  const struct {
    const char* from;
    const char* to;
    const char* rule;
  } cases[] = {
      {"Name: chain1", "Name: Nameless", "nameless"},
      {"Name: chain1", "Name: ", "no-name"},
      {"Name: chain1", "Name: Post3", "player-name"},
      {"rotationLocked_: true", "rotationLocked_: false", "immovable-unlocked"},
      {"texture path: chainfront.png", "texture path: nothing.png", "missing-picture"},
      {"texture path: chainfront.png", "texture path: NULLSTRING", "no-picture"},
      {"Component: \"Sprite\"", "Component: \"Spirit\"", "unknown-component"},
      {"restitution: 0.2", "restitution: much", "bad-value"},
      {"\t\t\trestitution: 0.2\n", "", "missing-or-shifted"},
      {"\t\t\tghost: false\n", "\t\t\tghost: false\n\t\t\tghost: false\n", "missing-or-shifted"},
      {"Core: true", "Core: yes", "bad-value"},
      {"\t\tCore: true", "\t  Core: true", "leading-blanks"},
      {"collision group: 0", "collision group: 15", "collision-group"},
      {"\n}\n", "\n", "unexpected-end"},
  };
  TestWorld world;
  std::filesystem::create_directory("Texture");
  for (const char* picture : {"chainfront.png", "chainside.png", "whitebuoy.png", "anchor.png"})
    world.WriteFile(std::string("Texture/") + picture, "picture");
  const std::string good = ReadShipped("core");
  int result = 0;
  world.WriteFile("stage", good);
  EXPECT_EQ(Lint("stage", result), "");
  EXPECT_EQ(result, 0);
  for (const auto& damage : cases) {
    std::string text = good;
    Replace(text, damage.from, damage.to);
    world.WriteFile("stage", text);
    const std::string report = Lint("stage", result);
    EXPECT_EQ(result, 1) << damage.to;
    EXPECT_NE(report.find(std::string(": ") + damage.rule + ": "), std::string::npos) << damage.to << "\n" << report;
    EXPECT_EQ(report.find("stage:"), 0u);
    EXPECT_EQ(Count(report, "\n"), 1) << damage.to << "\n" << report;
  }
  Lint("no such file", result);
  EXPECT_EQ(result, 1);
}
