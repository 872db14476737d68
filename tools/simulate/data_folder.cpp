#include "tools/simulate/data_folder.h"

#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <system_error>
#include <vector>

#include "core/data_place.h"
#include "core/file_cache.h"
#include "core/version.h"
#include "tools/simulate/fnv_hash.h"

namespace fs = std::filesystem;

namespace {

constexpr char kAutosaves[] = "autosaves";
constexpr std::string_view kOverlay = "brinewhirl-data-";
constexpr std::string_view kPutAside = ".mine";  // what a build keeps of a level maker's file under a shipped name

// Text of the game's own format; empty for any other file.
std::string ReadLevel(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kMaxFileBytes || error) return {};
  std::ifstream file(path, std::ios::binary);
  if (file.peek() != '{') return {};
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// What has a link already keeps it. `split` for a folder that another one has a share in.
void LinkAll(const fs::path& from, const fs::path& into, bool split, std::error_code& error) {
  for (fs::directory_iterator entry(from, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path name = entry->path().filename();
    const fs::path link = into / name;
    if (name == kAutosaves) continue;
    if (split && entry->is_directory() && !entry->is_symlink()) {
      fs::create_directory(link, error);
      if (!error) LinkAll(entry->path(), link, true, error);
    } else if (!fs::exists(fs::symlink_status(link))) {
      fs::create_symlink(entry->path(), link, error);
    }
  }
}

// Those of programs that were killed.
void RemoveLeftOver(const fs::path& place) {
  std::error_code error;
  for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename();
    if (!name.starts_with(kOverlay)) continue;
    const int owner = std::atoi(name.c_str() + kOverlay.size());
    std::error_code ignored;
    if (owner > 0 && ::kill(owner, 0) != 0 && errno == ESRCH) fs::remove_all(entry->path(), ignored);
  }
}

// Goes with the program.
class Overlay {
 public:
  Overlay() = default;
  Overlay(const Overlay&) = delete;
  Overlay& operator=(const Overlay&) = delete;
  ~Overlay() { Remove(); }

  void Remove() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
    path_.clear();
  }

  std::error_code Make() {
    std::error_code error;
    const fs::path place = fs::temp_directory_path(error);
    if (error) return error;
    RemoveLeftOver(place);
    std::string pattern = (place / (std::string(kOverlay) + std::to_string(::getpid()) + "-XXXXXX")).string();
    if (::mkdtemp(pattern.data()) == nullptr) return {errno, std::generic_category()};
    path_ = pattern;
    const fs::path data = fs::current_path(error);
    const std::vector<std::string> places = error ? std::vector<std::string>{} : FindDataFolders(data);
    for (const std::string& from : places)
      if (!error) LinkAll(from, path_, places.size() > 1, error);
    if (!error) fs::create_directory(path_ / kAutosaves, error);
    std::error_code none;  // nothing was saved by itself yet
    if (!error && fs::is_directory(data / kAutosaves, none))
      LinkAll(data / kAutosaves, path_ / kAutosaves, false, error);
    if (!error) fs::current_path(path_, error);
    ForgetOwnData();  // all of it is in here now
    return error;
  }

 private:
  fs::path path_;
};

Overlay& GetOverlay() {
  static Overlay overlay;
  return overlay;
}

}  // namespace

std::string DigestOfData() {
  std::map<std::string, std::string> levels;
  for (const std::string folder : {"", "examples/"})
    for (const std::string& place : FindDataFolders("./" + folder)) {
      std::error_code error;
      for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.find(kPutAside) != std::string::npos) continue;
        if (std::string text = ReadLevel(entry->path()); !text.empty()) levels.emplace(folder + name, std::move(text));
      }
    }
  FnvHash hash;
  for (const auto& [name, text] : levels) {
    hash.Add(name);
    hash.AddValue(text.size());
    hash.Add(text);
  }
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016" PRIX64, hash.Get());
  return digits;
}

void TellOtherData(const std::string& recording, const RecordingHeader& header) {
  const bool otherVersion = header.version != ProgramVersion();
  const bool otherData = header.dataDigest != DigestOfData();
  if (!otherVersion && !otherData) return;
  std::fprintf(stderr, "%s: recorded with %s%s%s; it may go another way\n", recording.c_str(),
               otherVersion ? ("version " + header.version).c_str() : "", otherVersion && otherData ? " and " : "",
               otherData ? "other levels or archetypes" : "");
}

std::string EnterOverlay() {
  const std::error_code error = GetOverlay().Make();
  return error ? error.message() : std::string{};
}

void LeaveOverlay() { GetOverlay().Remove(); }
