#include "audio/studio/system.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <utility>

#include "audio/studio/catalogue.h"
#include "audio/studio/output_watch.h"
#include "audio/studio/sound_reader.h"
#include "audio/studio/voice_pool.h"

namespace Studio {

namespace {

Result CheckMusic(std::span<const std::uint8_t> sound) {
  SoundReader reader;
  const Result result = reader.Open(sound);
  return result == Result::kOk ? reader.CheckMusic() : result;
}

constexpr int kVoicesOfAnEvent = 4;
constexpr std::uint64_t kUpdatesBetweenStarts = 3;  // contacts can fire in every sub-step of a frame
constexpr int kFadeOutUpdates = 12;                 // 0.2 s
constexpr int kRestartUpdates = 4;                  // 67 ms for what an instance leaves behind when it starts again
constexpr std::size_t kInstances = 128;
constexpr unsigned kIndexBits = 8;  // of an instance's handle; the rest counts how often its place was used
constexpr std::array<std::string_view, 2> kBusPaths = {"bus:/SFX", "bus:/Music"};  // by category

struct Instance {
  std::uint32_t uses = 0;
  bool used = false;
  bool released = false;
  bool playing = false;  // music plays without an output, too
  VoiceUse use = VoiceUse::kWhenFree;
  std::size_t event = 0;
  float pitch = 1.0f;
  float volume = 1.0f;
  Voice* voice = nullptr;
  std::unique_ptr<SoundReader> reader;  // of music
};

struct BusState {
  bool muted = false;
  bool paused = false;
};

}  // namespace

// Guarded by the mutex. Only the decoding of a whole sound runs outside it, on bytes that never change.
struct System::State {
  std::mutex mutex;
  int voices = 0;  // 0: not initialised
  VoicePool pool;
  std::optional<OutputWatch> watch;  // none for loopback
  bool outputHeld = false;
  std::uint64_t updates = 0;
  Catalogue catalogue;
  std::array<Instance, kInstances> instances;
  std::array<BusState, kBusPaths.size()> buses;

