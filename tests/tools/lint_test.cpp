#include "tools/lint/lint.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "core/component_factory.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/script_registry.h"
#include "core/serializer.h"
#include "match/give_points.h"
#include "match/objective_factory.h"
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

// The wall object that the tests damage needs these.
void MakePictures(TestWorld& world) {
  std::filesystem::create_directory("Texture");
  for (const char* picture :
       {"chainfront.png", "chainside.png", "whitebuoy.png", "anchor.png", "shell1.png", "Bubble.png"})
    world.WriteFile(std::string("Texture/") + picture, "picture");
}

constexpr std::string_view kGravity =
    "\t\t\tComponent: \"gravity\" {\n"
    "\t\t\t\tMy ID: 42\n"
    "\t\t\t\tComponent: \"Vec3\" {\n"
    "\t\t\t\t\tx_: 0\n"
    "\t\t\t\t\ty_: -1\n"
    "\t\t\t\t\tz_: 0\n"
    "\t\t\t\t}\n"
    "\t\t\t}\n";

std::string ScriptBoxWith(std::string_view scripts) {
  return "\t\tComponent: \"ScriptBox\" {\n" + std::string(scripts) + "\t\t}\n";
}

// The first object of the text gets a box of scripts in front of its body.
std::string WithScripts(std::string text, std::string_view scripts) {
  const auto body = text.find("\t\tComponent: \"RigidBody\"");
  return text.insert(body, ScriptBoxWith(scripts));
}

void Replace(std::string& text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

}  // namespace

