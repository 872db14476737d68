#include "lint/lint.h"

#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "lint/report.h"
#include "match/episode_scene.h"
#include "match/score/give_points.h"
#include "tools/lint/fix.h"
#include "tools/lint_scene.h"

namespace fs = std::filesystem;

namespace {

// What is put into a good text in place of `from`, one after the other, and the rule that it then breaks.
struct Damage {
  const char* from;
  std::vector<const char*> to;
  RuleName rule;
};

class LintTest : public LintScene {
 protected:
  // The text says nothing of note but this one rule, as its kind asks.
  void ExpectRule(const std::string& report, RuleName name) {
    const Rule& rule = name.Get();
    const bool note = rule.kind == RuleKind::kNote;
    EXPECT_EQ(result, note ? 0 : 1) << rule.name << "\n" << report;
    EXPECT_GT(Count(report, ": " + std::string(rule.name) + (note ? ": note: " : ": ")), 0) << rule.name << report;
    seen.insert(rule.name);
  }

  void Say(const std::string& text, RuleName rule, const std::string& name = "stage") {
    ExpectRule(LintText(text, name), rule);
  }
  // The same, and nothing else is told.
  void SayAlone(const std::string& text, RuleName rule, const std::string& name = "stage") {
    const std::string report = LintText(text, name);
    ExpectRule(report, rule);
    EXPECT_EQ(Count(report, "\n"), 1) << report;
    EXPECT_EQ(report.find(name + ":"), 0u) << report;
  }

  // One damage to a good text is told once, at its line, and mended when it can be.
  void ExpectDamage(const std::string& name, const std::string& good, const std::string& text, RuleName rule) {
    SayAlone(text, rule, name);
    const RuleKind kind = rule.Get().kind;
    const std::string told = RunTool(FixFiles, name, result);
    EXPECT_EQ(world.ReadFile(name), kind == RuleKind::kFixed ? good : text);
    EXPECT_TRUE(kind != RuleKind::kFixed || result == 0) << told;
    EXPECT_EQ(Count(told, ": left as it is: "), kind == RuleKind::kUnreadable ? 1 : 0) << told;
  }
  void ExpectDamages(const std::string& name, const std::string& good, std::span<const Damage> damages) {
    EXPECT_EQ(LintText(good, name), "");
    for (const auto& [from, all, rule] : damages) {
      for (const char* to : all) {
        SCOPED_TRACE(to);
        ExpectDamage(name, good, Changed(good, from, to), rule);
      }
    }
  }

  // The parts of EveryRule.
  void DamageShipped();
  void BreakEpisodes();
  void BreakObjects();
  void BreakScripts();
  void PassLimits();

