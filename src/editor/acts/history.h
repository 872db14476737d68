// What has been done to the scene, act by act, to be undone and done again. An act is one step or several, which name
// objects by ID; an object that comes back gets its ID again. Undo and redo destroy objects at once, so they run only
// where nobody walks the object list.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "editor/acts/form.h"
#include "editor/acts/snapshot.h"
#include "editor/acts/value_change.h"
#include "physics/force_generator.h"

class History {
 public:
  static constexpr std::size_t kMaxActs = 20000;  ///< the oldest go beyond it

  using Maker = std::function<GameObject*()>;
  using ValueListener = std::function<void(const ValueChange&)>;

  /// What is recorded while one lives is one act.
  class Group {
   public:
    /// `what` tells of it, "the move of 3 objects". While `open`, edits of the same variables that follow join it.
    Group(History& history, std::string what, bool open = false) : history_(history) {
      history_.Begin(std::move(what), open);
    }
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;
    ~Group() { history_.End(); }

   private:
    History& history_;
  };

  /// A variable of an object, by its path on a bar of its own. While `open`, the next edit of the same variable joins
  /// this act.
  void RecordEdit(std::uint32_t objectId, const std::string& path, const FieldValue& before, const FieldValue& after,
                  bool open);
  /// An object's form; what differs between the two is put back and given again.
  void RecordForm(std::uint32_t objectId, const Form& before, const Form& after);
  /// The next edit is an act of its own, whatever was open.
  void CloseStep();
  /// An object about to be killed.
  void RecordKill(GameObject& object);
  /// A fresh object; `make` makes it again, or without one the object as it stands when its making is undone.
  void RecordCreation(const GameObject& object, Maker make);
  /// A generator that the host has got for what this act makes; it goes and comes back with it.
  void RecordGenerator(GalePhysics::ForceGenerator& generator);
  /// An object about to get another component or script.
  void RecordGrowth(GameObject& object);
  /// Does an insertion by the button of that path on a bar of the object's own. It is taken back and done again in
  /// place, so that what runs there goes on.
  void DoInsertion(const GameObject& object, const std::string& path, const Insertion& insertion);
  /// Forgets everything, after what cannot be undone.
  void Clear();

  /// Who hears of every value that is given from here, by edits, undo and redo; null for nobody.
  void SetValueListener(ValueListener listener) { listener_ = std::move(listener); }
  /// The acts that gave values alone, oldest first.
  std::vector<ValueAct> GetValueActs() const;
  /// Gives the values again and records it as one act.
  void Repeat(const ValueAct& act);

  /// Another number for every state that edits, undo and redo lead to, the same for the same state.
  std::uint64_t GetState() const { return done_.empty() ? ground_ : done_.back().serial; }

  /// Takes back the last act or does the last undone one again; what was done, in words, or why not.
  std::string Undo();
  std::string Redo();

 private:
  // The object list at a moment.
  struct Order {
    std::vector<std::uint32_t> ids;
    bool sortDue;

    bool operator==(const Order&) const = default;
  };
  using OrderPointer = std::shared_ptr<const Order>;  // shared by the steps between two changes of the list

  struct Edit {
    std::uint32_t id;
    std::string path;
    FieldValue before;
    FieldValue after;
    OrderPointer order;  // before
  };
  // The object as it was before and after, absent when it was not there.
  struct Change {
    std::uint32_t id;
    std::string what;
    std::optional<Snapshot> before;
    std::optional<Snapshot> after;
    Maker make;
    bool hasAfter;
    OrderPointer order;  // before
  };
  struct Inserted {
    std::uint32_t id;
    std::string path;
    std::string what;
    int place;
  };
  struct Reshaped {
    std::uint32_t id;
    Form before;
    Form after;
  };
  // One that the host has lent to bodies; while it is undone it is held here.
  struct Lent {
    GalePhysics::ForceGenerator* generator;
    std::unique_ptr<GalePhysics::ForceGenerator> held;
  };
  using Step = std::variant<Edit, Change, Inserted, Reshaped, Lent>;
  struct Act {
    std::vector<Step> steps;
    std::string what;  // empty: the step tells
    bool open = false;
    std::uint64_t serial = 0;
  };

  void Begin(std::string what, bool open);
  void End();
  void Record(Step step);
  void Close(Act act);
  static Edit* FindEdit(std::vector<Step>& steps, const Edit& wanted);
  bool Join(Act& act);
  OrderPointer PresentOrder(std::uint32_t without = 0);
  void Tell(const ValueChange& change) const {
    if (listener_) listener_(change);
  }
  std::string Undo(Step& step);
  std::string Redo(Step& step);
  std::string Apply(const Edit& edit, const FieldValue& value) const;
  std::string Apply(const Reshaped& reshaped, bool again) const;
  static std::string Apply(Inserted& inserted, bool again);
  static std::string Undo(Change& change);
  static std::string Redo(Change& change);

  std::vector<Act> done_;
  std::vector<Act> undone_;
  std::optional<Act> group_;  // being recorded
  int depth_ = 0;             // of groups within it
  std::uint64_t lastSerial_ = 0;
  std::uint64_t ground_ = 0;  // serial of the state before the first act
  OrderPointer lastOrder_;
  ValueListener listener_;
};
