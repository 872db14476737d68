#include "audio/audio.h"

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "audio/sound_ids.h"
#include "audio/studio/output.h"
#include "audio/studio/system.h"
#include "core/data_place.h"
#include "core/print.h"
#include "core/run_log.h"

namespace Audio {

namespace {

constexpr int kVoices = 32;
constexpr float kChargePitch = 1.4f;
constexpr std::array<std::string_view, 2> kBusNames = {"SFX", "Music"};

using Studio::EventDescription;
using Studio::EventInstance;
using Studio::Result;

// All handles are zero, which names nothing, until they are set.
struct Handles {
  std::unordered_map<std::string, Studio::Bank> banks;  // by file name
  std::array<EventDescription, kSoundCount> descriptions;
  std::array<EventInstance, kSoundCount> instances;
  std::array<Studio::Bus, kBusNames.size()> buses;
  EventInstance currentMusic;
  std::optional<Sound> currentMusicId;
  std::optional<Sound> playing;  // music that was asked for and not stopped since
  std::array<EventInstance, kPlayers> chargeInstances;
  EventInstance pulseInstance;
  EventInstance winInstance;
};

struct State {
  std::unique_ptr<Studio::System> studio;  // null: silence
  std::mutex mutex;                        // of the handles, which the loading thread fills while the game reads them
  Handles handles;
  bool hushed = false;
  std::optional<Sound> beforeHush;
};

State& GetState() {
  static State state;
  return state;
}

// Null also while nothing is carried out.
Studio::System* GetStudio() { return GetState().hushed ? nullptr : GetState().studio.get(); }

// A copy of one handle; the system has a lock of its own.
template <class Handle, class Member>
Handle Read(Member member) {
  State& state = GetState();
  const std::lock_guard lock(state.mutex);
  return member(state.handles);
}

template <class Change>
void Write(Change change) {
  State& state = GetState();
  const std::lock_guard lock(state.mutex);
  change(state.handles);
}

constexpr int NumberOf(Sound id) { return static_cast<int>(id); }

bool IsId(Sound id) { return NumberOf(id) >= 0 && NumberOf(id) < kSoundCount; }

EventDescription DescriptionOf(Sound id) {
  return Read<EventDescription>([id](const Handles& handles) {
    return IsId(id) ? handles.descriptions[static_cast<std::size_t>(id)] : EventDescription{};
  });
}

EventInstance InstanceOf(Sound id) {
  return Read<EventInstance>([id](const Handles& handles) {
    return IsId(id) ? handles.instances[static_cast<std::size_t>(id)] : EventInstance{};
  });
}

EventInstance ChargeOf(int player) {
  return Read<EventInstance>([player](const Handles& handles) {
    return player >= 0 && player < kPlayers ? handles.chargeInstances[static_cast<std::size_t>(player)]
                                            : EventInstance{};
  });
}

Studio::Bus BusOf(std::string_view name) {
  const auto at = std::find(kBusNames.begin(), kBusNames.end(), name);
  return Read<Studio::Bus>([at](const Handles& handles) {
    return at == kBusNames.end() ? Studio::Bus{} : handles.buses[static_cast<std::size_t>(at - kBusNames.begin())];
  });
}

EventInstance CreateKept(Sound id, Result& result) {
  EventInstance instance;
  result = GetStudio()->CreateInstance(DescriptionOf(id), Studio::VoiceUse::kKeepsOne, instance);
  return instance;
}

Result InitialiseStudio(Studio::System& studio, Output output) {
  if (output == Output::kLoopback) return studio.InitialiseLoopback(kVoices);
  if (output == Output::kUnheard) return studio.InitialiseUnheard(kVoices);
  return studio.Initialise(kVoices, Studio::Output::OpenDevice);
}

void PlayOneShot(Sound id) {
  LogEvent("sound %d", NumberOf(id));
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  EventInstance instance;
  CheckResult(studio->CreateInstance(DescriptionOf(id), Studio::VoiceUse::kWhenFree, instance));
  CheckResult(studio->Start(instance));
  studio->Release(instance);
}

void PlayLongLived(Sound id) {
  LogEvent("music %d", NumberOf(id));
  const EventInstance instance = InstanceOf(id);
  Write([instance, id](Handles& handles) {
    handles.currentMusic = instance;
    handles.currentMusicId = id;
    handles.playing = id;
  });
  if (Studio::System* studio = GetStudio()) CheckResult(studio->Start(instance));
}

}  // namespace

void SilenceLibraries() { Studio::Output::SilenceLibraries(); }

void Init(Output output) {
  Shutdown();
  if (output == Output::kNone) return;
  GetState().studio = std::make_unique<Studio::System>();
  CheckResult(InitialiseStudio(*GetStudio(), output));
  LoadBank("Master Bank.bank");
  LoadBank("Master Bank.strings.bank");
  AddEvent(EventKind::kMusic, Sound::kTitleMusic, "Marlo_Pirates");
  AddEvent(EventKind::kMusic, Sound::kMatchMusic, "Marlo_Buckaneer");
  AddEvent(EventKind::kMusic, Sound::kFastMatchMusic, "Marlo_Buckaneer_Fast");
  for (const Sound id : {Sound::kTitleMusic, Sound::kMatchMusic, Sound::kFastMatchMusic}) Prepare(id, kLongLived);
}

void Shutdown() {
  GetState().studio.reset();
  GetState().hushed = false;
  Write([](Handles& handles) { handles = {}; });
}

void LoadBank(const std::string& name) {
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const std::string path = "AudioSource/" + name;
  Studio::Bank bank;
  std::string why;
  const Result result = studio->LoadBankFile(FindData(path), bank, why);
  if (result != Result::kOk) Print("%s: %s\n", path.c_str(), why.c_str());
  CheckResult(result);
  Write([&name, bank](Handles& handles) { handles.banks[name] = bank; });
}

void AddEvent(EventKind kind, Sound id, const std::string& name) {
  if (kind != EventKind::kEffect && kind != EventKind::kMusic) {
    Print("Error Adding Studio Audio Event\n");
    return;
  }
  Studio::System* studio = GetStudio();
  if (studio == nullptr || !IsId(id)) return;
  EventDescription description;
  CheckResult(studio->GetEvent((kind == EventKind::kEffect ? "event:/SFX/" : "event:/Music/") + name, description));
  Write([id, description](Handles& handles) { handles.descriptions[static_cast<std::size_t>(id)] = description; });
}

void Prepare(Sound id, Lifetime lifetime) {
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  CheckResult(studio->LoadSampleData(DescriptionOf(id)));
  Result result = Result::kOk;
  if (id == Sound::kCharge) {
    for (std::size_t player = 0; player < kPlayers; ++player) {
      const EventInstance charge = CreateKept(id, result);
      Write([player, charge](Handles& handles) { handles.chargeInstances[player] = charge; });
    }
  } else if (id == Sound::kPulse) {
    const EventInstance pulse = CreateKept(id, result);
    Write([pulse](Handles& handles) { handles.pulseInstance = pulse; });
  } else if (id == Sound::kWinJingle) {
    const EventInstance jingle = CreateKept(id, result);
    Write([jingle](Handles& handles) { handles.winInstance = jingle; });
  }
  if (lifetime != kLongLived || !IsId(id)) return;
  const EventInstance instance = CreateKept(id, result);
  CheckResult(result);
  Write([id, instance](Handles& handles) { handles.instances[static_cast<std::size_t>(id)] = instance; });
}

void GetBus(const std::string& name) {
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  Studio::Bus bus;
  CheckResult(studio->GetBus("bus:/" + name, bus));
  const auto at = std::find(kBusNames.begin(), kBusNames.end(), name);
  if (at == kBusNames.end()) return;
  Write([at, bus](Handles& handles) { handles.buses[static_cast<std::size_t>(at - kBusNames.begin())] = bus; });
}

void Play(Sound id, Lifetime lifetime) {
  if (lifetime == kOneShot)
    PlayOneShot(id);
  else if (lifetime == kLongLived)
    PlayLongLived(id);
  else
    Print("Error trying to play sound\n");
}

void StartCharge(int player) {
  if (player < 0 || player >= kPlayers) return;
  LogEvent("sound %d", NumberOf(Sound::kCharge));
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const EventInstance charge = ChargeOf(player);
  studio->SetPitch(charge, kChargePitch);
  CheckResult(studio->Start(charge));
}

void StopCharge(int player) {
  if (player < 0 || player >= kPlayers) return;
  if (Studio::System* studio = GetStudio()) CheckResult(studio->Stop(ChargeOf(player)));
}

void PlayPulse(float pitch) {
  LogEvent("sound %d", NumberOf(Sound::kPulse));
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const auto pulse = Read<EventInstance>([](const Handles& handles) { return handles.pulseInstance; });
  studio->SetPitch(pulse, pitch);
  CheckResult(studio->Start(pulse));
}

void PlayWinJingle() {
  LogEvent("sound %d", NumberOf(Sound::kWinJingle));
  if (Studio::System* studio = GetStudio())
    CheckResult(studio->Start(Read<EventInstance>([](const Handles& handles) { return handles.winInstance; })));
}

void SetMusicVolume(float volume) {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->SetVolume(InstanceOf(Sound::kMatchMusic), volume));
}

