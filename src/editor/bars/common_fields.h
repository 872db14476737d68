// What several objects have in common, as one set of variables: those whose path and type are the same on a bar of each
// object's own. A vector is three variables, "position x" and so on, so that one part can be set and the others stay.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/game_object.h"
#include "editor/bars/field_value.h"
#include "editor/bars/tweak_bar.h"

/// Adds a group of copies of the first object's values; one that others do not share is mixed.
void AddCommonFields(TweakBar& bar, const std::string& group, const std::vector<GameObject*>& objects);

/// The path of the copy on a bar of an object's own, with the part of the vector behind it.
std::string CommonPathOf(const TweakBar::Entry& copy);

/// Which part of an object's own variable that path means: 0 to 2 of a vector, -1 for all of it; nothing when it means
/// another one.
std::optional<int> PartOf(const TweakBar::Entry& own, const std::string& path);

/// The value with that part of it replaced.
FieldValue WithPart(FieldValue whole, int part, const FieldValue& value);
