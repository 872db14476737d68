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

// Texts stand behind pointers, so that views into one survive the table's growth.
std::unordered_map<std::string, std::unique_ptr<const std::string>>& Texts() {
  static std::unordered_map<std::string, std::unique_ptr<const std::string>> texts;
  return texts;
}

std::unique_ptr<const std::string> ReadFile(const std::string& fileName) {
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
  std::ifstream file(path, std::ios::binary);
  if (!file) return nullptr;
  auto text = std::make_unique<std::string>(size, '\0');
  file.read(text->data(), static_cast<std::streamsize>(size));
  text->resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

}  // namespace

const std::string* ReadCachedFile(const std::string& fileName) {
  auto& texts = Texts();
  if (const auto found = texts.find(fileName); found != texts.end()) return found->second.get();
  auto text = ReadFile(fileName);
  if (!text) return nullptr;
  return texts.emplace(fileName, std::move(text)).first->second.get();
}

bool IsFileCached(const std::string& fileName) { return Texts().contains(fileName); }
void KeepTextAsFile(const std::string& fileName, const std::string& text) {
  Texts()[fileName] = std::make_unique<const std::string>(text);
}

void ForgetCachedFile(const std::string& fileName) { Texts().erase(fileName); }

std::vector<std::string> CachedFileNames() {
  std::vector<std::string> names;
  for (const auto& [name, text] : Texts()) names.push_back(name);
  std::sort(names.begin(), names.end());
  return names;
}

void ClearFileCache() { Texts().clear(); }
