#include "audio/studio/output_watch.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace Studio {

namespace {
constexpr int kUpdatesBetween = 120;  // 2 s
constexpr std::chrono::milliseconds kLongestFarewell{500};
}  // namespace

OutputWatch::OutputWatch(OutputOpener opener) : opener_(std::move(opener)) { BeginToLook(); }

// A sound server that hangs can keep its caller for minutes: the end of the game must not wait for that.
OutputWatch::~OutputWatch() {
  if (found_.valid()) found_.wait_for(kLongestFarewell);
}

void OutputWatch::BeginToLook() {
  if (!opener_) return;
  std::promise<std::unique_ptr<Output>> promise;
  found_ = promise.get_future();
  updatesToNext_ = kUpdatesBetween;
  try {
    // Detached, because the future of std::async would wait for its thread. What comes too late goes with the promise.
    std::thread([opener = opener_, promise = std::move(promise)]() mutable { promise.set_value(opener()); }).detach();
  } catch (const std::system_error&) {
    found_ = {};  // no thread to be had; the next look is in two seconds
  }
}

std::unique_ptr<Output> OutputWatch::Poll() {
  if (found_.valid()) {
    if (found_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return nullptr;
    return found_.get();
  }
  if (--updatesToNext_ <= 0) BeginToLook();
  return nullptr;
}

}  // namespace Studio
