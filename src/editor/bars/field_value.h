// The values of bar variables, apart from the fields they are bound to: to compare, to keep, and as text.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "core/field_bar.h"

using FieldValue = std::variant<bool, int, std::uint32_t, float, Vec3, FieldColour, std::string>;

/// What the field holds now.
FieldValue GetValue(const Field& field);

/// Puts a value of the field's own type into it, moved into its limits. A number that is not finite, a value of another
/// type and a read-only field change nothing. True when the field holds something else afterwards.
bool SetValue(const Field& field, const FieldValue& value);

/// Puts a value that the field has had back into it, whatever its limits. A value of another type changes nothing.
void PutBack(const Field& field, const FieldValue& value);

/// As one writes it: "true", "1.5", "0 -1 0", the name of a choice, or the text itself.
std::string TextOf(const Field& field);
/// The same for a value that the field may get.
std::string TextOf(const Field& field, const FieldValue& value);

/// Reads a value for the field from text, as TextOf writes it; a choice also by its number, the numbers of a vector
/// also with commas between. False when the text is none.
bool ParseValue(const Field& field, std::string_view text, FieldValue& value);
