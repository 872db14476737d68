// Reads levels and archetypes strictly and says everything that is wrong with them, where the game reads leniently and
// goes on.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// Checks each file and prints "FILE:LINE: rule: text" for every fault and "FILE:LINE: rule: note: text" for what is
/// merely worth knowing; pictures, archetypes and pieces are looked for beside the file. 1 when there are faults, else
/// 0.
int LintFiles(const std::vector<std::string>& files, std::FILE* out);

/// The same with pictures, archetypes and pieces of another folder; beside the file when it is empty.
int LintFiles(const std::vector<std::string>& files, const std::string& dataFolder, std::FILE* out);

/// The same lines for one file, each without its end.
std::vector<std::string> LintLines(const std::string& file);

/// Adds those for a text that stands in no file, but under that name in the game's folder; false when there are faults.
bool LintLevelText(const std::string& name, std::string text, std::vector<std::string>& lines);