  std::set<std::string_view> seen;
};

const Damage kLineDamages[] = {
    {"{\n\t1", {"\xEF\xBB\xBF{ \n\t1"}, "first-line"},
    {"{\n\t1", {"[\n\t1"}, "document"},
    {"\n}\n", {"\n"}, "unexpected-end"},
    {"\n}\n", {"\n}\n}\n"}, "document"},
    {"\n}\n", {"\n}"}, "line-end"},
    {"\t1: {", {"\twall: {"}, "header"},
    {"\t\t}\n\t\tComponent: \"RigidBody\"", {"\t\t}}\n\t\tComponent: \"RigidBody\""}, "closing-line"},
    {"\t1: {", {"\tName: x\n\t1: {"}, "outside-object"},
    {"\t\t\trestitution: 0.2\n", {""}, "missing-or-shifted"},
    {"\t\t\t\t\tz_: 0\n\t\t\t\t}\n", {"\t\t\t\t}\n"}, "missing-or-shifted"},
    {"restitution: 0.2", {"restitution: 0.20"}, "canonical-number"},
    {"collision group: 0", {"collision group: 00"}, "canonical-number"},
    {"Core: true", {"Core:true", "Core:  true", "Core: true\t "}, "blanks"},
    {"\t1: {", {"\t1: { "}, "blanks"},
    {"\t\tCore: true", {"\t  Core: true"}, "leading-blanks"},
    {"\t\tCore: true", {"\tCore: true"}, "indentation"},
    {"Core: true\n", {"Core: true\n \t \n"}, "empty-line"},
    {"Core: true", {"Core: true\r"}, "line-end"},
    {"Name: chain1", {"Name: chain\t1"}, "control-characters"},
    {"\t2: {", {"\t1: {"}, "repeated-id"},
};

const Damage kValueDamages[] = {
    {"restitution: 0.2", {"restitution: much"}, "bad-value"},
    {"x_: 0", {"x_: 1e999", "x_: nan"}, "bad-value"},
    {"collision group: 0", {"collision group: 0.5"}, "bad-value"},
    {"\t\t\ta: 1", {"\t\t\ta: 1.5"}, "out-of-range"},
    {"damping: 0.998499", {"damping: 0"}, "damping-0"},
    {"start frame: 0", {"start frame: 0.5"}, "outside-picture"},
    {"mesh type: 0", {"mesh type: 2", "mesh type: 4"}, "mesh-type"},
    {"mesh type: 0", {"mesh type: 3"}, "not-16-9"},
    {"shader name: default", {"shader name: shiny"}, "unknown-shader"},
    {"texture path: chainfront.png", {"texture path: nothing.png"}, "missing-picture"},
    {"texture path: chainfront.png", {"texture path: ..", "texture path: sub/crate1.png"}, "unsafe-name"},
    {"texture path: chainfront.png", {"texture path: NULLSTRING"}, "no-picture"},
    {"texture path: chainfront.png", {"texture path: ship.png"}, "not-preloaded"},
    {"texture path: chainfront.png", {"texture path: drawn.png"}, "bad-picture"},
    {"Name: chain1", {"Name: Nameless"}, "nameless"},
    {"Name: chain1", {"Name: "}, "no-name"},
    {"Name: chain1", {"Name: Post3"}, "player-name"},
    {"Name: chain1", {"Name: ScoreText2"}, "reserved-name"},
    {"Component: \"Sprite\"", {"Component: \"Spirit\""}, "unknown-component"},
    {"inverseMass: 0", {"inverseMass: -1"}, "negative-mass"},
    {"rotationLocked_: true", {"rotationLocked_: false"}, "immovable-unlocked"},
    {"collision group: 0", {"collision group: 15"}, "collision-group"},
    {"num force generators: 0", {"num force generators: -1", "num force generators: 1001"}, "too-many-generators"},
    {"num force generators: 0", {"num force generators: 1\n\t\t\tgenerator ID: 42"}, "unknown-generator"},
    {"r_: 1", {"r_: 1.1"}, "not-a-rotation"},
    {"r_: 1\n\t\t\t\ti_: 0", {"r_: 0\n\t\t\t\ti_: 1"}, "matrix"},
};

const Damage kMatchDamages[] = {
    {"levelName_: piece", {"levelName_: nowhere", "levelName_: hollow"}, "missing-piece"},
    {"levelName_: piece", {"levelName_: level1"}, "piece-of-itself"},
    {"levelName_: piece", {"levelName_: ../piece", "levelName_: /piece", "levelName_: C:piece"}, "unsafe-name"},
    {"archtypename: fish2", {"archtypename: examples/../fish2", "archtypename: .\\fish2"}, "unsafe-name"},
    {"duration_: 10", {"duration_: 0"}, "no-time"},
    {"duration_: 10", {"duration_: nan"}, "bad-value"},
    {"SentinelSegment: NoMoreSegments", {"SentinelSegment: End"}, "bad-value"},
    {"number of segments: 1", {"number of segments: 1000000000"}, "wrong-count"},
    {"Sections: 2", {"Sections: 3"}, "wrong-count"},
    {"Objective: HitObjects", {"Objective: Regatta\n\t\t\t\tBoats: 3"}, "unknown-objective"},
    {"Objective: HitObjects", {"Objective: Crown"}, "missing-archetype"},
    {"Runtime: 10", {"Runtime: -10"}, "out-of-range"},
    {"archtypename: fish2", {"archtypename: kraken"}, "missing-archetype"},
    {"archtypename: fish2", {"archtypename: level1", "archtypename: ring"}, "archetype-of-itself"},
    {"archtypename: fish2", {"archtypename: rock"}, "never-leaves"},
    {"spawnrate: 1", {"spawnrate: 0"}, "spawn-rate"},
    {"PointsGiven: 5", {"PointsGiven: 1000000000"}, "points-range"},
    {"Hits To Break: 2", {"Hits To Break: -1"}, "negative-hits"},
    {"Hits To Break: 2\n\t\t\tIs Treasure Chest: false",
     {"Hits To Break: 0\n\t\t\tIs Treasure Chest: true"},
     "unbroken-chest"},
};

const Damage kEmitterDamages[] = {
    {"particleCount: 24", {"particleCount: 2000000000"}, "particle-count"},
    {"particleCount: 24", {"particleCount: 0"}, "no-particles"},
    {"textureName: Bubble.png", {"textureName: ship.png"}, "not-preloaded"},
    {"minLifespan: ", {"minLifespan: 9"}, "reversed-range"},
    {"spawnIntervalMax: 0.4\n", {"spawnIntervalMax: 0.4\n\t\t\t\tx: 0\n"}, "missing-or-shifted"},
};

const Damage kGeneratorDamages[] = {
    {"\t\t\tComponent: \"patricidal\" {\n\t\t\t}\n", {""}, "host"},
    {"base of: 1\n\t\t\tgenerator ID: 43", {"base of: 0"}, "loose-spring"},
    {"generators: 1\n\t\t\tgenerator ID: 42", {"generators: 0"}, "unread-generator"},
    {"Name: 20.000000", {"Name: 0.000000"}, "no-time"},
};

const std::string kNoVector = "Component: \"Vec3\" {\nx_: 0\ny_: 0\nz_: 0\n}\n";

// The first object of the text gets a box of scripts in front of its body.
std::string WithScripts(std::string text, std::string_view scripts) {
  return text.insert(text.find("\t\tComponent: \"RigidBody\""),
                     std::string("\t\tComponent: \"ScriptBox\" {\n").append(scripts) + "\t\t}\n");
}

}  // namespace

