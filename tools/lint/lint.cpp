#include "tools/lint/lint.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "core/file_cache.h"
#include "tools/lint/object_rules.h"

namespace {

bool ReadWhole(const std::string& file, std::string& text) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return false;
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream all;
  all << stream.rdbuf();
  text = all.str();
  return stream.good() || stream.eof();
}

bool LintFile(const std::string& file, std::FILE* out) {
  LintReport report(file, out);
  std::string text;
  if (!ReadWhole(file, text) || text.empty()) {
    report.Fault(1, "unreadable", "no such file, or an empty one");
    return false;
  }
  if (text.size() > static_cast<std::size_t>(kMaxFileBytes)) report.Fault(1, "too-large", "at most 16 MiB are read");
  const auto lines = ScanLines(text, report);
  const std::string folder = std::filesystem::path(file).parent_path().string();
  CheckObjects(lines, folder, report);
  return !report.HasFaults();
}

}  // namespace

int LintFiles(const std::vector<std::string>& files, std::FILE* out) {
  bool good = true;
  for (const std::string& file : files) good = LintFile(file, out) && good;
  return good ? 0 : 1;
}
