#include "editor/bars/object_fields.h"

void AddObjectFields(FieldBar& bar, GameObject& object) {
  bar.Add("name", &object.name);
  bar.Add("Core Level Object?", &object.core);
  for (std::size_t kind = 0; kind < kKindCount; ++kind)
    if (Component* component = object.GetComponent(static_cast<Kind>(kind))) component->AddToTweakBar(bar);
}
