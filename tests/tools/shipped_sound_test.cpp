// The sound that ships, through the tool: what the bank holds, and what the players of a match hear.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "audio/audio.h"
#include "audio/studio/voice_pool.h"
#include "test_world.h"

namespace {

using Sound = std::vector<double>;  // one side, full scale 1

constexpr std::size_t kSecond = 48000;
constexpr std::size_t kFrame = kSecond / 60;
constexpr std::size_t kWavHeader = 44;
constexpr double kChargePitch = 1.4;
const std::string kMasterBank = BRINEWHIRL_BUILD_DIR "/AudioSource/Master Bank.bank";

double Decibels(double amplitude) { return 20.0 * std::log10(std::max(amplitude, 1e-9)); }

Sound Part(const Sound& sound, std::size_t from, std::size_t length) {
  if (from >= sound.size()) return {};
  const auto begin = sound.begin() + static_cast<std::ptrdiff_t>(from);
  return {begin, begin + static_cast<std::ptrdiff_t>(std::min(length, sound.size() - from))};
}

double Level(const Sound& sound) {
  double energy = 0.0;
  for (const double value : sound) energy += value * value;
  return std::sqrt(energy / static_cast<double>(std::max<std::size_t>(sound.size(), 1)));
}

// How loud `part` is in `mix` when it begins at `at`: 1 as it is, 0 not at all. Other sounds hardly count, they are not
// alike.
double ShareOf(const Sound& part, const Sound& mix, std::size_t at) {
  double both = 0.0;
  double own = 0.0;
  for (std::size_t i = 0; i < part.size() && at + i < mix.size(); ++i) {
    both += part[i] * mix[at + i];
    own += part[i] * part[i];
  }
  return both / std::max(own, 1e-9);
}

// The place near `at` where the first `length` frames of `part` are loudest: the mixer begins a sound with a block of
// its own.
std::size_t FindStart(const Sound& part, const Sound& mix, std::size_t at, std::size_t length = kSecond / 10) {
  const Sound head = Part(part, 0, length);
  std::size_t best = at;
  for (std::size_t place = at; place < at + 4 * kFrame; ++place)
    if (ShareOf(head, mix, place) > ShareOf(head, mix, best)) best = place;
  return best;
}

Sound Faster(const Sound& sound, double pitch) {
  Sound faster;
  for (double place = 0.0; place + 1.0 < static_cast<double>(sound.size()); place += pitch) {
    const auto i = static_cast<std::size_t>(place);
    const double between = place - static_cast<double>(i);
    faster.push_back((1.0 - between) * sound[i] + between * sound[i + 1]);
  }
  return faster;
}

// The highest value between the samples too, from four times as many: a windowed sinc of 12 samples (the idea of
// ITU-R BS.1770-4, annex 2).
double TruePeak(const Sound& sound) {
  constexpr int kReach = 6;
  constexpr double kPi = 3.14159265358979323846;
  double peak = 0.0;
  for (const double value : sound) peak = std::max(peak, std::abs(value));
  for (int quarter = 1; quarter < 4; ++quarter) {
    double taps[2 * kReach];
    for (int tap = 0; tap < 2 * kReach; ++tap) {
      const double x = tap - (kReach - 1) - quarter / 4.0;
      taps[tap] = std::sin(kPi * x) / (kPi * x) * (0.5 + 0.5 * std::cos(kPi * x / (kReach + 1)));
    }
    for (std::size_t i = 0; i + 2 * kReach <= sound.size(); ++i) {
      double value = 0.0;
      for (int tap = 0; tap < 2 * kReach; ++tap) value += taps[tap] * sound[i + static_cast<std::size_t>(tap)];
      peak = std::max(peak, std::abs(value));
    }
  }
  return peak;
}

// One filter of two poles and two zeros over the whole sound.
Sound Filter(const Sound& sound, const double (&zeros)[3], const double (&poles)[2]) {
  Sound out(sound.size());
  double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    out[i] = zeros[0] * sound[i] + zeros[1] * x1 + zeros[2] * x2 - poles[0] * y1 - poles[1] * y2;
    x2 = std::exchange(x1, sound[i]);
    y2 = std::exchange(y1, out[i]);
  }
  return out;
}

