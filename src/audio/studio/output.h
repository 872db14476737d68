// Where the mix goes: an OpenAL device with its context. Opening one may take long and may be done on any thread;
// everything else belongs to the thread that plays.
#pragma once

#include <AL/alc.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace Studio {

inline constexpr int kOutputRate = 48000;  ///< frames a second

class Output {
 public:
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  virtual ~Output();

  /// The device that the system plays on; null when there is none.
  static std::unique_ptr<Output> OpenDevice();
  /// See Audio::SilenceLibraries.
  static void SilenceLibraries();
  /// A device that plays nothing by itself and is asked for its sound; null when the library has none.
  static std::unique_ptr<Output> OpenLoopback();

  /// Sound calls go here from now on.
  void MakeCurrent() const;
  /// False once the device has gone.
  virtual bool IsConnected() const;
  /// The next frames of a loopback device, stereo; false for any other.
  bool Render(std::span<std::int16_t> stereo) const;

 protected:
  /// Takes over both.
  Output(ALCdevice* device, ALCcontext* context, bool loopback);
  /// Another output's device, for outputs that only answer otherwise.
  explicit Output(Output&& other) noexcept;

 private:
  ALCdevice* device_;
  ALCcontext* context_;
  bool loopback_;
};

/// Tries once; null when there is nothing to play on at the moment.
using OutputOpener = std::function<std::unique_ptr<Output>()>;

}  // namespace Studio
