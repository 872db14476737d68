// Where a level's archetypes and pictures are.
#pragma once

#include <filesystem>
#include <string>

/// The folder in which the game reads the file: its own, but for an autosave or an example the one above.
inline std::string GameFolderOf(const std::string& file) {
  const auto folder = std::filesystem::path(file).parent_path();
  return (folder.filename() == "autosaves" || folder.filename() == "examples" ? folder.parent_path() : folder).string();
}
