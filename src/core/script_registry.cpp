#include "core/script_registry.h"

#include <algorithm>
#include <string>

namespace {

struct Entry {
  std::string name;
  ScriptCreator creator;
};

std::vector<Entry>& Entries() {
  static std::vector<Entry> entries;
  return entries;
}

const Entry* Find(std::string_view name) {
  for (const Entry& entry : Entries())
    if (entry.name == name) return &entry;
  return nullptr;
}

}  // namespace

void RegisterScript(std::string_view name, ScriptCreator creator) {
  auto& entries = Entries();
  std::erase_if(entries, [&](const Entry& entry) { return entry.name == name; });
  entries.push_back({std::string(name), creator});
}

bool IsScriptRegistered(std::string_view name) { return Find(name) != nullptr; }

NewScript CreateScript(std::string_view name) {
  const Entry* entry = Find(name);
  return entry == nullptr ? NewScript{} : entry->creator();
}

std::vector<std::string_view> RegisteredScriptNames() {
  std::vector<std::string_view> names;
  for (const Entry& entry : Entries()) names.emplace_back(entry.name);
  return names;
}
