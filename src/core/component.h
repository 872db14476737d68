// The parts that objects are made of. A component belongs to exactly one object and lives as long as it; the fixed
// order of kinds is the order of update, notification, saving and destruction. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>

class FieldBar;
class GameObject;
class Serializer;
struct Event;
namespace GalePhysics {
struct Contact;
}

/// The kinds of components, in the order of every walk over an object.
enum class Kind : std::uint8_t {
  kTransform,
  kScriptBox,
  kRigidBody,
  kSprite,
  kCamera,
  kGivePoints,
  kMouseComponent,
  kSphereCollider,
  kBoxCollider,
  kPrimitiveAssemblage,
  kSpriteText,
};
inline constexpr std::size_t kKindCount = 11;

/// Two objects that overlap, as one of them sees it. Both exist during the call.
struct CollisionPair {
  GameObject* self;
  GameObject* other;

  bool operator==(const CollisionPair&) const = default;
};

class Component {
 public:
  Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  virtual ~Component() = default;

  /// One running frame of `step` seconds of game time.
  virtual void Update(float /*step*/) {}
  /// Writes the whole block: header, values in their fixed order, closing line.
  virtual void Serialize(Serializer& /*writer*/) {}
  /// Reads the values back in the same order. The header has been read; the closing line stays for the loader, except
  /// that ScriptBox reads its own.
  virtual void Deserialize(Serializer& /*reader*/) {}
  /// Shows the editable fields on the bar, in a group of their own.
  virtual void AddToTweakBar(FieldBar& /*bar*/) {}
  virtual void HandleEvent(const Event& /*event*/) {}
  /// An overlap in which at least one side is a ghost; called once per sub-step.
  virtual void OnCollision(const CollisionPair& /*pair*/) {}
  /// A contact about to be resolved; its second body is the other one, or null. Called once per sub-step.
  virtual void OnContact(const GalePhysics::Contact& /*contact*/) {}
  /// Around a save: gives back what scripts have borrowed of the owner's components, so that a file keeps it as the
  /// owner's own, and takes it again.
  virtual void GiveBack() {}
  virtual void TakeAgain() {}

  GameObject* owner = nullptr;  ///< the object that holds it; set by GameObject::Insert
};
