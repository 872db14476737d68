// Sounds and banks for tests: sine waves whose level tells how many of them are heard. Effects fit into a frame with
// whole periods, so that they add up; music does not, so that a frame ends in mid-wave, where a cut is heard.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "audio/studio/bank_file.h"
#include "audio/studio/system.h"
#include "audio/studio/voice_pool.h"

inline constexpr int kFramesAnUpdate = 800;
/// What a wave of amplitude 1 is rendered with.
inline constexpr float kFullScale = 32768.0f * Studio::kMasterGain;
inline constexpr float kEffectHertz = 240.0f;  // 4 periods in a frame
inline constexpr float kMusicHertz = 247.5f;
/// What a music wave of amplitude 1 moves from one frame to the next, at most.
inline constexpr float kSteepness = 2.0f * 3.14159265f * kMusicHertz / 48000.0f;

/// An Ogg Vorbis stream of a sine wave.
std::vector<std::uint8_t> MakeOgg(float amplitude, float seconds, int channels = 1, float hertz = kEffectHertz);

Studio::BankSource MakeSource(const std::string& path, float amplitude, float seconds);

/// Writes both banks of the sources into AudioSource/ of the working folder, under the names that the game reads.
void WriteMasterBanks(const std::vector<Studio::BankSource>& sources);

/// The 28 events of the game: music of 0.8 s and effects of 0.3 s, all at this amplitude.
std::vector<Studio::BankSource> GameSources(float amplitude);

/// What that many updates render, in stereo, full scale being kFullScale.
std::vector<float> Heard(int updates, const std::function<void(std::span<std::int16_t>)>& updateAndRender);

/// Largest sample, and largest step between two neighbouring frames.
float PeakOf(const std::vector<float>& stereo);
float StepOf(const std::vector<float>& stereo);
