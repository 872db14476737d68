#include "editor/snapshot.h"

#include "core/object_manager.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "editor/object_fields.h"
#include "editor/tweak_bar.h"
#include "physics/rigid_body.h"

namespace {

constexpr int kExactDigits = 9;  // of a float's decimal text
constexpr Kind kNotToBeMade[] = {Kind::kCamera, Kind::kMouseComponent};

std::string TextOfObject(GameObject& object) {
  Serializer writer;
  writer.OpenInMemory(kExactDigits);
  writer.BeginBlock(object.id);
  object.Serialize(writer);
  writer.EndBlock();
  return "{\n" + writer.TakeText() + "}\n";
}

}  // namespace

bool CanTakeSnapshot(const GameObject& object) {
  for (const Kind kind : kNotToBeMade)
    if (object.GetComponent(kind) != nullptr) return false;
  return true;
}

// The generators' numbers mean nothing outside a file, so the text goes without them.
Snapshot TakeSnapshot(GameObject& object) {
  Snapshot snapshot;
  snapshot.id = object.id;
  snapshot.name = object.name;
  snapshot.parts = TakeUnsavedParts(object);
  snapshot.orientation = object.GetTransform().orientation;
  auto* body = object.Get<GalePhysics::RigidBody>();
  if (body != nullptr) {
    snapshot.generators.swap(body->generators);
    snapshot.baseOfGenerators.swap(body->baseOfGenerators);
  }
  snapshot.text = TextOfObject(object);
  if (body != nullptr) {
    body->generators = snapshot.generators;
    body->baseOfGenerators = snapshot.baseOfGenerators;
  }
  object.name = snapshot.name;  // writing names the nameless
  TweakBar bar("snapshot");
  AddObjectFields(bar, object);
  for (const TweakBar::Entry& entry : bar.GetEntries())
    if (entry.kind == TweakBar::Entry::Kind::kVariable) snapshot.values.emplace_back(entry.path, GetValue(entry.field));
  return snapshot;
}

GameObject* MakeFromSnapshot(const Snapshot& snapshot) {
  Objects().ReturnIdToNext(snapshot.id);
  const auto made = Objects().LoadText("undo", snapshot.text);
  Objects().ReturnIdToNext(0);
  if (made.empty()) return nullptr;
  GameObject& object = *made.front();
  object.name = snapshot.name;
  PutUnsavedParts(snapshot.parts, object);
  if (auto* body = object.Get<GalePhysics::RigidBody>()) {
    body->generators = snapshot.generators;
    body->baseOfGenerators = snapshot.baseOfGenerators;
  }
  TweakBar bar("snapshot");
  AddObjectFields(bar, object);
  std::size_t next = 0;
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.kind != TweakBar::Entry::Kind::kVariable || next >= snapshot.values.size()) continue;
    const auto& [path, value] = snapshot.values[next++];
    if (path == entry.path) PutBack(entry.field, value);
  }
  if (Transform& transform = object.GetTransform(); transform.orientation != snapshot.orientation) {
    transform.orientation = snapshot.orientation;
    transform.Rebuild();
  }
  return &object;
}
