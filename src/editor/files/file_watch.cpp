#include "editor/files/file_watch.h"

#include <filesystem>
#include <system_error>

#include "core/data_place.h"
#include "core/file_cache.h"

void FileWatch::Update() {
  if (waited_++ % kPeriod == 0) Look();
}

void FileWatch::Look() {
  changed_.clear();
  for (const std::string& name : CachedFileNames()) {
    const auto read = CachedFileTime(name);
    std::error_code error;
    const auto now = std::filesystem::last_write_time(FindData(name), error);
    if (read && !error && now != *read) changed_.push_back(name);
  }
}
