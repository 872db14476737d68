#include <array>
#include <cmath>
#include <filesystem>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "folders.h"
#include "graphics/camera.h"
#include "graphics/picture_fault.h"
#include "graphics/renderer.h"
#include "graphics/screen_shake.h"
#include "graphics/viewport.h"
#include "input/input.h"

namespace {

class CameraTest : public WorldFixture {
 protected:
  /// Runs frames and gives the camera's place.
  float XAfter(int frames) {
    for (int i = 0; i < frames; ++i) Objects().GetCamera().Update(Time().frameStep);
    return -GetMainCamera()->GetView()[3][0];
  }
};

using RendererTest = WorldFixture;

}  // namespace

TEST(Viewport, KeepsSixteenToNineInTheMiddle) {
  const auto fit = [](int w, int h) {
    const auto [x, y, width, height] = FitViewport(w, h);
    return std::array{x, y, width, height};
  };
  EXPECT_EQ(fit(1920, 1200), (std::array{0, 60, 1920, 1080}));
  EXPECT_EQ(fit(2560, 1080), (std::array{320, 0, 1920, 1080}));
  // Exact shapes fill the window: in double precision each would lose a row.
  for (const int height : {720, 1080, 2160})
    EXPECT_EQ(fit(height / 9 * 16, height), (std::array{0, 0, height / 9 * 16, height}));
}

TEST_F(CameraTest, TheMouseInTheMiddlePointsStraightAheadAndDownIsDown) {
  Input::GetPointer().window = {0, 0, 1920, 1080};
  const auto expectAt = [](float x, float y, float worldX, float worldY) {
    const Vec3 point = GetMainCamera()->ScreenToWorld(x, y, 0.0f);
    EXPECT_NEAR(point.x, worldX, 1e-4f);
    EXPECT_NEAR(point.y, worldY, 1e-4f);
  };
  const float halfHeight = 19.0f * std::tan(kPi / 6.0f);
  expectAt(960.0f, 540.0f, 0.0f, 0.0f);
  expectAt(1920.0f, 1080.0f, halfHeight * 16.0f / 9.0f, -halfHeight);
}

TEST_F(CameraTest, LeansATenthAtMostTowardsTheAction) {
  for (const char* name : {"Player1", "Player2", "Player3"}) world.Add(name, {10.0f, 0.0f, 0.0f});
  for (int i = 0; i < 200; ++i) EXPECT_LE(XAfter(1), 0.1001f);
  EXPECT_NEAR(XAfter(1), 0.1f, 1e-3f);
  for (const char* name : {"Player4", "far"}) world.Add(name, {3e38f, 0.0f, 0.0f});
  EXPECT_TRUE(std::isfinite(XAfter(1))) << "their sum is not finite";
}

TEST_F(CameraTest, ComesToRestWhileTheGameIsPaused) {
  world.Add("Player1", {3.0f, -7.0f, 0.0f});
  RequestPause("test");
  Time().frameStep = 0.0f;
  const float rest = XAfter(100);
  EXPECT_EQ(XAfter(100), rest);
}

TEST_F(CameraTest, AShakeGoesOneWayForThreeFramesAndStops) {
  StartShake({-3.0f, 0.0f, 0.0f}, 0.1f, 0.001f, 0.02f);
  for (int frame = 0; frame < 3; ++frame) EXPECT_LT(XAfter(1), 0.0f) << frame;
  for (int frame = 3; frame < 6; ++frame) EXPECT_EQ(XAfter(1), 0.0f) << frame;
}

TEST_F(RendererTest, ClocksAdvancePerComposedFrameAndARippleRestartsOne) {
  Renderer& renderer = GetRenderer();
  renderer.StartRipple({0.5f, 0.5f, 0.0f});
  int frames = 0;
  for (; renderer.GetWaveTime() < 2.0f; ++frames) renderer.ComposeScreen();
  EXPECT_EQ(frames, 121);
}

// Names cannot lead out of the folder, and a picture is read to its end without a context too.
TEST_F(RendererTest, ReportsAPictureThatIsMissingOrNone) {
  std::filesystem::create_directory("Texture");
  world.WriteFile("Texture/fake.png", "no picture at all, but long enough for a header");
  world.WriteFile("Texture/huge.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\x7f\xff\xff\xff\0\0\0\1", 24));
  const std::string whole = world.ReadFile(BuildFolder() + "/Texture/crown.png");
  world.WriteFile("Texture/cut.png", whole.substr(0, whole.size() / 2));
  world.WriteFile("Texture/photo.png", "\xFF\xD8\xFF");
  world.WriteFile("Texture/Crown.PNG", whole);
  const std::pair<std::string, std::string> faults[] = {{"../../etc/passwd", "is not read: name a picture"},
                                                        {"nothing.png", "is not in Texture/"},
                                                        {"crown.png", "is not in Texture/, but Crown.PNG is"},
                                                        {"fake.png", "is no PNG"},
                                                        {"photo.png", "is a JPEG: save it as PNG"},
                                                        {"huge.png", "is too large, 2147483647 x 1 pixels"},
                                                        {"cut.png", "is damaged"}};
  for (const auto& [name, fault] : faults) {
    world.ClearText();
    GetRenderer().LoadTexture(name);
    EXPECT_EQ(world.text(), "Error Loading Texture" + name + "\n");
    EXPECT_EQ(PictureFault("Texture", name).substr(0, fault.size()), fault) << name;
  }
  EXPECT_EQ(PictureFault("Texture", "Crown.PNG"), "");
}
