#include <algorithm>
#include <array>

#include "lint/level_rules.h"

namespace {

struct NamedArchetype {
  std::string_view script;
  const char* archetype;
};
constexpr NamedArchetype kArchetypes[] = {{"broadside", "cannonball"},
                                          {"fountain", "cannonball"},
                                          {"makeawhale", "cannonball"},
                                          {"sandlogic", "sandpoof"},
                                          {"stunsonhit", "stunstars"}};

// They act on contacts, which a ghost never has.
constexpr std::string_view kNeedSolid[] = {"squishy",    "sandlogic",     "barnaclelogic", "onewayintostage",
                                           "stunsonhit", "color-changer", "fishanimator"};
constexpr std::string_view kNeedSprite[] = {"fishanimator", "SquidAnimator", "color-changer", "ShadowGrowth"};
constexpr std::string_view kNeedBody[] = {"VelocityCap", "onewayintostage"};
constexpr std::string_view kMadeByCode[] = {"class GameTimer",
                                            "CameraCenterer",
                                            "Clickable",
                                            "CharacterController",
                                            "CollisionCheckScript",
                                            "dizzy",
                                            "follow",
                                            "ForceCurrency",
                                            "class LerpVecAnimator",
                                            "class LerpSizeAnimator",
                                            "class LerpOpacityAnimator",
                                            "LogoScreenScript",
                                            "pointmovment",
                                            "RespawnNodeManager",
                                            "ScoreScript",
                                            "InsertName",
                                            "SplashScreenLogic",
                                            "TitleScreenScript",
                                            "ToggleButton",
                                            "wsl"};
constexpr std::array<std::array<std::string_view, 2>, 6> kRanges = {{{"minLifespan", "maxLifeSpan"},
                                                                     {"startingPositionMin", "startingPositionMax"},
                                                                     {"minVelocity", "maxVelocity"},
                                                                     {"minAcceleration", "maxAcceleration"},
                                                                     {"minScale", "maxScale"},
                                                                     {"spawnIntervalMin", "spawnIntervalMax"}}};

bool Holds(std::span<const std::string_view> names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

class ScriptRules {
 public:
  ScriptRules(const LintContext& context, const LintObject& object)
      : object_(object), folder_(context.folder), report_(context.report) {}

  void Run() {
    for (const LintBlock& script : object_.scripts) {
      CheckNeeds(script);
      CheckRanges(script);
      CheckArchetypes(script);
      if (script.name == "rainbowfish") CheckRainbowFish(script);
      if (script.name == "ShadowGrowth") CheckShadow(script);
      if (script.name == "vortex") CheckVortex(script);
    }
    if (const LintBlock* prize = object_.Find("GivePoints")) CheckPrize(*prize);
  }

 private:
  void CheckNeeds(const LintBlock& script) {
    if (Holds(kNeedSolid, script.name) && !HasCollider(object_, false))
      report_.Say(script.line, "not-solid", "it acts on touches: give the object a collider that is no ghost");
    if (Holds(kNeedSprite, script.name) && object_.Find("Sprite") == nullptr)
      report_.Say(script.line, "needs-sprite", "it acts on the picture: give the object a Sprite");
    if (Holds(kNeedBody, script.name) && object_.Find("RigidBody") == nullptr)
      report_.Say(script.line, "needs-body", "it acts on the body: give the object a RigidBody");
    if (Holds(kMadeByCode, script.name))
      report_.Say(script.line, "made-by-code", "code makes it where it works; from a file it does nothing good");
  }

  void CheckArchetypes(const LintBlock& script) {
    for (const auto& [name, archetype] : kArchetypes)
      if (script.name == name && folder_.Find(archetype) == nullptr)
        report_.Say(script.line, "missing-archetype",
                    "it needs the archetype \"" + std::string(archetype) + "\", which is missing here or empty");
  }

  void CheckRanges(const LintBlock& script) {
    for (const auto& [low, high] : kRanges) {
      const auto& least = script.Find(low);
      const auto& greatest = script.Find(high);
      for (std::size_t i = 0; i < std::min(least.size(), greatest.size()); ++i)
        if (NumberOf(*least[i]) > NumberOf(*greatest[i])) {
          report_.Say(greatest[i]->number, "reversed-range",
                      std::string(greatest[i]->value) + " is below the least value " + std::string(least[i]->value));
          break;
        }
    }
  }

  void CheckRainbowFish(const LintBlock& script) {
    const LintBlock* fish = object_.FindScript("fishanimator");
    if (fish == nullptr || fish->line > script.line)
      report_.Say(script.line, "needs-fishanimator", "a fishanimator must stand before it");
    else if (const LintLine* frame = ValueOf(&script, "startingframe");
             frame != nullptr && NumberOf(*frame) >= NumberOf(fish, "NumberOfAnimationFrames"))
      report_.Say(frame->number, "needs-fishanimator",
                  "the fishanimator before it has no such frame: they count from 0");
  }

  // It sets the scale as soon as it is read.
  void CheckShadow(const LintBlock& script) {
    const auto scale = NumbersOf(object_.Find("Transform"), "graphics scale");
    if (std::any_of(scale.begin(), scale.end(), [](float size) { return size != 0.0f; }))
      report_.Say(script.line, "shadow-scale", "it begins at graphics scale 0, 0, 0: write that");
  }

  void CheckVortex(const LintBlock& vortex) {
    if (object_.Find("SphereCollider") == nullptr || !HasCollider(object_, true))
      report_.Say(vortex.line, "not-a-ghost", "it acts on overlaps: give the object a SphereCollider that is a ghost");
    const LintLine* exit = ValueOf(&vortex, "is used to exit the stage");
    const LintLine* distance = ValueOf(&vortex, "point distance");
    if (exit != nullptr && exit->value == "true" && NumberOf(*distance) > 0.0f)
      report_.Say(distance->number, "swallows", "nearer than this players are swallowed for good: 0 only pulls");
  }

  void CheckPrize(const LintBlock& prize) {
    if (!HasCollider(object_, false))
      report_.Say(prize.line, "not-solid", "it pays for touches: give the object a collider that is no ghost");
    const LintLine* hits = ValueOf(&prize, "Hits To Break");
    const LintLine* chest = ValueOf(&prize, "Is Treasure Chest");
    if (chest != nullptr && chest->value == "true" && NumberOf(*hits) == 0.0f)
      report_.Say(hits->number, "unbroken-chest", "it never breaks, and so never pays its points: 3 suits the sounds");
    if (const LintBlock* barnacle = object_.FindScript("barnaclelogic"))
      report_.Say(barnacle->line, "barnacle-prize", "a whale's coming removes what has GivePoints: remove it");
  }

  const LintObject& object_;
  LevelFolder& folder_;
  LintReport& report_;
};

}  // namespace

void CheckScripts(const LintContext& context) {
  for (const LintObject& object : context.level.objects) ScriptRules(context, object).Run();
}
