#include <algorithm>
#include <cmath>
#include <map>

#include "core/object_manager.h"
#include "core/player_name.h"
#include "lint/level_rules.h"
#include "lint/number.h"
#include "physics/math/matrix33.h"
#include "physics/math/quaternion.h"

namespace {

constexpr float kTolerance = 0.002f;  // what six digits and a few products leave
constexpr float kSizeTolerance = 0.0001f;
constexpr float kFar = 100.0f;               // world units; the view ends at 20
constexpr std::size_t kMostScripts = 20000;  // of a load
constexpr std::string_view kReservedNames[] = {"ScoreText", "ScoreText2", "ScoreText3", "ScoreText4", "P1Force",
                                               "P2Force",   "P3Force",    "P4Force",    "whale"};

class ObjectRules {
 public:
  explicit ObjectRules(const LintContext& context) : level_(context.level), report_(context.report) {}

  void Run() {
    for (const LintObject& object : level_.objects) CheckObject(object);
    CheckNumbers();
    CheckCore();
  }

 private:
  void CheckObject(const LintObject& object) {
    CheckName(object);
    CheckOrder(object);
    if (const LintBlock* transform = object.Find("Transform"))
      CheckTransform(object, *transform);
    else
      report_.Say(object.line, "no-transform", "every object needs a Transform");
    CheckBody(object);
    CheckColliders(object);
  }

  void CheckName(const LintObject& object) {
    if (!object.hasName) return;
    const std::string_view name = object.name;
    if (name.empty()) report_.Say(object.line, "no-name", "the game would call it \"Nameless\": name it");
    if (name == "Nameless") {
      if (object.components.size() == 1 && object.Find("Transform") != nullptr)
        report_.Say(object.line, "leftover", "a nameless object with a Transform alone was left by a save: remove it");
      else
        report_.Say(object.line, "nameless", "\"Nameless\" sounds like a big fish when it is hit: name it");
    }
    if (IsPlayerName(name) && !object.HasScript("CharacterController"))
      report_.Say(object.line, "player-name",
                  "\"" + std::string(name) + "\" counts as a player: P first and 1 to 5 last is theirs");
    if (std::find(std::begin(kReservedNames), std::end(kReservedNames), name) != std::end(kReservedNames))
      report_.Say(object.line, "reserved-name", "code looks for \"" + std::string(name) + "\" and may find this one");
  }

  void CheckOrder(const LintObject& object) {
    const auto place = [](std::string_view component) {
      const auto all = ComponentSchemas();
      return std::find_if(all.begin(), all.end(), [&](const auto& schema) { return schema.name == component; }) -
             all.begin();
    };
    for (std::size_t i = 1; i < object.components.size(); ++i)
      if (place(object.components[i].name) < place(object.components[i - 1].name)) {
        report_.Say(object.components[i].line, "component-order",
                    std::string(object.components[i].name) + " must stand before " +
                        std::string(object.components[i - 1].name) + ", where the game saves it");
        return;
      }
  }

  void CheckTransform(const LintObject& object, const LintBlock& transform) {
    const auto position = NumbersOf(&transform, "position");
    const auto turn = NumbersOf(&transform, "orientation");
    const auto matrix = NumbersOf(&transform, "matrix");
    const auto scale = NumbersOf(&transform, "graphics scale");
    if (scale.size() < 3) return;  // damaged, and told
    CheckMatrix(transform, {turn[0], turn[1], turn[2], turn[3]}, matrix, position);
    if (std::any_of(position.begin(), position.end(), [](float x) { return std::abs(x) > kFar; }))
      report_.Say(transform.line, "far-away", "more than 100 units from the middle nobody sees it");
    const bool grows = object.HasScript("ShadowGrowth") || object.HasScript("vortex");
    const bool scaled = NumberOf(object.Find("Sprite"), "mesh type", 3.0f) != 3.0f;
    if (scaled && !grows && (scale[0] == 0.0f || scale[1] == 0.0f))
      report_.Say(transform.line, "flat-size", "a picture of graphics scale 0 is not seen");
    if (position[2] != 0.0f && HasCollider(object, false) && !object.HasScript("barnaclelogic"))
      report_.Say(transform.line, "off-plane", "solids stay at z 0, or they miss each other");
  }