void LintTest::DamageShipped() {
  ExpectDamages("stage", Shipped("core"), kLineDamages);
  ExpectDamages("stage", Shipped("core"), kValueDamages);
  ExpectDamages("stage", Shipped("bubblegens"), kEmitterDamages);
  const std::string springs = Changed(Shipped("examples/springs"), "bollard.png", "whitebuoy.png");
  ExpectDamages("stage", springs, kGeneratorDamages);
  // One leads to others.
  Say(Changed(Shipped("core"), "Core: true", "Core"), "value-line");
  Say(Changed(Shipped("core"), "Core: true", "Core: yes"), "bad-value");
  Say(Changed(springs, "My ID: 43", "My ID: 42"), "repeated-generator");
  Say(Changed(springs, "base of: 1\n\t\t\tgenerator ID: 43", "base of: 1\n\t\t\tgenerator ID: 42"), "spring-base");
}

void LintTest::BreakEpisodes() {
  GameObject& controller = world.AddSphere("segmentmanager", {});
  auto& prize = controller.Insert(std::make_unique<GivePoints>());
  prize.pointsGiven = 5;
  prize.hitsToBreak = 2;
  using Episode = EpisodeScene;
  const std::string spawner = "archtypename: fish2\nTimeBeforeFirstSpawn: 0\nspawnrate: 1\nYRange: 0\n" + kNoVector;
  world.WriteFile("level1",
                  WithScripts(Document({&controller}),
                              Episode::ScriptText("SegmentManager", Episode::Segments({{"piece", 10.0f}})) +
                                  Episode::ScriptText("ObjectiveManager",
                                                      Episode::Objectives({"HitObjects", "NULL\nRuntime: 10"})) +
                                  Episode::ScriptText("spawner", spawner)));
  RunTool(FixFiles, "level1", result);  // indents, and numbers the object from 1
  const std::string good = world.ReadFile("level1");
  ExpectDamages("level1", good, kMatchDamages);

  Say(Changed(good, "Name: segmentmanager", "Name: somebody"), "no-controller", "level1");
  SayAlone(Changed(Shipped("core"), "texture path: chainfront.png", "texture path: ship.png"), "no-controller",
           "level1");
  Say(Changed(good, "archtypename: fish2", "archtypename:"), "empty-value");
  Say(Changed(good, "levelName_: piece", "levelName_: rock"), "no-death-timer");
  Say(Changed(good, "archtypename: fish2", "archtypename: pair"), "second-object");
  Say(Changed(good, "Name: segmentmanager", "Name: somebody"), "controller-name");
  world.WriteFile("other", good);
  Say(Changed(good, "levelName_: piece", "levelName_: other"), "piece-with-match");
  world.WriteFile("planks", Document({&world.AddBox("plank", {}, {.halfExtents = {2, 1, 0}})}));
  Say(Changed(Changed(good, "levelName_: piece", "levelName_: planks"), "Angle_: 0", "Angle_: 90"), "turned-box");
  GameObject& bare = world.AddSphere("segmentmanager", {});
  Say(Document({&bare}), "controller-scripts");
  auto& scripts = bare.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript("SegmentManager");
  scripts.AddScript("ObjectiveManager");
  Say(Document({&bare}), "no-time");
  Say(Changed(good, "Sections: 2\n\t\t\t\tObjective: HitObjects\n\t\t\t\tObjective: NULL\n\t\t\t\tRuntime: 10",
              "Sections: 0"),
      "no-objective");
  Say(Document({&world.Add("5.000000"), &world.Add("crate")}), "duration-last");

  SayAlone(Document({&world.AddSphere("shadow", {}, {.ghost = true})}), "needs-scriptbox", "shadow");
  const char* kCannonFall = "Objective: CannonFall\nRate: 1\nRateVariation: 0\nSpeed: 1\nspeedVariation: 0";
  Say(Changed(good, "Objective: HitObjects", kCannonFall), "needs-scriptbox");
  for (const char* archetype : {"cannonball", "stunstars", "shadow"}) std::filesystem::remove(archetype);
  for (const char* rule : {"Objective: WhaleBoss", "Objective: KingOfTheHill", "Objective: OctoMiners"})
    EXPECT_GT(Count(LintText(Changed(good, "Objective: HitObjects", rule)), ": missing-archetype: "), 0) << rule;
  for (const char* archetype : {"cannonball", "stunstars"}) world.WriteFile(archetype, Shipped(archetype));
}

