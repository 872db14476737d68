#include "core/file_cache.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <unordered_map>

#include "core/data_place.h"
#include "core/file_name.h"
#include "core/print.h"

namespace {

struct CachedFile {
  std::string text;
  std::optional<std::filesystem::file_time_type> time;
};

// Texts stand behind pointers, so that views into one survive the table's growth.
std::unordered_map<std::string, std::unique_ptr<const CachedFile>>& Files() {
  static std::unordered_map<std::string, std::unique_ptr<const CachedFile>> files;
  return files;
}

std::unique_ptr<const CachedFile> ReadFile(const std::string& fileName) {
  if (!fileName.empty() && !IsLevelName(fileName)) {
    Print("%s: %s, not read\n", fileName.c_str(), kNoPlainName);
    return nullptr;
  }
  const std::string path = FindData(fileName);
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return nullptr;
  const auto size = std::filesystem::file_size(path, error);
  if (error) return nullptr;
  if (size > kMaxFileBytes) {
    Print("%s: larger than %lld bytes, not read\n", fileName.c_str(), kMaxFileBytes);
    return nullptr;
  }
  const auto time = std::filesystem::last_write_time(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) return nullptr;
  auto read = std::make_unique<CachedFile>(CachedFile{std::string(size, '\0'), time});
  file.read(read->text.data(), static_cast<std::streamsize>(size));
  read->text.resize(static_cast<std::size_t>(file.gcount()));
  return read;
}

}  // namespace

const std::string* ReadCachedFile(const std::string& fileName) {
  auto& files = Files();
  if (const auto found = files.find(fileName); found != files.end()) return &found->second->text;
  auto read = ReadFile(fileName);
  if (!read) return nullptr;
  return &files.emplace(fileName, std::move(read)).first->second->text;
}

bool IsFileCached(const std::string& fileName) { return Files().contains(fileName); }

std::optional<std::filesystem::file_time_type> CachedFileTime(const std::string& fileName) {
  const auto found = Files().find(fileName);
  return found == Files().end() ? std::nullopt : found->second->time;
}

void KeepTextAsFile(const std::string& fileName, const std::string& text) {
  Files()[fileName] = std::make_unique<const CachedFile>(CachedFile{text, {}});
}

void ForgetCachedFile(const std::string& fileName) { Files().erase(fileName); }

std::vector<std::string> CachedFileNames() {
  std::vector<std::string> names;
  for (const auto& [name, file] : Files()) names.push_back(name);
  std::sort(names.begin(), names.end());
  return names;
}

void ClearFileCache() { Files().clear(); }
