#include "tools/simulate/scene_file.h"

#include <charconv>
#include <string_view>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "editor/files/level_files.h"
#include "match/match_controller.h"
#include "match/score/give_points.h"

namespace {

// What a save calls whatever has no name, and what sounds like a fish when it is hit.
constexpr std::string_view kNameless = "Nameless";
constexpr char kUnnamed[] = "unnamed";

bool IsNumber(const std::string& name) {
  float number = 0.0f;
  const char* end = name.data() + name.size();
  return std::from_chars(name.data(), end, number).ptr == end && !name.empty();
}

bool WouldComeBack(const GameObject& object) {
  if (!object.alive || object.name == kMatchController || IsNumber(object.name)) return false;
  const auto* prize = object.Get<GivePoints>();
  if (prize != nullptr && prize->IsBroken()) return false;
  const auto* scripts = object.Get<ScriptBox>();
  return scripts == nullptr || scripts->GetScript("ShadowGrowth") == nullptr;
}

}  // namespace

bool SaveScene(const std::string& path) {
  if (!IsLevelOrNothing(path)) return false;
  for (const auto& object : Objects().GetObjects()) {
    if (object->name.empty() || object->name == kNameless) object->name = kUnnamed;
    if (!WouldComeBack(*object)) object->core = true;  // which no level keeps
  }
  return Objects().SaveLevel(path);
}
