// The sound layer by ear: everything is rendered into memory and measured there.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "audio/studio/system.h"
#include "audio/test_sounds.h"

using Studio::EventDescription;
using Studio::EventInstance;
using Studio::Result;
using Studio::VoiceUse;

namespace {

constexpr float kMusicAmplitude = 0.4f;
constexpr float kEffectAmplitude = 0.02f;
constexpr int kEffects = 12;
constexpr float kSilence = 0.0001f;  // the output is dithered in its last bit

// A system that plays into memory, with a piece of music of 0.4 seconds and some effects of two seconds.
class Ear {
 public:
  /// Plays through what the opener gives, or into memory when there is none.
  explicit Ear(Studio::OutputOpener opener = {}) {
    const bool loopback = opener == nullptr;
    EXPECT_EQ(loopback ? system.InitialiseLoopback(32) : system.Initialise(32, std::move(opener)), Result::kOk);
    static const std::vector<Studio::BankSource> sources = [] {
      std::vector<Studio::BankSource> all = {MakeSource("event:/Music/Tune", kMusicAmplitude, 0.4f)};
      for (int i = 0; i < kEffects; ++i)
        all.push_back(MakeSource("event:/SFX/" + std::to_string(i), kEffectAmplitude, 2.0f));
      return all;
    }();
    Studio::Bank bank;
    std::string why;
    EXPECT_EQ(system.LoadBankMemory(Studio::WriteEventBank(sources), bank, why), Result::kOk) << why;
    EXPECT_EQ(system.LoadBankMemory(Studio::WriteStringsBank(sources), bank, why), Result::kOk) << why;
  }

  EventDescription Find(const std::string& path) {
    EventDescription event;
    EXPECT_EQ(system.GetEvent(path, event), Result::kOk);
    return event;
  }
  EventDescription Effect(int number) { return Find("event:/SFX/" + std::to_string(number)); }
  EventInstance Create(EventDescription event, VoiceUse use) {
    EventInstance instance;
    EXPECT_EQ(system.CreateInstance(event, use, instance), Result::kOk);
    return instance;
  }
  EventInstance CreateMusic() { return Create(Find("event:/Music/Tune"), VoiceUse::kKeepsOne); }
  void PlayOnce(EventDescription event) {
    const EventInstance instance = Create(event, VoiceUse::kWhenFree);
    EXPECT_EQ(system.Start(instance), Result::kOk);
    EXPECT_EQ(system.Release(instance), Result::kOk);
  }
  // What is heard in the next updates, in stereo.
  std::vector<float> Listen(int updates) {
    return Heard(updates, [this](std::span<std::int16_t> stereo) {
      system.Update();
      if (system.Render(stereo) != Result::kOk) std::fill(stereo.begin(), stereo.end(), std::int16_t{0});
    });
  }
  // How many effects are heard at once, by their level.
  int CountEffects() {
    Listen(1);
    return static_cast<int>(PeakOf(Listen(1)) / kEffectAmplitude + 0.5f);
  }

  Studio::System system;
};

// No frame may be further from the next than the wave itself goes, with some room for coding, fading and one effect.
constexpr float kLargestStep = 1.3f * kSteepness * kMusicAmplitude;

// A loopback output whose plug a test can pull.
class Unpluggable final : public Studio::Output {
 public:
  Unpluggable(std::unique_ptr<Output> loopback, const std::atomic<bool>& plugged)
      : Output(std::move(*loopback)), plugged_(plugged) {}
  bool IsConnected() const override { return plugged_; }

 private:
  const std::atomic<bool>& plugged_;
};

}  // namespace

TEST(StudioSystem, MusicGoesRoundWithoutAStepAndTheSameEveryTime) {
  const auto hear = [] {
    Ear ear;
    ear.system.Start(ear.CreateMusic());
    ear.PlayOnce(ear.Effect(0));
    return ear.Listen(120);
  };
  const std::vector<float> heard = hear();
  EXPECT_NEAR(PeakOf({heard.end() - 1600, heard.end()}), kMusicAmplitude, 0.05f);
  EXPECT_LT(StepOf(heard), kLargestStep);
  EXPECT_EQ(heard, hear());
}

// Restarting, stopping, pausing, muting and turning down fade; a stop at once is what a click looks like.
TEST(StudioSystem, NothingButAStopAtOnceClicks) {
  Ear ear;
  const EventInstance music = ear.CreateMusic();
  Studio::Bus bus;
  ASSERT_EQ(ear.system.GetBus("bus:/Music", bus), Result::kOk);
  std::vector<float> heard;
  // The level in the last of these updates; all are kept.
  const auto listen = [&](int updates) {
    const std::vector<float> more = ear.Listen(updates);
    heard.insert(heard.end(), more.begin(), more.end());
    return PeakOf({more.end() - 2 * kFramesAnUpdate, more.end()});
  };
  for (int start = 0; start < 4; ++start) {
    ear.system.Start(music);
    ear.system.SetVolume(music, 0.5f);
  }
  EXPECT_NEAR(listen(7), 0.5f * kMusicAmplitude, 0.03f);
  ear.system.Start(music);  // in mid-wave: the update before ended there
  EXPECT_NEAR(listen(9), 0.5f * kMusicAmplitude, 0.03f);
  ear.system.SetVolume(music, 1.0f);
  EXPECT_NEAR(listen(9), kMusicAmplitude, 0.05f);
  ear.system.SetPaused(bus, true);
  EXPECT_LT(listen(12), kSilence);
  ear.system.SetMute(bus, true);
  ear.system.SetPaused(bus, false);
  EXPECT_LT(listen(12), kSilence);  // muting outlives the pause
  ear.system.SetMute(bus, false);
  EXPECT_NEAR(listen(12), kMusicAmplitude, 0.05f);
  ear.system.Stop(music);
  EXPECT_GT(listen(4), 0.5f * kMusicAmplitude);
  EXPECT_LT(listen(20), kSilence);
  EXPECT_LT(StepOf(heard), kLargestStep);
}

