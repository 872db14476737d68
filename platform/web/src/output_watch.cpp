// Without threads a look is over before it is asked after; the browser's device opens at once.
#include "audio/studio/output_watch.h"

#include <utility>

namespace Studio {

namespace {
constexpr int kUpdatesBetween = 120;  // 2 s
}

OutputWatch::OutputWatch(OutputOpener opener) : opener_(std::move(opener)) {}
OutputWatch::~OutputWatch() = default;

std::unique_ptr<Output> OutputWatch::Poll() {
  if (--updatesToNext_ > 0) return nullptr;
  updatesToNext_ = kUpdatesBetween;
  return opener_ ? opener_() : nullptr;
}

}  // namespace Studio
