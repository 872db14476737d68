#include "tools/film/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {
constexpr std::chrono::milliseconds kPause(200);  // between two lines
constexpr char kClear[] = "\r\033[K";
}  // namespace

Progress::Progress(int total) : total_(total) {}

void Progress::End() {
  if (shown_) std::fputs(kClear, stderr);
  shown_ = false;
}

bool Progress::IsSeen() { return ::isatty(STDERR_FILENO) != 0; }

void Progress::Show(int frames) {
  const Clock::time_point now = Clock::now();
  if (!IsSeen() || now < next_) return;
  next_ = now + kPause;
  shown_ = true;
  if (total_ < 1) {
    std::fprintf(stderr, "%sframe %d", kClear, frames);
    return;
  }
  const double share = std::min(1.0, static_cast<double>(frames) / total_);
  const double passed = std::chrono::duration<double>(now - start_).count();
  const int left = share > 0.0 ? static_cast<int>(std::ceil(passed * (1.0 - share) / share)) : 0;
  std::fprintf(stderr, "%sframe %d of %d, %.0f %%, %d:%02d left", kClear, frames, total_, 100.0 * share, left / 60,
               left % 60);
}