void StopMusic() {
  LogEvent("music stop");
  const auto music = Read<EventInstance>([](const Handles& handles) { return handles.currentMusic; });
  Write([](Handles& handles) { handles.playing.reset(); });
  if (Studio::System* studio = GetStudio()) studio->Stop(music);
}

void StopMusicExcept(Sound id) {
  const auto current = Read<std::optional<Sound>>([](const Handles& handles) { return handles.currentMusicId; });
  if (current.has_value() && current != id) StopMusic();
}

void StopLongLived(Sound id) {
  LogEvent("music stop");
  Write([id](Handles& handles) {
    if (handles.playing == id) handles.playing.reset();
  });
  if (Studio::System* studio = GetStudio()) studio->Stop(InstanceOf(id));
}

std::optional<Sound> GetMusic() {
  return Read<std::optional<Sound>>([](const Handles& handles) { return handles.playing; });
}

void SwitchMusic(std::optional<Sound> id) {
  if (GetMusic() == id) return;
  if (GetMusic()) StopMusic();
  if (id) Play(*id, kLongLived);
}

void SetHushed(bool hushed) {
  State& state = GetState();
  if (hushed == state.hushed) return;
  if (hushed) {
    for (int player = 0; player < kPlayers; ++player) StopCharge(player);
    state.beforeHush = GetMusic();
  }
  state.hushed = hushed;
  if (hushed || state.studio == nullptr || GetMusic() == state.beforeHush) return;
  if (state.beforeHush) state.studio->Stop(InstanceOf(*state.beforeHush));
  if (GetMusic()) CheckResult(state.studio->Start(InstanceOf(*GetMusic())));
}

