// The rules by the names that level files use, with their titles and times.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "match/rules/objective.h"

/// A new rule with its title and time; null, without a message, for an unknown name.
std::unique_ptr<Objective> CreateObjective(std::string_view typeName);

/// Every name that CreateObjective knows.
std::vector<std::string_view> ObjectiveNames();
