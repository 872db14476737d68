#include "tools/film/encoder_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

extern char** environ;

namespace {

// What the program finds when it starts: our pipe, nothing to say on standard output, and signals as usual.
class SpawnPlan {
 public:
  explicit SpawnPlan(int input) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_init(&attributes_);
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes_, &usual);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  int Spawn(pid_t* process, std::vector<char*>& words) const {
    return posix_spawnp(process, words[0], &actions_, &attributes_, words.data(), environ);
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

}  // namespace

EncoderProcess::~EncoderProcess() {
  Kill();
  Finish();
}

std::string EncoderProcess::Start(const std::vector<std::string>& words) {
  std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return std::strerror(errno);
  pipe_ = ends[1];
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const int failure = SpawnPlan(ends[0]).Spawn(&process_, arguments);
  ::close(ends[0]);
  if (failure == 0) return {};
  process_ = 0;
  if (failure == ENOENT) return "needs the program " + words[0] + ", which is not installed";
  return words[0] + " cannot be started: " + std::strerror(failure);
}

std::string EncoderProcess::Write(const void* data, std::size_t size) {
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(pipe_, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0)
      return errno == EPIPE ? "the encoder ended before the film did"
                            : std::string("the encoder takes nothing more: ") + std::strerror(errno);
    next += written;
    size -= static_cast<std::size_t>(written);
  }
  return {};
}

void EncoderProcess::Kill() {
  if (process_ != 0) ::kill(process_, SIGKILL);
}

std::string EncoderProcess::Finish() {
  if (pipe_ != kNone) ::close(pipe_);
  pipe_ = kNone;
  if (process_ == 0) return {};
  int status = 0;
  while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = 0;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  if (WIFEXITED(status)) return "the encoder failed with exit code " + std::to_string(WEXITSTATUS(status));
  return "the encoder was ended by signal " + std::to_string(WTERMSIG(status));
}
