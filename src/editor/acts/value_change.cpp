#include "editor/acts/value_change.h"

#include "core/object_manager.h"
#include "core/transform.h"
#include "editor/bars/object_fields.h"
#include "editor/bars/tweak_bar.h"

namespace {

// Does it with the variable's field, if the object has it.
template <class Action>
bool WithField(GameObject& object, const std::string& path, const Action& action) {
  TweakBar bar("object");
  AddObjectFields(bar, object);
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.path != path || entry.kind != TweakBar::Entry::Kind::kVariable) continue;
    action(entry.field);
    return true;
  }
  return false;
}

}  // namespace

std::optional<FieldValue> FindValue(GameObject& object, const std::string& path) {
  std::optional<FieldValue> value;
  WithField(object, path, [&](const Field& field) { value = GetValue(field); });
  return value;
}

std::string GiveValue(GameObject& object, const std::string& path, const FieldValue& value) {
  std::string given;
  WithField(object, path, [&](const Field& field) {
    PutBack(field, value);
    object.GetTransform().Rebuild();
    given = " = " + TextOf(field);
  });
  return given;
}

bool GiveAgain(const ValueChange& change) {
  GameObject* object = Objects().GetObject(change.id);
  if (object == nullptr) return false;
  if (!change.path.empty()) return !GiveValue(*object, change.path, change.value).empty();
  ChangeForm(*object, change.before, change.after);
  return true;
}