// Power of the sound as the ear weighs it, in windows of 0.4 s every 0.1 s: ITU-R BS.1770-4, annex 1.
std::vector<double> Powers(const Sound& sound) {
  Sound weighted =
      Filter(sound, {1.53512485958697, -2.69169618940638, 1.19839281085285}, {-1.69065929318241, 0.73248077421585});
  weighted = Filter(weighted, {1.0, -2.0, 1.0}, {-1.99004745483398, 0.99007225036621});
  constexpr std::size_t kWindow = 2 * kSecond / 5;
  weighted.resize(std::max(weighted.size(), kWindow));
  std::vector<double> powers;
  for (std::size_t at = 0; at + kWindow <= weighted.size(); at += kSecond / 10)
    powers.push_back(std::pow(Level(Part(weighted, at, kWindow)), 2.0));
  return powers;
}

// What ships, and runs of the game with it, in a folder that goes with the test.
class ShippedSound : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kMasterBank)) GTEST_SKIP() << "a build without the shipped sound";
  }

  // What the tool prints.
  std::string Tool(const std::string& arguments) {
    const int status =
        std::system(("\"" BRINEWHIRL_BUILD_DIR "/brinewhirl-tool\" " + arguments + " > tool.txt").c_str());
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << arguments;
    return world_.ReadFile("tool.txt");
  }

  // A WAV file by its sides; a mono one has equal sides.
  std::vector<Sound> ReadWav(const std::string& name) {
    const std::string bytes = world_.ReadFile(name);
    std::uint16_t channels = 0;
    std::memcpy(&channels, bytes.data() + 22, sizeof channels);
    std::vector<Sound> sides(2);
    for (std::size_t at = kWavHeader, i = 0; at + 2 <= bytes.size(); at += 2, ++i) {
      std::int16_t sample = 0;
      std::memcpy(&sample, bytes.data() + at, sizeof sample);
      for (std::size_t side = 0; side < 2; ++side)
        if (channels == 1 || i % 2 == side) sides[side].push_back(sample / 32768.0);
    }
    return sides;
  }

  std::vector<Sound> Extract(const std::string& event) {
    Tool("bank extract '" + kMasterBank + "' event:/" + event + " event.wav");
    return ReadWav("event.wav");
  }

  // Runs a match and keeps its sound in match.wav and what is in its log in log_.
  std::vector<Sound> Match(const std::string& arguments) {
    log_ = Tool("simulate --match --wav match.wav --trace - " + arguments);
    return ReadWav("match.wav");
  }

  // The frames in which a line of the log stands.
  std::vector<std::size_t> FramesOf(const std::string& event) {
    std::vector<std::size_t> frames;
    std::istringstream lines(log_);
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string kind, rest;
      std::size_t frame = 0;
      if (words >> kind >> frame && kind == "event" && std::getline(words >> std::ws, rest) && rest == event)
        frames.push_back(frame);
    }
    return frames;
  }

  TestWorld world_;
  std::string log_;
};

}  // namespace

TEST_F(ShippedSound, TheBankHoldsEveryEventOfTheGame) {
  const std::string list = Tool("bank list '" + kMasterBank + "'");
  EXPECT_EQ(Count(list, "\n"), 28);
  EXPECT_EQ(Count(list, " sfx "), 24);
  EXPECT_EQ(Count(list, " music "), 4);
  std::filesystem::create_directory_symlink(BRINEWHIRL_BUILD_DIR "/AudioSource", "AudioSource");
  Audio::Init(Audio::Output::kLoopback);
  Audio::LoadEffects();
  Audio::Shutdown();
  EXPECT_EQ(world_.text(), "");
}

