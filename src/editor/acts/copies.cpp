#include "editor/acts/copies.h"

#include <algorithm>

#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/platform.h"
#include "core/script_box.h"
#include "core/selection.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "editor/acts/history.h"
#include "editor/acts/links.h"
#include "editor/acts/object_shape.h"
#include "editor/acts/without_bases.h"
#include "lint/lint.h"
#include "physics/generator_host.h"
#include "physics/rigid_body.h"

using GalePhysics::ForceGenerator;
using GalePhysics::RigidBody;

namespace {

using ObjectPointers = std::vector<GameObject*>;
using Generators = std::vector<ForceGenerator*>;

std::string Told(const ObjectPointers& objects) {
  return objects.size() == 1 ? ShownNameOf(*objects.front()) : std::to_string(objects.size()) + " objects";
}

Generators GeneratorsOf(const ObjectPointers& objects) {
  Generators used;
  for (const GameObject* object : objects)
    if (const auto* body = object->Get<RigidBody>())
      for (ForceGenerator* generator : body->generators)
        if (std::find(used.begin(), used.end(), generator) == used.end()) used.push_back(generator);
  return used;
}

// The copy of the generator host that a saved level begins with, but with these generators alone.
void WriteHost(Serializer& writer, const Generators& generators) {
  const auto write = [&](const Script& script) {
    writer.BeginComponent(script.GetName());
    script.Serialize(writer);
    writer.EndBlock();
  };
  if (generators.empty()) return;
  GameObject& host = GalePhysics::GetGeneratorHost();
  GalePhysics::GetGeneratorLinks().BeginSave();  // the numbers begin anew
  writer.BeginBlock(host.id);
  writer.WriteString("Name", host.name);
  writer.WriteBool("Core", host.core);
  host.GetTransform().Serialize(writer);
  writer.BeginComponent("ScriptBox");
  if (const Script* first = host.Get<ScriptBox>()->GetScript("patricidal")) write(*first);
  for (const ForceGenerator* generator : generators) write(*generator);
  writer.EndBlock();
  writer.EndBlock();
}

// The copies of the host have lent their generators to the host itself by now.
void DropHosts(ObjectPointers& made) {
  for (GameObject* object : made) {
    if (object->name != GalePhysics::kGeneratorHostName) continue;
    if (auto* scripts = object->Get<ScriptBox>()) scripts->RetireScripts();
    object->alive = false;
  }
  std::erase_if(made, [](const GameObject* object) { return !object->alive; });
  Objects().RemoveDeadObjects();
}

void MoveAll(const ObjectPointers& objects, const std::optional<Vec3>& at, Vec3 shift) {
  if (objects.empty()) return;
  Bounds all = BoundsOf(*objects.front());
  for (const GameObject* object : objects) all.Add(BoundsOf(*object));
  if (at) shift = *at - all.Middle();
  for (GameObject* object : objects) {
    object->GetTransform().position += Vec3{shift.x, shift.y, 0.0f};
    object->GetTransform().Rebuild();
  }
}

ObjectPointers Copyable() {
  ObjectPointers objects = SelectedObjects();
  std::erase_if(objects, [](const GameObject* object) { return !CanTakeSnapshot(*object); });
  return objects;
}

}  // namespace

Copies::Copied Copies::Take(const ObjectPointers& objects) {
  Copied copied;
  const auto linkTo = [&](const std::optional<std::uint32_t>& id) -> std::optional<Link> {
    if (!id) return std::nullopt;
    const auto found =
        std::find_if(objects.begin(), objects.end(), [&](const GameObject* object) { return object->id == *id; });
    if (found == objects.end()) return Link{*id, std::nullopt};
    return Link{*id, static_cast<std::size_t>(found - objects.begin())};
  };
  for (GameObject* object : objects) {
    Copied::One one{{}, linkTo(LeaderOf(*object)), TakeUnsavedParts(*object)};
    if (const auto* body = object->Get<RigidBody>())
      for (const ForceGenerator* generator : body->generators) one.targets.push_back(linkTo(TargetOf(*generator)));
    copied.objects.push_back(std::move(one));
  }
  const WithoutBases bare;
  Serializer writer;
  writer.OpenDocument();
  WriteHost(writer, GeneratorsOf(objects));
  for (GameObject* object : objects) {
    const std::string name = object->name;
    writer.BeginBlock(object->id);
    object->Serialize(writer);
    writer.EndBlock();
    object->name = name;  // writing names the nameless
  }
  writer.EndDocument();
  copied.text = writer.TakeText();
  return copied;
}

std::string TextOfLevel(const ObjectPointers& objects) { return Copies::Take(objects).text; }

std::string SceneText(const std::string& lastName) {
  ObjectPointers objects;
  GameObject last;
  last.name = lastName;
  for (const auto& object : Objects().GetObjects()) {
    last.id = std::max(last.id, object->id + 1);
    if (!object->core && object->alive) objects.push_back(object.get());
  }
  if (!lastName.empty()) objects.push_back(&last);
  return TextOfLevel(objects);
}

