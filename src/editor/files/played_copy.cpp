#include "editor/files/played_copy.h"

#include <SDL.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <system_error>
#include <utility>

#include "core/replace_file.h"

namespace fs = std::filesystem;

namespace {

constexpr char kTool[] = "brinewhirl-tool";

// Beside the program; else by name alone, which is looked for where programs are.
std::string ToolPath() {
  const std::unique_ptr<char, decltype(&SDL_free)> own(SDL_GetBasePath(), SDL_free);
  std::error_code error;
  const fs::path beside = fs::path(own ? own.get() : "") / kTool;
  return fs::exists(beside, error) ? beside.string() : kTool;
}

struct FileActions {
  FileActions() { ::posix_spawn_file_actions_init(&actions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions); }
  posix_spawn_file_actions_t actions;
};

}  // namespace

std::string PlayedCopy::Start(const std::string& name, const std::string& text) {
  Stop();
  std::error_code error;
  std::string pattern = (fs::temp_directory_path(error) / "brinewhirl-copy-XXXXXX").string();
  if (error || ::mkdtemp(pattern.data()) == nullptr) return "there is no temporary folder for a copy";
  folder_ = pattern;
  file_ = (fs::path(folder_) / name).string();
  std::string fault = ReplaceFile(file_, text);
  if (fault.empty()) fault = Launch();
  if (!fault.empty()) Stop();
  return fault;
}

std::string PlayedCopy::Launch() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return std::strerror(errno);
  FileActions files;
  ::posix_spawn_file_actions_adddup2(&files.actions, ends[1], STDOUT_FILENO);
  ::posix_spawn_file_actions_addopen(&files.actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::error_code error;
  std::string tool = ToolPath();
  std::string data = fs::current_path(error).string();
  std::array<std::string, 4> words = {"lint", "--play", "--data", data};
  std::array<char*, 7> arguments = {tool.data(),     words[0].data(), words[1].data(), words[2].data(),
                                    words[3].data(), file_.data(),    nullptr};
  const int failed = ::posix_spawnp(&process_, tool.c_str(), &files.actions, nullptr, arguments.data(), environ);
  ::close(ends[1]);
  pipe_ = ends[0];
  if (failed == 0) return {};
  process_ = 0;
  return tool + ": " + std::strerror(failed);
}

std::optional<std::vector<std::string>> PlayedCopy::Poll() {
  if (!IsRunning()) return std::nullopt;
  std::array<char, 4096> piece;
  ssize_t count = 0;
  while ((count = ::read(pipe_, piece.data(), piece.size())) > 0)
    heard_.append(piece.data(), static_cast<std::size_t>(count));
  if (count < 0) return std::nullopt;  // nothing yet
  // It has closed its output, so it is about to end.
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
  process_ = 0;
  ::close(std::exchange(pipe_, -1));
  std::vector<std::string> lines;
  std::istringstream all(std::exchange(heard_, {}));
  for (std::string line; std::getline(all, line);) lines.push_back(line);
  return lines;
}

void PlayedCopy::Stop() {
  if (IsRunning()) {
    ::kill(process_, SIGKILL);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  process_ = 0;
  if (pipe_ >= 0) ::close(std::exchange(pipe_, -1));
  heard_.clear();
  std::error_code error;
  if (!folder_.empty()) fs::remove_all(folder_, error);
  folder_.clear();
  file_.clear();
}
