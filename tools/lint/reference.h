// What every block of a level file holds, and what lint says, in words.
#pragma once

#include <cstdio>

/// Writes the reference of components, scripts, objectives and rules, in Markdown.
void PrintReference(std::FILE* out);
