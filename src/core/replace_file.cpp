#include "core/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

constexpr mode_t kNewFileMode = 0644;

bool WriteAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// A rename before the content is on the disk could leave an empty file after a power cut.
bool WriteSynced(const std::string& fileName, std::string_view text) {
  const int file = ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kNewFileMode);
  if (file < 0) return false;
  const bool whole = WriteAll(file, text) && ::fsync(file) == 0;
  const int error = errno;
  const bool closed = ::close(file) == 0;
  if (!whole) errno = error;
  return whole && closed;
}

}  // namespace

std::string TemporaryOf(const std::string& fileName) { return fileName + ".tmp"; }

std::string ReplaceFile(const std::string& fileName, std::string_view text) {
  const std::string temporary = TemporaryOf(fileName);
  if (WriteSynced(temporary, text) && std::rename(temporary.c_str(), fileName.c_str()) == 0) return {};
  std::string reason = std::strerror(errno);
  ::unlink(temporary.c_str());
  return reason;
}