  Event* Find(EventDescription description);
  Instance* Find(EventInstance handle);
  BusState* Find(Bus bus);
  BusState& BusOf(const Instance& instance);
  float GainOf(const Instance& instance);
  bool MayStart(const Instance& instance);
  void Sound(Instance& instance);
  void Silence(Instance& instance, int fadeUpdates);
  void UpdateOutput();
  void DropOutput();
  void UpdateVoice(Voice& voice);
};

Event* System::State::Find(EventDescription description) {
  const bool known = description.id >= 1 && description.id <= catalogue.GetEventCount();
  return known ? &catalogue.GetEvent(description.id - 1) : nullptr;
}

Instance* System::State::Find(EventInstance handle) {
  const std::size_t index = handle.id & ((1u << kIndexBits) - 1);
  if (handle.id == 0 || index >= kInstances) return nullptr;
  Instance& instance = instances[index];
  return instance.used && !instance.released && instance.uses == handle.id >> kIndexBits ? &instance : nullptr;
}

BusState* System::State::Find(Bus bus) { return bus.id >= 1 && bus.id <= buses.size() ? &buses[bus.id - 1] : nullptr; }

BusState& System::State::BusOf(const Instance& instance) {
  return buses[static_cast<std::size_t>(catalogue.GetEvent(instance.event).source.category)];
}

float System::State::GainOf(const Instance& instance) { return BusOf(instance).muted ? 0.0f : instance.volume; }

bool System::State::MayStart(const Instance& instance) {
  if (instance.use == VoiceUse::kKeepsOne) return true;
  const auto& lastStart = catalogue.GetEvent(instance.event).lastStart;
  if (lastStart && updates - *lastStart < kUpdatesBetweenStarts) return false;
  int ofEvent = 0;
  int free = voices;
  for (const Instance& other : instances) {
    if (!other.used) continue;
    if (other.voice != nullptr && other.event == instance.event) ++ofEvent;
    if (other.voice != nullptr || other.use == VoiceUse::kKeepsOne) --free;
  }
  return ofEvent < kVoicesOfAnEvent && free > 0;
}

// Music goes on from where its reader stands.
void System::State::Sound(Instance& instance) {
  Voice* voice = pool.Take();
  if (voice == nullptr) return;
  Event& event = catalogue.GetEvent(instance.event);
  const bool paused = BusOf(instance).paused;
  if (event.IsMusic())
    voice->StartStream(*instance.reader, instance.pitch, GainOf(instance), paused);
  else
    voice->StartBuffer(pool.GetBuffer(instance.event, event.samples), instance.pitch, GainOf(instance), paused);
  voice->instance = static_cast<std::int32_t>(&instance - instances.data());
  instance.voice = voice;
}

void System::State::Silence(Instance& instance, int fadeUpdates) {
  if (Voice* voice = std::exchange(instance.voice, nullptr)) voice->FadeAway(fadeUpdates);
}

// Effects end with their output; music waits for the next.
void System::State::DropOutput() {
  for (Instance& instance : instances) {
    if (!instance.used) continue;
    instance.voice = nullptr;
    instance.playing = instance.playing && instance.reader != nullptr;
    if (instance.released && !instance.playing) instance.used = false;
  }
  pool.Close();
}

void System::State::UpdateOutput() {
  if (!watch) return;
  if (pool.GetOutput() != nullptr && (outputHeld || !pool.GetOutput()->IsConnected())) DropOutput();
  if (pool.GetOutput() != nullptr || outputHeld) return;
  std::unique_ptr<Output> output = watch->Poll();
  if (output == nullptr) return;
  pool.Open(std::move(output), voices);
  for (Instance& instance : instances)
    if (instance.used && instance.playing) Sound(instance);
}

void System::State::UpdateVoice(Voice& voice) {
  if (voice.IsFree()) return;
  if (voice.IsFadingAway()) return voice.Update(0.0f, false);
  Instance& instance = instances[static_cast<std::size_t>(voice.instance)];
  voice.Update(GainOf(instance), BusOf(instance).paused);
  if (!voice.IsFree()) return;
  instance.voice = nullptr;
  instance.playing = false;
  if (instance.released) instance.used = false;
}

System::System() : state_(std::make_unique<State>()) {}
System::~System() = default;

Result System::Initialise(int voices, OutputOpener opener) {
  const std::lock_guard lock(state_->mutex);
  state_->voices = voices;
  state_->watch.emplace(std::move(opener));
  return Result::kOk;
}

Result System::InitialiseLoopback(int voices) {
  const std::lock_guard lock(state_->mutex);
  std::unique_ptr<Output> output = Output::OpenLoopback();
  if (output == nullptr) return Result::kNoLoopback;
  state_->voices = voices;
  state_->pool.Open(std::move(output), voices);
  return Result::kOk;
}

Result System::InitialiseUnheard(int voices) {
  const std::lock_guard lock(state_->mutex);
  state_->voices = voices;
  return Result::kOk;
}

Result System::LoadBankFile(const std::string& path, Bank& bank, std::string& why) {
  std::vector<std::uint8_t> bytes;
  const Result result = ReadBankFile(path, bytes, why);
  return result == Result::kOk ? LoadBankMemory(std::move(bytes), bank, why) : result;
}

Result System::LoadBankMemory(std::vector<std::uint8_t> bytes, Bank& bank, std::string& why) {
  BankContent content;
  Result result = ParseBank(std::move(bytes), content, why);
  if (result != Result::kOk) return result;
  const std::lock_guard lock(state_->mutex);
  result = state_->catalogue.Add(std::move(content));
  if (result != Result::kOk)
    why = "has an event that is loaded already";
  else
    bank.id = static_cast<std::uint32_t>(state_->catalogue.GetBankCount());
  return result;
}

Result System::GetEvent(std::string_view path, EventDescription& description) {
  const std::lock_guard lock(state_->mutex);
  const auto index = state_->catalogue.FindEvent(path);
  if (!index) return Result::kEventNotFound;
  description.id = static_cast<std::uint32_t>(*index + 1);
  return Result::kOk;
}

Result System::GetBus(std::string_view path, Bus& bus) {
  const auto found = std::find(kBusPaths.begin(), kBusPaths.end(), path);
  if (found == kBusPaths.end()) return Result::kBusNotFound;
  bus.id = static_cast<std::uint32_t>(found - kBusPaths.begin() + 1);
  return Result::kOk;
}

Result System::LoadSampleData(EventDescription description) {
  Event* event = nullptr;
  {
    const std::lock_guard lock(state_->mutex);
    event = state_->Find(description);
    if (event == nullptr) return Result::kInvalidHandle;
    if (event->loaded || event->failure != Result::kOk) return event->failure;
  }
  Samples samples;
  const Result result = event->IsMusic() ? CheckMusic(event->source.sound) : DecodeAll(event->source.sound, samples);
  const std::lock_guard lock(state_->mutex);
  event->failure = result == Result::kOk ? state_->catalogue.Keep(*event, std::move(samples)) : result;
  return event->failure;
}

Result System::CreateInstance(EventDescription description, VoiceUse use, EventInstance& handle) {
  Result result = LoadSampleData(description);
  if (result != Result::kOk) return result;
  const std::lock_guard lock(state_->mutex);
  auto& instances = state_->instances;
  const auto place = std::find_if(instances.begin(), instances.end(), [](const Instance& i) { return !i.used; });
  if (place == instances.end()) return Result::kTooManyInstances;
  std::unique_ptr<SoundReader> reader;
  if (const Event& event = *state_->Find(description); event.IsMusic()) {
    reader = std::make_unique<SoundReader>();
    result = reader->Open(event.source.sound);
    if (result != Result::kOk) return result;
  }
  const std::uint32_t uses = place->uses % ((1u << (32 - kIndexBits)) - 1) + 1;
  *place = Instance{};
  place->uses = uses;
  place->used = true;
  place->use = use;
  place->event = description.id - 1;
  place->reader = std::move(reader);
  handle.id = uses << kIndexBits | static_cast<std::uint32_t>(place - instances.begin());
  return Result::kOk;
}

Result System::Start(EventInstance handle) {
  const std::lock_guard lock(state_->mutex);
  Instance* instance = state_->Find(handle);
  if (instance == nullptr) return Result::kInvalidHandle;
  if (instance->voice != nullptr && instance->voice->IsFresh()) return Result::kOk;
  if (instance->reader && !instance->reader->Rewind()) return Result::kSoundDamaged;
  if (state_->pool.GetOutput() == nullptr) {
    instance->playing = instance->reader != nullptr;
    return Result::kOk;
  }
  if (!state_->MayStart(*instance)) return Result::kOk;
  state_->Silence(*instance, kRestartUpdates);
  state_->Sound(*instance);
  instance->playing = instance->voice != nullptr;
  state_->catalogue.GetEvent(instance->event).lastStart = state_->updates;
  return Result::kOk;
}

Result System::Stop(EventInstance handle) {
  const std::lock_guard lock(state_->mutex);
  Instance* instance = state_->Find(handle);
  if (instance == nullptr) return Result::kInvalidHandle;
  instance->playing = false;
  state_->Silence(*instance, kFadeOutUpdates);
  return Result::kOk;
}

Result System::Release(EventInstance handle) {
  const std::lock_guard lock(state_->mutex);
  Instance* instance = state_->Find(handle);
  if (instance == nullptr) return Result::kInvalidHandle;
  instance->released = true;
  if (!instance->playing) instance->used = false;
  return Result::kOk;
}

Result System::SetPitch(EventInstance handle, float pitch) {
  const std::lock_guard lock(state_->mutex);
  Instance* instance = state_->Find(handle);
  if (instance == nullptr) return Result::kInvalidHandle;
  instance->pitch = std::clamp(pitch, 0.01f, 100.0f);
  if (instance->voice != nullptr) instance->voice->SetPitch(instance->pitch);
  return Result::kOk;
}

Result System::SetVolume(EventInstance handle, float volume) {
  const std::lock_guard lock(state_->mutex);
  Instance* instance = state_->Find(handle);
  if (instance == nullptr) return Result::kInvalidHandle;
  instance->volume = std::clamp(volume, 0.0f, 1.0f);
  if (instance->voice != nullptr && instance->voice->IsFresh())
    instance->voice->SetFreshGain(state_->GainOf(*instance));
  return Result::kOk;
}

Result System::SetMute(Bus bus, bool mute) {
  const std::lock_guard lock(state_->mutex);
  BusState* state = state_->Find(bus);
  if (state == nullptr) return Result::kInvalidHandle;
  state->muted = mute;
  return Result::kOk;
}

Result System::SetPaused(Bus bus, bool paused) {
  const std::lock_guard lock(state_->mutex);
  BusState* state = state_->Find(bus);
  if (state == nullptr) return Result::kInvalidHandle;
  state->paused = paused;
  return Result::kOk;
}

Result System::HoldOutput(bool held) {
  const std::lock_guard lock(state_->mutex);
  if (state_->voices == 0) return Result::kNotInitialised;
  state_->outputHeld = held;
  if (!held && state_->watch) state_->watch->LookSoon();
  return Result::kOk;
}

Result System::Update() {
  const std::lock_guard lock(state_->mutex);
  if (state_->voices == 0) return Result::kNotInitialised;
  state_->UpdateOutput();
  for (Voice& voice : state_->pool.GetVoices()) state_->UpdateVoice(voice);
  ++state_->updates;
  return Result::kOk;
}

Result System::Render(std::span<std::int16_t> stereo) {
  const std::lock_guard lock(state_->mutex);
  const Output* output = state_->pool.GetOutput();
  return output != nullptr && output->Render(stereo) ? Result::kOk : Result::kNoLoopback;
}

Use System::CountUse() {
  const std::lock_guard lock(state_->mutex);
  Use use;
  use.voices = state_->voices;
  for (const Instance& instance : state_->instances) {
    if (!instance.used) continue;
    if (!instance.released) ++use.open;
    if (instance.voice != nullptr) ++use.heard;
    // Music that has been let go of waits for an output.
    if (instance.released && instance.voice == nullptr && !instance.playing) ++use.lost;
  }
  for (const Voice& voice : state_->pool.GetVoices())
    if (!voice.IsFree() && !voice.IsFadingAway() &&
        state_->instances[static_cast<std::size_t>(voice.instance)].voice != &voice)
      ++use.lost;
  return use;
}

}  // namespace Studio