void LintTest::BreakObjects() {
  const auto sphere = [&](const BodyOptions& options, const Vec3& at = {}) {
    return Document({&world.AddSphere("ball", at, options)});
  };
  const std::string ball = sphere({});
  EXPECT_EQ(LintText(ball), "");
  Say(sphere({.body = false}), "collider-without-body");
  Say(sphere({}, {0, 0, 1}), "off-plane");
  Say(sphere({}, {4000, 0, 0}), "far-away");
  Say(sphere({.radius = 0}), "no-extent");
  const BodyOptions immovable = {.inverseMass = 0};
  Say(sphere(immovable, {3.4f, 2, 0}), "starting-place");
  EXPECT_EQ(LintText(sphere(immovable, {3.6f, 2, 0})), "");
  const auto pair = [&](float gap) {
    return Document(
        {&world.AddBox("crate", {6, 6, 0}, immovable), &world.AddSphere("buoy", {7.5f + gap, 6, 0}, immovable)});
  };
  Say(pair(0.0f), "touching");
  EXPECT_EQ(LintText(pair(0.02f)), "");
  Say(Changed(ball, "\t\t\tsize: 1", "\t\t\tsize: 0.5"), "size-too-small");
  Say(Changed(ball, "\t\t\tsize: 1", "\t\t\tsize: -1"), "negative-size");
  Say(Changed(ball, "type: 1", "type: 0"), "collider-type");
  Say(Document({&world.Add("Nameless")}), "leftover");
  Say("{\n\t1: {\n\t\tName: x\n\t\tCore: false\n\t}\n}\n", "no-transform");
  GameObject& flat = world.Add("flat");
  flat.GetTransform().graphicsScale = {};
  flat.AddComponent("Sprite");
  Say(Changed(Document({&flat}), "NULLSTRING", "crate1.png"), "flat-size");
  GameObject& core = world.Add("pillar");
  core.core = true;
  Say(Document({&core, &world.Add("crate")}), "core-object");
  GameObject& two = world.AddSphere("two", {});
  two.AddComponent("BoxCollider");
  Say(Document({&two}), "two-colliders");

  const auto body = ball.find("\t\tComponent: \"RigidBody\"");
  const auto collider = ball.find("\t\tComponent: \"SphereCollider\"");
  const std::string bodyText = ball.substr(body, collider - body);
  const std::string end = "\t}\n}\n";
  Say(Changed(ball, bodyText, bodyText + bodyText), "repeated-component");
  Say(Changed(Changed(ball, bodyText, ""), end, bodyText + end), "component-order");
  const std::string gravity = EpisodeScene::ScriptText("gravity", "My ID: 42\n" + kNoVector);
  Say(WithScripts(Changed(ball, "generators: 0", "generators: 1\n\t\t\tgenerator ID: 42"), gravity), "generator-place");
  Say(WithScripts(ball, EpisodeScene::ScriptText("Gravity", "")), "unknown-script");
}

