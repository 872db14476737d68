#include "tools/simulate/leak_check.h"

#include <algorithm>

#include "audio/audio.h"
#include "core/object_manager.h"
#include "graphics/particle_emitter.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"
#include "tools/simulate/object_name.h"

namespace {

template <class Shape>
std::string CompareList(const char* shape) {
  const auto has = [](const GameObject& object) { return object.Get<Shape>() != nullptr; };
  std::size_t held = has(Objects().GetCursor()) + has(Objects().GetCamera());
  for (const auto& object : Objects().GetObjects()) held += has(*object);
  const std::size_t listed = GalePhysics::ShapeListing<Shape>::List().size();
  if (listed == held) return {};
  return std::to_string(listed) + " " + shape + " colliders are listed, but objects have " + std::to_string(held);
}

}  // namespace

std::string LeakCheck::EndFrame() {
  std::string fault = CheckBooks();
  if (fault.empty()) fault = CheckSwept();
  if (fault.empty()) fault = CheckPile();
  if (fault.empty()) fault = CheckColliders();
  if (fault.empty()) fault = CheckEmitters();
  if (fault.empty()) fault = CheckSound();
  return fault;
}

std::string LeakCheck::CheckBooks() const {
  const auto& objects = Objects().GetObjects();
  for (const auto& object : objects)
    if (Objects().GetObject(object->id) != object.get()) return NameOf(*object) + " is not found by its ID";
  if (Objects().CountIds() == objects.size()) return {};
  return std::to_string(Objects().CountIds()) + " IDs lead to " + std::to_string(objects.size()) + " objects";
}

// A sweep may leave what its own destructors marked; the next one takes it. An ID may come back with another object.
std::string LeakCheck::CheckSwept() {
  for (const std::uint32_t id : dead_)
    if (const GameObject* object = Objects().GetObject(id); object != nullptr && !object->alive)
      return NameOf(*object) + " was marked dead in the frame before and is still there";
  dead_.clear();
  for (const auto& object : Objects().GetObjects())
    if (!object->alive) dead_.push_back(object->id);
  return {};
}

std::string LeakCheck::CheckPile() {
  const std::size_t count = Objects().GetObjects().size();
  if (count >= count_ + kLevel) brought_ += count - count_;
  count_ = count;
  if (count <= brought_ + kMostMade) return {};
  return std::to_string(count) + " objects have piled up, the last " + NameOf(*Objects().GetObjects().back()) +
         "; levels brought " + std::to_string(brought_);
}

std::string LeakCheck::CheckColliders() {
  std::string fault = CompareList<GalePhysics::SphereCollider>("sphere");
  if (fault.empty()) fault = CompareList<GalePhysics::BoxCollider>("box");
  if (fault.empty()) fault = CompareList<GalePhysics::PrimitiveAssemblage>("assemblage");
  return fault;
}

// An emitter's owner may be gone: it is compared and never looked into.
std::string LeakCheck::CheckEmitters() {
  const auto& emitters = ParticleEmitters();
  if (emitters.empty()) return {};
  holders_.clear();
  for (const auto& object : Objects().GetObjects()) holders_.push_back(object.get());
  std::sort(holders_.begin(), holders_.end());
  const auto lost = std::count_if(emitters.begin(), emitters.end(), [&](const ParticleEmitter* emitter) {
    return !std::binary_search(holders_.begin(), holders_.end(), emitter->owner);
  });
  if (lost == 0) return {};
  return std::to_string(lost) + " of " + std::to_string(emitters.size()) + " particle emitters belong to no object";
}

std::string LeakCheck::CheckSound() {
  const Audio::SoundUse use = Audio::CountUse();
  // The one more is what the loading thread has just made.
  if (use.studio.open > use.kept + 1)
    return std::to_string(use.studio.open) + " sound instances are open, but only " + std::to_string(use.kept) +
           " are kept";
  if (use.studio.heard > use.studio.voices)
    return std::to_string(use.studio.heard) + " voices are heard, but only " + std::to_string(use.studio.voices) +
           " may be";
  if (use.studio.lost > 0) return std::to_string(use.studio.lost) + " sound instances or voices are lost";
  return {};
}
