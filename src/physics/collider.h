// What all collider shapes have in common. A solid collider makes contacts, a ghost only overlaps. Each shape enters
// its class's list when it is made and leaves it when it goes; the order of the lists decides the order of contacts.
#pragma once

#include <cstdint>
#include <vector>

#include "core/component.h"
#include "core/scene_state.h"
#include "physics/math/matrix34.h"

namespace GalePhysics {

enum class ColliderType : std::int32_t { kBox = 0, kSphere = 1, kAssemblage = 2 };

/// Groups go from 0 to this; one beyond it counts as the last.
inline constexpr std::uint32_t kMaxCollisionGroup = 14;

/// Whether colliders of a group meet every other one. Those of group 0 meet only those of other groups.
constexpr bool MeetsAll(std::uint32_t group) { return group != 0; }

class Collider : public Component {
 public:
  /// The fields that all shapes have, in no group: shapes open theirs.
  void AddToTweakBar(FieldBar& bar) override;
  virtual ColliderType GetColliderType() const = 0;

  float broadPhaseSize = 0.0f;  ///< radius around the owner's position within which partners are looked for
  float restitution = 0.0f;     ///< a contact takes the mean of both
  bool ghost = false;
  const bool isPart;  ///< held inside an assemblage: placed by an offset from the owner
  std::uint32_t collisionGroup = 1;

 protected:
  Collider(float size, float bounce, bool part) : broadPhaseSize(size), restitution(bounce), isPart(part) {}
  /// The five values common to all shapes. Sizes that are negative read as 0, a wrong type or group with a message.
  void SerializeCommon(Serializer& writer) const;
  void DeserializeCommon(Serializer& reader);
};

/// The object's first collider in the order of kinds, or null.
Collider* FindCollider(const GameObject& object);

/// Enters a shape in its class's list and takes it out again; parts of an assemblage are never listed.
template <class Shape>
class ShapeListing {
 public:
  explicit ShapeListing(Shape& shape) : shape_(&shape) {
    if (!shape.isPart) List().push_back(shape_);
  }
  ShapeListing(const ShapeListing&) = delete;
  ShapeListing& operator=(const ShapeListing&) = delete;
  ~ShapeListing() { std::erase(List(), shape_); }

  static std::vector<Shape*>& List() {
    static auto& list = *new SceneState<std::vector<Shape*>>;
    return *list;
  }

 private:
  Shape* shape_;
};

}  // namespace GalePhysics