TEST_F(ShippedSound, LoopsJoinAndNothingIsTooLoud) {
  const std::string list = Tool("bank list '" + kMasterBank + "'");
  std::vector<double> powers = Powers(Extract("Music/Marlo_Baha")[0]);
  double reference = 0.0;
  for (const double power : powers) reference += power / static_cast<double>(powers.size());
  std::istringstream lines(list);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string event, kind;
    words >> event >> kind;
    SCOPED_TRACE(event);
    double power = 0.0;
    for (const Sound& side : Extract(event.substr(std::strlen("event:/")))) {
      EXPECT_LE(Decibels(TruePeak(side)), -1.0);
      powers = Powers(side);
      power = std::max(power, *std::max_element(powers.begin(), powers.end()));
      if (kind != "music") continue;
      Sound join = Part(side, side.size() - kSecond / 100, kSecond / 100);
      const Sound first = Part(side, 0, kSecond / 100);
      join.insert(join.end(), first.begin(), first.end());
      for (std::size_t i = 1; i < join.size(); ++i) ASSERT_LE(std::abs(join[i] - join[i - 1]), 0.02) << i;
    }
    if (kind == "sfx") {
      EXPECT_LE(10.0 * std::log10(power / reference), 6.0);
    }
  }
}

TEST_F(ShippedSound, AMatchIsHeardTheSameEveryTime) {
  const std::vector<Sound> heard = Match("--frames 1200");
  const std::string first = world_.ReadFile("match.wav");
  ASSERT_EQ(first.size(), kWavHeader + 1200 * kFrame * 4);
  Tool("simulate --match --frames 1200 --wav again.wav");
  EXPECT_TRUE(world_.ReadFile("again.wav") == first);

  const std::vector<std::size_t> bumps = FramesOf("sound 8");
  ASSERT_FALSE(bumps.empty());
  const std::vector<Sound> tune = Extract("Music/Marlo_Buckaneer");
  const Sound bump = Extract("SFX/Squid/Squid_Collision")[0];
  for (std::size_t side = 0; side < 2; ++side) {
    EXPECT_LE(Decibels(TruePeak(heard[side])), -1.0);
    const std::size_t start = FindStart(tune[side], heard[side], 0);
    EXPECT_NEAR(ShareOf(tune[side], heard[side], start), 0.5 * Studio::kMasterGain, 0.05);
    const std::size_t hit = FindStart(bump, heard[side], bumps.front() * kFrame);
    EXPECT_NEAR(ShareOf(bump, heard[side], hit), Studio::kMasterGain, 0.25);
  }
}

TEST_F(ShippedSound, AChargeIsHeardUntilItsRelease) {
  world_.WriteFile("charge.input",
                   "0 pad 0 connect\n10 pad 0 axis 0 32767\n200 pad 0 axis 5 32767\n225 pad 0 axis 5 -32768\n");
  const Sound heard = Match("--frames 300 --input charge.input")[0];
  const std::vector<std::size_t> charges = FramesOf("sound 13");
  const std::vector<std::size_t> releases = FramesOf("sound 14");
  ASSERT_EQ(charges.size(), 1u);
  ASSERT_EQ(releases.size(), 1u);
  const Sound charge = Faster(Extract("SFX/Squid/Charge")[0], kChargePitch);
  const std::size_t held = (releases[0] - charges[0]) * kFrame;
  const std::size_t start = FindStart(charge, heard, charges[0] * kFrame, held);
  EXPECT_NEAR(ShareOf(Part(charge, 0, held), heard, start), Studio::kMasterGain, 0.25);
  const std::size_t faded = held + kSecond / 4;  // letting go fades for 0.2 s
  ASSERT_GT(Level(Part(charge, faded, kSecond)), 0.25 * Level(charge));
  EXPECT_NEAR(ShareOf(Part(charge, faded, kSecond), heard, start + faded), 0.0, 0.1);
  const Sound release = Extract("SFX/Squid/Release")[0];
  EXPECT_NEAR(ShareOf(release, heard, FindStart(release, heard, releases[0] * kFrame)), Studio::kMasterGain, 0.25);
}