  void CheckMatrix(const LintBlock& transform, const Quaternion& turn, const std::vector<float>& matrix,
                   const std::vector<float>& position) {
    const float length = turn.r * turn.r + turn.i * turn.i + turn.j * turn.j + turn.k * turn.k;
    if (!(std::abs(length - 1.0f) <= kTolerance)) {
      report_.Say(transform.line, "not-a-rotation", "the orientation must have length 1: 1, 0, 0, 0 is not turned");
      return;
    }
    const Matrix33 right = ToMatrix(turn);
    bool agrees = true;
    for (std::size_t i = 0; i < 9; ++i) agrees = agrees && std::abs(right.m[i] - matrix[i]) <= kTolerance;
    for (std::size_t i = 0; i < 3; ++i)
      agrees = agrees && std::abs(position[i] - matrix[9 + i]) <= kTolerance * (1.0f + std::abs(position[i]));
    if (!agrees)
      report_.Say(transform.line, "matrix", "it repeats the orientation and the position, and stands for a frame");
  }

  void CheckBody(const LintObject& object) {
    const LintBlock* body = object.Find("RigidBody");
    const LintLine* damping = ValueOf(body, "damping");
    const LintLine* locked = ValueOf(body, "rotationLocked_");
    // What nothing can hit may spin by itself.
    if (locked != nullptr && locked->value != "true" && NumberOf(body, "inverseMass") == 0.0f &&
        HasCollider(object, false))
      report_.Say(locked->number, "immovable-unlocked", "a hit makes it spin: rotationLocked_ must be true");
    if (damping != nullptr && NumberOf(*damping) == 0.0f)
      report_.Say(damping->number, "damping-0", "it stops at once, and slow motion leaves it at 1: write more than 0");
  }

  void CheckColliders(const LintObject& object) {
    const bool hasBody = object.Find("RigidBody") != nullptr;
    int colliders = 0;
    for (const LintBlock& block : object.components) {
      const LintLine* ghost = ValueOf(&block, "ghost");
      if (ghost == nullptr) continue;
      if (++colliders == 2)
        report_.Say(block.line, "two-colliders", "both are tested against each other too: one is enough");
      if (!hasBody && ghost->value != "true")
        report_.Say(block.line, "collider-without-body", "a solid collider needs a RigidBody: add one");
      CheckExtent(block);
    }
  }

  void CheckExtent(const LintBlock& collider) {
    const auto half = NumbersOf(&collider, "half extents");
    const auto radius = NumbersOf(&collider, "radius");
    if (half.size() < 3 && radius.empty()) return;
    const float needed =
        radius.empty() ? std::sqrt(half[0] * half[0] + half[1] * half[1] + half[2] * half[2]) : radius[0];
    const LintLine& size = *ValueOf(&collider, "size");
    if (NumberOf(size) < needed * (1.0f - kSizeTolerance))
      report_.Say(size.number, "size-too-small",
                  "hits outside of it are missed: " + CanonicalNumber(needed) + " holds the shape");
    if (radius.empty() ? half[0] == 0.0f || half[1] == 0.0f : radius[0] == 0.0f)
      report_.Say(collider.line, "no-extent", "a collider of size 0 is hardly ever hit");
  }

  void CheckNumbers() {
    std::map<std::string_view, int> lines;
    std::size_t scripts = 0;
    for (const LintObject& object : level_.objects) {
      if (!lines.emplace(object.id, object.line).second)
        report_.Say(object.line, "repeated-id",
                    "line " + std::to_string(lines[object.id]) + " has the number too: number objects from 1");
      scripts += object.scripts.size();
    }
    if (level_.objects.size() > ObjectManager::kMaxObjects)
      report_.Say(level_.objects.back().line, "too-many-objects", "the game stops at 20000 objects");
    if (scripts > kMostScripts)
      report_.Say(level_.objects.back().line, "too-many-scripts", "the game stops at 20000 scripts");
  }

  // Files of Core objects alone are scenery that a match builds; elsewhere one is likely a slip.
  void CheckCore() {
    const auto find = [&](bool core) {
      return std::find_if(level_.objects.begin(), level_.objects.end(),
                          [core](const LintObject& object) { return !object.IsHost() && object.core == core; });
    };
    const auto core = find(true);
    if (core != level_.objects.end() && find(false) != level_.objects.end())
      report_.Say(core->line, "core-object",
                  "a Core object survives a change of level and is never saved, others here are none");
  }

  const LintLevel& level_;
  LintReport& report_;
};

}  // namespace

void CheckObjects(const LintContext& context) { ObjectRules(context).Run(); }

void CheckLevel(const LintContext& context) {
  CheckObjects(context);
  CheckPlacement(context);
  CheckPictures(context);
  CheckGenerators(context);
  CheckScripts(context);
  CheckMatch(context);
}
