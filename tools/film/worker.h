// A thread that does jobs in their order, so that encoding goes on beside the game.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

class Worker {
 public:
  /// What went wrong, or empty.
  using Job = std::function<std::string()>;

  /// `room` jobs may wait; at least 1.
  explicit Worker(std::size_t room);
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  /// Ends as Finish does.
  ~Worker();

  /// Waits for room and hands the job over. After a failure jobs are dropped.
  void Add(Job job);
  /// What went wrong first, or empty.
  std::string GetError();
  /// Waits for all jobs, then ends the thread. What went wrong first, or empty.
  std::string Finish();

 private:
  void Run();

  const std::size_t room_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  std::string error_;
  bool finishing_ = false;
  std::thread thread_;
};
