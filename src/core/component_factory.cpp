#include "core/component_factory.h"

#include <algorithm>
#include <vector>

namespace {
std::vector<ComponentType>& Types() {
  static std::vector<ComponentType> types;
  return types;
}
}  // namespace

void RegisterComponentType(const ComponentType& type) {
  auto& types = Types();
  const auto same = [&](const ComponentType& other) { return other.textName == type.textName; };
  if (const auto found = std::find_if(types.begin(), types.end(), same); found != types.end())
    *found = type;
  else
    types.push_back(type);
}

const ComponentType* FindComponentType(std::string_view textName) {
  for (const ComponentType& type : Types())
    if (type.textName == textName) return &type;
  return nullptr;
}
