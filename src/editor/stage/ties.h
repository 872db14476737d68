// What the selected objects are tied to, as lines over the picture: the anchors of their springs and what hangs on
// them, the target of a puller, whom a follower follows, and where and how a spawner sends what.
#pragma once

#include <vector>

#include "editor/stage/outlines.h"

void DrawTies(const StageView& view, std::vector<StageLine>& lines);
