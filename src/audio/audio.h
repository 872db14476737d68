// The game's sounds by number: what is played when, and nothing of how. Errors are printed, nothing is retried, and a
// sound that is missing is silent.
//
// Before Init and after Shutdown, and with Output::kNone, every call succeeds in silence; starts are still written to
// the run's log. Everything belongs to the main thread, except that the effects may be loaded on a thread of
// their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "audio/sound_ids.h"
#include "audio/studio/result.h"
#include "audio/studio/use.h"

namespace Audio {

enum class Output {
  kNone,      ///< no sound and no bank
  kDevice,    ///< the system's, as soon as there is one
  kLoopback,  ///< into memory, fetched by Render
  kUnheard,   ///< banks and instances as with a device, and nothing is heard
};

enum class EventKind : int { kEffect = 0, kMusic = 1 };

enum class Lifetime : int {
  kOneShot = 0,    ///< an instance that frees itself when it has ended
  kLongLived = 1,  ///< one that is kept and started anew
};
using enum Lifetime;

inline constexpr int kRate = 48000;  ///< frames a second of Render
inline constexpr int kPlayers = 4;

/// Keeps the sound libraries from telling on standard error, again and again, that there is no device. Changes the
/// environment: the first thing of all in a program, before any thread, also those that windows and drivers start.
void SilenceLibraries();
/// Starts the sound system, loads both banks from AudioSource/ in the working folder, and prepares the music of title
/// and match.
void Init(Output output);
/// Ends all sound and forgets everything.
void Shutdown();
/// Registers and prepares the effects and the podium's music, and fetches the buses; once, after Init.
void LoadEffects();
/// The same in slices.
class EffectsLoader {
 public:
  /// At most one sound is decoded; true when nothing is left.
  bool LoadNext();

 private:
  std::size_t next_ = 0;
};

/// Loads a bank by its name in AudioSource/.
void LoadBank(const std::string& name);
/// Looks up an event by its name without the path's prefix; another kind is reported and adds nothing.
void AddEvent(EventKind kind, Sound id, const std::string& name);
/// Decodes the event's sound and makes the instances that the number needs; kLongLived: one of its own for Play.
void Prepare(Sound id, Lifetime lifetime);
/// Fetches a bus by its name without the path's prefix: "SFX" or "Music".
void GetBus(const std::string& name);

/// kOneShot: a new instance. kLongLived: the number's own instance becomes the current music. Another lifetime is
/// reported and plays nothing.
void Play(Sound id, Lifetime lifetime);
/// The player's own charge sound, by player index 0 to 3; nothing for another.
void StartCharge(int player);
void StopCharge(int player);
/// The pulse of the ripple; `pitch` is a factor.
void PlayPulse(float pitch);
/// The jingle of the podium.
void PlayWinJingle();
/// Loudness of the match's music, 0 to 1, whatever music is current.
void SetMusicVolume(float volume);
/// Fades the current music out, if there is any.
void StopMusic();
/// Fades the current music out unless it is this number's.
void StopMusicExcept(Sound id);
/// The music that was started last, unless it was stopped; as asked for, whether anything is heard or not.
std::optional<Sound> GetMusic();
/// Fades the music over to another one, or to none; nothing when it is that one.
void SwitchMusic(std::optional<Sound> id);
/// While on, no start and stop is carried out. Afterwards the music is the one that was asked for last; effects that
/// were asked for are lost.
void SetHushed(bool hushed);
/// Fades the long-lived instance of this number out, whatever music is current.
void StopLongLived(Sound id);

/// By name; a bus that is not fetched yet is left alone. Pausing reports nothing.
void SetBusPaused(std::string_view name, bool paused);
void SetBusMuted(std::string_view name, bool muted);

/// While held, the device is let go as if it had been pulled out; afterwards it is looked for again.
void HoldOutput(bool held);
/// Once a frame.
void Update();
/// The next frames of the loopback output, two samples each; false, and silence, from any other.
bool Render(std::span<std::int16_t> stereo);

/// What is in use, for whoever looks for leaks; nothing without sound.
struct SoundUse {
  Studio::Use studio;
  int kept = 0;  ///< instances that are kept to be started anew
};
SoundUse CountUse();

/// Prints "FMOD error!", the number, a blank and the text of every result that is no success.
void CheckResult(Studio::Result result);

}  // namespace Audio
