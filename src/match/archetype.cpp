#include "match/archetype.h"

#include "core/object_manager.h"
#include "physics/generator_host.h"

GameObject* CreateFromArchetype(const std::string& name) {
  for (GameObject* object : Objects().LoadLevel(name))
    if (object->name != GalePhysics::kGeneratorHostName) return object;
  return nullptr;
}
