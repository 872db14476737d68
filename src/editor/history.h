// What has been done to the scene, step by step, to be undone and done again. Steps name objects by ID; an object that
// comes back has a new one, which the history keeps track of. Undo and redo destroy objects at once, so they run only
// where nobody walks the object list.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "editor/snapshot.h"

class History {
 public:
  static constexpr std::size_t kMaxSteps = 20000;  ///< the oldest go beyond it

  using Maker = std::function<GameObject*()>;

  /// A variable of an object, by its path on a bar of its own. While `open`, the next edit of the same variable joins
  /// this step.
  void RecordEdit(std::uint32_t objectId, const std::string& path, const FieldValue& before, const FieldValue& after,
                  bool open);
  /// An object about to be killed.
  void RecordKill(GameObject& object);
  /// A fresh object; `make` makes it again.
  void RecordCreation(const GameObject& object, Maker make);
  /// An object about to get another component or script.
  void RecordGrowth(GameObject& object);
  /// Forgets everything, after what cannot be undone.
  void Clear();

  /// Takes back the last step or does the last undone one again; what was done, in words, or why not.
  std::string Undo();
  std::string Redo();
  std::size_t CountUndoable() const { return done_.size(); }

 private:
  struct Edit {
    std::uint32_t id;
    std::string path;
    FieldValue before;
    FieldValue after;
    bool open;
  };
  // The object as it was before and after, absent when it was not there.
  struct Change {
    std::uint32_t id;
    std::string what;
    std::optional<Snapshot> before;
    std::optional<Snapshot> after;
    Maker make;
    bool hasBefore;
    bool hasAfter;
    std::vector<std::uint32_t> order;  // of the whole list before
  };
  using Step = std::variant<Edit, Change>;

  void Record(Step step);
  std::uint32_t Resolve(std::uint32_t id) const;
  std::string Apply(const Edit& edit, const FieldValue& value) const;
  std::string Undo(Change& change);
  std::string Redo(Change& change);
  void Remove(Change& change, std::optional<Snapshot>* keep) const;
  void Bring(const Change& change, GameObject* object);
  void RestoreOrder(const Change& change) const;

  std::vector<Step> done_;
  std::vector<Step> undone_;
  std::unordered_map<std::uint32_t, std::uint32_t> renamed_;  // an object's former ID to its next one
};
