// How a finding names an object.
#pragma once

#include <string>

#include "core/game_object.h"

/// `object 57 "crate"`; cursor and camera have ID 0.
inline std::string NameOf(const GameObject& object) {
  return "object " + std::to_string(object.id) + " \"" + object.name + "\"";
}
