// What has been done to the scene, step by step, to be undone and done again. Steps name objects by ID, which an object
// that comes back gets again. Undo and redo destroy objects at once, so they run only where nobody walks the object
// list.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "editor/acts/snapshot.h"

class History {
 public:
  static constexpr std::size_t kMaxSteps = 20000;  ///< the oldest go beyond it

  using Maker = std::function<GameObject*()>;

  /// A variable of an object, by its path on a bar of its own. While `open`, the next edit of the same variable joins
  /// this step.
  void RecordEdit(std::uint32_t objectId, const std::string& path, const FieldValue& before, const FieldValue& after,
                  bool open);
  /// The next edit is a step of its own, whatever was open.
  void CloseStep();
  /// An object about to be killed.
  void RecordKill(GameObject& object);
  /// A fresh object; `make` makes it again.
  void RecordCreation(const GameObject& object, Maker make);
  /// An object about to get another component or script.
  void RecordGrowth(GameObject& object);
  /// Does an insertion by the button of that path on a bar of the object's own. It is taken back and done again in
  /// place, so that what runs there goes on.
  void DoInsertion(const GameObject& object, const std::string& path, const Insertion& insertion);
  /// Forgets everything, after what cannot be undone.
  void Clear();

  /// Takes back the last step or does the last undone one again; what was done, in words, or why not.
  std::string Undo();
  std::string Redo();
  std::size_t CountUndoable() const { return done_.size(); }

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
    bool open;
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
  using Step = std::variant<Edit, Change, Inserted>;

  void Record(Step step);
  OrderPointer PresentOrder(std::uint32_t without = 0);
  static std::string Apply(const Edit& edit, const FieldValue& value);
  static std::string Apply(Inserted& inserted, bool again);
  static std::string Undo(Change& change);
  static std::string Redo(Change& change);

  std::vector<Step> done_;
  std::vector<Step> undone_;
  OrderPointer lastOrder_;
};
