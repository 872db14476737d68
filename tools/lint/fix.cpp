#include "tools/lint/fix.h"

#include <filesystem>
#include <system_error>

#include "core/replace_file.h"
#include "lint/canonical.h"
#include "lint/level_file.h"
#include "lint/lint.h"

namespace {

namespace fs = std::filesystem;

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

int FixFiles(const std::vector<std::string>& files, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) {
    const bool fixed = FixFile(file, out);
    good = LintFiles({file}, out) == 0 && fixed && good;
  }
  return good ? 0 : 1;
}
