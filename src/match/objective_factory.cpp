#include "match/objective_factory.h"

namespace {

struct ObjectiveType {
  const char* name;
  const char* title;
  int seconds;
  std::unique_ptr<Objective> (*create)(const char* title, int seconds);
};

template <class T>
std::unique_ptr<Objective> Create(const char* title, int seconds) {
  return std::make_unique<T>(title, seconds);
}

// Every rule that a level may name.
constexpr ObjectiveType kTypes[] = {
    {"NULL", "", 10, Create<NullObjective>},
};

}  // namespace

std::unique_ptr<Objective> CreateObjective(std::string_view typeName) {
  for (const ObjectiveType& type : kTypes) {
    if (typeName != type.name) continue;
    auto objective = type.create(type.title, type.seconds);
    objective->typeName = type.name;
    return objective;
  }
  return nullptr;
}
