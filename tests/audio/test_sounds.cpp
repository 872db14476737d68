#include "audio/test_sounds.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "folders.h"

namespace {

void WriteBytes(const char* name, const std::vector<std::uint8_t>& bytes) {
  std::ofstream(name, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

std::vector<std::uint8_t> MakeOgg(float amplitude, float seconds, int channels, float hertz) {
  SF_INFO info{};
  info.samplerate = 48000;
  info.channels = channels;
  info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
  std::FILE* file = std::tmpfile();
  SNDFILE* sound = sf_open_fd(::fileno(file), SFM_WRITE, &info, SF_FALSE);
  double best = 1.0;
  sf_command(sound, SFC_SET_VBR_ENCODING_QUALITY, &best, sizeof best);
  const auto frames = static_cast<std::size_t>(seconds * 48000.0f);
  std::vector<float> samples;
  for (std::size_t i = 0; i < frames; ++i)
    samples.insert(samples.end(), static_cast<std::size_t>(channels),
                   amplitude * std::sin(2.0f * 3.14159265f * hertz / 48000.0f * static_cast<float>(i % 19200)));
  sf_write_float(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(sound);
  std::fseek(file, 0, SEEK_END);
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::ftell(file)));
  std::rewind(file);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
  std::fclose(file);
  return bytes;
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
  std::ifstream spec(GameFolder() + "/../sound/bank.txt");
  for (std::string line; std::getline(spec, line);) {
    if (!line.starts_with("event:/")) continue;
    const std::string path = line.substr(0, line.find(' '));
    sources.push_back(MakeSource(path, amplitude, path.starts_with("event:/Music/") ? 0.8f : 0.3f));
  }
  return sources;
}

std::vector<float> Heard(int updates, const std::function<void(std::span<std::int16_t>)>& updateAndRender) {
  std::vector<std::int16_t> samples(2 * kFramesAnUpdate);
  std::vector<float> heard;
  for (int i = 0; i < updates; ++i) {
    updateAndRender(samples);
    for (const std::int16_t sample : samples) heard.push_back(static_cast<float>(sample) / kFullScale);
  }
  return heard;
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
