// The game's calls: what each prints, what is written to the run's log, and what is heard.
#include "audio/audio.h"

#include <gtest/gtest.h>

#include "audio/sound_ids.h"
#include "audio/test_sounds.h"
#include "core/pause.h"
#include "match/player/play_player_audio.h"
#include "physics/contact.h"
#include "scripted_scene.h"

namespace {

constexpr float kAmplitude = 0.1f;

// The game's sounds, playing into memory, in a folder of their own, and what is written to the run's log.
class SoundScene final : public ScriptedScene {
 public:
  explicit SoundScene(Audio::Output output = Audio::Output::kLoopback) {
    static const std::vector<Studio::BankSource> sources = GameSources(kAmplitude);
    WriteMasterBanks(sources);
    Audio::Init(output);
  }
  ~SoundScene() override { Audio::Shutdown(); }

  void OnEvent(std::string_view text) override { log += std::string(text) + ";"; }

  // How many sounds are heard at full loudness after some frames, in tenths.
  static float Level(int frames) {
    const std::vector<float> heard = Heard(frames, [](std::span<std::int16_t> stereo) {
      Audio::Update();
      EXPECT_TRUE(Audio::Render(stereo));
    });
    return PeakOf({heard.end() - 2 * kFramesAnUpdate, heard.end()}) / kAmplitude;
  }

  std::string log;
};

constexpr float kRoom = 0.2f;       // coding adds a little
constexpr float kSilence = 0.001f;  // the output is dithered in its last bit

}  // namespace

TEST(Audio, WithoutOutputEveryCallIsSilentAndStartsAreLogged) {
  SoundScene scene(Audio::Output::kNone);
  Audio::LoadEffects();
  Audio::Play(Sound::kRelease, Audio::kOneShot);
  Audio::Play(Sound::kBarnacle, Audio::kOneShot);
  Audio::Play(Sound::kMatchMusic, Audio::kLongLived);
  Audio::SetMusicVolume(0.5f);
  Audio::StartCharge(3);
  Audio::StopCharge(3);
  Audio::StartCharge(4);
  Audio::PlayPulse(1.0f);
  Audio::PlayWinJingle();
  Audio::StopMusic();
  Audio::StopLongLived(Sound::kTitleMusic);
  Audio::SetBusMuted("SFX", true);
  Audio::SetBusPaused("Music", true);
  Audio::Update();
  EXPECT_EQ(scene.world.text(), "");
  EXPECT_EQ(scene.log, "sound 14;sound 16;music 1;sound 13;sound 15;sound 26;music stop;music stop;");
}

TEST(Audio, MissingBanksAreReportedCallByCall) {
  TestWorld world;
  Audio::Init(Audio::Output::kLoopback);
  EXPECT_TRUE(
      world.text().starts_with("AudioSource/Master Bank.bank: No such file or directory\n"
                               "FMOD error!3 The bank file cannot be read.\n"
                               "AudioSource/Master Bank.strings.bank: "));
  world.ClearText();
  Audio::LoadEffects();
  EXPECT_EQ(Count(world.text(), "FMOD error!"), 25 + 25 + 1);
  world.ClearText();
  Audio::Play(Sound::kRelease, Audio::kOneShot);
  Audio::Update();
  EXPECT_EQ(Count(world.text(), "FMOD error!1 "), 2);  // creating and starting report, releasing does not
  EXPECT_EQ(Count(world.text(), "\n"), 2);
  Audio::Shutdown();
}

