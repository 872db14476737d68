#include "editor/history.h"

#include <utility>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/object_fields.h"
#include "editor/tweak_bar.h"

namespace {

std::vector<std::uint32_t> PresentOrder() {
  std::vector<std::uint32_t> order;
  for (const auto& object : Objects().GetObjects()) order.push_back(object->id);
  return order;
}

std::string NameOf(const GameObject& object) { return object.name.empty() ? "Nameless-Object" : object.name; }

}  // namespace

void History::Record(Step step) {
  undone_.clear();
  if (done_.size() >= kMaxSteps) done_.erase(done_.begin());
  done_.push_back(std::move(step));
}

void History::RecordEdit(std::uint32_t objectId, const std::string& path, const FieldValue& before,
                         const FieldValue& after, bool open) {
  Edit* last = done_.empty() ? nullptr : std::get_if<Edit>(&done_.back());
  if (last != nullptr && last->open && last->id == objectId && last->path == path) {
    last->after = after;
    last->open = open;
  } else if (before != after) {
    Record(Edit{objectId, path, before, after, open});
  }
}

void History::RecordKill(GameObject& object) {
  if (!CanTakeSnapshot(object)) {
    Clear();
    return;
  }
  Record(Change{object.id, "the kill of " + NameOf(object), TakeSnapshot(object), {}, {}, true, false, PresentOrder()});
}

void History::RecordCreation(const GameObject& object, Maker make) {
  std::vector<std::uint32_t> order = PresentOrder();
  std::erase(order, object.id);
  Record(Change{object.id, "the making of " + NameOf(object), {}, {}, std::move(make), false, true, std::move(order)});
}

void History::RecordGrowth(GameObject& object) {
  if (!CanTakeSnapshot(object)) {
    Clear();
    return;
  }
  Record(
      Change{object.id, "an addition to " + NameOf(object), TakeSnapshot(object), {}, {}, true, true, PresentOrder()});
}

void History::Clear() {
  done_.clear();
  undone_.clear();
  renamed_.clear();
}

std::uint32_t History::Resolve(std::uint32_t id) const {
  for (auto found = renamed_.find(id); found != renamed_.end(); found = renamed_.find(id)) id = found->second;
  return id;
}

std::string History::Undo() {
  if (done_.empty()) return "nothing to undo";
  Step step = std::move(done_.back());
  done_.pop_back();
  std::string said;
  if (Edit* edit = std::get_if<Edit>(&step))
    said = Apply(*edit, edit->before);
  else
    said = Undo(std::get<Change>(step));
  undone_.push_back(std::move(step));
  return "undid " + said;
}

std::string History::Redo() {
  if (undone_.empty()) return "nothing to do again";
  Step step = std::move(undone_.back());
  undone_.pop_back();
  std::string said;
  if (Edit* edit = std::get_if<Edit>(&step))
    said = Apply(*edit, edit->after);
  else
    said = Redo(std::get<Change>(step));
  done_.push_back(std::move(step));
  return "did again " + said;
}

std::string History::Apply(const Edit& edit, const FieldValue& value) const {
  GameObject* object = Objects().GetObject(Resolve(edit.id));
  if (object == nullptr) return edit.path.substr(1) + ": its object is gone";
  TweakBar bar("undo");
  AddObjectFields(bar, *object);
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.path != edit.path || entry.kind != TweakBar::Entry::Kind::kVariable) continue;
    SetValue(entry.field, value);
    object->GetTransform().Rebuild();
    return NameOf(*object) + edit.path + " = " + TextOf(entry.field);
  }
  return edit.path.substr(1) + ": its variable is gone";
}

std::string History::Undo(Change& change) {
  Remove(change, change.hasAfter && !change.make ? &change.after : nullptr);
  if (change.before) Bring(change, MakeFromSnapshot(*change.before));
  RestoreOrder(change);
  return change.what;
}

std::string History::Redo(Change& change) {
  Remove(change, nullptr);
  if (change.hasAfter) Bring(change, change.make ? change.make() : MakeFromSnapshot(*change.after));
  if (change.hasBefore) RestoreOrder(change);
  return change.what;
}

void History::Remove(Change& change, std::optional<Snapshot>* keep) const {
  GameObject* object = Objects().GetObject(Resolve(change.id));
  if (object == nullptr) return;
  if (keep != nullptr) *keep = TakeSnapshot(*object);
  object->alive = false;
  Objects().RemoveDeadObjects();
}

void History::Bring(const Change& change, GameObject* object) {
  if (object == nullptr) return;
  const std::uint32_t former = Resolve(change.id);
  renamed_[former] = object->id;
  RenameInSelection(former, object->id);
}

void History::RestoreOrder(const Change& change) const {
  std::vector<std::uint32_t> order;
  for (const std::uint32_t id : change.order) order.push_back(Resolve(id));
  Objects().SetOrder(order);
}
