#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "core/file_name.h"
#include "lint/level_rules.h"
#include "lint/number.h"

namespace {

constexpr char kController[] = "segmentmanager";
constexpr char kShadow[] = "shadow";

struct RuleArchetype {
  std::string_view objective;
  const char* archetype;
};
constexpr RuleArchetype kRuleArchetypes[] = {
    {"CannonFall", "cannonball"},      {"CannonFall", "shadow"},    {"KingOfTheHill", "stunstars"},
    {"OctoMiners", "stunstars"},       {"WhaleBoss", "cannonball"}, {"Crown", "starsonfish"},
    {"CollectTheRings", "ringstatic"}, {"OctoMiners", "miner"},     {"lotbb", "theball"}};

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The duration that the name of a level's last object tells; none when it is another name.
std::optional<float> DurationOf(const LintObject& object) {
  float duration = 0.0f;
  return ParsesWhole(object.name, duration) ? std::optional(duration) : std::nullopt;
}

// A DeathTimer lets it go with its piece.
bool IsEmpty(const LintObject& object) {
  return std::all_of(object.components.begin(), object.components.end(),
                     [](const LintBlock& block) { return block.name == "Transform" || block.name == "ScriptBox"; }) &&
         std::all_of(object.scripts.begin(), object.scripts.end(),
                     [](const LintBlock& script) { return script.name == "DeathTimer"; });
}

// Whether it is still there when its piece's time is over.
bool Stays(const LintObject& object) {
  return !object.core && object.name != kController && !DurationOf(object) && !object.HasScript("DeathTimer");
}

// Whether a turn by that many degrees shows: a box keeps its own direction.
bool IsTurnWrong(const LintObject& object, float degrees) {
  const auto half = NumbersOf(object.Find("BoxCollider"), "half extents");
  if (half.size() < 3) return false;
  return std::fmod(degrees, half[0] == half[1] ? 90.0f : 180.0f) != 0.0f;
}

class MatchRules {
 public:
  explicit MatchRules(const LintContext& context)
      : level_(context.level), folder_(context.folder), report_(context.report) {}

  void Run() {
    const LintObject* controller = nullptr;
    for (const LintObject& object : level_.objects) {
      if (object.name == kController) CheckController(object, controller);
      for (const LintBlock& script : object.scripts) CheckScript(object, script);
    }
    if (level_.GetName() == kMatchLevel && controller == nullptr)
      report_.Say(1, "no-controller", "the match needs an object " + Quoted(kController) + ", or it never ends");
    CheckDuration();
    if (level_.GetName() == kShadow && LacksBox(level_)) SayNoBox(level_.GetFirst()->line);
  }

 private:
  void CheckController(const LintObject& object, const LintObject*& controller) {
    if (controller != nullptr)
      report_.Say(object.line, "controller-name",
                  "line " + std::to_string(controller->line) + " has one already: the game finds that alone");
    controller = &object;
    const LintBlock* segments = object.FindScript("SegmentManager");
    const LintBlock* objectives = object.FindScript("ObjectiveManager");
    if (segments == nullptr || objectives == nullptr)
      report_.Say(object.line, "controller-scripts", "it must carry SegmentManager and then ObjectiveManager");
    else if (segments->line > objectives->line)
      report_.Say(objectives->line, "controller-scripts", "it must stand after SegmentManager, or it starts too early");
    if (segments != nullptr && segments->segments.empty())
      report_.Say(segments->line, "no-time", "without a segment the match never starts: add one");
    if (objectives != nullptr && objectives->objectives.empty())
      report_.Say(objectives->line, "no-objective", "a match without a rule");
  }

  void CheckScript(const LintObject& object, const LintBlock& script) {
    if (script.name == "SegmentManager" || script.name == "ObjectiveManager") {
      if (object.name != kController)
        report_.Say(script.line, "controller-name", "it works on an object " + Quoted(kController) + " alone");
      for (const LintSegment& segment : script.segments) CheckSegment(segment);
      for (const LintBlock& objective : script.objectives) CheckObjective(objective);
    }
    if (script.name == "spawner") CheckSpawner(script);
  }

  // Whether that names no file which the game would read; said then.
  bool IsUnsafe(const LintLine& name) {
    if (name.value.empty() || IsLevelName(name.value)) return false;
    report_.Say(name.number, "unsafe-name", Quoted(name.value) + " is not read: name a file of this folder");
    return true;
  }

  static bool LacksBox(const LintLevel& shadow) {
    return shadow.GetFirst() != nullptr && shadow.GetFirst()->Find("ScriptBox") == nullptr;
  }

  void SayNoBox(int line) {
    report_.Say(line, "needs-scriptbox", "the archetype \"shadow\" does not grow: give its object a ScriptBox");
  }

