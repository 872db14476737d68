// Brings level files into the form in which the game saves them.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// Writes each file anew in the form in which the game saves it, numbers, blanks and IDs and nothing else, and says
/// so; then the same as LintFiles. A file whose lines cannot be told apart without guessing, or that cannot be written,
/// is left as it is, with a line.
int FixFiles(const std::vector<std::string>& files, std::FILE* out);
