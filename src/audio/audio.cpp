#include "audio/audio.h"

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "audio/sound_ids.h"
#include "audio/studio/output.h"
#include "audio/studio/system.h"
#include "core/print.h"
#include "core/run_log.h"

namespace Audio {

namespace {

constexpr int kVoices = 32;
constexpr int kNoMusic = -1;
constexpr float kChargePitch = 1.4f;
constexpr std::array<std::string_view, 2> kBusNames = {"SFX", "Music"};

using Studio::EventDescription;
using Studio::EventInstance;
using Studio::Result;

// All handles are zero, which names nothing, until they are set.
struct Handles {
  std::unordered_map<std::string, Studio::Bank> banks;  // by file name
  std::array<EventDescription, Sound::kCount> descriptions;
  std::array<EventInstance, Sound::kCount> instances;
  std::array<Studio::Bus, kBusNames.size()> buses;
  EventInstance currentMusic;
  int currentMusicId = kNoMusic;
  std::array<EventInstance, kPlayers> chargeInstances;
  EventInstance pulseInstance;
  EventInstance winInstance;
};

struct State {
  std::unique_ptr<Studio::System> studio;  // null: silence
  std::mutex mutex;                        // of the handles, which the loading thread fills while the game reads them
  Handles handles;
};

State& GetState() {
  static State state;
  return state;
}

Studio::System* GetStudio() { return GetState().studio.get(); }

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

bool IsId(int id) { return id >= 0 && id < Sound::kCount; }

EventDescription DescriptionOf(int id) {
  return Read<EventDescription>([id](const Handles& handles) {
    return IsId(id) ? handles.descriptions[static_cast<std::size_t>(id)] : EventDescription{};
  });
}

EventInstance InstanceOf(int id) {
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

EventInstance CreateKept(int id, Result& result) {
  EventInstance instance;
  result = GetStudio()->CreateInstance(DescriptionOf(id), Studio::VoiceUse::kKeepsOne, instance);
  return instance;
}

void PlayOneShot(int id) {
  LogEvent("sound %d", id);
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  EventInstance instance;
  CheckResult(studio->CreateInstance(DescriptionOf(id), Studio::VoiceUse::kWhenFree, instance));
  CheckResult(studio->Start(instance));
  studio->Release(instance);
}

void PlayLongLived(int id) {
  LogEvent("music %d", id);
  const EventInstance instance = InstanceOf(id);
  Write([instance, id](Handles& handles) {
    handles.currentMusic = instance;
    handles.currentMusicId = id;
  });
  if (Studio::System* studio = GetStudio()) CheckResult(studio->Start(instance));
}

}  // namespace

void SilenceLibraries() { Studio::Output::SilenceLibraries(); }

void Init(Output output) {
  Shutdown();
  if (output == Output::kNone) return;
  GetState().studio = std::make_unique<Studio::System>();
  CheckResult(output == Output::kLoopback ? GetStudio()->InitialiseLoopback(kVoices)
                                          : GetStudio()->Initialise(kVoices, Studio::Output::OpenDevice));
  LoadBank("Master Bank.bank");
  LoadBank("Master Bank.strings.bank");
  AddEvent(kMusic, Sound::kTitleMusic, "Marlo_Pirates");
  AddEvent(kMusic, Sound::kMatchMusic, "Marlo_Buckaneer");
  AddEvent(kMusic, Sound::kFastMatchMusic, "Marlo_Buckaneer_Fast");
  for (const int id : {Sound::kTitleMusic, Sound::kMatchMusic, Sound::kFastMatchMusic}) Prepare(id, 1);
}

void Shutdown() {
  GetState().studio.reset();
  Write([](Handles& handles) { handles = {}; });
}

void LoadBank(const std::string& name) {
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const std::string path = "AudioSource/" + name;
  Studio::Bank bank;
  std::string why;
  const Result result = studio->LoadBankFile(path, bank, why);
  if (result != Result::kOk) Print("%s: %s\n", path.c_str(), why.c_str());
  CheckResult(result);
  Write([&name, bank](Handles& handles) { handles.banks[name] = bank; });
}

void AddEvent(int kind, int id, const std::string& name) {
  if (kind != kEffect && kind != kMusic) {
    Print("Error Adding Studio Audio Event\n");
    return;
  }
  Studio::System* studio = GetStudio();
  if (studio == nullptr || !IsId(id)) return;
  EventDescription description;
  CheckResult(studio->GetEvent((kind == kEffect ? "event:/SFX/" : "event:/Music/") + name, description));
  Write([id, description](Handles& handles) { handles.descriptions[static_cast<std::size_t>(id)] = description; });
}

void Prepare(int id, int longLived) {
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
  if (longLived != 1 || !IsId(id)) return;
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

void Play(int id, int kind) {
  if (kind == kOneShot)
    PlayOneShot(id);
  else if (kind == kLongLived)
    PlayLongLived(id);
  else
    Print("Error trying to play sound\n");
}

void StartCharge(int player) {
  if (player < 0 || player >= kPlayers) return;
  LogEvent("sound %d", Sound::kCharge);
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const EventInstance charge = ChargeOf(player);
  studio->SetPitch(charge, kChargePitch);
  CheckResult(studio->Start(charge));
}

void StopCharge(int player) {
  if (player < 0 || player >= kPlayers) return;
  if (Studio::System* studio = GetStudio())
    CheckResult(studio->Stop(ChargeOf(player), Studio::StopMode::kAllowFadeOut));
}

void PlayPulse(float pitch) {
  LogEvent("sound %d", Sound::kPulse);
  Studio::System* studio = GetStudio();
  if (studio == nullptr) return;
  const auto pulse = Read<EventInstance>([](const Handles& handles) { return handles.pulseInstance; });
  studio->SetPitch(pulse, pitch);
  CheckResult(studio->Start(pulse));
}

void PlayWinJingle() {
  LogEvent("sound %d", Sound::kWinJingle);
  if (Studio::System* studio = GetStudio())
    CheckResult(studio->Start(Read<EventInstance>([](const Handles& handles) { return handles.winInstance; })));
}

void SetMusicVolume(float volume) {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->SetVolume(InstanceOf(Sound::kMatchMusic), volume));
}

void StopMusic() {
  LogEvent("music stop");
  const auto music = Read<EventInstance>([](const Handles& handles) { return handles.currentMusic; });
  if (Studio::System* studio = GetStudio()) studio->Stop(music, Studio::StopMode::kAllowFadeOut);
}

void StopMusicExcept(int id) {
  const int current = Read<int>([](const Handles& handles) { return handles.currentMusicId; });
  if (current != kNoMusic && current != id) StopMusic();
}

void StopLongLived(int id) {
  LogEvent("music stop");
  if (Studio::System* studio = GetStudio()) studio->Stop(InstanceOf(id), Studio::StopMode::kAllowFadeOut);
}

void SetBusPaused(std::string_view name, bool paused) {
  if (Studio::System* studio = GetStudio()) studio->SetPaused(BusOf(name), paused);
}

void SetBusMuted(std::string_view name, bool muted) {
  if (Studio::System* studio = GetStudio()) CheckResult(studio->SetMute(BusOf(name), muted));
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

void CheckResult(Result result) {
  if (result != Result::kOk) Print("FMOD error!%d %s\n", static_cast<int>(result), Studio::ResultText(result));
}

}  // namespace Audio
