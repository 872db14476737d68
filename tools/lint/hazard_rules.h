// What hazards and props need in order to work: the right collider, and the archetypes that their code names.
#pragma once

#include <string>

#include "tools/lint/lint_object.h"

/// `folder`: where the level's archetypes are looked for.
void CheckHazards(const LintObject& object, const std::string& folder, LintReport& report);
