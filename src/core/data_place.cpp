#include "core/data_place.h"

#include <SDL.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#include "core/print.h"

namespace {

namespace fs = std::filesystem;

constexpr char kFirstLevel[] = "level1";  // without it no match begins, so it marks the game's data

struct Place {
  std::string user;  // both absolute, without links; empty for a program beside its data
  std::string installed;
};

Place& GetPlace() {
  static Place place;
  return place;
}

bool HoldsData(const fs::path& folder) {
  std::error_code error;
  return fs::is_regular_file(folder / kFirstLevel, error);
}

// By the XDG Base Directory Specification: a relative path does not count.
fs::path UserFolder() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/')
    return fs::path(data) / "brinewhirl";
  if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/')
    return fs::path(home) / ".local/share/brinewhirl";
  return {};
}

std::string ProgramFolder() {
  const std::unique_ptr<char, decltype(&SDL_free)> folder(SDL_GetBasePath(), SDL_free);
  return folder ? folder.get() : ".";
}

Place Locate(const fs::path& program) {
  std::error_code error;
  const fs::path installed = fs::weakly_canonical(program / BRINEWHIRL_DATA_FROM_PROGRAM, error);
  if (error || HoldsData(program) || !HoldsData(installed)) return {};
  return {fs::weakly_canonical(UserFolder(), error).string(), installed.string()};
}

// The installed counterpart of a path into the user's folder, whether it is there or not; empty for any other path.
fs::path StandIn(const std::string& path) {
  const Place& place = GetPlace();
  if (place.user.empty()) return {};
  std::error_code error;
  const fs::path rest = fs::weakly_canonical(fs::absolute(path, error), error).lexically_relative(place.user);
  return rest.empty() || *rest.begin() == ".." ? fs::path{} : fs::path(place.installed) / rest;
}

std::string Enter(const fs::path& folder) {
  std::error_code error;
  fs::current_path(folder, error);
  return error ? folder.string() + ": " + error.message() : std::string{};
}

}  // namespace

std::string EnterOwnData() { return EnterDataOf(ProgramFolder()); }

std::string EnterDataOf(const std::string& folder) {
  Place& place = GetPlace();
  place = Locate(folder);
  if (place.installed.empty()) return Enter(folder);
  std::error_code error;
  std::string why = "there is no home folder";
  if (!place.user.empty()) {
    fs::create_directories(place.user, error);
    why = error ? place.user + ": " + error.message() : Enter(place.user);
    if (why.empty()) return {};
  }
  Print("nothing can be saved, %s\n", why.c_str());
  const std::string installed = place.installed;
  ForgetOwnData();
  return Enter(installed);
}

void LocateOwnData() { GetPlace() = Locate(ProgramFolder()); }
void ForgetOwnData() { GetPlace() = {}; }
const std::string& UserDataFolder() { return GetPlace().user; }

std::string FindData(const std::string& path) {
  std::error_code error;
  if (GetPlace().user.empty() || fs::exists(path, error)) return path;
  const fs::path installed = StandIn(path);
  return !installed.empty() && fs::exists(installed, error) ? installed.string() : path;
}

std::vector<std::string> FindDataFolders(const std::string& folder) {
  std::vector<std::string> found;
  std::error_code error;
  for (const fs::path& place : {fs::path(folder), StandIn(folder)})
    if (!place.empty() && fs::is_directory(place, error)) found.push_back(place.string());
  return found;
}
