// What the property bar shows of an object.
#pragma once

#include "core/field_bar.h"
#include "core/game_object.h"

/// Adds name, Core flag and the groups of all components, in kind order.
void AddObjectFields(FieldBar& bar, GameObject& object);