TEST(StudioSystem, AnEventIsHeardFourTimesAndKeptVoicesStayFreeForTheirInstances) {
  Ear ear;
  const EventInstance first = ear.Create(ear.Effect(0), VoiceUse::kKeepsOne);
  const EventInstance second = ear.Create(ear.Effect(0), VoiceUse::kKeepsOne);
  ear.PlayOnce(ear.Effect(1));
  ear.PlayOnce(ear.Effect(1));
  EXPECT_EQ(ear.CountEffects(), 1) << "in two updates";
  ear.PlayOnce(ear.Effect(1));
  EXPECT_EQ(ear.CountEffects(), 1) << "the third has just begun";
  for (int round = 0; round < 5; ++round) {
    ear.PlayOnce(ear.Effect(1));
    ear.Listen(3);
  }
  EXPECT_EQ(ear.CountEffects(), 4);
  for (int round = 0; round < 4; ++round) {
    for (int effect = 2; effect < kEffects; ++effect) ear.PlayOnce(ear.Effect(effect));
    ear.Listen(3);
  }
  EXPECT_EQ(ear.CountEffects(), 30);
  ear.system.Start(first);
  ear.system.Start(second);  // the same event in the same update: kept ones need not wait
  EXPECT_EQ(ear.CountEffects(), 32);
  ear.system.Stop(first);
  ear.Listen(20);
  EXPECT_EQ(ear.CountEffects(), 31);
  ear.Listen(120);
  EXPECT_EQ(ear.CountEffects(), 0);  // effects end by themselves
}

TEST(StudioSystem, InstancesAreFreedAndTheirHandlesNameNothing) {
  Ear ear;
  EventInstance last;
  for (int play = 0; play < 500; ++play) {
    last = ear.Create(ear.Effect(play % kEffects), VoiceUse::kWhenFree);
    ear.system.Start(last);
    ASSERT_EQ(ear.system.Release(last), Result::kOk);
    if (play % 8 == 0) ear.Listen(1);
  }
  Studio::System& system = ear.system;
  EventInstance none;
  for (const Result result :
       {system.Start(last), system.CreateInstance({}, VoiceUse::kWhenFree, none), system.LoadSampleData({99}),
        system.Start({0xffffffffu}), system.Stop({}), system.SetPitch({}, 1.0f), system.SetVolume({}, 1.0f),
        system.SetMute({}, true), system.SetPaused({3}, true)})
    EXPECT_EQ(result, Result::kInvalidHandle);
  Studio::Bus bus;
  EXPECT_EQ(ear.system.GetBus("bus:/Voices", bus), Result::kBusNotFound);
  EXPECT_EQ(Studio::System().Update(), Result::kNotInitialised);
}

// A television that is switched off and on again: effects end with it, music goes on, and no call fails meanwhile.
TEST(StudioSystem, ADeviceGoesAndAnotherComes) {
  std::atomic<bool> plugged = false;
  Ear ear(Studio::OutputOpener([&]() -> std::unique_ptr<Studio::Output> {
    if (!plugged) return nullptr;
    return std::make_unique<Unpluggable>(Studio::Output::OpenLoopback(), plugged);
  }));
  const auto waitForMusic = [&] {
    float peak = 0.0f;
    for (int i = 0; i < 500 && peak < 0.5f * kMusicAmplitude; ++i) {
      peak = PeakOf(ear.Listen(1));
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return peak;
  };
  const EventInstance music = ear.CreateMusic();
  EXPECT_EQ(ear.system.Start(music), Result::kOk);
  ear.PlayOnce(ear.Effect(0));
  EXPECT_LT(PeakOf(ear.Listen(10)), kSilence);
  plugged = true;
  EXPECT_NEAR(waitForMusic(), kMusicAmplitude, 0.05f);
  for (int again = 0; again < 2; ++again) {
    ear.PlayOnce(ear.Effect(0));
    plugged = false;
    EXPECT_LT(PeakOf(ear.Listen(10)), kSilence);
    ear.PlayOnce(ear.Effect(1));
    if (again == 1) {
      EXPECT_EQ(ear.system.Start(music), Result::kOk);
    }
    plugged = true;
    EXPECT_NEAR(waitForMusic(), kMusicAmplitude, 0.05f);
  }
  ear.system.Stop(music);
  ear.Listen(20);
  EXPECT_EQ(ear.CountEffects(), 0);
}

// A sound server can hang inside the opening of a device; the game ends all the same, and nothing is left behind when
// the server answers at last.
TEST(StudioSystem, AnEndDoesNotWaitForADeviceThatHangs) {
  using Clock = std::chrono::steady_clock;
  struct Server {
    std::atomic<bool> hangs = true;
    std::atomic<bool> answered = false;
  };
  const auto server = std::make_shared<Server>();
  const auto start = Clock::now();
  {
    Ear ear(Studio::OutputOpener([server]() -> std::unique_ptr<Studio::Output> {
      while (server->hangs) std::this_thread::sleep_for(std::chrono::milliseconds(1));
      server->answered = true;
      return Studio::Output::OpenLoopback();
    }));
    EXPECT_EQ(ear.system.Start(ear.CreateMusic()), Result::kOk);
    EXPECT_LT(PeakOf(ear.Listen(10)), kSilence);
  }
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
  EXPECT_FALSE(server->answered);
  server->hangs = false;
  for (int wait = 0; wait < 5000 && server.use_count() > 1; ++wait)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_TRUE(server->answered);
  EXPECT_EQ(server.use_count(), 1);
}
