#include "editor/acts/history.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/object_manager.h"
#include "core/print.h"
#include "core/transform.h"
#include "editor/bars/object_fields.h"
#include "editor/bars/tweak_bar.h"

namespace {

std::string NameOf(const GameObject& object) { return object.name.empty() ? "Nameless-Object" : object.name; }

// Whether nothing that files keep has joined the list since.
bool HasNothingNew(const std::vector<std::uint32_t>& order) {
  const std::unordered_set<std::uint32_t> known(order.begin(), order.end());
  return std::all_of(Objects().GetObjects().begin(), Objects().GetObjects().end(),
                     [&](const auto& object) { return object->core || known.count(object->id) != 0; });
}

void Remove(std::uint32_t id) {
  GameObject* object = Objects().GetObject(id);
  if (object == nullptr) return;
  object->alive = false;
  Objects().RemoveDeadObjects();
}

}  // namespace

void History::Record(Step step) {
  undone_.clear();
  if (done_.size() >= kMaxSteps) done_.erase(done_.begin());
  done_.push_back(std::move(step));
}

History::OrderPointer History::PresentOrder(std::uint32_t without) {
  Order order{{}, Objects().IsSortDue()};
  for (const auto& object : Objects().GetObjects())
    if (object->id != without) order.ids.push_back(object->id);
  if (lastOrder_ == nullptr || *lastOrder_ != order) lastOrder_ = std::make_shared<const Order>(std::move(order));
  return lastOrder_;
}

void History::RecordEdit(std::uint32_t objectId, const std::string& path, const FieldValue& before,
                         const FieldValue& after, bool open) {
  Edit* last = done_.empty() ? nullptr : std::get_if<Edit>(&done_.back());
  if (last != nullptr && last->open && last->id == objectId && last->path == path) {
    last->after = after;
    last->open = open;
  } else if (before != after) {
    Record(Edit{objectId, path, before, after, open, PresentOrder()});
  }
}

void History::CloseStep() {
  if (Edit* last = done_.empty() ? nullptr : std::get_if<Edit>(&done_.back())) last->open = false;
}

void History::RecordKill(GameObject& object) {
  if (CanTakeSnapshot(object)) {
    Record(Change{object.id, "the kill of " + NameOf(object), TakeSnapshot(object), {}, {}, false, PresentOrder()});
    return;
  }
  Print("%s cannot be brought back: nothing is left to undo\n", NameOf(object).c_str());
  Clear();
}

void History::RecordCreation(const GameObject& object, Maker make) {
  OrderPointer order = PresentOrder(object.id);
  Record(Change{object.id, "the making of " + NameOf(object), {}, {}, std::move(make), true, std::move(order)});
}

void History::RecordGrowth(GameObject& object) {
  if (CanTakeSnapshot(object))
    Record(Change{object.id, "an addition to " + NameOf(object), TakeSnapshot(object), {}, {}, true, PresentOrder()});
  else
    Clear();
}

void History::DoInsertion(const GameObject& object, const std::string& path, const Insertion& insertion) {
  const int place = insertion.insert(Insertion::kNowhere);
  if (place != Insertion::kNowhere) Record(Inserted{object.id, path, "an addition to " + NameOf(object), place});
}

void History::Clear() {
  done_.clear();
  undone_.clear();
}

std::string History::Undo() {
  if (done_.empty()) return "nothing to undo";
  Step step = std::move(done_.back());
  done_.pop_back();
  std::string said;
  OrderPointer order;
  if (Edit* edit = std::get_if<Edit>(&step)) {
    said = Apply(*edit, edit->before);
    // A save sorts the list by depth, and the depth may be what was edited.
    if (HasNothingNew(edit->order->ids)) order = edit->order;
  } else if (Inserted* inserted = std::get_if<Inserted>(&step)) {
    said = Apply(*inserted, false);
  } else {
    said = Undo(std::get<Change>(step));
    order = std::get<Change>(step).order;
  }
  if (order != nullptr) Objects().SetOrder(order->ids, order->sortDue);
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
  else if (Inserted* inserted = std::get_if<Inserted>(&step))
    said = Apply(*inserted, true);
  else
    said = Redo(std::get<Change>(step));
  done_.push_back(std::move(step));
  return "did again " + said;
}

std::string History::Apply(const Edit& edit, const FieldValue& value) {
  GameObject* object = Objects().GetObject(edit.id);
  if (object == nullptr) return edit.path.substr(1) + ": its object is gone";
  TweakBar bar("undo");
  AddObjectFields(bar, *object);
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.path != edit.path || entry.kind != TweakBar::Entry::Kind::kVariable) continue;
    PutBack(entry.field, value);
    object->GetTransform().Rebuild();
    return NameOf(*object) + edit.path + " = " + TextOf(entry.field);
  }
  return edit.path.substr(1) + ": its variable is gone";
}

std::string History::Apply(Inserted& inserted, bool again) {
  GameObject* object = Objects().GetObject(inserted.id);
  if (object == nullptr) return inserted.what + ": it is gone";
  TweakBar bar("undo");
  AddObjectFields(bar, *object);
  for (const TweakBar::Entry& entry : bar.GetEntries()) {
    if (entry.path != inserted.path || !entry.insertion.insert) continue;
    if (again)
      inserted.place = entry.insertion.insert(inserted.place);
    else if (inserted.place != Insertion::kNowhere)
      entry.insertion.remove(inserted.place);
    return inserted.what;
  }
  return inserted.what + ": its button is gone";
}

std::string History::Undo(Change& change) {
  GameObject* object = Objects().GetObject(change.id);
  if (object != nullptr && change.hasAfter && !change.make) change.after = TakeSnapshot(*object);
  Remove(change.id);
  if (change.before) MakeFromSnapshot(*change.before);
  return change.what;
}

std::string History::Redo(Change& change) {
  Remove(change.id);
  if (change.make) {
    Objects().ReturnIdToNext(change.id);
    change.make();
    Objects().ReturnIdToNext(0);
  } else if (change.after) {
    MakeFromSnapshot(*change.after);
  }
  if (change.before) Objects().SetOrder(change.order->ids, change.order->sortDue);
  return change.what;
}
