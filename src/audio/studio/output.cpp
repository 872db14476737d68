#include "audio/studio/output.h"

#define AL_ALEXT_PROTOTYPES
#include <AL/alc.h>
#include <AL/alext.h>
#include <alsa/asoundlib.h>

#include <cstdlib>

namespace Studio {

namespace {

void IgnoreMessage(const char*, int, const char*, int, const char*, ...) {}

// Head-related filters would colour a mix that is made for two speakers.
constexpr ALCint kDeviceAttributes[] = {ALC_FREQUENCY, kOutputRate, ALC_HRTF_SOFT, ALC_FALSE, 0};
// The limiter, which a device of 16 bits has by itself, keeps several loud sounds at once from being clipped.
constexpr ALCint kLoopbackAttributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                                          ALC_STEREO_SOFT,
                                          ALC_FORMAT_TYPE_SOFT,
                                          ALC_SHORT_SOFT,
                                          ALC_FREQUENCY,
                                          kOutputRate,
                                          ALC_HRTF_SOFT,
                                          ALC_FALSE,
                                          ALC_OUTPUT_LIMITER_SOFT,
                                          ALC_TRUE,
                                          0};

ALCcontext* CreateContext(ALCdevice* device, const ALCint* attributes) {
  if (device == nullptr) return nullptr;
  ALCcontext* context = alcCreateContext(device, attributes);
  if (context == nullptr) alcCloseDevice(device);
  return context;
}

}  // namespace

// Without a device both libraries write ten lines to standard error at every attempt, and one is made all the time.
void Output::SilenceLibraries() {
  constexpr char kNothing[] = "0";
  constexpr int kKeepTheUsersOwn = 0;
  ::setenv("ALSOFT_LOGLEVEL", kNothing, kKeepTheUsersOwn);
  snd_lib_error_set_handler(IgnoreMessage);
}

std::unique_ptr<Output> Output::OpenDevice() {
  ALCdevice* device = alcOpenDevice(nullptr);
  ALCcontext* context = CreateContext(device, kDeviceAttributes);
  if (context == nullptr) return nullptr;
  return std::unique_ptr<Output>(new Output(device, context, false));
}

std::unique_ptr<Output> Output::OpenLoopback() {
  if (alcIsExtensionPresent(nullptr, "ALC_SOFT_loopback") == ALC_FALSE) return nullptr;
  ALCdevice* device = alcLoopbackOpenDeviceSOFT(nullptr);
  ALCcontext* context = CreateContext(device, kLoopbackAttributes);
  if (context == nullptr) return nullptr;
  return std::unique_ptr<Output>(new Output(device, context, true));
}

void Output::MakeCurrent() const { alcMakeContextCurrent(context_); }

bool Output::IsConnected() const {
  if (loopback_ || alcIsExtensionPresent(device_, "ALC_EXT_disconnect") == ALC_FALSE) return true;
  ALCint connected = ALC_TRUE;
  alcGetIntegerv(device_, ALC_CONNECTED, 1, &connected);
  return connected != ALC_FALSE;
}

bool Output::Render(std::span<std::int16_t> stereo) const {
  if (!loopback_) return false;
  alcRenderSamplesSOFT(device_, stereo.data(), static_cast<ALCsizei>(stereo.size() / 2));
  return true;
}

}  // namespace Studio
