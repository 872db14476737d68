#include "tools/film/run_length.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "tools/simulate/data_folder.h"

namespace {

// What the run prints is printed by the run that is seen.
[[noreturn]] void RunAndTell(const RunOptions& options, const InputScript& input, int pipe) {
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0 || ::dup2(nowhere, STDOUT_FILENO) < 0 || ::dup2(nowhere, STDERR_FILENO) < 0) ::_exit(1);
  // What it saves must not be there for the run that is seen.
  if (!EnterOverlay().empty()) ::_exit(1);
  GameRun run(options, input, stdout, nullptr);
  run.Start(Audio::Output::kNone);
  RunObserver nobody;
  const int result = run.Go(nobody);
  const int frames = run.GetFrames();
  LeaveOverlay();
  const bool told = ::write(pipe, &frames, sizeof frames) == sizeof frames;
  ::_exit(result == 0 && told ? 0 : 1);
}

}  // namespace

int MeasureRunLength(const RunOptions& options, const InputScript& input) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return 0;
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == 0) RunAndTell(options, input, ends[1]);
  ::close(ends[1]);
  int frames = 0;
  if (child < 0 || ::read(ends[0], &frames, sizeof frames) != sizeof frames) frames = 0;
  ::close(ends[0]);
  while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return frames;
}
