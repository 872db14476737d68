// A named thing in a scene: at most one component of each kind, always a Transform. Objects are never deleted in place:
// clear `alive` and the sweep at the end of the update pass removes them. What must outlive a frame is an ID.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/component.h"

class Transform;

class GameObject {
 public:
  /// Unnamed, alive, not Core, with a Transform at the origin.
  GameObject();
  GameObject(const GameObject&) = delete;
  GameObject& operator=(const GameObject&) = delete;
  /// Destroys the components in kind order, so the Transform is gone before the scripts are.
  ~GameObject();

  /// Updates every component, in kind order.
  void Update(float step);
  /// Writes name, Core flag and every component; an empty name becomes "Nameless" for good. The block around it is the
  /// caller's.
  void Serialize(Serializer& writer);
  void HandleEvent(const Event& event);
  void OnCollision(const CollisionPair& pair);
  void OnContact(const GalePhysics::Contact& contact);

  /// The component of a kind, or null.
  Component* GetComponent(Kind kind) const { return components_[static_cast<std::size_t>(kind)].get(); }
  /// The component of a class, or null: Get<Sprite>().
  template <class T>
  T* Get() const {
    return static_cast<T*>(GetComponent(T::kKind));
  }
  Transform& GetTransform() const { return *transform_; }

  /// Takes a component under its class's kind and sets its owner; an earlier one of the kind is destroyed after the new
  /// one stands. Returns the new one.
  template <class T>
  T& Insert(std::unique_ptr<T> component) {
    return static_cast<T&>(InsertAs(T::kKind, std::move(component)));
  }
  Component& InsertAs(Kind kind, std::unique_ptr<Component> component);

  /// Makes a component by its name in files and inserts it; null, with nothing changed, for an unknown name. The
  /// Transform that every object has cannot be replaced: that name gives it back as it stands.
  Component* AddComponent(std::string_view textName);

  std::string name;      ///< looked up by name; the first alive object of that name is found
  std::uint32_t id = 0;  ///< unique in a run; 0 for objects that are in no list
  bool alive = true;     ///< false: removed by the next sweep
  bool core = false;     ///< Core objects are never saved into a level

 private:
  std::array<std::unique_ptr<Component>, kKindCount> components_;
  Transform* transform_;  // components_[0], typed
};
