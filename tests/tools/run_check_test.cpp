#include "tools/simulate/run_check.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <memory>
#include <utility>

#include "audio/audio.h"
#include "core/event.h"
#include "core/script_box.h"
#include "graphics/basic_particle_emitter.h"
#include "lint/lint.h"
#include "match/match_scene.h"
#include "match/score/give_points.h"
#include "match/score/score_displays.h"
#include "match/score/sent_points.h"
#include "physics/sphere_collider.h"
#include "tools/printed.h"
#include "tools/simulate/scene_file.h"
#include "tools/simulate/simulate.h"

// Each fault is told in its frame, with its object and numbers. That a whole match has none is seen in ShippedMatch.
TEST(RunCheck, NamesWhatIsWrong) {
  MatchScene match;
  match.Run(2);
  const auto faultOf = [&](const auto& spoil) {
    RunCheck check;
    check.EndFrame(6);
    EXPECT_EQ(check.GetFault(), "");
    spoil();
    check.EndFrame(7);
    EXPECT_EQ(check.CountFrames(), 1);
    EXPECT_FALSE(std::exchange(match.platform.running, true));
    return check.GetFault();
  };
  GameObject& player = MatchScene::Find("Player2");
  const std::string name = "frame 7: object " + std::to_string(player.id) + " \"Player2\"";
  EXPECT_EQ(faultOf([&] {
              BodyOf(player).velocity = {0, std::numeric_limits<float>::quiet_NaN(), 1};
            }),
            name + ": velocity 0 nan 1 is not finite");
  BodyOf(player).velocity = {};
  const Vec3 place = std::exchange(PositionOf(player), {});
  EXPECT_EQ(faultOf([&] { PositionOf(player).x = -10001.0f; }),
            name + ": position -10001 0 0 is more than 10000 units from the middle");
  PositionOf(player) = place;
  const SentPoints sent = {5, 0};
  EXPECT_EQ(faultOf([&] { SendEvent(kScoreObjects[0], Event(kSentPoints, &sent)); }),
            "frame 7: 0 points were awarded, but the displays show 5 and 0 are under way");
  std::unique_ptr<BasicParticleEmitter> emitter;
  const auto emitters = std::to_string(ParticleEmitters().size() + 1);
  EXPECT_EQ(faultOf([&] { emitter = std::make_unique<BasicParticleEmitter>(); }),
            "frame 7: 1 of " + emitters + " particle emitters belong to no object");
  emitter.reset();
  std::unique_ptr<GalePhysics::SphereCollider> sphere;
  EXPECT_NE(faultOf([&] { sphere = std::make_unique<GalePhysics::SphereCollider>(); }).find("sphere colliders"),
            std::string::npos);
  sphere.reset();
  if (std::filesystem::exists("AudioSource/Master Bank.bank")) {  // not in a build without the shipped sound
    Audio::Init(Audio::Output::kUnheard);
    Audio::LoadEffects();
    EXPECT_EQ(faultOf([] {
                for (int i = 0; i < 2; ++i) Audio::Prepare(Sound::kPodiumMusic, Audio::kLongLived);
              }),
              "frame 7: 12 sound instances are open, but only 10 are kept");
    Audio::Shutdown();
  }
  player.alive = false;
  EXPECT_EQ(faultOf([] {}), name + " was marked dead in the frame before and is still there");
}

// The run stops in its first frame. What is left of it is a level for lint, too: without what is broken or tells a
// piece's time, and nobody is nameless. A file that is no level stays.
TEST(Simulate, StopsAtAFaultAndLeavesTheScene) {
  TestWorld world;
  world.AddSphere("comet", {}, {.velocity = {3e38f, 0, 0}});
  world.AddSphere("", {5, 0, 0});
  world.Add("8.000000");
  ASSERT_TRUE(Objects().SaveLevel("sky"));
  GameObject& crate = world.AddSphere("crate", {});
  crate.Insert(std::make_unique<GivePoints>()).Break();
  world.AddSphere("", {9, 0, 0});
  Objects().FindObjectByName("comet")->alive = false;
  world.WriteFile("notes", "mine");
  EXPECT_FALSE(SaveScene("notes"));
  EXPECT_EQ(world.ReadFile("notes"), "mine");
  EXPECT_TRUE(SaveScene("scene"));
  EXPECT_EQ(Printed([](std::FILE* out) { EXPECT_EQ(LintFiles({"scene"}, out), 0); }), "");
  world.Restart();
  EXPECT_EQ(Objects().LoadLevel("scene").size(), 2u);
  world.Restart();
  SimulateOptions options;
  options.dataFolder = std::filesystem::current_path();
  options.level = "sky";
  options.frames = 3;
  options.check = true;
  options.sceneFile = options.dataFolder + "/scene";
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(Simulate(options), 1);
  const std::string told = testing::internal::GetCapturedStderr();
  const std::string summary = testing::internal::GetCapturedStdout();
  EXPECT_NE(told.find("\nframe 0: object 1 \"comet\": position 1.2"), std::string::npos) << told;
  EXPECT_NE(told.find("the run ended after 1 frames"), std::string::npos) << told;
  EXPECT_EQ(summary.substr(0, 9), "frames 1\n");
  static ScriptedPlatform nothing;
  SetPlatform(nothing);
}
