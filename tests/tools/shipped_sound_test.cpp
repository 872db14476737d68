// The sound that ships: what the bank holds, and what the players of a match hear.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>

#include "audio/studio/bank_file.h"
#include "audio/studio/sound_reader.h"
#include "audio/studio/voice_pool.h"
#include "folders.h"
#include "test_world.h"

namespace {

using Sound = std::vector<float>;  // one side, full scale 1

constexpr std::ptrdiff_t kSecond = 48000;
constexpr std::size_t kFrame = kSecond / 60;
constexpr std::size_t kWavHeader = 44;
const std::string kMasterBank = BuildFolder() + "/AudioSource/Master Bank.bank";

double Decibels(double amplitude) { return 20.0 * std::log10(std::max(amplitude, 1e-9)); }

// How loud `part` is in `mix` when it begins at `at`: 1 as it is, 0 not at all. Other sounds hardly count, they are not
// alike.
double ShareOf(std::span<const float> part, const Sound& mix, std::size_t at) {
  double both = 0.0;
  double own = 0.0;
  for (std::size_t i = 0; i < part.size() && at + i < mix.size(); ++i) {
    both += double{part[i]} * mix[at + i];
    own += double{part[i]} * part[i];
  }
  return both / std::max(own, 1e-9);
}

std::span<const float> Beginning(const Sound& sound) {
  return std::span(sound).first(std::min<std::size_t>(sound.size(), 2 * kSecond / 5));
}

// The place near `at` where the beginning of `part` is loudest: the mixer begins a sound with a block of its own.
std::size_t FindStart(const Sound& part, const Sound& mix, std::size_t at) {
  std::vector<double> shares;
  for (std::size_t place = at; place < at + 4 * kFrame; ++place) shares.push_back(ShareOf(Beginning(part), mix, place));
  return at + static_cast<std::size_t>(std::ranges::max_element(shares) - shares.begin());
}

Sound Faster(const Sound& sound, double pitch) {
  Sound faster;
  for (double place = 0.0; place + 1.0 < static_cast<double>(sound.size()); place += pitch) {
    const auto i = static_cast<std::size_t>(place);
    faster.push_back(std::lerp(sound[i], sound[i + 1], static_cast<float>(place - static_cast<double>(i))));
  }
  return faster;
}

// The highest value between the samples too, from four times as many: a windowed sinc of 12 samples (the idea of
// ITU-R BS.1770-4, annex 2).
double TruePeak(const Sound& sound) {
  constexpr int kReach = 6;
  constexpr double kPi = 3.14159265358979323846;
  float peak = 0.0f;
  for (const float value : sound) peak = std::max(peak, std::abs(value));
  for (int quarter = 1; quarter < 4; ++quarter) {
    float taps[2 * kReach];
    for (int tap = 0; tap < 2 * kReach; ++tap) {
      const double x = tap - (kReach - 1) - quarter / 4.0;
      const double window = 0.5 + 0.5 * std::cos(kPi * x / (kReach + 1));
      taps[tap] = static_cast<float>(std::sin(kPi * x) / (kPi * x) * window);
    }
    // Tap by tap over a block: the compiler can then take several samples at once.
    constexpr std::size_t kBlock = 1024;
    for (std::size_t begin = 0; begin + 2 * kReach <= sound.size(); begin += kBlock) {
      const std::size_t count = std::min(kBlock, sound.size() - 2 * kReach + 1 - begin);
      float values[kBlock] = {};
      for (std::size_t tap = 0; tap < 2 * kReach; ++tap)
        for (std::size_t i = 0; i < count; ++i) values[i] += taps[tap] * sound[begin + tap + i];
      for (std::size_t i = 0; i < count; ++i) peak = std::max(peak, std::abs(values[i]));
    }
  }
  return peak;
}

// One filter of two poles and two zeros over the whole sound.
void Filter(std::vector<double>& sound, const double (&zeros)[3], const double (&poles)[2]) {
  double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
  for (double& value : sound) {
    const double out = zeros[0] * value + zeros[1] * x1 + zeros[2] * x2 - poles[0] * y1 - poles[1] * y2;
    x2 = std::exchange(x1, std::exchange(value, out));
    y2 = std::exchange(y1, out);
  }
}

// Power of the sound as the ear weighs it, in windows of 0.4 s every 0.1 s: ITU-R BS.1770-4, annex 1.
std::vector<double> Powers(const Sound& sound) {
  std::vector<double> weighted(sound.begin(), sound.end());
  Filter(weighted, {1.53512485958697, -2.69169618940638, 1.19839281085285}, {-1.69065929318241, 0.73248077421585});
  Filter(weighted, {1.0, -2.0, 1.0}, {-1.99004745483398, 0.99007225036621});
  constexpr std::ptrdiff_t kWindow = 2 * kSecond / 5;
  weighted.resize(std::max<std::size_t>(weighted.size(), kWindow));
  std::vector<double> powers;
  for (auto at = weighted.begin(); weighted.end() - at >= kWindow; at += kSecond / 10)
    powers.push_back(std::inner_product(at, at + kWindow, at, 0.0) / kWindow);
  return powers;
}

// The sides of a sound; those of a mono sound are one.
template <class Sample>
std::vector<Sound> SidesOf(const std::vector<Sample>& stereo, float fullScale) {
  std::vector<Sound> sides(2);
  for (Sound& side : sides) side.resize(stereo.size() / 2);
  for (std::size_t i = 0; i < stereo.size(); ++i) sides[i % 2][i / 2] = stereo[i] / fullScale;
  if (sides[0] == sides[1]) sides.pop_back();
  return sides;
}

class ShippedSound : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kMasterBank)) GTEST_SKIP() << "a build without the shipped sound";
    std::vector<std::uint8_t> bytes;
    std::string why;
    ASSERT_EQ(Studio::ReadBankFile(kMasterBank, bytes, why), Studio::Result::kOk) << why;
    ASSERT_EQ(Studio::ParseBank(std::move(bytes), bank_, why), Studio::Result::kOk) << why;
  }

  static std::vector<Sound> Decode(const Studio::BankEvent& event) {
    Studio::Samples samples;
    EXPECT_EQ(Studio::DecodeAll(event.sound, samples), Studio::Result::kOk) << event.number;
    return SidesOf(samples.stereo, 1.0f);
  }
  std::vector<Sound> Decode(std::string_view path) {
    for (const Studio::BankEvent& event : bank_.events)
      if (event.number == Studio::EventNumber(path)) return Decode(event);
    ADD_FAILURE() << path;
    return {Sound()};
  }

  // The bytes of the sound of 20 seconds of a match in which a player charges once and lets go; its log goes to log_.
  std::string HearMatch() {
    world_.WriteFile("charge.input", "0 pad 0 connect\n200 pad 0 axis 5 32767\n225 pad 0 axis 5 -32768\n");
    std::string command(1, '"');
    command += BuildFolder() +
               "/brinewhirl-tool\" simulate --match --frames 1200 --input charge.input --wav match.wav " +
               "--trace - > log.txt";
    EXPECT_EQ(std::system(command.c_str()), 0);
    log_ = world_.ReadFile("log.txt");
    return world_.ReadFile("match.wav");
  }
  // The place in the sound where the log says this for the first time.
  std::size_t PlaceOf(const std::string& event) {
    const auto end = log_.find(" " + event + "\n");
    EXPECT_NE(end, std::string::npos) << event;
    return std::stoul(log_.substr(log_.rfind(' ', end - 1))) * kFrame;
  }

  TestWorld world_;
  Studio::BankContent bank_;
  std::string log_;
};

}  // namespace

