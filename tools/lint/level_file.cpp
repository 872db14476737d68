#include "tools/lint/level_file.h"

#include <filesystem>
#include <fstream>

// Objects open with their number, one level in; nothing else in a file begins like that.
bool HoldsAnObject(const std::string& folder, std::string_view level) {
  if (level.empty() || level.find('/') != std::string_view::npos || level.front() == '.') return false;
  std::error_code error;
  const auto path = std::filesystem::path(folder) / level;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);)
    if (line.size() > 2 && line[0] == '\t' && line[1] >= '0' && line[1] <= '9' && line.back() == '{') return true;
  return false;
}
