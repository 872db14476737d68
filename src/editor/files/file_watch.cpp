#include "editor/files/file_watch.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "core/data_place.h"
#include "core/file_cache.h"

namespace {

std::optional<std::filesystem::file_time_type> TimeOf(const std::string& name) {
  std::error_code error;
  const auto time = std::filesystem::last_write_time(FindData(name), error);
  return error ? std::nullopt : std::optional(time);
}

}  // namespace

void FileWatch::Update() {
  if (waited_++ % kPeriod == 0) Look();
}

// A file is known from the first look after it was read: what happened to it in the second before is not seen.
void FileWatch::Look() {
  changed_.clear();
  for (const std::string& name : CachedFileNames()) {
    const auto time = TimeOf(name);
    if (!time) continue;
    const auto known = known_.emplace(name, *time).first;
    if (known->second != *time) changed_.push_back(name);
  }
}

void FileWatch::Accept(const std::string& name) {
  known_.erase(name);
  std::erase(changed_, name);
  if (const auto time = TimeOf(name)) known_.emplace(name, *time);
}
