// Scripts by the names that level files use. The whole table is entered in one place before the first level is read;
// afterwards it is only looked up.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "core/script.h"

/// A script fresh from the registry. Most are the caller's to own; a force generator belongs to its host from its first
/// moment and is only lent.
struct NewScript {
  std::unique_ptr<Script> owned;
  Script* script = nullptr;  ///< owned.get(), or a script that lives elsewhere; null when the name is unknown
};

using ScriptCreator = NewScript (*)();

/// Makes a T with default values, owned by the caller.
template <class T>
NewScript CreateOwned() {
  auto script = std::make_unique<T>();
  Script* raw = script.get();
  return {std::move(script), raw};
}

/// Enters a creator. A name entered again gets the new creator and moves to the end of the order.
void RegisterScript(std::string_view name, ScriptCreator creator);

bool IsScriptRegistered(std::string_view name);

/// A new script with default values, without an owner; an unknown name gives none and no message.
NewScript CreateScript(std::string_view name);

/// Every name in the order of registration.
std::vector<std::string_view> RegisteredScriptNames();