TEST(Audio, OddNumbersAndKinds) {
  SoundScene scene;
  Audio::LoadEffects();
  ASSERT_EQ(scene.world.text(), "");
  Audio::Play(Sound::kRelease, Audio::Lifetime{2});
  Audio::AddEvent(Audio::EventKind{2}, Sound{6}, "Squid/Release");
  EXPECT_EQ(scene.world.text(), "Error trying to play sound\nError Adding Studio Audio Event\n");
  scene.world.ClearText();
  for (const Sound id : {Sound::kBarnacle, Sound{-1}, Sound{kSoundCount}, Sound{1 << 30}})
    Audio::Play(id, Audio::kOneShot);
  EXPECT_EQ(Count(scene.world.text(), "FMOD error!1 There is no such event, instance or bus.\n"), 8);
  scene.world.ClearText();
  Audio::Play(Sound::kObjectiveChange, Audio::kOneShot);  // registered, never prepared
  EXPECT_NEAR(scene.Level(2), 1.0f, kRoom);
  EXPECT_EQ(scene.world.text(), "");
}

TEST(Audio, OneMusicIsCurrentAndTheVolumeIsTheMatchMusicsAlways) {
  SoundScene scene;
  Audio::Play(Sound::kMatchMusic, Audio::kLongLived);
  Audio::Play(Sound::kFastMatchMusic, Audio::kLongLived);
  Audio::SetMusicVolume(0.5f);
  EXPECT_NEAR(scene.Level(20), 1.5f, kRoom);
  Audio::StopMusic();
  EXPECT_NEAR(scene.Level(30), 0.5f, kRoom);  // the other one plays on
  Audio::Play(Sound{7}, Audio::kLongLived);
  EXPECT_EQ(Count(scene.world.text(), "FMOD error!"), 1);
  Audio::StopMusic();  // now there is none
  EXPECT_NEAR(scene.Level(30), 0.5f, kRoom);
  Audio::StopLongLived(Sound::kMatchMusic);
  EXPECT_LT(scene.Level(30), kSilence);
  EXPECT_EQ(Count(scene.world.text(), "\n"), 1);
}

TEST(Audio, ChargesOfTwoPlayersAreTwoSounds) {
  SoundScene scene;
  Audio::LoadEffects();
  Audio::StartCharge(0);
  Audio::StartCharge(1);
  EXPECT_NEAR(scene.Level(2), 2.0f, 2 * kRoom);
  Audio::StopCharge(0);
  EXPECT_NEAR(scene.Level(6), 1.5f, kRoom);  // half faded in 6 of 12 updates
  EXPECT_LT(scene.Level(7), kSilence);       // and the other has ended: 18 frames last 13 at its pitch of 1.4
  EXPECT_EQ(scene.world.text(), "");
}

// The frame pauses the music alone, and only buses that are there already.
TEST(Audio, AHeldGameIsQuietButForItsMenu) {
  SoundScene scene;
  Audio::Play(Sound::kMatchMusic, Audio::kLongLived);
  RequestPause("test");
  scene.Run();
  EXPECT_NEAR(scene.Level(10), 1.0f, kRoom);  // no bus is fetched yet
  Audio::LoadEffects();
  scene.Run();
  EXPECT_LT(scene.Level(10), kSilence);
  Audio::Play(Sound::kSquidCollision, Audio::kOneShot);
  EXPECT_NEAR(scene.Level(2), 1.0f, kRoom);
  ReleasePause("test");
  scene.Run();
  EXPECT_NEAR(scene.Level(30), 1.0f, kRoom);
}

TEST(PlayPlayerAudioScript, NamesDecideWhatABumpSoundsLike) {
  SoundScene scene(Audio::Output::kNone);
  PlayPlayerAudioScript script;
  GalePhysics::Contact contact;
  for (const char* name : {"Player3", "barnicle", "whale", "fish1", "Nameless", "fish2", "chain1", "chain2", "chain3",
                           "chain4", "goldfish", "barnacle", "chain5", "Fish1", ""}) {
    contact.secondOwner = &scene.world.Add(name);
    script.OnContact(contact);
  }
  EXPECT_EQ(scene.log,
            "sound 8;sound 16;sound 21;sound 32;sound 32;sound 33;sound 28;sound 28;sound 28;sound 28;sound 27;");
}
