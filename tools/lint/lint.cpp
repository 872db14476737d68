#include "tools/lint/lint.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "core/replace_file.h"
#include "tools/lint/canonical.h"
#include "tools/lint/level_rules.h"

namespace {

namespace fs = std::filesystem;

bool LintFile(const std::string& file, std::FILE* out) {
  LintReport report(file, out);
  LintLevel level(file);
  if (ReadLevel(level, report)) {
    LevelFolder folder(GameFolderOf(file));
    CheckLevel({level, folder, report});
  }
  return !report.HasFaults();
}

// The file that a link leads to is replaced, not the link, and keeps who may do what with it.
std::string Replace(const std::string& file, const std::string& text) {
  std::error_code error;
  const fs::path target = fs::canonical(file, error);
  if (error) return error.message();
  const auto status = fs::status(target, error);
  std::string reason = ReplaceFile(target.string(), text);
  if (reason.empty() && !error) fs::permissions(target, status.permissions(), error);
  return reason;
}

// False when the file stays as it is though it should not.
bool FixFile(const std::string& file, std::FILE* out) {
  LintReport quiet(file, nullptr);
  LintLevel level(file);
  if (!ReadLevel(level, quiet) || quiet.IsUnreadable()) {
    std::fprintf(out, "%s: left as it is: what its lines mean cannot be told, see below\n", file.c_str());
    return false;
  }
  const std::string text = CanonicalText(level.lines, level.types, CanonicalIds::kNumbered);
  if (text == level.text) return true;
  const std::string reason = Replace(file, text);
  if (reason.empty())
    std::fprintf(out, "%s: written anew\n", file.c_str());
  else
    std::fprintf(out, "%s: left as it is: cannot be written: %s\n", file.c_str(), reason.c_str());
  return reason.empty();
}

}  // namespace

int LintFiles(const std::vector<std::string>& files, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) good = LintFile(file, out) && good;
  return good ? 0 : 1;
}

int FixFiles(const std::vector<std::string>& files, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) {
    const bool fixed = FixFile(file, out);
    good = LintFile(file, out) && fixed && good;
  }
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
