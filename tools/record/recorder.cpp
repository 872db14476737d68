#include "tools/record/recorder.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "core/print.h"
#include "core/version.h"
#include "tools/simulate/data_folder.h"

namespace {

constexpr mode_t kNewFileMode = 0644;
constexpr std::chrono::milliseconds kFlushEvery{750};  // a frame that takes long included, a second
constexpr std::array kCaught = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGHUP, SIGQUIT};

// What the handler finds; null while nothing is recorded.
Recorder* active = nullptr;

// The stack of the program may be what is broken.
alignas(16) std::array<char, 65536> signalStack;

void SetHandlers(void (*handler)(int)) {
  const stack_t stack = {signalStack.data(), 0, signalStack.size()};
  ::sigaltstack(&stack, nullptr);
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
  for (const int signal : kCaught) ::sigaction(signal, &action, nullptr);
}

}  // namespace

Recorder::~Recorder() { Close(); }

std::string Recorder::Open(const std::string& fileName) {
  file_ = ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
  if (file_ < 0) return std::strerror(errno);
  ::flock(file_, LOCK_EX | LOCK_NB);  // tells others that somebody still writes
  fileName_ = fileName;
  length_ = reachedLength_ = 0;
  written_ = 0;
  flushed_ = Clock::now();
  active = this;
  SetHandlers(HandleSignal);
  Append("# What a run of Brinewhirl was given; brinewhirl-tool watch, simulate and film play it again.\n");
  Append(std::string("version ") + ProgramVersion() + "\ndata " + DigestOfData() + "\nstart boot\n");
  Flush();
  return {};
}

// Calls nothing but what a signal handler may.
void Recorder::HandleSignal(int signal) {
  const Recorder* recorder = active;
  if (recorder != nullptr && recorder->file_ >= 0) {
    if (::write(recorder->file_, recorder->buffer_.data(), recorder->length_) >= 0)
      (void)!::write(recorder->file_, recorder->reached_.data(), recorder->reachedLength_);
  }
  ::raise(signal);  // the handler is gone by now
}

void Recorder::Write(int frame, const InputEvent& event) {
  if (file_ >= 0) Append(FormatInputLine(frame, event) + '\n');
}

void Recorder::Append(std::string_view line) {
  if (length_ + line.size() > kBuffer) Flush();
  if (file_ < 0 || line.size() > kBuffer) return;
  std::memcpy(buffer_.data() + length_, line.data(), line.size());
  length_ += line.size();
}

void Recorder::BeginFrame(int frame) {
  if (file_ < 0) return;
  const std::string line = FormatInputLine(frame + 1, Given::Mark{false}) + '\n';
  std::memcpy(reached_.data(), line.data(), line.size());
  reachedLength_ = line.size();
  const Clock::time_point now = Clock::now();
  if (now - flushed_ < kFlushEvery) return;
  flushed_ = now;
  Write(frame, Given::Mark{false});
  Flush();
}

// A line that did not find room is taken off again.
void Recorder::Flush() {
  if (file_ < 0) return;
  std::size_t done = 0;
  while (done < length_) {
    const ssize_t written = ::write(file_, buffer_.data() + done, length_ - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    done += static_cast<std::size_t>(written);
  }
  if (done == length_) {
    written_ += static_cast<long long>(length_);
    length_ = 0;
    return;
  }
  Print("%s: the recording ends here: %s\n", fileName_.c_str(), std::strerror(errno));
  (void)!::ftruncate(file_, written_);
  Close();
}

void Recorder::Finish(int frames) {
  Write(frames, Given::Mark{true});
  Flush();
  Close();
}

void Recorder::Close() {
  if (active == this) {
    SetHandlers(SIG_DFL);
    active = nullptr;
  }
  if (file_ >= 0) ::close(file_);
  file_ = -1;
}
