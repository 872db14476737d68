#include "editor/bars/common_fields.h"

#include <algorithm>
#include <array>
#include <memory>

#include "editor/bars/object_fields.h"

namespace {

using Entry = TweakBar::Entry;

constexpr int kWhole = -1;
constexpr std::array<const char*, 3> kParts = {" x", " y", " z"};

float PartOfVector(const Vec3& v, int part) { return part == 0 ? v.x : part == 1 ? v.y : v.z; }

FieldValue TakePart(const FieldValue& whole, int part) {
  const auto* vector = std::get_if<Vec3>(&whole);
  return vector == nullptr || part == kWhole ? whole : FieldValue(PartOfVector(*vector, part));
}

const Entry* FindSame(const TweakBar& bar, const Entry& wanted) {
  for (const Entry& entry : bar.GetEntries())
    if (entry.kind == wanted.kind && entry.path == wanted.path)
      return entry.field.target.index() == wanted.field.target.index() ? &entry : nullptr;
  return nullptr;
}

bool CanBeShared(const Entry& entry) { return entry.kind == Entry::Kind::kVariable && !entry.field.readOnly; }

class CommonFields {
 public:
  CommonFields(TweakBar& bar, const std::string& group, const std::vector<GameObject*>& objects)
      : bar_(bar), group_(group) {
    for (GameObject* object : objects) {
      bars_.push_back(std::make_unique<TweakBar>("object"));
      AddObjectFields(*bars_.back(), *object);
    }
  }

  void Run() {
    bar_.BeginGroup(group_);
    for (const Entry& entry : bars_.front()->GetEntries()) {
      if (entry.kind == Entry::Kind::kGroup) bar_.BeginGroup(entry.name);
      if (entry.kind == Entry::Kind::kEndGroup) bar_.EndGroupUnlessEmpty();
      if (!CanBeShared(entry) ||
          !std::all_of(bars_.begin(), bars_.end(), [&](const auto& bar) { return FindSame(*bar, entry) != nullptr; }))
        continue;
      const bool isVector = std::holds_alternative<Vec3*>(entry.field.target);
      for (int part = isVector ? 0 : kWhole; part < (isVector ? 3 : 0); ++part) Add(entry, part);
    }
    bar_.EndGroup();
  }

 private:
  void Add(const Entry& entry, int part) {
    const FieldValue first = TakePart(GetValue(entry.field), part);
    Field field = entry.field;
    if (part != kWhole) field.label += kParts[static_cast<std::size_t>(part)];
    field.target = bar_.KeepValue(first);
    bar_.Add(field);
    bar_.GetLast().path = '/' + group_ + entry.path + (part == kWhole ? "" : kParts[static_cast<std::size_t>(part)]);
    bar_.GetLast().mixed = std::any_of(bars_.begin(), bars_.end(), [&](const auto& bar) {
      return TakePart(GetValue(FindSame(*bar, entry)->field), part) != first;
    });
  }

  TweakBar& bar_;
  const std::string group_;
  std::vector<std::unique_ptr<TweakBar>> bars_;  // of each object's own
};

}  // namespace

void AddCommonFields(TweakBar& bar, const std::string& group, const std::vector<GameObject*>& objects) {
  CommonFields(bar, group, objects).Run();
}

// All copies stand in one group.
std::string CommonPathOf(const Entry& copy) { return copy.path.substr(copy.path.find('/', 1)); }

std::optional<int> PartOf(const Entry& own, const std::string& path) {
  if (!CanBeShared(own)) return std::nullopt;
  if (!std::holds_alternative<Vec3*>(own.field.target)) return own.path == path ? std::optional(kWhole) : std::nullopt;
  for (std::size_t part = 0; part < kParts.size(); ++part)
    if (own.path + kParts[part] == path) return static_cast<int>(part);
  return std::nullopt;
}

FieldValue WithPart(FieldValue whole, int part, const FieldValue& value) {
  auto* vector = std::get_if<Vec3>(&whole);
  const auto* number = std::get_if<float>(&value);
  if (part == kWhole || vector == nullptr || number == nullptr) return value;
  (part == 0 ? vector->x : part == 1 ? vector->y : vector->z) = *number;
  return whole;
}
