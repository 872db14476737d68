#include "tools/lint/play/piece_cast.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/object_manager.h"
#include "core/transform.h"

namespace {

// Scripts that make things, and under which name.
constexpr std::pair<const char*, const char*> kMakers[] = {
    {"broadside", "cannonball"}, {"fountain", "cannonball"}, {"Spawner", "thrown"}};

Vec3 PlaceOf(std::uint32_t id) {
  const GameObject* object = Objects().GetObject(id);
  return object == nullptr ? Vec3{} : object->GetTransform().position;
}

bool IsAlive(std::uint32_t id) {
  const GameObject* object = Objects().GetObject(id);
  return object != nullptr && object->alive;
}

}  // namespace

void PieceCast::Begin(const std::string& name, const std::vector<std::uint32_t>& ids) {
  level_ = folder_.Find(name);
  ids_ = ids;
  members_.clear();
  ofFile_.clear();
  strangers_.clear();
  for (std::size_t i = 0; i < ids.size(); ++i) {
    members_.emplace(ids[i], static_cast<int>(i));
    ofFile_.insert(ids[i]);
  }
  for (const auto& object : Objects().GetObjects())
    if (!members_.contains(object->id)) strangers_.insert(object->id);
  FindMakers();
}

void PieceCast::FindMakers() {
  makers_.clear();
  if (level_ == nullptr) return;
  for (std::size_t i = 0; i < level_->objects.size() && i < ids_.size(); ++i) {
    const Maker maker = {static_cast<int>(i), PlaceOf(ids_[i])};
    for (const LintBlock& script : level_->objects[i].scripts) {
      const LintLine* name = ValueOf(&script, "archtypename");
      const LintLevel* archetype = name == nullptr ? nullptr : folder_.Find(name->value);
      if (archetype != nullptr) makers_.emplace(std::string(archetype->GetFirst()->name), maker);
      for (const auto& [makes, made] : kMakers)
        if (script.name == makes) makers_.emplace(made, maker);
    }
  }
}

// Of several that make such things it is the nearest one's.
void PieceCast::Follow() {
  for (const auto& object : Objects().GetObjects()) {
    if (members_.contains(object->id) || !strangers_.insert(object->id).second) continue;
    float nearest = std::numeric_limits<float>::max();
    const auto [first, last] = makers_.equal_range(object->name);
    for (auto maker = first; maker != last; ++maker) {
      const float distance = SquaredLength(maker->second.place - object->GetTransform().position);
      if (distance >= nearest) continue;
      nearest = distance;
      members_[object->id] = maker->second.index;
    }
  }
}

int PieceCast::IndexOf(std::uint32_t id) const {
  const auto found = members_.find(id);
  return found == members_.end() ? kNobody : found->second;
}

Vec3 PieceCast::PlaceInFile(int index) const {
  const auto at = static_cast<std::size_t>(index);
  const bool known = level_ != nullptr && at < level_->objects.size();
  const auto place = known ? NumbersOf(level_->objects[at].Find("Transform"), "position") : std::vector<float>{};
  return place.size() < 3 ? Vec3{} : Vec3{place[0], place[1], place[2]};
}

int PieceCast::CountLiving() const {
  return static_cast<int>(
      std::count_if(members_.begin(), members_.end(), [](const auto& member) { return IsAlive(member.first); }));
}

int PieceCast::FindMostProductive() const {
  std::map<int, int> made;
  for (const auto& [id, index] : members_)
    if (!IsOfFile(id) && IsAlive(id)) ++made[index];
  const auto most =
      std::max_element(made.begin(), made.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == made.end() ? kNobody : most->first;
}
