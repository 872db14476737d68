#include "editor/files/level_files.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "core/data_place.h"
#include "core/file_cache.h"
#include "core/file_name.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/serializer.h"
#include "editor/acts/copies.h"
#include "editor/acts/without_bases.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr char kAutosaveFolder[] = "autosaves";

bool IsNamedPlainly(const std::string& name) {
  if (IsPlainName(name)) return true;
  Print("%s: %s, not written\n", name.c_str(), kNoPlainName);
  return false;
}

std::string DurationName(float duration) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%f", static_cast<double>(duration));
  return digits;
}

// A level that is saved again and again does not list its springs once more each time.
bool Save(const std::string& name) {
  const WithoutBases bare;
  if (!IsLevelOrNothing(name) || !Objects().SaveLevel(name)) return false;
  Print("saved the level as %s in %s\n", name.c_str(), SaveFolder().c_str());
  return true;
}

bool IsNumber(const std::string& text, float& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc{} && result.ptr == text.data() + text.size() && std::isfinite(number);
}

}  // namespace

std::string SaveFolder() {
  std::error_code error;
  return UserDataFolder().empty() ? std::filesystem::current_path(error).string() : UserDataFolder();
}

// A slip of the keyboard must not cost somebody the program or a picture.
bool IsLevelOrNothing(const std::string& name) {
  std::error_code error;
  const std::string present = FindData(name);
  const auto status = std::filesystem::status(present, error);
  if (!std::filesystem::exists(status)) return true;
  if (std::filesystem::is_regular_file(status)) {
    std::ifstream file(present, std::ios::binary);
    const int first = file.get();
    if (first == '{' || first == std::ifstream::traits_type::eof()) return true;
  }
  Print("%s: is no level or archetype, not written over\n", name.c_str());
  return false;
}

std::string TextWithDuration(float duration) { return SceneText(DurationName(duration)); }

bool SaveLevelWithAutosave(const std::string& name, float duration, int& autosave) {
  if (!IsNamedPlainly(name)) return false;
  Objects().RemoveDeadObjects();
  GameObject& last = *Objects().GetObject(Objects().CreateObject());
  last.name = DurationName(duration);
  const bool saved = Save(name);
  std::error_code error;
  std::filesystem::create_directories(kAutosaveFolder, error);
  Save(std::string(kAutosaveFolder) + "/autosave-" + std::to_string(autosave++) + "-" + name);
  last.alive = false;
  if (saved) ForgetCachedFile(name);
  return saved;
}

std::vector<std::uint32_t> LoadLevelFile(const std::string& name, float& duration) {
  for (const auto& object : Objects().GetObjects())
    if (!object->core) object->alive = false;
  ForgetCachedFile(name);
  const std::vector<GameObject*> created = Objects().LoadLevel(name);
  std::vector<std::uint32_t> ids;
  for (const GameObject* object : created) ids.push_back(object->id);
  if (created.empty()) {
    Print(IsFileCached(name) ? "%s is an empty level: the stage is empty now\n" : "%s: nothing loaded\n", name.c_str());
    return ids;
  }
  Print("loaded %zu objects from %s\n", created.size(), name.c_str());
  float seconds = 0.0f;
  if (!IsNumber(created.back()->name, seconds)) return ids;
  duration = seconds;
  created.back()->alive = false;
  for (const GameObject* object : created)
    if (DeathTimer* timer = FindDeathTimer(*object)) timer->endTime = seconds;
  return ids;
}

bool SaveArchetype(const std::string& name, GameObject& object) {
  if (name.empty()) Print("no archetype name, nothing is saved\n");
  if (name.empty() || !IsNamedPlainly(name) || !IsLevelOrNothing(name)) return false;
  Serializer writer;
  writer.OpenForWrite(name);
  writer.BeginBlock(object.id);
  object.Serialize(writer);
  writer.EndBlock();
  if (!writer.Close()) return false;
  ForgetCachedFile(name);
  Print("saved %s as the archetype %s in %s\n", object.name.c_str(), name.c_str(), SaveFolder().c_str());
  return true;
}
