// The browser's sound: one device, always there, silent until somebody clicks or presses a key, as browsers ask.
#include "audio/studio/output.h"

#include <AL/alc.h>

namespace Studio {

void Output::SilenceLibraries() {}

std::unique_ptr<Output> Output::OpenDevice() {
  constexpr ALCint kAttributes[] = {ALC_FREQUENCY, kOutputRate, 0};
  ALCdevice* device = alcOpenDevice(nullptr);
  if (device == nullptr) return nullptr;
  ALCcontext* context = alcCreateContext(device, kAttributes);
  if (context == nullptr) {
    alcCloseDevice(device);
    return nullptr;
  }
  return std::unique_ptr<Output>(new Output(device, context, false));
}

std::unique_ptr<Output> Output::OpenLoopback() { return nullptr; }

void Output::MakeCurrent() const { alcMakeContextCurrent(context_); }
bool Output::IsConnected() const { return true; }
bool Output::Render(std::span<std::int16_t> /*stereo*/) const { return false; }

}  // namespace Studio
