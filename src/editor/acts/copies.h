// Copies of objects as the text of a level, which the clipboard carries to other levels, programs and people. What the
// text cannot say, because no file does, is remembered beside it for as long as the clipboard holds that text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/game_object.h"
#include "editor/acts/arrange.h"
#include "editor/acts/unsaved_parts.h"
#include "physics/math/vec3.h"

class History;

/// The text of a level that holds these objects; nothing in the scene changes.
std::string TextOfLevel(const std::vector<GameObject*>& objects);
/// That of every object of the scene but Core ones, with one of that name behind them unless it is empty.
std::string SceneText(const std::string& lastName = {});

class Copies {
 public:
  /// The selected objects into the clipboard; what was done, or why nothing. Cut kills them, as one act.
  std::string Copy();
  std::string Cut(History& history);
  /// What the clipboard holds, as one act, and selects it. `at`: the place of its middle; else it is moved by `shift`.
  /// Text from elsewhere in which lint finds a fault is refused; `found` gets the lines.
  std::string Paste(History& history, const std::optional<Vec3>& at, const Vec3& shift,
                    std::vector<std::string>& found);
  /// The scene is put aside for another one; what was copied from it stays as it is.
  void LeaveScene() { ofSceneAside_ = true; }
  /// It stands again. What was copied from the other one since refers to what `idHere` names for an ID of there; where
  /// that is 0, to nothing, as the pasting says.
  void ReturnToScene(const std::function<std::uint32_t(std::uint32_t)>& idHere);
  /// The selected objects again, moved by `shift`, past the clipboard.
  static std::string Duplicate(History& history, const Vec3& shift);
  /// The same where a mirror in the middle of the stage shows them. Both are selected then, so that the other axis
  /// makes four of each.
  static std::string DuplicateMirrored(History& history, Arrange::Axis axis);
  /// Kills the selected objects, as one act.
  static std::string Kill(History& history);

 private:
  friend std::string TextOfLevel(const std::vector<GameObject*>& objects);

  // Whom a copied object refers to.
  struct Link {
    std::uint32_t id;
    std::optional<std::size_t> copied;  // which of the copied objects that is, if it is one
  };
  struct Copied {
    std::string text;
    struct One {
      std::vector<std::optional<Link>> targets;  // of its generators
      std::optional<Link> leader;
      UnsavedParts parts;
    };
    std::vector<One> objects;
    int lost = 0;  // links to what is not in this scene
  };

  static Copied Take(const std::vector<GameObject*>& objects);
  static std::vector<GameObject*> Put(History& history, const std::string& what, const std::string& text,
                                      const Copied* copied, const std::optional<Vec3>& at, const Vec3& shift);
  static void Mend(const Copied& copied, const std::vector<GameObject*>& made);

  Copied last_;
  bool ofSceneAside_ = false;
};
