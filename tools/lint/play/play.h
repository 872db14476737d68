// `lint --play`: files are played, and what shows then is reported like what lint reads in them.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// Prints what LintFiles prints of each file, plays it unless it cannot be read, and prints what that has shown. The
/// files may lie anywhere: pictures, archetypes and the match that names them as pieces are those of `dataFolder`;
/// where that is empty, of each file's own folder, and if no game is there of the program's own. 1 when there are
/// faults, else 0.
int PlayFiles(const std::vector<std::string>& files, const std::string& dataFolder, std::FILE* out);
