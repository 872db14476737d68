#include "core/game_object.h"

#include <utility>

#include "core/component_factory.h"
#include "core/serializer.h"
#include "core/transform.h"

GameObject::GameObject() {
  auto transform = std::make_unique<Transform>();
  transform_ = transform.get();
  Insert(std::move(transform));
}

GameObject::~GameObject() {
  for (auto& component : components_) component.reset();
}

// The walks go by kind and read each slot anew, so that a component added in a callback is safe.
void GameObject::Update(float step) {
  for (auto& component : components_)
    if (component) component->Update(step);
}

void GameObject::Serialize(Serializer& writer) {
  if (name.empty()) name = "Nameless";
  writer.WriteString("Name", name);
  writer.WriteBool("Core", core);
  for (auto& component : components_)
    if (component) component->GiveBack();
  for (auto& component : components_)
    if (component) component->Serialize(writer);
  for (auto& component : components_)
    if (component) component->TakeAgain();
}

void GameObject::HandleEvent(const Event& event) {
  for (auto& component : components_)
    if (component) component->HandleEvent(event);
}

void GameObject::OnCollision(const CollisionPair& pair) {
  for (auto& component : components_)
    if (component) component->OnCollision(pair);
}

void GameObject::OnContact(const GalePhysics::Contact& contact) {
  for (auto& component : components_)
    if (component) component->OnContact(contact);
}

Component& GameObject::InsertAs(Kind kind, std::unique_ptr<Component> component) {
  component->owner = this;
  // The old one is destroyed last: a collider leaves its shape list only when its successor is already in it.
  std::unique_ptr<Component>& slot = components_[static_cast<std::size_t>(kind)];
  std::swap(slot, component);
  return *slot;
}

Component* GameObject::AddComponent(std::string_view textName) {
  const ComponentType* type = FindComponentType(textName);
  if (type == nullptr) return nullptr;
  // Whoever asks wants it filled, as the loader does; another one would have no owner.
  if (type->kind == Kind::kTransform) return transform_;
  return &InsertAs(type->kind, type->create());
}
