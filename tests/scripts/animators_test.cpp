#include <gtest/gtest.h>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "scripts/lerp_animators.h"
#include "test_world.h"

namespace {

constexpr float kStep = 0.0085f;

// An object with a sprite, and players that can run into it.
class AnimatorScene {
 public:
  AnimatorScene() {
    object.Insert(std::make_unique<ScriptBox>());
    player = &BodyOf(world.AddSphere("Player4", {}));
    body = &object.Insert(std::make_unique<GalePhysics::RigidBody>());
  }
  template <class T = Script>
  T& Attach(const char* name) {
    return static_cast<T&>(*object.Get<ScriptBox>()->AddScript(name));
  }
  void Update(int updates) {
    for (int i = 0; i < updates; ++i) object.Update(kStep);
  }
  // The player, at that speed, as the other side of a contact or, swapped, as its first.
  void Hit(float speed, bool swapped = false) {
    player->velocity = {speed, 0.0f, 0.0f};
    GalePhysics::Contact contact;
    contact.first = swapped ? player : body;
    contact.second = swapped ? body : player;
    object.OnContact(contact);
  }
  Vec3& Scale() { return object.GetTransform().graphicsScale; }

  TestWorld world;
  GameObject& object = world.Add("thing", {1.0f, 2.0f, 0.0f});
  Sprite& sprite = object.Insert(std::make_unique<Sprite>());
  GalePhysics::RigidBody* player = nullptr;
  GalePhysics::RigidBody* body = nullptr;
};

}  // namespace

TEST(LerpVecAnimator, WaitsThenMovesThenRests) {
  AnimatorScene scene;
  const Vec3 end = {11.0f, 2.0f, 0.0f};
  scene.object.Get<ScriptBox>()->AddScript(std::make_unique<LerpVecAnimator>(Vec3{1.0f, 2.0f, 0.0f}, end, 1.0f, 0.5f));
  float& x = scene.object.GetTransform().position.x;
  scene.Update(30);
  EXPECT_EQ(x, 1.0f);
  int moved = 0;
  for (float last = x;; last = x, ++moved) {
    scene.Update(1);
    if (x == last) break;
  }
  EXPECT_EQ(moved, 59);
  EXPECT_NEAR(x, end.x, 0.2f);
  EXPECT_EQ(scene.object.GetTransform().position.y, 2.0f);
}

TEST(LerpSizeAndOpacity, ChangeWhatTheyAreNamedFor) {
  AnimatorScene scene;
  scene.sprite.g = 7.0f;
  auto& box = *scene.object.Get<ScriptBox>();
  box.AddScript(std::make_unique<LerpSizeAnimator>(1.0f, 3.0f, 1.7f, 0.0f));
  box.AddScript(std::make_unique<LerpOpacityAnimator>(0.0f, 255.0f, 1.7f, 0.0f));
  scene.Update(50);
  EXPECT_NEAR(scene.Scale().x, 2.0f, 1e-4f);
  EXPECT_EQ(scene.Scale().y, scene.Scale().x);
  EXPECT_EQ(scene.Scale().z, 0.0f);
  EXPECT_NEAR(scene.sprite.a, 0.5f, 1e-4f);
  EXPECT_EQ(scene.sprite.g, 1.0f);
  scene.Update(100);
  EXPECT_NEAR(scene.sprite.a, 1.0f, 1e-4f);
}

TEST(FishAnimator, StepsWhenAFastPlayerHitsAndShowsTheFirstTwoFramesOnce) {
  AnimatorScene scene;
  scene.Attach("fishanimator");
  scene.Hit(5.0f);  // before the first update: nothing, and no crash
  scene.Update(1);
  EXPECT_EQ(scene.sprite.row, 0.25f);
  EXPECT_EQ(scene.sprite.startFrame, 0.0f);
  scene.Hit(1.5f);
  EXPECT_EQ(scene.sprite.startFrame, 0.0f);
  bool swapped = false;
  for (const float offset : {0.25f, 0.5f, 0.75f, 0.5f, 0.75f, 0.5f}) {
    scene.Hit(2.5f, swapped = !swapped);
    EXPECT_EQ(scene.sprite.startFrame, offset);
  }
}

