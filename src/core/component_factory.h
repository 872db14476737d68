// The components that files may name. Higher floors enter theirs once, before the first level is read.
#pragma once

#include <memory>
#include <string_view>

#include "core/component.h"

struct ComponentType {
  std::string_view textName;  ///< as written in files; must outlive the program's use of it
  Kind kind;
  std::unique_ptr<Component> (*create)();
};

/// Enters a type; a type of the same name is replaced.
void RegisterComponentType(const ComponentType& type);

/// The type of that exact name, or null.
const ComponentType* FindComponentType(std::string_view textName);