void SetBusPaused(std::string_view name, bool paused) {
  if (Studio::System* studio = GetStudio()) studio->SetPaused(BusOf(name), paused);
}

void SetBusMuted(std::string_view name, bool muted) {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->SetMute(BusOf(name), muted));
}

void HoldOutput(bool held) {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->HoldOutput(held));
}

void Update() {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->Update());
}

bool Render(std::span<std::int16_t> stereo) {
  Studio::System* studio = GetStudio();
  if (studio != nullptr && studio->Render(stereo) == Result::kOk) return true;
  std::fill(stereo.begin(), stereo.end(), std::int16_t{0});
  return false;
}

SoundUse CountUse() {
  SoundUse use;
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return use;
  // In this order: what another thread has made and not yet kept counts as open, never the other way round.
  State& state = GetState();
  const std::lock_guard lock(state.mutex);
  const auto count = [&use](const EventInstance& instance) { use.kept += instance.id != 0 ? 1 : 0; };
  for (const auto& instance : state.handles.instances) count(instance);
  for (const auto& instance : state.handles.chargeInstances) count(instance);
  count(state.handles.pulseInstance);
  count(state.handles.winInstance);
  use.studio = studio->CountUse();
  return use;
}

void CheckResult(Result result) {
  if (result != Result::kOk) Print("FMOD error!%d %s\n", static_cast<int>(result), Studio::ResultText(result));
}

}  // namespace Audio
