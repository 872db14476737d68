// libFuzzer target: any bytes as a sound bank. A bank of events is loaded with a strings bank that names all of them;
// some events are decoded, started and stopped, without an output, which would take longer than all the rest. Whatever
// the bytes hold, the program must neither crash nor hang nor ask for memory out of proportion.
//
//   bank_fuzz -max_len=16384 -timeout=20 -rss_limit_mb=1024 CORPUS_FOLDER...
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "audio/studio/bank_file.h"
#include "audio/studio/sound_reader.h"
#include "audio/studio/system.h"

namespace {

constexpr std::size_t kMaxInput = 64 * 1024;
constexpr std::size_t kMostPlayed = 3;  // a bank may hold one sound 256 times
constexpr int kBuffers = 3;

// Patches the numbers of a bank made for other paths, so that its paths lead to the events.
std::vector<std::uint8_t> NameEvents(const std::vector<Studio::BankEvent>& events, std::vector<std::string>& paths) {
  constexpr std::size_t kHeader = 32;
  constexpr std::size_t kEntry = 16;
  std::vector<Studio::BankSource> sources;
  for (std::size_t i = 0; i < events.size(); ++i) {
    paths.push_back("event:/" + std::to_string(i));
    sources.push_back({paths.back(), events[i].category, {}});
  }
  std::vector<std::uint8_t> bytes = Studio::WriteStringsBank(sources);
  for (std::size_t i = 0; i < events.size(); ++i)
    for (std::size_t byte = 0; byte < sizeof(std::uint64_t); ++byte)
      bytes[kHeader + i * kEntry + byte] = static_cast<std::uint8_t>(events[i].number >> (8 * byte));
  return bytes;
}

// As a voice would.
void Stream(std::span<const std::uint8_t> sound) {
  std::array<float, Studio::kStereo * 4096> stereo;
  Studio::SoundReader reader;
  if (reader.Open(sound) != Studio::Result::kOk) return;
  for (int buffer = 0; buffer < kBuffers; ++buffer) reader.ReadLooped(stereo.data(), stereo.size() / Studio::kStereo);
}

void Play(Studio::System& system, const std::string& path) {
  Studio::EventDescription event;
  Studio::EventInstance instance;
  if (system.GetEvent(path, event) != Studio::Result::kOk) __builtin_trap();
  if (system.CreateInstance(event, Studio::VoiceUse::kKeepsOne, instance) != Studio::Result::kOk) return;
  system.Start(instance);
  system.Update();
  system.Stop(instance);
}

}  // namespace

// The library forgets some memory when a stream's head is damaged.
extern "C" const char* __lsan_default_suppressions() { return "leak:vorbis_info_init"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  const std::vector<std::uint8_t> bytes(data, data + size);
  Studio::BankContent content;
  std::string why;
  if (Studio::ParseBank(bytes, content, why) != Studio::Result::kOk) return 0;
  Studio::System system;
  system.Initialise(8, {});
  Studio::Bank bank;
  std::vector<std::string> paths;
  if (system.LoadBankMemory(bytes, bank, why) != Studio::Result::kOk) __builtin_trap();
  if (system.LoadBankMemory(NameEvents(content.events, paths), bank, why) != Studio::Result::kOk) __builtin_trap();
  for (std::size_t i = 0; i < paths.size() && i < kMostPlayed; ++i) {
    Stream(content.events[i].sound);
    Play(system, paths[i]);
  }
  return 0;
}
