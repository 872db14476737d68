#include "editor/acts/mirror_fields.h"

#include <algorithm>
#include <unordered_set>

#include "core/object_manager.h"
#include "editor/acts/history.h"
#include "editor/bars/field_schema.h"
#include "editor/bars/object_fields.h"
#include "physics/rigid_body.h"

namespace {

using Entry = TweakBar::Entry;
using Vectors = std::unordered_set<const Vec3*>;

Vec3* VectorOf(const Entry& entry) {
  if (entry.kind != Entry::Kind::kVariable || entry.field.readOnly) return nullptr;
  Vec3* const* vector = std::get_if<Vec3*>(&entry.field.target);
  return vector == nullptr ? nullptr : *vector;
}

// Those in generators of bodies that are not among the objects.
Vectors VectorsOfOthers(const std::vector<GameObject*>& objects) {
  TweakBar bar("generators");
  std::unordered_set<const GalePhysics::ForceGenerator*> seen;
  for (const auto& object : Objects().GetObjects()) {
    const auto* body = object->Get<GalePhysics::RigidBody>();
    if (body == nullptr || std::find(objects.begin(), objects.end(), object.get()) != objects.end()) continue;
    for (GalePhysics::ForceGenerator* generator : body->generators)
      if (seen.insert(generator).second) generator->AddToTweakBar(bar);
  }
  Vectors vectors;
  for (const Entry& entry : bar.GetEntries()) vectors.insert(VectorOf(entry));
  return vectors;
}

Vec3 MirroredOf(Mirrored kind, Vec3 vector, float Vec3::*side) {
  const float own = vector.*side;
  if (kind == Mirrored::kSpin) vector = -vector;
  vector.*side = kind == Mirrored::kSpin ? own : -own;
  return vector + Vec3{};  // files tell a zero with a sign from one without, history does not
}

// The vectors of one object.
class ObjectMirror {
 public:
  ObjectMirror(History& history, GameObject& object, float Vec3::*side, Vectors& done)
      : history_(history), id_(object.id), side_(side), done_(done) {
    AddObjectFields(bar_, object);
    blocks_ = BlocksOf(bar_);
  }
  void Mirror() {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
      Vec3* vector = VectorOf(bar_.GetEntries()[i]);
      const Mirrored kind = KindOf(i);
      if (vector == nullptr || kind == Mirrored::kSame || !done_.insert(vector).second) continue;
      const Vec3 mirrored = MirroredOf(kind, *vector, side_);
      if (kind == Mirrored::kLeast && KindOf(i + 1) == Mirrored::kMost) {
        Vec3& most = *VectorOf(bar_.GetEntries()[i + 1]);
        done_.insert(&most);
        Vec3 least = *vector;
        least.*side_ = MirroredOf(kind, most, side_).*side_;
        Give(i, least);
        Vec3 greatest = most;
        greatest.*side_ = mirrored.*side_;
        Give(i + 1, greatest);
        continue;
      }
      Give(i, mirrored);
    }
  }

 private:
  Mirrored KindOf(std::size_t index) const {
    if (index >= blocks_.size() || blocks_[index] == nullptr) return Mirrored::kSame;
    const Entry& entry = bar_.GetEntries()[index];
    const FieldSchema* field = VectorOf(entry) == nullptr ? nullptr : FindFieldSchema(*blocks_[index], entry.name);
    return field == nullptr ? Mirrored::kSame : field->mirrored;
  }
  void Give(std::size_t index, const Vec3& value) {
    const Entry& entry = bar_.GetEntries()[index];
    Vec3& vector = *VectorOf(entry);
    const Vec3 before = vector;
    vector = value;
    if (!(before == value)) history_.RecordEdit(id_, entry.path, before, value, false);
  }

  History& history_;
  std::uint32_t id_;
  float Vec3::*side_;
  Vectors& done_;
  TweakBar bar_{"object"};
  std::vector<const BlockSchema*> blocks_;
};

}  // namespace

void MirrorFields(History& history, const std::vector<GameObject*>& objects, float Vec3::*side) {
  Vectors done = VectorsOfOthers(objects);
  for (GameObject* object : objects) ObjectMirror(history, *object, side, done).Mirror();
}
