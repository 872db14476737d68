// Behaviour, as small classes that an object carries in its ScriptBox. Scripts are made by name (see script_registry.h)
// so that level files can list them. A script never removes itself: it marks its owner dead.
#pragma once

class FieldBar;
class GameObject;
class Serializer;
struct CollisionPair;
struct Event;
namespace GalePhysics {
struct Contact;
}

class Script {
 public:
  Script() = default;
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;
  /// Runs when the owner's Transform is already gone: destructors touch no component of their own object.
  virtual ~Script() = default;

  /// Every running frame; `step` in seconds of game time.
  virtual void Update(float /*step*/) {}
  /// Once, right after the script is attached and its owner set.
  virtual void Initialize() {}
  virtual void HandleEvent(const Event& /*event*/) {}
  virtual void OnCollision(const CollisionPair& /*pair*/) {}
  virtual void OnContact(const GalePhysics::Contact& /*contact*/) {}
  /// Shows the editable fields on the bar, in a group of their own.
  virtual void AddToTweakBar(FieldBar& /*bar*/) {}
  /// Writes the values; the box writes the block around them.
  virtual void Serialize(Serializer& /*writer*/) const {}
  /// Reads the values in the same order. Runs before the owner is set.
  virtual void Deserialize(Serializer& /*reader*/) {}
  /// Around a save (see component.h).
  virtual void GiveBack() {}
  virtual void TakeAgain() {}
  /// The registry name, exactly as registered.
  virtual const char* GetName() const = 0;

  GameObject* owner = nullptr;  ///< the object whose box holds it
};
