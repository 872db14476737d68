#include "tools/lint/object_rules.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

#include "core/player_name.h"
#include "graphics/particle_emitter.h"
#include "graphics/preload_list.h"
#include "tools/lint/game_folder.h"
#include "tools/lint/hazard_rules.h"
#include "tools/lint/lint_object.h"
#include "tools/lint/match_rules.h"

namespace {

namespace fs = std::filesystem;
using Kind = LintLine::Kind;

constexpr std::string_view kHostName = "AForceBox";
constexpr int kMaxGroup = 14;

class LevelLint {
 public:
  LevelLint(const std::vector<LintLine>& lines, const std::string& file, LintReport& report)
      : reader_(lines, report), folder_(GameFolderOf(file)), report_(report), match_(file, report) {}

  void Run() {
    while (!reader_.AtEnd()) {
      const LintLine& line = reader_.Take();
      if (line.kind == Kind::kClose) continue;  // the document's end
      if (line.kind == Kind::kBlockOpen)
        CheckObject(ReadObject(line));
      else
        report_.Fault(line.number, "outside-object", "only objects (\"ID: {\") may stand here");
      if (line.kind == Kind::kComponentOpen) reader_.SkipBlock();
    }
    CheckGenerators();
    match_.Finish();
  }

 private:
  LintObject ReadObject(const LintLine& header) {
    LintObject object;
    object.line = header.number;
    if (const LintLine* name = reader_.Expect(Kind::kValue, "Name", "the value")) {
      object.hasName = true;
      object.name = name->value;
    }
    if (const LintLine* core = reader_.Expect(Kind::kValue, "Core", "the value");
        core != nullptr && core->value != "true" && core->value != "false")
      report_.Fault(core->number, "bad-value", "Core must be true or false");
    while (!reader_.AtEnd() && reader_.Peek().kind != Kind::kClose) ReadComponent(object);
    if (!reader_.AtEnd()) reader_.Take();
    return object;
  }

  void ReadComponent(LintObject& object) {
    const LintLine& header = reader_.Take();
    if (header.kind != Kind::kComponentOpen) {
      report_.Fault(header.number, "missing-or-shifted", "a component or the object's end must stand here");
      if (header.kind == Kind::kBlockOpen) reader_.SkipBlock();
      return;
    }
    const BlockSchema* schema = FindComponentSchema(header.key);
    if (schema == nullptr) {
      report_.Fault(
          header.number, "unknown-component",
          "no component is called \"" + std::string(header.key) +
              "\": Transform, ScriptBox, RigidBody, Sprite, GivePoints, SphereCollider or BoxCollider is right");
      reader_.SkipBlock();
      return;
    }
    if (object.Find(header.key) != nullptr)
      report_.Fault(header.number, "repeated-component", "the object has one already, which is lost: remove one");
    if (header.key == "ScriptBox") {
      object.components.push_back({.name = header.key, .line = header.number});
      ReadScripts(object);
    } else {
      object.components.push_back(reader_.ReadBlock(header, *schema));
    }
  }

  void ReadScripts(LintObject& object) {
    while (!reader_.AtEnd() && reader_.Peek().kind != Kind::kClose) {
      const LintLine& header = reader_.Take();
      if (header.kind == Kind::kValue) {
        report_.Fault(header.number, "missing-or-shifted", "a script or the end of the ScriptBox must stand here");
        continue;
      }
      const BlockSchema* schema = header.kind == Kind::kComponentOpen ? FindScriptSchema(header.key) : nullptr;
      if (schema != nullptr) {
        object.scripts.push_back(reader_.ReadBlock(header, *schema));
        continue;
      }
      report_.Fault(header.number, "unknown-script",
                    "no script is called \"" + std::string(header.key) +
                        "\": \"brinewhirl-tool scripts\" prints those there are");
      reader_.SkipBlock();
    }
    if (!reader_.AtEnd()) reader_.Take();
  }

  void CheckObject(const LintObject& object) {
    CheckName(object);
    if (object.Find("Transform") == nullptr)
      report_.Fault(object.line, "no-transform", "every object needs a Transform");
    CheckBody(object);
    CheckColliders(object);
    CheckSprite(object);
    for (const LintBlock& script : object.scripts) CheckEmitter(script);
    CollectGenerators(object);
    match_.Check(object);
    CheckHazards(object, folder_, report_);
  }

  void CheckName(const LintObject& object) {
    if (!object.hasName) return;
    if (object.name.empty()) report_.Fault(object.line, "no-name", "the game would call it \"Nameless\": name it");
    if (object.name == "Nameless") {
      if (object.components.size() == 1 && object.Find("Transform") != nullptr)
        report_.Fault(object.line, "leftover",
                      "a nameless object with a Transform alone was left by a save: remove it");
      else
        report_.Fault(object.line, "nameless", "\"Nameless\" sounds like a big fish when it is hit: name it");
    }
    if (IsPlayerName(object.name) && !object.HasScript("CharacterController"))
      report_.Fault(object.line, "player-name",
                    "\"" + std::string(object.name) + "\" counts as a player: P first and 1 to 5 last is theirs");
  }

