#include "tools/film/worker.h"

#include <utility>

Worker::Worker(std::size_t room) : room_(room), thread_([this] { Run(); }) {}

Worker::~Worker() { Finish(); }

void Worker::Add(Job job) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return jobs_.size() < room_ || !error_.empty(); });
  if (!error_.empty()) return;
  jobs_.push_back(std::move(job));
  changed_.notify_all();
}

std::string Worker::GetError() {
  const std::lock_guard lock(mutex_);
  return error_;
}

std::string Worker::Finish() {
  {
    const std::lock_guard lock(mutex_);
    finishing_ = true;
    changed_.notify_all();
  }
  if (thread_.joinable()) thread_.join();
  return error_;
}

void Worker::Run() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return !jobs_.empty() || finishing_; });
    if (jobs_.empty()) return;
    const Job job = std::move(jobs_.front());
    jobs_.pop_front();
    changed_.notify_all();
    lock.unlock();
    std::string error = job();
    lock.lock();
    if (error.empty()) continue;
    error_ = std::move(error);
    jobs_.clear();
    changed_.notify_all();
    return;
  }
}
