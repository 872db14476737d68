// The form in which the game saves a file: reading it and writing its objects back gives the same bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lint/key_table.h"
#include "lint/scanner.h"

/// What the game would write for that value; the text itself when it is no such value.
std::string CanonicalValue(FieldType type, std::string_view text);

enum class CanonicalIds { kKept, kNumbered };

/// The whole file. `types`: of the value of each line. Numbered: objects from 1 and generators from 42 in their order,
/// but for the generator host, whose number is 1337.
std::string CanonicalText(const std::vector<LintLine>& lines, const std::vector<FieldType>& types, CanonicalIds ids);
