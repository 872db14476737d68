// What an output owns, wherever it was opened.
#include <utility>

#include "audio/studio/output.h"

namespace Studio {

Output::Output(ALCdevice* device, ALCcontext* context, bool loopback)
    : device_(device), context_(context), loopback_(loopback) {}

Output::Output(Output&& other) noexcept
    : device_(std::exchange(other.device_, nullptr)),
      context_(std::exchange(other.context_, nullptr)),
      loopback_(other.loopback_) {}

Output::~Output() {
  if (device_ == nullptr) return;
  if (alcGetCurrentContext() == context_) alcMakeContextCurrent(nullptr);
  alcDestroyContext(context_);
  alcCloseDevice(device_);
}

}  // namespace Studio
