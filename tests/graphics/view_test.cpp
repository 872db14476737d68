#include <gtest/gtest.h>

#include <cmath>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/camera.h"
#include "graphics/preload_list.h"
#include "graphics/renderer.h"
#include "graphics/screen_shake.h"
#include "graphics/sprite.h"
#include "graphics/viewport.h"
#include "input/input.h"
#include "test_world.h"

TEST(Viewport, KeepsSixteenToNineInTheMiddle) {
  const auto expect = [](int w, int h, Viewport wanted) {
    const Viewport fitted = FitViewport(w, h);
    EXPECT_EQ(fitted.x, wanted.x);
    EXPECT_EQ(fitted.y, wanted.y);
    EXPECT_EQ(fitted.width, wanted.width);
    EXPECT_EQ(fitted.height, wanted.height);
  };
  expect(1920, 1200, {0, 60, 1920, 1080});
  expect(2560, 1080, {320, 0, 1920, 1080});
  // Exact shapes fill the window: in double precision each would lose a row.
  expect(1280, 720, {0, 0, 1280, 720});
  expect(1920, 1080, {0, 0, 1920, 1080});
  expect(3840, 2160, {0, 0, 3840, 2160});
}

TEST(Camera, TheMouseInTheMiddlePointsStraightAheadAndDownIsDown) {
  TestWorld world;
  Input::GetPointer().window = {0, 0, 1920, 1080};
  const Camera& camera = *GetMainCamera();
  const Vec3 middle = camera.ScreenToWorld(960.0f, 540.0f, 0.0f);
  EXPECT_NEAR(middle.x, 0.0f, 1e-4f);
  EXPECT_NEAR(middle.y, 0.0f, 1e-4f);
  const Vec3 corner = camera.ScreenToWorld(1920.0f, 1080.0f, 0.0f);
  EXPECT_NEAR(corner.y, -19.0f * std::tan(3.14159265f / 6.0f), 1e-3f);
  EXPECT_NEAR(corner.x, 19.0f * std::tan(3.14159265f / 6.0f) * 16.0f / 9.0f, 1e-3f);
}

TEST(CameraCenterer, LeansATenthAtMostTowardsTheAction) {
  TestWorld world;
  for (const char* name : {"Player1", "Player2", "Player3"}) world.Add(name, {10.0f, 0.0f, 0.0f});
  GameObject& camera = Objects().GetCamera();
  float x = 0.0f;
  for (int i = 0; i < 200; ++i) {
    camera.Update(Time().frameStep);
    x = -GetMainCamera()->GetView()[3][0];
    EXPECT_LE(x, 0.1001f);
  }
  EXPECT_NEAR(x, 0.1f, 1e-3f);
  for (const char* name : {"Player4", "far"}) world.Add(name, {3e38f, 0.0f, 0.0f});
  camera.Update(Time().frameStep);
  EXPECT_TRUE(std::isfinite(GetMainCamera()->GetView()[3][0])) << "their sum is not finite";
}

TEST(CameraCenterer, ComesToRestWhileTheGameIsPaused) {
  TestWorld world;
  world.Add("Player1", {3.0f, -7.0f, 0.0f});
  RequestPause("test");
  GameObject& camera = Objects().GetCamera();
  for (int i = 0; i < 100; ++i) camera.Update(0.0f);
  const glm::mat4 view = GetMainCamera()->GetView();
  for (int i = 0; i < 100; ++i) camera.Update(0.0f);
  EXPECT_EQ(GetMainCamera()->GetView(), view);
  ReleasePause("test");
}

TEST(ScreenShake, GoesOneWayForThreeFramesAndStops) {
  TestWorld world;
  StartShake({-3.0f, 0.0f, 0.0f}, 0.1f, 0.001f, 0.02f);
  GameObject& camera = Objects().GetCamera();
  for (int i = 0; i < 6; ++i) {
    camera.Update(Time().frameStep);
    const float x = -GetMainCamera()->GetView()[3][0];
    if (i < 3)
      EXPECT_LT(x, 0.0f) << i;
    else
      EXPECT_EQ(x, 0.0f) << i;
  }
}

TEST(Renderer, ClocksAdvancePerComposedFrameAndARippleRestartsOne) {
  TestWorld world;
  Renderer& renderer = GetRenderer();
  renderer.StartRipple({0.5f, 0.5f, 0.0f});
  int frames = 0;
  for (; renderer.GetWaveTime() < 2.0f; ++frames) renderer.ComposeScreen();
  EXPECT_EQ(frames, 121);
}

// A picture is fetched once, names cannot lead out of the folder, and what is no PNG fails without being decoded.
TEST(Assets, ComeOneACallUntilEveryCallSaysThatAllAreThere) {
  TestWorld world;
  int calls = 1;
  while (!LoadNextAsset() && calls < 200) ++calls;
  EXPECT_EQ(calls, 74);
  EXPECT_TRUE(LoadNextAsset());
}

TEST(Sprite, ReadsItsPictureAndReportsAMissingOne) {
  TestWorld world;
  const auto load = [&](const char* name) {
    world.ClearText();
    GetRenderer().LoadTexture(name);
    return world.text();
  };
  EXPECT_EQ(load("../../etc/passwd"), "Error Loading Texture../../etc/passwd\n");
  EXPECT_EQ(load("nothing.png"), "Error Loading Texturenothing.png\n");
  std::filesystem::create_directory("Texture");
  world.WriteFile("Texture/fake.png", "no picture at all, but long enough for a header");
  EXPECT_EQ(load("fake.png"), "Error Loading Texturefake.png\n");
  world.WriteFile("Texture/huge.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\x7f\xff\xff\xff\0\0\0\1", 24));
  EXPECT_EQ(load("huge.png"), "Error Loading Texturehuge.png\n");
}
