// The fields that all selected objects have, edited together.
#include <algorithm>
#include <map>

#include "core/transform.h"
#include "editor/acts/object_shape.h"
#include "editor/bars/common_fields.h"
#include "editor/bars/object_fields.h"
#include "editor/editor.h"
#include "editor/hints.h"

void Editor::FillCommon() {
  common_.RemoveAll();
  const std::vector<GameObject*> objects = SelectedObjects();
  if (objects.size() < 2) return;
  AddCommonFields(common_, std::to_string(objects.size()) + " selected", objects);
  AddHints(common_);
  pictureFaults_.Tell(common_);
  OfferPages(common_, common_.GetName(), browser_);
}

// Everywhere the same variable, or the same part of a vector, as one act.
void Editor::ApplyCommonEdit(const TweakBar::Entry& entry, const FieldValue& value, bool done) {
  const std::string path = CommonPathOf(entry);
  const std::vector<GameObject*> objects = SelectedObjects();
  const History::Group group(history_, entry.label + " of " + std::to_string(objects.size()) + " objects", !done);
  for (GameObject* object : objects) {
    TweakBar alone("object");
    AddObjectFields(alone, *object);
    for (const TweakBar::Entry& own : alone.GetEntries()) {
      const auto part = PartOf(own, path);
      if (!part) continue;
      const FieldValue before = GetValue(own.field);
      SetValue(own.field, WithPart(before, *part, value));
      object->GetTransform().Rebuild();  // a save before the next update writes the matrix too
      history_.RecordEdit(object->id, own.path, before, GetValue(own.field), !done);
    }
  }
}