// The table is written by hand: every block that the game writes must fit it, and it holds every script and no other.
TEST(Lint, TheKeyTableIsWhatTheGameWrites) {
  TestWorld world;
  for (const std::string_view name : RegisteredScriptNames()) {
    if (name.starts_with("test ")) continue;  // entered by tests
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
  for (const BlockSchema& schema : ScriptSchemas()) EXPECT_TRUE(IsScriptRegistered(schema.name)) << schema.name;
  for (const char* name : {"Transform", "RigidBody", "Sprite", "GivePoints", "SphereCollider", "BoxCollider"}) {
    GameObject& object = world.Add("thing");
    Serializer writer;
    writer.OpenInMemory(6);
    object.AddComponent(name)->Serialize(writer);
    EXPECT_EQ(FaultsOf(writer.TakeText(), *FindComponentSchema(name)), "") << name;
  }
}

// The rules stand in two tables, the factory's and lint's.
TEST(Lint, KnowsTheObjectivesOfTheFactory) {
  TestWorld world;
  std::string values;
  int count = 0;
  for (const BlockSchema& schema : ObjectiveSchemas()) {
    const auto objective = CreateObjective(schema.name);
    ASSERT_NE(objective, nullptr) << schema.name;
    Serializer writer;
    writer.OpenInMemory(6);
    objective->Serialize(writer);
    values += writer.TakeText();
    ++count;
  }
  const std::string block = "Component: \"ObjectiveManager\" {\nSections: " + std::to_string(count) + "\n" + values +
                            "No more objectives: Done\n}\n";
  EXPECT_EQ(Count(FaultsOf(block, *FindScriptSchema("ObjectiveManager")), "missing-or-shifted"), 0) << block;
}

// An emitter's picture is nobody else's to load, and its eight vectors are lines of three equal keys.
TEST(Lint, ChecksEmitters) {
  const struct {
    const char* from;
    const char* to;
    const char* rule;
  } cases[] = {
      {"textureName: Bubble.png", "textureName: nothing.png", "missing-picture"},
      {"textureName: Bubble.png", "textureName: ", "no-picture"},
      {"textureName: Bubble.png", "textureName: shell1.png", "not-preloaded: note"},
      {"particleCount: 24", "particleCount: 2000000000", "particle-count"},
      {"\t\t\t\ty: -1\n", "", "missing-or-shifted"},
      {"spawnIntervalMax: 0.4\n", "spawnIntervalMax: 0.4\n\t\t\t\tx: 0\n", "missing-or-shifted"},
  };
  TestWorld world;
  MakePictures(world);
  const std::string good = ReadShipped("bubblegens");
  int result = 0;
  world.WriteFile("stage", good);
  EXPECT_EQ(Lint("stage", result), "");
  for (const auto& damage : cases) {
    std::string text = good;
    Replace(text, damage.from, damage.to);
    world.WriteFile("stage", text);
    const std::string report = Lint("stage", result);
    EXPECT_EQ(Count(report, "stage:"), 1) << report;
    EXPECT_NE(report.find(std::string(": ") + damage.rule + ": "), std::string::npos) << damage.to << "\n" << report;
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
      {"Core: true", "Core:true", "value-line"},
      {"\t\t\t\t\tz_: 0\n\t\t\t\t}\n", "\t\t\t\t}\n", "missing-or-shifted"},
      {"x_: 0", "x_: 1e999", "bad-value"},
      {"x_: 0", "x_: nan", "bad-value"},
      {"collision group: 0", "collision group: 0.5", "bad-value"},
      {"num force generators: 0", "num force generators: -1", "bad-value"},
      {"num force generators: 0", "num force generators: 2000000000", "missing-or-shifted"},
      {"num force generators: 0", "num force generators: 1\n\t\t\tgenerator ID: 42", "unknown-generator"},
      {"inverseMass: 0", "inverseMass: -1", "negative-mass"},
      {"texture path: chainfront.png", "texture path: ..", "missing-picture"},
      {"\t1: {", "\twall: {", "header"},
  };
  TestWorld world;
  MakePictures(world);
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

// What is only worth knowing is said, and the file passes.
TEST(Lint, NotesDoNotFail) {
  const struct {
    const char* from;
    const char* to;
    const char* rule;
  } cases[] = {
      {"damping: 0.998499", "damping: 0", "damping-0"},
      {"texture path: chainfront.png", "texture path: shell1.png", "not-preloaded"},
      {"restitution: 0.2", "restitution: 0.20", "canonical-number"},
      {"\t\tCore: true", "\tCore: true", "indentation"},
      {"Core: true", "Core: true\r", "line-end"},
  };
  TestWorld world;
  MakePictures(world);
  const std::string good = ReadShipped("core");
  int result = 0;
  for (const auto& change : cases) {
    std::string text = good;
    Replace(text, change.from, change.to);
    world.WriteFile("stage", text);
    const std::string report = Lint("stage", result);
    EXPECT_EQ(result, 0) << report;
    EXPECT_NE(report.find(std::string(": ") + change.rule + ": note: "), std::string::npos) << report;
    EXPECT_EQ(Count(report, "\n"), 1) << report;
  }
}

TEST(Lint, ColliderAndLeftoverRules) {
  TestWorld world;
  int result = 0;
  GameObject& two = world.AddSphere("two", {});
  two.AddComponent("BoxCollider");
  world.WriteFile("stage", Document({&two}));
  const std::string note = Lint("stage", result);
  EXPECT_EQ(result, 0) << note;
  EXPECT_NE(note.find(": two-colliders: note: "), std::string::npos) << note;

  BodyOptions options;
  options.body = false;
  world.WriteFile("stage", Document({&world.AddSphere("loose", {}, options)}));
  EXPECT_NE(Lint("stage", result).find(": collider-without-body: "), std::string::npos);
  EXPECT_EQ(result, 1);
  options.ghost = true;
  world.WriteFile("stage", Document({&world.AddSphere("ghost", {}, options)}));
  EXPECT_EQ(Lint("stage", result), "");

  world.WriteFile("stage", Document({&world.Add("Nameless")}));
  EXPECT_NE(Lint("stage", result).find("stage:2: leftover: "), std::string::npos);
  EXPECT_EQ(result, 1);
}

TEST(Lint, ScriptsAndGenerators) {
  TestWorld world;
  const std::string good = Document({&world.AddSphere("ball", {})});
  int result = 0;
  const auto lint = [&](const std::string& text) {
    world.WriteFile("stage", text);
    return Lint("stage", result);
  };
  std::string used = WithScripts(good, kGravity);
  EXPECT_NE(lint(used).find(": unread-generator: "), std::string::npos);
  std::string host = used;
  Replace(host, "Name: ball", "Name: AForceBox");
  EXPECT_EQ(lint(host), "");
  Replace(used, "num force generators: 0", "num force generators: 1\n\t\t\tgenerator ID: 42");
  EXPECT_EQ(lint(used), "");
  EXPECT_EQ(result, 0);
  EXPECT_NE(lint(WithScripts(host, kGravity)).find(": repeated-component: "), std::string::npos);
  const std::string twice = std::string(kGravity) + std::string(kGravity);
  EXPECT_NE(lint(WithScripts(good, twice)).find(": repeated-generator: "), std::string::npos);
  EXPECT_NE(lint(WithScripts(good, "\t\t\tComponent: \"Gravity\" {\n\t\t\t}\n")).find(": unknown-script: "),
            std::string::npos);
  EXPECT_EQ(result, 1);

  std::string impostor = good;
  Replace(impostor, "Name: ball", "Name: Player2");
  EXPECT_NE(lint(impostor).find(": player-name: "), std::string::npos);
  constexpr std::string_view controller =
      "\t\t\tComponent: \"CharacterController\" {\n"
      "\t\t\t\tScoreID: \n"
      "\t\t\t\tCurrencyID: \n"
      "\t\t\t\tAutoPlay: false\n"
      "\t\t\t\tController: 1\n"
      "\t\t\t\tCharge: false\n"
      "\t\t\t}\n";
  EXPECT_EQ(lint(WithScripts(impostor, controller)), "");
}

// However much is missing or wrong, the file is refused, the reading ends, and the list stays readable.
TEST(Lint, TruncationAndJunkAreFaults) {
  TestWorld world;
  MakePictures(world);
  const std::string good = ReadShipped("core");
  int result = 0;
  for (auto end = good.find('\n'); end + 2 < good.size() && end < 6000; end = good.find('\n', end + 1)) {
    world.WriteFile("stage", good.substr(0, end + 1));
    EXPECT_NE(Lint("stage", result).find(": unexpected-end: "), std::string::npos) << end;
    EXPECT_EQ(result, 1);
  }
  std::string junk = "{\n1: {\nName: a\nCore: false\n";
  for (int i = 0; i < 3 * LintReport::kMaxLines; ++i) junk += "a\n";
  world.WriteFile("stage", junk);
  const std::string report = Lint("stage", result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(Count(report, "\n"), LintReport::kMaxLines + 1);
  EXPECT_EQ(Count(report, ": too-many: note: "), 1);

  world.WriteFile("stage", "");
  EXPECT_NE(Lint("stage", result).find("stage:1: unreadable: "), std::string::npos);
  EXPECT_NE(Lint(".", result).find(".:1: unreadable: "), std::string::npos);
}

// What makes a match is looked at as a whole: the episode, the rules, what pays, and what is spawned.
TEST(Lint, MatchRules) {
  constexpr std::string_view episode =
      "\t\t\tComponent: \"SegmentManager\" {\n"
      "\t\t\t\tnumber of segments: 1\n"
      "\t\t\t\tlevelName_: piece\n"
      "\t\t\t\tduration_: 10\n"
      "\t\t\t\trotationAngle_: 0\n"
      "\t\t\t\tdistance_: 0\n"
      "\t\t\t\tSentinelSegment: NoMoreSegments\n"
      "\t\t\t}\n"
      "\t\t\tComponent: \"ObjectiveManager\" {\n"
      "\t\t\t\tSections: 2\n"
      "\t\t\t\tObjective: HitObjects\n"
      "\t\t\t\tObjective: NULL\n"
      "\t\t\t\tRuntime: 10\n"
      "\t\t\t\tNo more objectives: Done\n"
      "\t\t\t}\n"
      "\t\t\tComponent: \"spawner\" {\n"
      "\t\t\t\tarchtypename: piece\n"
      "\t\t\t\tTimeBeforeFirstSpawn: 0\n"
      "\t\t\t\tspawnrate: 1\n"
      "\t\t\t\tYRange: 0\n"
      "\t\t\t\tComponent: \"Vec3\" {\n\t\t\t\t\tx_: 0\n\t\t\t\t\ty_: 0\n\t\t\t\t\tz_: 0\n\t\t\t\t}\n"
      "\t\t\t}\n";
  const struct {
    const char* from;
    const char* to;
    const char* rule;
  } cases[] = {
      {"levelName_: piece", "levelName_: nowhere", "missing-piece"},
      {"levelName_: piece", "levelName_: hollow", "missing-piece"},
      {"levelName_: piece", "levelName_: level1", "piece-of-itself"},
      {"duration_: 10", "duration_: 0", "no-time"},
      {"duration_: 10", "duration_: -2", "no-time"},
      {"duration_: 10", "duration_: nan", "bad-value"},
      {"number of segments: 1", "number of segments: 1000000000", "wrong-count"},
      {"number of segments: 1", "number of segments: -1", "wrong-count"},
      {"Sections: 2", "Sections: 3", "wrong-count"},
      {"Objective: HitObjects", "Objective: Regatta\n\t\t\t\tBoats: 3", "unknown-objective"},
      {"archtypename: piece", "archtypename: kraken", "missing-archetype"},
      {"archtypename: piece", "archtypename: hollow", "missing-archetype"},
      {"archtypename: piece", "archtypename: level1", "archetype-of-itself"},
      {"spawnrate: 1", "spawnrate: 0", "spawn-rate"},
      {"PointsGiven: 5", "PointsGiven: 1000000000", "points-range"},
      {"Hits To Break: 2", "Hits To Break: -1", "negative-hits"},
  };
  TestWorld world;
  int result = 0;
  world.WriteFile("piece", Document({&world.Add("thing")}));
  world.WriteFile("hollow", "{\n}\n");
  GameObject& controller = world.AddSphere("segmentmanager", {});
  auto& prize = controller.Insert(std::make_unique<GivePoints>());
  prize.pointsGiven = 5;
  prize.hitsToBreak = 2;
  const std::string good = WithScripts(Document({&controller}), episode);
  const auto lint = [&](const std::string& text) {
    world.WriteFile("level1", text);
    return Lint("level1", result);
  };
  EXPECT_EQ(lint(good), "");
  for (const auto& damage : cases) {
    std::string text = good;
    Replace(text, damage.from, damage.to);
    const std::string report = lint(text);
    EXPECT_EQ(result, 1) << damage.to;
    EXPECT_NE(report.find(std::string(": ") + damage.rule + ": "), std::string::npos) << damage.to << "\n" << report;
    const int line = Count(text.substr(0, text.find(damage.to)), "\n") + 1;
    EXPECT_EQ(report.find("level1:" + std::to_string(line) + ": "), 0u) << damage.to << "\n" << report;
    EXPECT_EQ(Count(report, "\n"), 1) << damage.to << "\n" << report;
  }
  std::string nobody = good;
  Replace(nobody, "Name: segmentmanager", "Name: somebody");
  EXPECT_NE(lint(nobody).find("level1:1: no-controller: "), std::string::npos);
  std::string swapped = good;
  Replace(swapped, "Component: \"SegmentManager\"", "Component: \"Spawner\"");
  EXPECT_NE(lint(swapped).find(": controller-scripts: "), std::string::npos);
}

// Hazards fail silently in the game when their collider is of the wrong kind or an archetype is missing.
TEST(Lint, HazardRules) {
  const struct {
    const char* script;
    bool ghost;
    bool prize;
    const char* fault;  // null: none
  } cases[] = {
      {"stunsonhit", false, false, nullptr},
      {"stunsonhit", true, false, "not-solid"},
      {"squishy", true, false, "not-solid"},
      {"vortex", true, false, nullptr},
      {"vortex", false, false, "not-a-ghost"},
      {"barnaclelogic", false, false, nullptr},
      {"barnaclelogic", false, true, "barnacle-prize"},
      {"broadside", false, false, "missing-archetype"},
      {"sandlogic", false, false, "missing-archetype"},
  };
  TestWorld world;
  int result = 0;
  world.WriteFile("stunstars", Document({&world.Add("stars")}));
  for (const auto& one : cases) {
    GameObject& object = world.AddSphere("thing", {}, {.ghost = one.ghost});
    object.Insert(std::make_unique<ScriptBox>()).AddScript(one.script);
    if (one.prize) object.Insert(std::make_unique<GivePoints>());
    world.WriteFile("stage", Document({&object}));
    const std::string report = Lint("stage", result);
    EXPECT_EQ(Count(report, "\n"), one.fault == nullptr ? 0 : 1) << one.script << report;
    if (one.fault != nullptr) {
      EXPECT_NE(report.find(std::string(": ") + one.fault + ": "), std::string::npos) << one.script << report;
    }
  }
  world.WriteFile("cannonball", Document({&world.Add("ball")}));
  GameObject& ship = world.Add("ship");
  ship.Insert(std::make_unique<ScriptBox>()).AddScript("broadside");
  std::string text = Document({&ship});
  Replace(text, "fireInterval: 3", "fireInterval: 0");
  world.WriteFile("stage", text);
  EXPECT_NE(Lint("stage", result).find(": fire-interval: "), std::string::npos);
}
