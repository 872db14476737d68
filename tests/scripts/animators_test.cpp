#include <algorithm>

#include "core/random.h"
#include "match/episode_scene.h"
#include "scripts/animators/fish_animator.h"
#include "scripts/animators/lerp_opacity_animator.h"
#include "scripts/animators/lerp_size_animator.h"
#include "scripts/animators/lerp_vec_animator.h"
#include "scripts/animators/rainbow_fish.h"
#include "scripts/animators/shadow_growth.h"

namespace {

class AnimatorTest : public ScriptTest {
 public:
  Vec3& Scale() { return holder.GetTransform().graphicsScale; }

  Sprite& sprite = holder.Insert(std::make_unique<Sprite>());
  GameObject& player = world.AddSphere("Player4", {});
};

}  // namespace

// The last step goes past the end, but an opacity is never more than full.
TEST_F(AnimatorTest, LerpsWaitThenChangePlaceSizeAndOpacityThenRest) {
  Carry<LerpVecAnimator>(Vec3{1.0f, 2.0f, 0.0f}, Vec3{11.0f, 2.0f, 0.0f}, 1.0f, 0.5f);
  Carry<LerpSizeAnimator>(1.0f, 3.0f, 1.0f, 0.5f);
  Carry<LerpOpacityAnimator>(0.0f, 255.0f, 1.0f, 0.5f);
  PositionOf(holder) = {1.0f, 2.0f, 0.0f};
  Scale() = {1.0f, 1.0f, 0.0f};
  sprite.a = 0.0f;
  sprite.g = 7.0f;
  for (const auto& [updates, done] : {std::pair{30, 0.0f}, {58, 0.996f}, {9, 1.013f}, {9, 1.013f}}) {
    Update(updates);
    EXPECT_LT(Length(PositionOf(holder) - Vec3{1.0f + 10.0f * done, 2.0f, 0.0f}), 1e-4f) << done;
    EXPECT_LT(Length(Scale() - Vec3{1.0f + 2.0f * done, 1.0f + 2.0f * done, 0.0f}), 1e-4f) << done;
    EXPECT_NEAR(sprite.a, std::min(done, 1.0f), 1e-4f);
  }
  EXPECT_EQ(sprite.g, 1.0f);
}

// A file says which frame it goes on from, and its strip may have none.
TEST_F(AnimatorTest, AFishStepsWhenAFastPlayerHitsAndShowsTheFirstTwoFramesOnce) {
  auto& fish = Carry<FishAnimator>();
  Hit(holder, player, 5.0f);  // before the first update: nothing, and no crash
  Update(1);
  EXPECT_EQ(sprite.row, 0.25f);
  Hit(holder, player, 1.5f);
  EXPECT_EQ(sprite.startFrame, 0.0f);
  BodyOf(player).velocity.x = 2.5f;
  bool playerFirst = false;
  for (const float offset : {0.25f, 0.5f, 0.75f, 0.5f, 0.75f, 0.5f}) {
    playerFirst = !playerFirst;
    holder.OnContact(playerFirst ? ContactOf(player, holder) : ContactOf(holder, player));
    EXPECT_EQ(sprite.startFrame, offset);
  }
  ReadValues(Carry<RainbowFish>(), "startingframe: 3\n");
  Update(2);
  EXPECT_EQ(sprite.startFrame, 0.75f);
  ReadValues(fish, "NumberOfAnimationFrames: 0\n");
  fish.ShowFrame(0);
  EXPECT_EQ(sprite.row, 1.0f);
}

// Twelve updates at 0.0085 s pass 0.1 s; the rest before the first cycle takes one random number.
TEST_F(AnimatorTest, ASquidPlaysItsFourFramesAfterARandomRest) {
  Carry("SquidAnimator");
  const std::uint32_t before = RandomState();
  const float rest = 0.5f + static_cast<float>(Random()) / 16383.5f;
  SeedRandom(before);
  for (const bool drawn : {false, true}) {
    Update(drawn ? 1 : 11);
    EXPECT_EQ(RandomState() != before, drawn);
  }
  Update(static_cast<int>((rest + 0.1f) / kStep) - 1);
  for (const auto& [updates, offset] : {std::pair{0, 0.0f}, {3, 0.25f}, {12, 0.5f}, {24, 0.0f}}) {
    Update(updates);
    EXPECT_EQ(sprite.startFrame, offset);
  }
  EXPECT_EQ(sprite.row, 0.25f);
}

TEST_F(AnimatorTest, AShadowGrowsAtItsRateUntilBothSidesPassOne) {
  auto& shadow = Carry<ShadowGrowth>();
  EXPECT_EQ(Scale(), Vec3{});
  EXPECT_EQ(sprite.a, 0.5f);
  Update(30);
  EXPECT_NEAR(Scale().x, 1.06667f, 1e-5f);
  EXPECT_NEAR(sprite.a, 0.5f + 16.0f / 15.0f * 0.5f / 255.0f, 1e-4f);
  // The six digits of a file are a little more than a fifteenth, so that its fifteenth update passes one.
  ReadValues(shadow, "ScaleFactor: 0.0666667\n");
  shadow.Initialize();
  Update(30);
  EXPECT_NEAR(Scale().x, 1.0f, 1e-5f);
  // In a file the sprite comes after the scripts.
  GameObject& late = world.Add("late");
  Attach<ShadowGrowth>(late);
  auto& lateSprite = late.Insert(std::make_unique<Sprite>());
  late.Update(kStep);
  EXPECT_LT(lateSprite.a, 0.51f);
}

// The flash stands in three frames and gives back what was there, black too; a second hit does not save the flash.
TEST_F(AnimatorTest, AThingFlashesInThePlayersColour) {
  Carry("color-changer");
  sprite.r = sprite.g = sprite.b = 0.0f;
  Hit(holder, player, 1.5f);
  BodyOf(player).velocity.x = 5.0f;
  holder.OnContact(ContactOf(player, holder));  // the player must be the other body
  EXPECT_EQ(sprite.r, 0.0f);
  for (int i = 0; i < 2; ++i) Hit(holder, player, 5.0f);
  for (const bool flashes : {true, true, false}) {
    Update(1);
    EXPECT_EQ((Vec3{sprite.r, sprite.g, sprite.b}), flashes ? (Vec3{1.0f, 1.0f, 0.0f}) : Vec3{});
    Time().elapsedTime += kStep;
  }
  EXPECT_EQ(sprite.a, 1.0f);
}
