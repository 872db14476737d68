#include "tools/record/kept_matches.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr char kFolder[] = "matches";
constexpr char kEnding[] = ".input";
constexpr std::string_view kLastWord = " end\n";

// Oldest first, since their names begin with the time.
std::vector<fs::path> FindRecordings(const std::string& folder) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    if (entry->path().extension() == kEnding) found.push_back(entry->path());
  std::sort(found.begin(), found.end());
  return found;
}

bool IsBeingWritten(const fs::path& file) {
  const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (opened < 0) return false;
  const bool locked = ::flock(opened, LOCK_SH | LOCK_NB) != 0;
  ::close(opened);
  return locked;
}

bool HasEnd(const fs::path& file) {
  std::ifstream text(file, std::ios::binary);
  std::string last(kLastWord.size(), '\0');
  text.seekg(-static_cast<std::streamoff>(last.size()), std::ios::end);
  text.read(last.data(), static_cast<std::streamsize>(last.size()));
  return text && last == kLastWord;
}

}  // namespace

KeptMatches::KeptMatches(int most) : most_(most) {
  std::error_code error;
  folder_ = fs::absolute(kFolder, error).string();
}

std::string KeptMatches::FindInterrupted() const {
  const std::vector<fs::path> found = FindRecordings(folder_);
  if (found.empty() || HasEnd(found.back()) || IsBeingWritten(found.back())) return {};
  return found.back();
}

void KeptMatches::RemoveOldest() const {
  const std::vector<fs::path> found = FindRecordings(folder_);
  const auto tooMany = static_cast<std::ptrdiff_t>(found.size()) - most_;
  std::error_code ignored;
  for (std::ptrdiff_t i = 0; i < tooMany; ++i)
    if (const fs::path& old = found[static_cast<std::size_t>(i)]; !IsBeingWritten(old)) fs::remove(old, ignored);
}

std::string KeptMatches::NextName() const {
  std::error_code error;
  if (!folder_.empty()) fs::create_directories(folder_, error);
  if (folder_.empty() || error) return {};
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  char stamp[32];
  std::strftime(stamp, sizeof stamp, "%Y-%m-%d-%H%M%S", ::localtime_r(&now, &local));
  fs::path file = fs::path(folder_) / (std::string(stamp) + kEnding);
  for (int i = 2; fs::exists(file, error); ++i)
    file = fs::path(folder_) / (std::string(stamp) + "-" + std::to_string(i) + kEnding);
  return file;
}
