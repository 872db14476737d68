#include "editor/acts/snapshot.h"

#include <utility>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "editor/bars/object_fields.h"
#include "editor/bars/tweak_bar.h"
#include "physics/rigid_body.h"

using GalePhysics::RigidBody;

namespace {

constexpr int kExactDigits = 9;  // of a float's decimal text
constexpr Kind kNotToBeMade[] = {Kind::kCamera, Kind::kMouseComponent};

// While it lives, the object shows the values of its own, not those that a script or the slow motion has lent it.
class WithoutLoans {
 public:
  explicit WithoutLoans(GameObject& object) : scripts_(object.Get<ScriptBox>()), body_(object.Get<RigidBody>()) {
    if (scripts_ != nullptr) scripts_->GiveBack();
    if (body_ == nullptr) return;
    damping_ = std::exchange(body_->damping, body_->OwnDamping());
    inverseMass_ = std::exchange(body_->inverseMass, body_->OwnInverseMass());
  }
  WithoutLoans(const WithoutLoans&) = delete;
  WithoutLoans& operator=(const WithoutLoans&) = delete;
  ~WithoutLoans() {
    if (body_ != nullptr) {
      body_->damping = damping_;
      body_->inverseMass = inverseMass_;
    }
    if (scripts_ != nullptr) scripts_->TakeAgain();
  }

 private:
  ScriptBox* scripts_;
  RigidBody* body_;
  float damping_ = 0.0f;
  float inverseMass_ = 0.0f;
};

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
  auto* body = object.Get<RigidBody>();
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
  const WithoutLoans own(object);
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
  if (auto* body = object.Get<RigidBody>()) {
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
