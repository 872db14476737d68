// What must hold for the objects of a level, and for the level as a whole.
#pragma once

#include <string>
#include <vector>

#include "tools/lint/scanner.h"

/// Checks all objects of the level at the path `file`.
void CheckObjects(const std::vector<LintLine>& lines, const std::string& file, LintReport& report);
