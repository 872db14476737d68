// A value that was given to an object: one of its variables, or its form. It can be given again to an object that has
// the same, in another run of the scene or in the level that the scene was made of.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/game_object.h"
#include "editor/acts/form.h"
#include "editor/bars/field_value.h"

struct ValueChange {
  std::uint32_t id;
  std::string path;  ///< of the variable on a bar of the object's own; empty: it is the form
  FieldValue value;
  Form before;  ///< of the form those parts count that differ between the two
  Form after;
};

/// Changes that belong together; `what` tells of them, and is empty when the variable does.
struct ValueAct {
  std::string what;
  std::vector<ValueChange> changes;
};

/// The variable's value; nothing when the object has none of that path.
std::optional<FieldValue> FindValue(GameObject& object, const std::string& path);
/// Gives it the value, whatever its limits; " = VALUE", or empty when there is no such variable.
std::string GiveValue(GameObject& object, const std::string& path, const FieldValue& value);
/// False when there is no such object or variable.
bool GiveAgain(const ValueChange& change);