  void CheckSegment(const LintSegment& segment) {
    const std::string_view name = segment.levelName->value;
    const int line = segment.levelName->number;
    if (IsUnsafe(*segment.levelName)) return;
    const LintLevel* piece = folder_.Find(name);
    if (name == level_.GetName() || Reaches(name, level_.GetName(), Pieces) || Reaches(name, name, Pieces)) {
      report_.Say(line, "piece-of-itself", "a level cannot bring itself in: name another");
      return;
    }
    if (piece == nullptr) {
      report_.Say(line, "missing-piece", Quoted(name) + " is missing here or holds no object");
      return;
    }
    if (!Pieces(*piece).empty())
      report_.Say(line, "piece-with-match", Quoted(name) + " has segments of its own, which would run beside these");
    if (const auto staying = std::count_if(piece->objects.begin(), piece->objects.end(), Stays))
      report_.Say(line, "no-death-timer",
                  std::to_string(staying) + " objects of " + Quoted(name) + " have none, and stay after it");
    const bool wrong = std::any_of(piece->objects.begin(), piece->objects.end(), [&](const LintObject& object) {
      return IsTurnWrong(object, NumberOf(*segment.rotationAngle));
    });
    if (wrong)
      report_.Say(segment.rotationAngle->number, "turned-box",
                  "the boxes of " + Quoted(name) + " move with the turn, but keep their own direction");
  }

  void CheckObjective(const LintBlock& objective) {
    for (const auto& [name, archetype] : kRuleArchetypes)
      if (objective.name == name && folder_.Find(archetype) == nullptr)
        report_.Say(objective.line, "missing-archetype",
                    "it needs the archetype " + Quoted(archetype) + ", which is missing here or empty");
    if (objective.name != "CannonFall") return;
    if (const LintLevel* shadow = folder_.Find(kShadow); shadow != nullptr && LacksBox(*shadow))
      SayNoBox(objective.line);
  }

  void CheckSpawner(const LintBlock& spawner) {
    const LintLine* name = ValueOf(&spawner, "archtypename");
    if (name == nullptr || IsUnsafe(*name)) return;
    const LintLevel* archetype = folder_.Find(name->value);
    if (name->value == level_.GetName() || Reaches(name->value, level_.GetName(), Archetypes) ||
        Reaches(name->value, name->value, Archetypes)) {
      report_.Say(name->number, "archetype-of-itself", "the spawner would spawn itself without end: name another");
    } else if (archetype == nullptr) {
      report_.Say(name->number, "missing-archetype", Quoted(name->value) + " is missing here or holds no object");
    } else {
      CheckSpawned(*archetype, *name);
    }
  }

  void CheckSpawned(const LintLevel& archetype, const LintLine& name) {
    const auto count = std::count_if(archetype.objects.begin(), archetype.objects.end(),
                                     [](const LintObject& object) { return !object.IsHost(); });
    if (count > 1)
      report_.Say(name.number, "second-object",
                  "only the first object of " + Quoted(name.value) + " is placed, the others come where they stand");
    if (!archetype.GetFirst()->HasScript("DeathTimer"))
      report_.Say(name.number, "never-leaves", Quoted(name.value) + " has no DeathTimer: such things pile up");
  }

  void CheckDuration() {
    bool ends = false;
    for (const LintObject& object : level_.objects) {
      const auto duration = DurationOf(object);
      if (!duration) continue;
      const bool last = &object == &level_.objects.back();
      if (last != IsEmpty(object))
        report_.Say(object.line, "duration-last",
                    last ? "Load Level takes it for the level's duration and removes it: name it otherwise"
                         : "it tells the level's duration only as the last object");
      if (last && !(*duration > 0.0f))
        report_.Say(object.line, "no-time", "the level's duration must be above 0 seconds");
      ends = ends || last;
    }
    if (!ends || !Pieces(level_).empty()) return;  // a match's own objects are there to the end
    for (const LintObject& object : level_.objects)
      if (Stays(object)) report_.Say(object.line, "no-death-timer", "when the level's time is over, it stays");
  }

  using Names = std::set<std::string_view>;

  static Names Pieces(const LintLevel& level) {
    Names names;
    for (const LintObject& object : level.objects)
      for (const LintBlock& script : object.scripts)
        for (const LintSegment& segment : script.segments) names.insert(segment.levelName->value);
    return names;
  }

  static Names Archetypes(const LintLevel& level) {
    Names names;
    for (const LintObject& object : level.objects)
      for (const LintBlock& script : object.scripts)
        if (const LintLine* name = ValueOf(&script, "archtypename")) names.insert(name->value);
    return names;
  }

  // Whether the level names the other one, itself or over those that it names.
  bool Reaches(std::string_view from, std::string_view to, Names (*named)(const LintLevel&)) {
    Names seen;
    std::vector<std::string_view> open = {from};
    while (!open.empty()) {
      const LintLevel* level = folder_.Find(open.back());
      open.pop_back();
      if (level == nullptr) continue;
      for (const std::string_view name : named(*level)) {
        if (name == to) return true;
        if (seen.insert(name).second) open.push_back(name);
      }
    }
    return false;
  }

  const LintLevel& level_;
  LevelFolder& folder_;
  LintReport& report_;
};

}  // namespace

void CheckMatch(const LintContext& context) { MatchRules(context).Run(); }
