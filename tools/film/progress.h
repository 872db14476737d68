// A line that tells how far a run is, rewritten in place while standard error is a terminal; otherwise nothing.
#pragma once

#include <chrono>

class Progress {
 public:
  /// Of `total` frames; below 1 when nobody knows how many there are.
  explicit Progress(int total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { End(); }
  /// Takes the line away.
  void End();

  static bool IsSeen();
  void Show(int frames);

 private:
  using Clock = std::chrono::steady_clock;

  int total_;
  bool shown_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point next_ = start_;
};
