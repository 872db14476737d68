// Where the selected objects are in the picture.
#pragma once

#include <vector>

#include "core/game_object.h"
#include "editor/bars/bar_view.h"

/// The object's collider, or its picture if it has none, as a line in pixels of a window of that size.
Outline OutlineOf(const GameObject& object, int windowWidth, int windowHeight);