TEST_F(ShippedSound, LoopsJoinAndNothingIsTooLoud) {
  ASSERT_EQ(bank_.events.size(), 28u);
  EXPECT_EQ(std::ranges::count(bank_.events, Studio::Category::kMusic, &Studio::BankEvent::category), 4);
  double mean = 0.0;  // of the podium's music, whose loudness the effects are held against
  for (const Studio::BankEvent& event : bank_.events) {
    SCOPED_TRACE(testing::Message() << "event " << &event - bank_.events.data() + 1 << " of sound/bank.txt");
    const std::vector<Sound> sides = Decode(event);
    if (event.number == Studio::EventNumber("event:/Music/Marlo_Baha")) {
      const std::vector<double> powers = Powers(sides[0]);
      mean = std::accumulate(powers.begin(), powers.end(), 0.0) / static_cast<double>(powers.size());
    }
    for (const Sound& side : sides) {
      EXPECT_LE(Decibels(TruePeak(side)), -1.0);
      if (event.category == Studio::Category::kEffects) {
        const std::vector<double> powers = Powers(side);
        ASSERT_GT(mean, 0.0) << "the music stands in front of the effects";
        EXPECT_LE(10.0 * std::log10(*std::max_element(powers.begin(), powers.end()) / mean), 6.0);
        continue;
      }
      Sound join(side.end() - kSecond / 100, side.end());
      join.insert(join.end(), side.begin(), side.begin() + kSecond / 100);
      for (std::size_t i = 1; i < join.size(); ++i) ASSERT_LE(std::abs(join[i] - join[i - 1]), 0.02) << i;
    }
  }
}

TEST_F(ShippedSound, AMatchIsHeardTheSameEveryTime) {
  const std::string wav = HearMatch();
  ASSERT_EQ(wav.size(), kWavHeader + 1200 * kFrame * 4);
  EXPECT_TRUE(HearMatch() == wav);
  std::vector<std::int16_t> stereo(2 * 1200 * kFrame);
  std::memcpy(stereo.data(), wav.data() + kWavHeader, stereo.size() * sizeof stereo[0]);
  const std::vector<Sound> heard = SidesOf(stereo, 32768.0f);
  const std::vector<Sound> tune = Decode("event:/Music/Marlo_Buckaneer");
  ASSERT_EQ(heard.size(), tune.size());
  for (std::size_t side = 0; side < heard.size(); ++side) {
    EXPECT_LE(Decibels(TruePeak(heard[side])), -1.0);
    const std::size_t start = FindStart(tune[side], heard[side], 0);
    EXPECT_NEAR(ShareOf(tune[side], heard[side], start), 0.5 * Studio::kMasterGain, 0.05);
  }
  for (const auto& [event, path, pitch] : {std::tuple{"sound 8", "event:/SFX/Squid/Squid_Collision", 1.0},
                                           std::tuple{"sound 13", "event:/SFX/Squid/Charge", 1.4},
                                           std::tuple{"sound 14", "event:/SFX/Squid/Release", 1.0}}) {
    const std::vector<Sound> decoded = Decode(path);
    ASSERT_EQ(decoded.size(), 1u) << path << " is mono";
    const Sound effect = Faster(decoded[0], pitch);
    for (const Sound& side : heard) {
      const std::size_t hit = FindStart(effect, side, PlaceOf(event));
      EXPECT_NEAR(ShareOf(Beginning(effect), side, hit), Studio::kMasterGain, 0.25) << event;
      if (pitch == 1.0) continue;
      // Letting go ends the charge with a fade of 0.2 s.
      const std::size_t end = PlaceOf("sound 14") - PlaceOf(event) + kSecond / 4;
      ASSERT_GT(effect.size(), end + kSecond / 5);
      EXPECT_NEAR(ShareOf(std::span(effect).subspan(end), side, hit + end), 0.0, 0.1);
    }
  }
}
