#include "tools/lint/lint.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "core/file_cache.h"
#include "tools/lint/object_rules.h"

namespace {

// Past the file cache: what lies on the disk now.
bool ReadWhole(const std::string& file, std::string& text, LintReport& report) {
  std::error_code error;
  const bool regular = std::filesystem::is_regular_file(file, error);
  const auto size = regular ? std::filesystem::file_size(file, error) : 0;
  if (!regular || error || size == 0) {
    report.Fault(1, "unreadable", "no such file, or an empty one: name a level that is there");
    return false;
  }
  if (size > static_cast<std::uintmax_t>(kMaxFileBytes)) {
    report.Fault(1, "too-large", "the game reads at most 16 MiB: split the file");
    return false;
  }
  std::ifstream stream(file, std::ios::binary);
  text.resize(static_cast<std::size_t>(size));
  if (stream.read(text.data(), static_cast<std::streamsize>(size))) return true;
  report.Fault(1, "unreadable", "the file cannot be read: check who may read it");
  return false;
}

bool LintFile(const std::string& file, std::FILE* out) {
  LintReport report(file, out);
  std::string text;
  if (!ReadWhole(file, text, report)) return false;
  const auto lines = ScanLines(text, report);
  CheckObjects(lines, file, report);
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
