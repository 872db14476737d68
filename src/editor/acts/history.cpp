#include "editor/acts/history.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/object_manager.h"
#include "core/print.h"
#include "core/transform.h"
#include "editor/acts/object_shape.h"
#include "editor/bars/object_fields.h"
#include "editor/bars/tweak_bar.h"
#include "physics/generator_host.h"

namespace {

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

void History::Begin(std::string what, bool open) {
  if (depth_++ > 0) return;
  group_ = Act{{}, std::move(what), open};
}

void History::End() {
  if (--depth_ > 0 || !group_) return;
  Act act = std::move(*group_);
  group_.reset();
  Close(std::move(act));
}

void History::Record(Step step) {
  if (group_) {
    group_->steps.push_back(std::move(step));
    return;
  }
  Act act;
  act.steps.push_back(std::move(step));
  Close(std::move(act));
}

History::Edit* History::FindEdit(std::vector<Step>& steps, const Edit& wanted) {
  for (Step& step : steps)
    if (Edit* edit = std::get_if<Edit>(&step); edit != nullptr && edit->id == wanted.id && edit->path == wanted.path)
      return edit;
  return nullptr;
}

// The last act takes in edits of the very variables that it edits while it is open. Those that the edits before left as
// they were come in anew.
bool History::Join(Act& act) {
  if (done_.empty() || !done_.back().open) return false;
  const auto isEdit = [](const Step& step) { return std::holds_alternative<Edit>(step); };
  std::vector<Step>& last = done_.back().steps;
  if (!std::all_of(act.steps.begin(), act.steps.end(), isEdit)) return false;
  for (const Step& step : last)
    if (!isEdit(step) || FindEdit(act.steps, std::get<Edit>(step)) == nullptr) return false;
  for (const Step& step : act.steps) {
    const auto& has = std::get<Edit>(step);
    if (Edit* had = FindEdit(last, has))
      had->after = has.after;
    else if (!(has.before == has.after))
      last.push_back(has);
  }
  done_.back().open = act.open;
  done_.back().serial = ++lastSerial_;
  return true;
}

void History::Close(Act act) {
  if (Join(act)) return;
  std::erase_if(act.steps, [](const Step& step) {
    const Edit* edit = std::get_if<Edit>(&step);
    return edit != nullptr && edit->before == edit->after;
  });
  if (act.steps.empty()) return;
  undone_.clear();
  if (done_.size() >= kMaxActs) done_.erase(done_.begin());
  act.serial = ++lastSerial_;
  done_.push_back(std::move(act));
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
  Tell({objectId, path, after, {}, {}});
  const Group group(*this, {}, open);
  Record(Edit{objectId, path, before, after, before == after ? nullptr : PresentOrder()});
}

void History::CloseStep() {
  if (!done_.empty()) done_.back().open = false;
}

void History::RecordForm(std::uint32_t objectId, const Form& before, const Form& after) {
  if (before == after) return;
  Tell({objectId, {}, {}, before, after});
  Record(Reshaped{objectId, before, after});
}

void History::RecordGenerator(GalePhysics::ForceGenerator& generator) { Record(Lent{&generator, nullptr}); }

void History::RecordKill(GameObject& object) {
  if (CanTakeSnapshot(object)) {
    Record(
        Change{object.id, "the kill of " + ShownNameOf(object), TakeSnapshot(object), {}, {}, false, PresentOrder()});
    return;
  }
  Print("%s cannot be brought back: nothing is left to undo\n", ShownNameOf(object).c_str());
  Clear();
}

void History::RecordCreation(const GameObject& object, Maker make) {
  OrderPointer order = PresentOrder(object.id);
  Record(Change{object.id, "the making of " + ShownNameOf(object), {}, {}, std::move(make), true, std::move(order)});
}

void History::RecordGrowth(GameObject& object) {
  if (CanTakeSnapshot(object))
    Record(
        Change{object.id, "an addition to " + ShownNameOf(object), TakeSnapshot(object), {}, {}, true, PresentOrder()});
  else
    Clear();
}

void History::DoInsertion(const GameObject& object, const std::string& path, const Insertion& insertion) {
  const int place = insertion.insert(Insertion::kNowhere);
  if (place != Insertion::kNowhere) Record(Inserted{object.id, path, "an addition to " + ShownNameOf(object), place});
}

void History::Clear() {
  done_.clear();
  undone_.clear();
  if (group_) group_->steps.clear();
  ground_ = ++lastSerial_;
}

std::string History::Undo(Step& step) {
  OrderPointer order;
  std::string said;
  if (Edit* edit = std::get_if<Edit>(&step)) {
    said = Apply(*edit, edit->before);
    // A save sorts the list by depth, and the depth may be what was edited.
    if (HasNothingNew(edit->order->ids)) order = edit->order;
  } else if (Inserted* inserted = std::get_if<Inserted>(&step)) {
    said = Apply(*inserted, false);
  } else if (Reshaped* reshaped = std::get_if<Reshaped>(&step)) {
    said = Apply(*reshaped, false);
  } else if (Lent* lent = std::get_if<Lent>(&step)) {
    lent->held = GalePhysics::TakeForceGenerator(*lent->generator);
  } else {
    said = Undo(std::get<Change>(step));
    order = std::get<Change>(step).order;
  }
  if (order != nullptr) Objects().SetOrder(order->ids, order->sortDue);
  return said;
}

std::string History::Redo(Step& step) {
  if (Edit* edit = std::get_if<Edit>(&step)) return Apply(*edit, edit->after);
  if (Inserted* inserted = std::get_if<Inserted>(&step)) return Apply(*inserted, true);
  if (Reshaped* reshaped = std::get_if<Reshaped>(&step)) return Apply(*reshaped, true);
  if (Lent* lent = std::get_if<Lent>(&step)) {
    if (lent->held != nullptr) GalePhysics::AdoptForceGenerator(std::move(lent->held));
    return {};
  }
  return Redo(std::get<Change>(step));
}

std::string History::Undo() {
  if (done_.empty()) return "nothing to undo";
  Act act = std::move(done_.back());
  done_.pop_back();
  act.open = false;
  std::string said;
  for (auto step = act.steps.rbegin(); step != act.steps.rend(); ++step) said = Undo(*step);
  if (!act.what.empty()) said = act.what;
  undone_.push_back(std::move(act));
  return "undid " + said;
}

std::string History::Redo() {
  if (undone_.empty()) return "nothing to do again";
  Act act = std::move(undone_.back());
  undone_.pop_back();
  std::string said;
  for (Step& step : act.steps) said = Redo(step);
  if (!act.what.empty()) said = act.what;
  done_.push_back(std::move(act));
  return "did again " + said;
}

std::string History::Apply(const Edit& edit, const FieldValue& value) const {
  GameObject* object = Objects().GetObject(edit.id);
  if (object == nullptr) return edit.path.substr(1) + ": its object is gone";
  const std::string given = GiveValue(*object, edit.path, value);
  if (given.empty()) return edit.path.substr(1) + ": its variable is gone";
  Tell({edit.id, edit.path, value, {}, {}});
  return ShownNameOf(*object) + edit.path + given;
}

std::string History::Apply(const Reshaped& reshaped, bool again) const {
  GameObject* object = Objects().GetObject(reshaped.id);
  if (object == nullptr) return "a move: its object is gone";
  const Form& from = again ? reshaped.before : reshaped.after;
  const Form& to = again ? reshaped.after : reshaped.before;
  ChangeForm(*object, from, to);
  Tell({reshaped.id, {}, {}, from, to});
  return "the move of " + ShownNameOf(*object);
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

std::vector<ValueAct> History::GetValueActs() const {
  std::vector<ValueAct> taken;
  for (const Act& act : done_) {
    ValueAct values{act.what, {}};
    for (const Step& step : act.steps) {
      if (const Edit* edit = std::get_if<Edit>(&step))
        values.changes.push_back({edit->id, edit->path, edit->after, {}, {}});
      if (const Reshaped* shaped = std::get_if<Reshaped>(&step))
        values.changes.push_back({shaped->id, {}, {}, shaped->before, shaped->after});
    }
    if (!values.changes.empty()) taken.push_back(std::move(values));
  }
  return taken;
}

void History::Repeat(const ValueAct& act) {
  const Group group(*this, act.what);
  for (const ValueChange& change : act.changes) {
    GameObject* object = Objects().GetObject(change.id);
    if (object == nullptr) continue;
    const Form form = TakeForm(*object);
    const auto value = FindValue(*object, change.path);
    if (!GiveAgain(change)) continue;
    if (change.path.empty())
      RecordForm(change.id, form, TakeForm(*object));
    else if (value)
      RecordEdit(change.id, change.path, *value, change.value, false);
  }
}
