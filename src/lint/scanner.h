// The lines of a level file as lint sees them: strictly, with their numbers, and not through the game's own reader.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lint/report.h"

struct LintLine {
  enum class Kind { kBlockOpen, kComponentOpen, kValue, kClose };
  int number;  ///< in the file, from 1
  Kind kind;
  std::string_view key;  ///< object ID, component name, or text before ": "
  std::string_view value;
};

/// Splits a file's text after its opening line; tells of wrong indentation, blanks and braces that do not match. The
/// lines point into the text.
std::vector<LintLine> ScanLines(std::string_view text, LintReport& report);
