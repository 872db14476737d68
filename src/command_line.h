// What the game says when it is asked instead of played.
#pragma once

#include <optional>

/// Answers --help and --version, and refuses whatever else there is with a line on standard error. The exit code; none
/// without arguments, when the game is to begin.
std::optional<int> AnswerArguments(int count, char* const arguments[]);
