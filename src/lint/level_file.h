// Level and archetype files as lint reads them: past the game's file cache, what lies on the disk now.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lint/lint_object.h"

/// One file. Its parts point into its text, so it stays where it is.
struct LintLevel {
  explicit LintLevel(std::string path) : file(std::move(path)) {}
  LintLevel(const LintLevel&) = delete;
  LintLevel& operator=(const LintLevel&) = delete;

  std::string file;
  std::string text = {};
  std::vector<LintLine> lines = {};
  std::vector<FieldType> types = {};  ///< of each line's value
  std::vector<LintObject> objects = {};

  /// Its name in the game, without folder.
  std::string GetName() const;
  /// The first object that is not the copy of the generator host, which is the one that an archetype makes; or null.
  const LintObject* GetFirst() const;
};

/// Reads the level's file and its blocks and says what is wrong with them; false when there is nothing to read.
bool ReadLevel(LintLevel& level, LintReport& report);
/// The same for a level that has its text already.
void ReadLevelText(LintLevel& level, LintReport& report);

/// The folder in which the game reads the file: its own, but for an autosave or an example the one above.
std::string GameFolderOf(const std::string& file);

/// The levels that others name, each read once and without a word.
class LevelFolder {
 public:
  explicit LevelFolder(std::string folder) : folder_(std::move(folder)) {}

  /// The level or archetype of that name; null when it is missing or holds no object.
  const LintLevel* Find(std::string_view name);
  /// Where a file of the game's folder is.
  std::string PathOf(std::string_view name) const;

 private:
  std::string folder_;
  std::map<std::string, std::unique_ptr<LintLevel>, std::less<>> levels_;
};
