// The objects that the buttons of the tools bar make, in the middle of the stage.
#pragma once

#include <string_view>
#include <vector>

#include "core/game_object.h"

struct TestObject {
  std::string_view label;  ///< of the button
  GameObject* (*make)();   ///< adds the object to the scene
};

/// In the order of the buttons.
const std::vector<TestObject>& TestObjects();