  void CheckBody(const LintObject& object) {
    const LintBlock* body = object.Find("RigidBody");
    const LintLine* inverseMass = ValueOf(body, "inverseMass");
    const LintLine* damping = ValueOf(body, "damping");
    const LintLine* locked = ValueOf(body, "rotationLocked_");
    if (inverseMass != nullptr && NumberOf(*inverseMass) < 0.0f)
      report_.Fault(inverseMass->number, "negative-mass", "inverseMass is read as 0: write 0 or more");
    // What nothing can hit may spin by itself.
    if (inverseMass != nullptr && locked != nullptr && NumberOf(*inverseMass) == 0.0f && locked->value != "true" &&
        HasCollider(object, false))
      report_.Fault(locked->number, "immovable-unlocked", "a hit makes it spin: rotationLocked_ must be true");
    if (damping != nullptr && NumberOf(*damping) == 0.0f)
      report_.Note(damping->number, "damping-0", "it stops at once, and slow motion leaves it at 1: write more than 0");
  }

  void CheckColliders(const LintObject& object) {
    const bool hasBody = object.Find("RigidBody") != nullptr;
    int colliders = 0;
    for (const LintBlock& block : object.components) {
      const bool sphere = block.name == "SphereCollider";
      if (!sphere && block.name != "BoxCollider") continue;
      if (++colliders == 2)
        report_.Note(block.line, "two-colliders", "both are tested against each other too: one is enough");
      const LintLine* ghost = ValueOf(&block, "ghost");
      if (!hasBody && ghost != nullptr && ghost->value != "true")
        report_.Fault(block.line, "collider-without-body", "a solid collider needs a RigidBody: add one");
      if (const LintLine* type = ValueOf(&block, "type"); type != nullptr && NumberOf(*type) != (sphere ? 1.0f : 0.0f))
        report_.Fault(type->number, "collider-type", sphere ? "must be 1" : "must be 0");
      if (const LintLine* group = ValueOf(&block, "collision group");
          group != nullptr && (NumberOf(*group) < 0.0f || NumberOf(*group) > static_cast<float>(kMaxGroup)))
        report_.Fault(group->number, "collision-group", "must be 0 to 14");
      for (const char* key : {"size", "radius"})
        if (const LintLine* size = ValueOf(&block, key); size != nullptr && NumberOf(*size) < 0.0f)
          report_.Fault(size->number, "negative-size", "read as 0: write 0 or more");
    }
  }

  void CheckSprite(const LintObject& object) {
    if (const LintLine* picture = ValueOf(object.Find("Sprite"), "texture path"))
      CheckPicture(*picture, "every start prints an error for it: name a picture",
                   "is read when the level is, which may stall a frame");
  }

  void CheckEmitter(const LintBlock& script) {
    if (const LintLine* picture = ValueOf(&script, "textureName"))
      CheckPicture(*picture, "its particles are black: name a picture",
                   "is not loaded by an emitter: its particles are black unless a sprite loads it");
    if (const LintLine* count = ValueOf(&script, "particleCount");
        count != nullptr && (NumberOf(*count) < 0.0f || NumberOf(*count) > float{ParticleEmitter::kMaxParticles}))
      report_.Fault(count->number, "particle-count", "must be 0 to " + std::to_string(ParticleEmitter::kMaxParticles));
  }

  void CheckPicture(const LintLine& picture, const char* whenNone, const char* whenNotPreloaded) {
    const std::string name(picture.value);
    std::error_code error;
    if (name == "NULLSTRING" || name.empty())
      report_.Fault(picture.number, "no-picture", whenNone);
    else if (name.find('/') != std::string::npos || !std::filesystem::is_regular_file(Beside("Texture/" + name), error))
      report_.Fault(picture.number, "missing-picture",
                    "\"" + name + "\" is no picture in Texture/: name one that is there, without folder");
    else if (std::find(kPreloadedImages.begin(), kPreloadedImages.end(), name) == kPreloadedImages.end() &&
             noted_.insert(picture.value).second)
      report_.Note(picture.number, "not-preloaded", "\"" + name + "\" " + whenNotPreloaded);
  }

  std::filesystem::path Beside(const std::string& name) const {
    return folder_.empty() ? std::filesystem::path(name) : std::filesystem::path(folder_) / name;
  }

  void CollectGenerators(const LintObject& object) {
    for (const LintBlock& script : object.scripts)
      if (const LintLine* id = ValueOf(&script, "My ID")) {
        if (!defined_.insert(id->value).second)
          report_.Fault(id->number, "repeated-generator", "My ID must differ from that of the generators before it");
        if (object.name != kHostName) unread_[id->value] = id->number;
      }
    if (const LintBlock* body = object.Find("RigidBody"))
      for (const LintLine* id : body->generatorIds) {
        if (!defined_.contains(id->value))
          report_.Fault(id->number, "unknown-generator", "no generator before it has the ID " + std::string(id->value));
        unread_.erase(id->value);
      }
  }

  void CheckGenerators() {
    for (const auto& [id, line] : unread_)
      report_.Fault(line, "unread-generator", "no body names the generator " + std::string(id) + ": it pushes nothing");
  }

  BlockReader reader_;
  std::string folder_;
  LintReport& report_;
  MatchRules match_;
  std::set<std::string_view> noted_;  // pictures that have had their note
  std::set<std::string_view> defined_;
  std::map<std::string_view, int> unread_;  // generators outside the host that no body has named yet
};

}  // namespace

void CheckObjects(const std::vector<LintLine>& lines, const std::string& file, LintReport& report) {
  LevelLint(lines, file, report).Run();
}
