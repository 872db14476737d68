#include "lint/lint.h"

#include <cstdlib>
#include <sstream>

#include "lint/level_rules.h"

namespace {

bool LintFile(const std::string& file, std::FILE* out) {
  LintReport report(file, out);
  LintLevel level(file);
  if (ReadLevel(level, report)) {
    LevelFolder folder(GameFolderOf(file));
    CheckLevel({level, folder, report});
  }
  return !report.HasFaults();
}

}  // namespace

int LintFiles(const std::vector<std::string>& files, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) good = LintFile(file, out) && good;
  return good ? 0 : 1;
}

std::vector<std::string> LintLines(const std::string& file) {
  char* text = nullptr;
  std::size_t size = 0;
  std::FILE* out = ::open_memstream(&text, &size);
  if (out == nullptr) return {file + ": not checked, no memory"};
  LintFiles({file}, out);
  std::fclose(out);
  std::istringstream all(std::string(text, size));
  std::free(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(all, line);) lines.push_back(line);
  return lines;
}
