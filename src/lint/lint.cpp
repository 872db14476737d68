#include "lint/lint.h"

#include <cstdlib>
#include <sstream>

#include "lint/level_rules.h"

namespace {

bool LintFile(const std::string& file, std::FILE* out, const std::string& data) {
  LintReport report(file, out);
  LintLevel level(file);
  if (ReadLevel(level, report)) {
    LevelFolder folder(data.empty() ? GameFolderOf(file) : data);
    CheckLevel({level, folder, report});
  }
  return !report.HasFaults();
}

// The lines that `check` prints.
template <class Check>
void Gather(std::vector<std::string>& lines, const std::string& name, const Check& check) {
  char* text = nullptr;
  std::size_t size = 0;
  std::FILE* out = ::open_memstream(&text, &size);
  if (out == nullptr) {
    lines.push_back(name + ": not checked, no memory");
    return;
  }
  check(out);
  std::fclose(out);
  std::istringstream all(std::string(text, size));
  std::free(text);
  for (std::string line; std::getline(all, line);) lines.push_back(line);
}

}  // namespace

int LintFiles(const std::vector<std::string>& files, std::FILE* out) { return LintFiles(files, {}, out); }

int LintFiles(const std::vector<std::string>& files, const std::string& dataFolder, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) good = LintFile(file, out, dataFolder) && good;
  return good ? 0 : 1;
}

std::vector<std::string> LintLines(const std::string& file) {
  std::vector<std::string> lines;
  Gather(lines, file, [&](std::FILE* out) { LintFiles({file}, out); });
  return lines;
}

bool LintLevelText(const std::string& name, std::string text, std::vector<std::string>& lines) {
  bool good = false;
  Gather(lines, name, [&](std::FILE* out) {
    LintReport report(name, out);
    LintLevel level(name);
    level.text = std::move(text);
    ReadLevelText(level, report);
    LevelFolder folder({});
    CheckLevel({level, folder, report});
    good = !report.HasFaults();
  });
  return good;
}