// The ID 0 stands for the cursor or for nobody, in every scene.
void Copies::ReturnToScene(const std::function<std::uint32_t(std::uint32_t)>& idHere) {
  if (ofSceneAside_) return;
  const auto translate = [&](std::optional<Link>& link) {
    if (!link || link->copied || link->id == 0) return;
    link->id = idHere(link->id);
    if (link->id != 0) return;
    link.reset();
    ++last_.lost;
  };
  for (Copied::One& one : last_.objects) {
    translate(one.leader);
    for (auto& target : one.targets) translate(target);
  }
}

std::string Copies::Copy() {
  const ObjectPointers objects = Copyable();
  if (objects.empty()) return "nothing is selected";
  last_ = Take(objects);
  ofSceneAside_ = false;
  GetPlatform().SetClipboard(last_.text);
  return "copied " + Told(objects);
}

std::string Copies::Kill(History& history) {
  const ObjectPointers objects = SelectedObjects();
  if (objects.empty()) return "nothing is selected";
  const std::string told = Told(objects);
  const History::Group group(history, "the kill of " + told);
  for (GameObject* object : objects) history.RecordKill(*object);
  for (GameObject* object : objects) object->alive = false;
  return "killed " + told;
}

std::string Copies::Cut(History& history) {
  const std::string told = Copy();
  if (Copyable().empty()) return told;
  Kill(history);
  return "cut, and " + told;
}

std::string Copies::Duplicate(History& history, const Vec3& shift) {
  const ObjectPointers objects = Copyable();
  if (objects.empty()) return "nothing is selected";
  const Copied copied = Take(objects);
  return "duplicated " + Told(Put(history, "the copy of ", copied.text, &copied, std::nullopt, shift));
}

std::string Copies::DuplicateMirrored(History& history, Arrange::Axis axis) {
  const std::vector<std::uint32_t> originals = GetSelection();
  const History::Group group(history, "the mirrored copying");
  const std::string told = Duplicate(history, {});
  if (!Copyable().empty()) Arrange::Mirror(history, axis, Vec3{});
  for (const std::uint32_t id : originals) AddToSelection(id);
  return told;
}

std::string Copies::Paste(History& history, const std::optional<Vec3>& at, const Vec3& shift,
                          std::vector<std::string>& found) {
  const std::string text = GetPlatform().GetClipboard();
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos || text[first] != '{') return "the clipboard holds no level text, nothing is pasted";
  if (text.size() > static_cast<std::size_t>(kMaxFileBytes)) return "the clipboard holds too much, nothing is pasted";
  const Copied* own = text == last_.text ? &last_ : nullptr;
  const bool good = LintLevelText("clipboard", text, found);
  if (!good && own == nullptr) return "lint finds faults in the clipboard's text, nothing is pasted";
  const ObjectPointers made = Put(history, "the pasting of ", text, own, at, shift);
  if (made.empty()) return "the clipboard's text makes no object";
  std::string told = "pasted " + Told(made);
  if (own == nullptr || own->lost == 0) return told;
  return told + " without " + std::to_string(own->lost) + (own->lost == 1 ? " link" : " links") +
         " to what is not in this level";
}

ObjectPointers Copies::Put(History& history, const std::string& what, const std::string& text, const Copied* copied,
                           const std::optional<Vec3>& at, const Vec3& shift) {
  ObjectPointers made = Objects().LoadText("clipboard", text);
  DropHosts(made);
  if (copied != nullptr) Mend(*copied, made);
  MoveAll(made, at, shift);
  if (made.empty()) return made;
  const History::Group group(history, what + Told(made));
  for (ForceGenerator* generator : GeneratorsOf(made)) history.RecordGenerator(*generator);
  std::vector<std::uint32_t> ids;
  for (const GameObject* object : made) {
    history.RecordCreation(*object, {});
    ids.push_back(object->id);
  }
  SetSelection(ids);
  return made;
}

// References inside the copied set follow their copies, others keep their target.
void Copies::Mend(const Copied& copied, const ObjectPointers& made) {
  const std::size_t count = std::min(copied.objects.size(), made.size());
  const auto follow = [&](const Link& link) {
    return link.copied && *link.copied < count ? made[*link.copied]->id : link.id;
  };
  for (std::size_t i = 0; i < count; ++i) {
    const Copied::One& one = copied.objects[i];
    PutUnsavedParts(one.parts, *made[i]);
    if (one.leader) SetLeader(*made[i], follow(*one.leader));
    const auto* body = made[i]->Get<RigidBody>();
    for (std::size_t g = 0; body != nullptr && g < std::min(body->generators.size(), one.targets.size()); ++g)
      if (one.targets[g]) SetTarget(*body->generators[g], follow(*one.targets[g]));
  }
}