TEST(RainbowFish, ChoosesTheFrameFromWhichTheFishGoesOn) {
  AnimatorScene scene;
  scene.Attach("fishanimator");
  scene.Attach("rainbowfish");
  std::string text = Document({&scene.object});
  const std::size_t at = text.find("startingframe: 0");
  ASSERT_NE(at, std::string::npos);
  text[at + 15] = '2';
  scene.world.WriteFile("fish", text);
  GameObject& fish = *Objects().LoadLevel("fish").at(0);
  fish.Update(kStep);
  fish.Update(kStep);
  EXPECT_EQ(fish.Get<Sprite>()->startFrame, 0.5f);
  EXPECT_EQ(fish.Get<Sprite>()->row, 0.25f);
  EXPECT_EQ(WithoutIds(Document({&fish})).find("startingframe: 0"), std::string::npos);
}

// A file can name a strip of no frames.
TEST(FishAnimator, AStripOfNoFramesIsOnePicture) {
  AnimatorScene scene;
  scene.Attach("fishanimator");
  std::string text = Document({&scene.object});
  const std::size_t at = text.find("NumberOfAnimationFrames: 4");
  ASSERT_NE(at, std::string::npos);
  text[at + 25] = '0';
  scene.world.WriteFile("fish", text);
  GameObject& fish = *Objects().LoadLevel("fish").at(0);
  fish.Update(kStep);
  EXPECT_EQ(fish.Get<Sprite>()->row, 1.0f);
}

// Twelve updates at 0.0085 s pass 0.1 s; the rest before the first cycle takes one random number.
TEST(SquidAnimator, PlaysItsFourFramesAfterARandomRest) {
  AnimatorScene scene;
  scene.Attach("SquidAnimator");
  const std::uint32_t before = RandomState();
  const float rest = 0.5f + static_cast<float>(Random()) / 16383.5f;
  SeedRandom(before);
  scene.Update(11);
  EXPECT_EQ(RandomState(), before);
  scene.Update(1);
  EXPECT_NE(RandomState(), before);
  const int still = static_cast<int>((rest + 0.1f) / kStep);
  scene.Update(still - 1);
  EXPECT_EQ(scene.sprite.startFrame, 0.0f);
  scene.Update(3);
  EXPECT_EQ(scene.sprite.startFrame, 0.25f);
  scene.Update(12);
  EXPECT_EQ(scene.sprite.startFrame, 0.5f);
  scene.Update(24);
  EXPECT_EQ(scene.sprite.startFrame, 0.0f);
  EXPECT_EQ(scene.sprite.row, 0.25f);
}

TEST(ShadowGrowth, GrowsUntilBothSidesPassOne) {
  AnimatorScene scene;
  scene.Attach("ShadowGrowth");
  EXPECT_EQ(scene.Scale(), Vec3{});
  EXPECT_EQ(scene.sprite.a, 0.5f);
  scene.Update(30);
  EXPECT_NEAR(scene.Scale().x, 1.06667f, 1e-5f);
  EXPECT_NEAR(scene.sprite.a, 0.5f + 16.0f / 15.0f * 0.5f / 255.0f, 1e-4f);
  const std::string text = Document({&scene.object});
  EXPECT_NE(text.find("ScaleFactor: 0.0666667\n"), std::string::npos);
  scene.world.WriteFile("shadow", text);
  GameObject& shadow = *Objects().LoadLevel("shadow").at(0);
  EXPECT_EQ(shadow.GetTransform().graphicsScale, Vec3{});
  for (int i = 0; i < 30; ++i) shadow.Update(kStep);
  EXPECT_NEAR(shadow.GetTransform().graphicsScale.x, 1.0f, 1e-5f);
}

// The flash stands in three frames and gives back what was there, black too; a second hit does not save the flash.
TEST(ColorChanger, FlashesInThePlayersColour) {
  AnimatorScene scene;
  scene.Attach("color-changer");
  scene.sprite.r = scene.sprite.g = scene.sprite.b = 0.0f;
  scene.Hit(1.5f);
  EXPECT_EQ(scene.sprite.r, 0.0f);
  scene.Hit(5.0f, true);  // the player must be the other body
  EXPECT_EQ(scene.sprite.r, 0.0f);
  scene.Hit(5.0f);
  scene.Hit(5.0f);
  for (int frame = 0; frame < 2; ++frame) {
    scene.Update(1);
    EXPECT_EQ(scene.sprite.r, 1.0f);
    EXPECT_EQ(scene.sprite.g, 1.0f);
    EXPECT_EQ(scene.sprite.b, 0.0f);
    Time().elapsedTime += kStep;
  }
  scene.Update(1);
  EXPECT_EQ(scene.sprite.r, 0.0f);
  EXPECT_EQ(scene.sprite.a, 1.0f);
}
