// A small event-based sound layer: banks hold events, an event is heard through instances of it, and what is heard goes
// over one of two buses. Handles are plain values; a handle that names nothing, or something that has gone, gives
// Result::kInvalidHandle and has no other effect.
//
// All operations may be called on any thread, except that Start, Update, Render and the destructor belong to one. No
// output is needed: then instances start and end without being heard, and music goes on when an output comes.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/studio/output.h"
#include "audio/studio/result.h"
#include "audio/studio/use.h"

namespace Studio {

struct Bank {
  std::uint32_t id = 0;
};
struct EventDescription {
  std::uint32_t id = 0;
};
struct EventInstance {
  std::uint32_t id = 0;
};
struct Bus {
  std::uint32_t id = 0;
};

enum class VoiceUse {
  kWhenFree,  ///< starts only when a voice is free, its event is heard less than 4 times and not within 3 updates
  kKeepsOne,  ///< one voice stays reserved for it as long as it lives
};

class System {
 public:
  System();
  System(const System&) = delete;
  System& operator=(const System&) = delete;
  /// Everything that sounds ends; a search for an output that is under way is waited for half a second at most.
  ~System();

  /// Plays through what the opener finds, now or later, and looks again when it has gone. `voices`: how many sounds may
  /// be heard at once.
  Result Initialise(int voices, OutputOpener opener);
  /// Plays into memory.
  Result InitialiseLoopback(int voices);
  /// Looks for no output: nothing is ever heard.
  Result InitialiseUnheard(int voices);

  /// Adds the bank's events or paths. On a fault nothing is added and `why` says what is wrong with the file or bytes.
  Result LoadBankFile(const std::string& path, Bank& bank, std::string& why);
  Result LoadBankMemory(std::vector<std::uint8_t> bytes, Bank& bank, std::string& why);

  /// By the path in a strings bank: "event:/" and the name.
  Result GetEvent(std::string_view path, EventDescription& description);
  /// "bus:/SFX" or "bus:/Music".
  Result GetBus(std::string_view path, Bus& bus);

  /// Decodes an effect, or sees whether a piece of music can be; again without effect. Other threads go on meanwhile.
  Result LoadSampleData(EventDescription description);
  /// A silent instance at pitch and volume 1. An effect that is not loaded yet is loaded first.
  Result CreateInstance(EventDescription description, VoiceUse use, EventInstance& instance);

  /// From the beginning, also when it is heard already: what was heard fades away quickly. A start that the voices do
  /// not allow is no error. Within one update only the first start counts.
  Result Start(EventInstance instance);
  /// Fades out.
  Result Stop(EventInstance instance);
  /// Frees the instance when it has ended; the handle is void at once.
  Result Release(EventInstance instance);
  /// Factor of the frequency, above 0.
  Result SetPitch(EventInstance instance, float pitch);
  /// Factor of the loudness, 0 to 1.
  Result SetVolume(EventInstance instance, float volume);

  /// Muted sounds go on unheard, paused ones stand still; the two do not know each other.
  Result SetMute(Bus bus, bool mute);
  Result SetPaused(Bus bus, bool paused);

  /// While held, there is no output, as if the device had gone; then one is looked for at once. Nothing for loopback.
  Result HoldOutput(bool held);
  /// Once a frame: loudness moves on, music is decoded ahead, what has ended is freed, outputs come and go.
  Result Update();
  /// The next frames, two samples each, of a loopback system.
  Result Render(std::span<std::int16_t> stereo);
  Use CountUse();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace Studio
