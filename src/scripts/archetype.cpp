#include "scripts/archetype.h"

#include "core/object_manager.h"
#include "core/print.h"
#include "physics/generator_host.h"

std::vector<GameObject*> CreateAllFromArchetype(const std::string& name) {
  std::vector<GameObject*> created = Objects().LoadLevel(name);
  std::erase_if(created, [](const GameObject* object) { return object->name == GalePhysics::kGeneratorHostName; });
  if (created.empty()) Print("the archetype \"%s\" makes no object\n", name.c_str());
  return created;
}

GameObject* CreateFromArchetype(const std::string& name) {
  const std::vector<GameObject*> created = CreateAllFromArchetype(name);
  return created.empty() ? nullptr : created.front();
}
