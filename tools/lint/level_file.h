// Levels that other levels name.
#pragma once

#include <string>
#include <string_view>

/// Whether a level or archetype of that plain name is in the folder and makes something.
bool HoldsAnObject(const std::string& folder, std::string_view level);
