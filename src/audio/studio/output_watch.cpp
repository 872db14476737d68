#include "audio/studio/output_watch.h"

#include <chrono>
#include <utility>

namespace Studio {

namespace {
constexpr int kUpdatesBetween = 120;  // 2 s
}

OutputWatch::OutputWatch(OutputOpener opener) : opener_(std::move(opener)) {
  Output::SilenceLibraries();
  BeginToLook();
}

void OutputWatch::BeginToLook() {
  if (!opener_) return;
  found_ = std::async(std::launch::async, opener_);
  updatesToNext_ = kUpdatesBetween;
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
