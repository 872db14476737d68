// What is drawn, in a real GL context, and that it does not matter to the match whether there is one.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "core/pause.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "folders.h"
#include "frame.h"
#include "game_events.h"
#include "graphics/background.h"
#include "graphics/basic_particle_emitter.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"
#include "offscreen_scene.h"
#include "test_world.h"
#include "tools/simulate/digest.h"

namespace {

// The state after ten seconds among bubbles.
std::uint64_t RunBubbles(bool withContext) {
  TestWorld world;
  std::filesystem::current_path(BuildFolder());
  std::optional<OffscreenContext> context;
  if (withContext) context.emplace();
  GetRenderer().StartRipple({});
  Objects().LoadLevel("bubblegens");
  GameEvents events;
  Frame frame(events);
  for (int i = 0; i < 600; ++i) frame.Run();
  EXPECT_EQ(gl::HasContext(), withContext);
  int particles = 0;
  for (const ParticleEmitter* emitter : ParticleEmitters()) particles += emitter->CountLive();
  EXPECT_GT(particles, 20);
  return StateDigest();
}

// Red bubbles on one spot.
void AddBubbles(GameObject& object) {
  auto& box = object.Insert(std::make_unique<ScriptBox>());
  auto& emitter = static_cast<BasicParticleEmitter&>(box.AddScript(std::make_unique<BasicParticleEmitter>()));
  for (Vec3* v : {&emitter.startingPositionMin, &emitter.startingPositionMax, &emitter.minVelocity,
                  &emitter.maxVelocity, &emitter.minAcceleration, &emitter.maxAcceleration})
    *v = {};
  emitter.minScale.x = emitter.maxScale.x = 8.0f;
  emitter.textureName = "BlueBox.png";
  emitter.colour = {1.0f, 0.0f, 0.0f};
}

}  // namespace

TEST(Drawing, AMatchIsTheSameWithAndWithoutAContext) {
  const std::uint64_t seen = RunBubbles(true);
  EXPECT_EQ(RunBubbles(false), seen);
}

// Particles cover the background, a sprite covers particles, a text covers both unless the game is paused.
TEST(Drawing, LayersCoverEachOtherInTheirOrder) {
  TestWorld world;
  std::filesystem::current_path(BuildFolder());
  OffscreenContext context;
  ASSERT_TRUE(context.IsUsable());
  Renderer& renderer = GetRenderer();
  for (const char* picture : {"background.png", "BlueBox.png"}) renderer.LoadTexture(picture);
  renderer.LoadFont("OctoBubble.ttf");
  SetBackgroundPicture("background.png");
  renderer.SetScreenShader("wave");  // as in a match; the plain one moves the sea
  GameEvents events;
  Frame frame(events);
  const auto colourAfter = [&](int frames) {
    for (int i = 0; i < frames; ++i) frame.Run();
    return context.ColourAt(0.5f, 0.5f);
  };
  using Colour = std::array<int, 3>;
  const Colour sea = colourAfter(1);
  EXPECT_GT(sea[2], sea[0]);
  GameObject& bubble = world.Add("bubble");
  AddBubbles(bubble);
  const Colour particle = colourAfter(20);
  EXPECT_GT(particle[0], 150);
  EXPECT_LT(particle[2], 40);

  GameObject& box = world.Add("box", {0.0f, 0.0f, -1.0f});  // lower than the particles, which does not count
  Sprite& sprite = box.Insert(std::make_unique<Sprite>());
  sprite.texturePath = "BlueBox.png";
  sprite.r = 0.0f;
  sprite.g = 1.0f;
  sprite.b = 0.0f;
  box.GetTransform().graphicsScale = {3.0f, 3.0f, 0.0f};
  const Colour covered = colourAfter(1);
  EXPECT_LT(covered[0], 40);
  EXPECT_GT(covered[1], 150);
  sprite.visible = false;
  EXPECT_EQ(colourAfter(1), particle);
  sprite.visible = true;

  GameObject& label = world.Add("label", {0.0f, -1.4f, 0.0f});
  SpriteText& text = label.Insert(std::make_unique<SpriteText>());
  text.SetText("I\xf0");  // a bar through the middle
  text.b = 1.0f;
  text.SetScale({0.1f, 0.03f, 1.0f});
  const Colour written = colourAfter(1);
  EXPECT_GT(written[2], 200);
  EXPECT_LT(written[1], 40);
  RequestPause("test");
  EXPECT_EQ(colourAfter(1), covered);
  ReleasePause("test");
  EXPECT_EQ(colourAfter(1), written);
  bubble.alive = false;  // its buffers go, and what is bound with them
  sprite.visible = false;
  text.visible = false;
  EXPECT_EQ(colourAfter(2), sea);
  SetBackgroundPicture("");
}
