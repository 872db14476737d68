#include "core/object_manager.h"

#include <algorithm>
#include <utility>

#include "core/scene_state.h"
#include "core/serializer.h"
#include "core/transform.h"

ObjectManager& Objects() {
  static auto& manager = *new SceneState<ObjectManager>;
  return *manager;
}

ObjectManager FreshSceneValue(const ObjectManager& old) {
  ObjectManager fresh;
  fresh.extension_ = old.extension_;
  fresh.buildCursor_ = old.buildCursor_;
  fresh.buildCamera_ = old.buildCamera_;
  return fresh;
}

void ObjectManager::BuildSpecialObjects(Builder buildCursor, Builder buildCamera) {
  buildCursor_ = buildCursor;
  buildCamera_ = buildCamera;
  cursorObject_ = std::make_unique<GameObject>();
  buildCursor(*cursorObject_);
  cameraObject_ = std::make_unique<GameObject>();
  buildCamera(*cameraObject_);
}

std::uint32_t ObjectManager::AddObject(std::unique_ptr<GameObject> object) {
  const std::uint32_t returned = std::exchange(returnedId_, 0);
  const std::uint32_t id = returned != 0 && GetObject(returned) == nullptr ? returned : ++lastId_;
  object->id = id;
  objectsById_[id] = object.get();
  objects_.push_back(std::move(object));
  return id;
}

std::uint32_t ObjectManager::CreateObject() {
  needsSort_ = true;
  return AddObject(std::make_unique<GameObject>());
}

GameObject* ObjectManager::GetObject(std::uint32_t id) const {
  const auto found = objectsById_.find(id);
  return found == objectsById_.end() ? nullptr : found->second;
}

GameObject* ObjectManager::FindObjectByName(std::string_view name) const {
  if (name.empty()) return nullptr;
  for (const auto& object : objects_)
    if (object->name == name && object->alive) return object.get();
  return nullptr;
}

void ObjectManager::RemoveDeadObjects() {
  for (std::size_t i = 0; i < objects_.size();) {
    if (objects_[i]->alive) {
      ++i;
      continue;
    }
    // Out of the list and the table before any destructor runs: those may add objects and walk the list themselves.
    const std::unique_ptr<GameObject> doomed = std::move(objects_[i]);
    objectsById_.erase(doomed->id);
    objects_.erase(objects_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

void ObjectManager::KillAll() {
  for (const bool core : {false, true})
    for (const auto& object : objects_)
      if (object->core == core) object->alive = false;
}

void ObjectManager::SortIfNeeded() {
  if (!needsSort_) return;
  needsSort_ = false;
  std::stable_sort(objects_.begin(), objects_.end(), [](const auto& a, const auto& b) {
    return a->GetTransform().position.z < b->GetTransform().position.z;
  });
}

void ObjectManager::SetOrder(const std::vector<std::uint32_t>& ids, bool sortDue) {
  std::unordered_map<const GameObject*, std::size_t> places;
  for (const std::uint32_t id : ids)
    if (const GameObject* object = GetObject(id)) places.emplace(object, places.size());
  const auto placeOf = [&](const auto& object) {
    const auto found = places.find(object.get());
    return found == places.end() ? places.size() : found->second;
  };
  std::stable_sort(objects_.begin(), objects_.end(),
                   [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
  needsSort_ = sortDue;
}

bool ObjectManager::SaveLevel(const std::string& fileName) {
  Serializer writer;
  writer.OpenForWrite(fileName);
  const auto write = [&](GameObject& object) {
    writer.BeginBlock(object.id);
    object.Serialize(writer);
    writer.EndBlock();
  };
  if (GameObject* first = extension_ == nullptr ? nullptr : extension_->BeginSave()) write(*first);
  for (const auto& object : objects_)
    if (!object->core) write(*object);
  return writer.Close();
}

void ObjectManager::Reset() {
  while (!objects_.empty()) {
    KillAll();
    RemoveDeadObjects();
  }
  cursorObject_.reset();
  cameraObject_.reset();
  lastId_ = 0;
  returnedId_ = 0;
  needsSort_ = false;
  reportedFull_ = false;
}
