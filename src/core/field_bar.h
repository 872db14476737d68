// Where components and scripts show their fields to whoever edits them: typed variables and buttons in nested groups.
// The core knows this interface alone; the editor implements it. A variable is bound to the field itself, so a bar is
// filled anew whenever what it shows may have gone or moved.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "physics/math/vec3.h"

/// The fields that can be edited; not owned.
using FieldColour = std::array<float, 3>;  // red, green, blue, 0 to 1
using FieldTarget = std::variant<bool*, int*, std::uint32_t*, float*, Vec3*, FieldColour*, std::string*>;

struct Field {
  std::string label;  ///< as shown
  FieldTarget target;
  bool readOnly = false;
  double lowest = std::numeric_limits<double>::lowest();  ///< of numbers; what is set beyond is moved to the limit
  double highest = std::numeric_limits<double>::max();
  std::size_t maxLength = std::string::npos;                   ///< of a text, in bytes; more is cut off
  std::vector<std::pair<int, std::string_view>> choices = {};  ///< of an int: the values it may have, and their names
  bool whileTyping = false;                                    ///< of a text: counts with every letter, not when typed
  bool slides = false;                                         ///< of a number: shown as a place between its limits
};

/// A button's way to put something into a list, which can be taken back and done again in place: what runs goes on.
/// Both act on the scene as it stands when they are called.
struct Insertion {
  static constexpr int kNowhere = -1;

  /// Puts it at the place, or at the button's own when that is kNowhere; where it came to stand, kNowhere when it could
  /// not, with a message.
  std::function<int(int place)> insert;
  std::function<void(int place)> remove;
};

class FieldBar {
 public:
  static constexpr float kStep = 0.01f;  ///< by which floats and vectors go up and down

  virtual ~FieldBar() = default;
  /// Groups nest: each BeginGroup has its EndGroup.
  virtual void BeginGroup(std::string_view name) = 0;
  virtual void EndGroup() = 0;
  virtual void Add(Field field) = 0;
  /// `name` stands for the button, `label` is shown on it. A press may add, move and destroy what the bar shows.
  virtual void AddButton(std::string_view name, std::string_view label, std::function<void()> press) = 0;
  virtual void AddInsertButton(std::string_view name, std::string_view label, Insertion insertion) = 0;

  void Add(std::string_view label, FieldTarget target) { Add(Field{std::string(label), target}); }
  void AddReadOnly(std::string_view label, FieldTarget target) { Add(Field{std::string(label), target, true}); }
  /// A number that stays within limits.
  void AddLimited(std::string_view label, FieldTarget target, double lowest, double highest) {
    Add(Field{std::string(label), target, false, lowest, highest});
  }
  /// A value of the bar's own, for what is computed: editing it changes nothing else.
  void AddCopy(std::string_view label, float value) { Add(label, Keep(value)); }
  void AddReadOnlyCopy(std::string_view label, int value) { AddReadOnly(label, Keep(value)); }
  void AddButton(std::string_view label, std::function<void()> press) { AddButton(label, label, std::move(press)); }
  /// A group without fields, which tells that the script is there.
  void AddEmptyGroup(std::string_view name) {
    BeginGroup(name);
    EndGroup();
  }

 protected:
  /// Keeps a value until the bar is emptied.
  virtual float* Keep(float value) = 0;
  virtual int* Keep(int value) = 0;
};