// Scripts fail silently in the game when what they act on is missing or of the wrong kind.
void LintTest::BreakScripts() {
  const auto thing = [&](const std::vector<const char*>& scripts, bool ghost = false, const char* beside = "Sprite") {
    GameObject& object = world.AddSphere("thing", {}, {.ghost = ghost});
    object.AddComponent(beside);
    auto& box = object.Insert(std::make_unique<ScriptBox>());
    for (const char* script : scripts) box.AddScript(script);
    object.GetTransform().graphicsScale = {1, 1, 0};
    std::string text = Document({&object});
    return text.find("NULLSTRING") == std::string::npos ? text : Changed(text, "NULLSTRING", "crate1.png");
  };
  for (const char* solid : {"stunsonhit", "barnaclelogic", "broadside"}) EXPECT_EQ(LintText(thing({solid})), "");
  SayAlone(thing({"stunsonhit"}, true), "not-solid");
  SayAlone(thing({"Clacky"}, true, "GivePoints"), "not-solid");
  SayAlone(thing({"vortex"}, true), "swallows");
  SayAlone(thing({"barnaclelogic"}, false, "GivePoints"), "barnacle-prize");
  SayAlone(thing({"sandlogic"}), "missing-archetype");
  SayAlone(thing({"color-changer"}, false, "GivePoints"), "needs-sprite");
  SayAlone(thing({"rainbowfish"}), "needs-fishanimator");
  SayAlone(thing({"patricidal"}), "host");
  SayAlone(thing({"wsl"}), "made-by-code");
  GameObject& bare = world.Add("bare");
  bare.Insert(std::make_unique<ScriptBox>()).AddScript("VelocityCap");
  Say(Document({&bare}), "needs-body");
  Say(Changed(thing({"broadside"}), "fireInterval: 3", "fireInterval: 0"), "fire-interval");
  Say(thing({"vortex"}), "not-a-ghost");
  Say(Changed(thing({"fishanimator", "rainbowfish"}), "startingframe: 0", "startingframe: 9"), "needs-fishanimator");
  Say(thing({"ShadowGrowth"}), "shadow-scale");
}

void LintTest::PassLimits() {
  const auto repeated = [](std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  const std::string thing = Document({&world.Add("x")});
  const auto open = thing.find(": {");
  std::string objects = "{\n";
  for (std::size_t i = 0; i <= ObjectManager::kMaxObjects; ++i)
    objects.append("\t").append(std::to_string(i + 1)).append(thing, open, thing.size() - open - 2);
  Say(objects + "}\n", "too-many-objects");
  const auto ballWith = [&](std::string_view name, std::string_view values, std::size_t count) {
    const std::string script = EpisodeScene::ScriptText(name, values);
    return WithScripts(Document({&world.AddSphere("ball", {})}), repeated(script, count));
  };
  Say(ballWith("Clacky", "", 20001), "too-many-scripts");
  Say(ballWith("particleemitter", "\t\t\t\ttextureName: Bubble.png\n\t\t\t\tparticleCount: 65536\n", 17),
      "too-many-particles");
  const std::string report = LintText("{\n1: {\nName: a\nCore: false\n" + repeated("a\n", 3 * LintReport::kMaxLines));
  EXPECT_EQ(Count(report, "\n"), LintReport::kMaxLines + 1);
  EXPECT_EQ(Count(report, ": too-many: note: "), 1);
  seen.insert("too-many");
  ExpectRule(Lint("."), "unreadable");
  ExpectRule(Lint("no such file"), "unreadable");
  Say("", "unreadable");
  fs::resize_file("stage", 17'000'000);
  ExpectRule(Lint("stage"), "too-large");
}

// Every rule of the table is broken by something here, is told under its name at its line, and is mended by --fix
// exactly when the table says so.
TEST_F(LintTest, EveryRule) {
  DamageShipped();
  BreakEpisodes();
  BreakObjects();
  BreakScripts();
  PassLimits();
  for (const Rule& rule : kLintRules)
    EXPECT_TRUE(seen.contains(rule.name) || rule.played) << rule.name << " is never told";
}

// However much of it is missing, the file is refused and the reading ends.
TEST_F(LintTest, TruncationIsAFault) {
  const std::string good = Shipped("core");
  for (auto end = good.find('\n'); end + 2 < good.size() && end < 6000; end = good.find('\n', end + 1)) {
    EXPECT_NE(LintText(good.substr(0, end + 1)).find(": unexpected-end: "), std::string::npos) << end;
    EXPECT_EQ(result, 1);
  }
}
