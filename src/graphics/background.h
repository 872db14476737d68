// The picture behind everything: an object in no list, drawn first in every frame and never updated.
#pragma once

#include <string>

#include "core/game_object.h"

/// The background object; made on first use, 50 x 50 units at depth -5, which just covers the view there.
GameObject& GetBackground();

/// What it shows.
const std::string& GetBackgroundPicture();
/// Shows another picture from Texture/, which must be loaded already.
void SetBackgroundPicture(const std::string& textureName);
