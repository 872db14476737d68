// What the lines alone do not tell: whether the things of a level work, each on its own, together, and with the files
// that they name.
#pragma once

#include "lint/level_file.h"

/// The level that every match begins with. It is read before anything moves, all others in mid-match.
inline constexpr char kMatchLevel[] = "level1";

struct LintContext {
  const LintLevel& level;
  LevelFolder& folder;
  LintReport& report;
};

/// All of the rules below.
void CheckLevel(const LintContext& context);

/// Names, places, bodies and colliders, and what holds for the list as a whole.
void CheckObjects(const LintContext& context);
/// Solids that touch each other or stand where players start.
void CheckPlacement(const LintContext& context);
void CheckPictures(const LintContext& context);
void CheckGenerators(const LintContext& context);
/// What scripts need beside them.
void CheckScripts(const LintContext& context);
/// The match controller, pieces, spawners, and the object that names a level's duration.
void CheckMatch(const LintContext& context);
