#include "match/archetype.h"

#include "core/object_manager.h"
#include "core/print.h"
#include "physics/generator_host.h"

GameObject* CreateFromArchetype(const std::string& name) {
  for (GameObject* object : Objects().LoadLevel(name))
    if (object->name != GalePhysics::kGeneratorHostName) return object;
  Print("the archetype \"%s\" makes no object\n", name.c_str());
  return nullptr;
}
