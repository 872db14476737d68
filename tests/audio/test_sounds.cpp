#include "audio/test_sounds.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

struct Memory {
  std::vector<std::uint8_t> bytes;
  std::size_t place = 0;
};

SF_VIRTUAL_IO WriteAccess() {
  SF_VIRTUAL_IO io{};
  io.get_filelen = [](void* user) { return static_cast<sf_count_t>(static_cast<Memory*>(user)->bytes.size()); };
  io.seek = [](sf_count_t, int, void* user) { return static_cast<sf_count_t>(static_cast<Memory*>(user)->place); };
  io.tell = [](void* user) { return static_cast<sf_count_t>(static_cast<Memory*>(user)->place); };
  io.read = [](void*, sf_count_t, void*) { return sf_count_t{0}; };
  io.write = [](const void* data, sf_count_t count, void* user) {
    auto& memory = *static_cast<Memory*>(user);
    const auto* first = static_cast<const std::uint8_t*>(data);
    memory.bytes.insert(memory.bytes.end(), first, first + count);
    memory.place = memory.bytes.size();
    return count;
  };
  return io;
}

void WriteBytes(const char* name, const std::vector<std::uint8_t>& bytes) {
  std::ofstream(name, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

std::vector<std::uint8_t> MakeOgg(float amplitude, float seconds, int channels, float hertz) {
  Memory memory;
  SF_VIRTUAL_IO access = WriteAccess();
  SF_INFO info{};
  info.samplerate = 48000;
  info.channels = channels;
  info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
  SNDFILE* file = sf_open_virtual(&access, SFM_WRITE, &info, &memory);
  double best = 1.0;
  sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &best, sizeof best);
  const auto frames = static_cast<std::size_t>(seconds * 48000.0f);
  std::vector<float> samples;
  for (std::size_t i = 0; i < frames; ++i)
    samples.insert(samples.end(), static_cast<std::size_t>(channels),
                   amplitude * std::sin(2.0f * 3.14159265f * hertz / 48000.0f * static_cast<float>(i % 19200)));
  sf_write_float(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(file);
  return memory.bytes;
}

Studio::BankSource MakeSource(const std::string& path, float amplitude, float seconds) {
  const bool music = path.starts_with("event:/Music/");
  return {path, music ? Studio::Category::kMusic : Studio::Category::kEffects,
          music ? MakeOgg(amplitude, seconds, 2, kMusicHertz) : MakeOgg(amplitude, seconds)};
}

void WriteMasterBanks(const std::vector<Studio::BankSource>& sources) {
  std::filesystem::create_directory("AudioSource");
  WriteBytes("AudioSource/Master Bank.bank", Studio::WriteEventBank(sources));
  WriteBytes("AudioSource/Master Bank.strings.bank", Studio::WriteStringsBank(sources));
}

std::vector<Studio::BankSource> GameSources(float amplitude) {
  std::vector<Studio::BankSource> sources;
  for (const char* name : {"Marlo_Pirates", "Marlo_Buckaneer", "Marlo_Buckaneer_Fast", "Marlo_Baha"})
    sources.push_back(MakeSource(std::string("event:/Music/") + name, amplitude, 0.8f));
  for (const char* name : {"Squid/Squid_Collision",
                           "Squid/Charge",
                           "Squid/Release",
                           "Squid/Chain_Hit",
                           "Squid/Squid_Dizzy",
                           "Squid/Pulse_Wave",
                           "Squid/Sand_Hit",
                           "Whale/Whale_Laugh",
                           "Whale/Whale_Bubble_Barrage",
                           "Fish/Fish_Large",
                           "Fish/Fish_Small",
                           "Fish/Puffer_Exhale",
                           "Fish/Puffer_Puff_01",
                           "Fish/Puffer_Puff_02",
                           "Objectives/Crown",
                           "Objectives/Objective_Change",
                           "Objectives/BeachBall_Hit",
                           "Objectives/Ring_Lose",
                           "Objectives/Ring_Pickup",
                           "Objectives/Win",
                           "Objectives/GoldenFish",
                           "HUD/Point_Bubble",
                           "Menu/Scroll",
                           "Menu/Select"})
    sources.push_back(MakeSource(std::string("event:/SFX/") + name, amplitude, 0.3f));
  return sources;
}

float PeakOf(const std::vector<float>& stereo) {
  float peak = 0.0f;
  for (const float sample : stereo) peak = std::max(peak, std::abs(sample));
  return peak;
}

float StepOf(const std::vector<float>& stereo) {
  float step = 0.0f;
  for (std::size_t i = 2; i < stereo.size(); ++i) step = std::max(step, std::abs(stereo[i] - stereo[i - 2]));
  return step;
}
