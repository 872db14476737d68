#include "core/random.h"
#include "script_test.h"
#include "scripts/lerp_animators.h"

namespace {

class AnimatorTest : public ScriptTest {
 public:
  // The holder as a file has it in which one value is another.
  GameObject& LoadWith(std::string_view value, std::string_view changed) {
    std::string text = Document({&holder});
    text.replace(text.find(value), value.size(), changed);
    const std::string file = "copy" + std::to_string(++copies_);
    world.WriteFile(file, text);
    return *Objects().LoadLevel(file).at(0);
  }
  Vec3& Scale() { return holder.GetTransform().graphicsScale; }

  Sprite& sprite = holder.Insert(std::make_unique<Sprite>());
  GameObject& player = world.AddSphere("Player4", {});

 private:
  int copies_ = 0;
};

}  // namespace

TEST_F(AnimatorTest, LerpsWaitThenMoveThenRest) {
  Carry<LerpVecAnimator>(Vec3{1.0f, 2.0f, 0.0f}, Vec3{11.0f, 2.0f, 0.0f}, 1.0f, 0.5f);
  PositionOf(holder) = {1.0f, 2.0f, 0.0f};
  Update(30);
  EXPECT_EQ(PositionOf(holder).x, 1.0f);
  Update(58);
  EXPECT_NEAR(PositionOf(holder).x, 10.96f, 1e-4f);
  Update(9);
  EXPECT_NEAR(PositionOf(holder).x, 11.13f, 1e-4f) << "the last step goes past the end";
  EXPECT_EQ(PositionOf(holder).y, 2.0f);
}

TEST_F(AnimatorTest, LerpsChangeSizeAndOpacity) {
  sprite.g = 7.0f;
  Carry<LerpSizeAnimator>(1.0f, 3.0f, 1.7f, 0.0f);
  Carry<LerpOpacityAnimator>(0.0f, 255.0f, 1.7f, 0.0f);
  Update(50);
  EXPECT_NEAR(Scale().x, 2.0f, 1e-4f);
  EXPECT_EQ(Scale(), (Vec3{Scale().x, Scale().x, 0.0f}));
  EXPECT_NEAR(sprite.a, 0.5f, 1e-4f);
  EXPECT_EQ(sprite.g, 1.0f);
  Update(100);
  EXPECT_NEAR(sprite.a, 1.0f, 1e-4f);
}

TEST_F(AnimatorTest, AFishStepsWhenAFastPlayerHitsAndShowsTheFirstTwoFramesOnce) {
  Carry("fishanimator");
  Hit(holder, player, 5.0f);  // before the first update: nothing, and no crash
  Update(1);
  EXPECT_EQ(sprite.row, 0.25f);
  EXPECT_EQ(sprite.startFrame, 0.0f);
  Hit(holder, player, 1.5f);
  EXPECT_EQ(sprite.startFrame, 0.0f);
  BodyOf(player).velocity.x = 2.5f;
  bool playerFirst = false;
  for (const float offset : {0.25f, 0.5f, 0.75f, 0.5f, 0.75f, 0.5f}) {
    playerFirst = !playerFirst;
    holder.OnContact(playerFirst ? ContactOf(player, holder) : ContactOf(holder, player));
    EXPECT_EQ(sprite.startFrame, offset);
  }
}

TEST_F(AnimatorTest, AFileSaysWhichFrameAFishGoesOnFromAndItsStripMayHaveNone) {
  Carry("fishanimator");
  Carry("rainbowfish");
  GameObject& fish = LoadWith("startingframe: 0", "startingframe: 2");
  fish.Update(kStep);
  fish.Update(kStep);
  EXPECT_EQ(fish.Get<Sprite>()->startFrame, 0.5f);
  EXPECT_EQ(fish.Get<Sprite>()->row, 0.25f);
  EXPECT_EQ(Count(Document({&fish}), "startingframe: 2"), 1);
  GameObject& picture = LoadWith("NumberOfAnimationFrames: 4", "NumberOfAnimationFrames: 0");
  picture.Update(kStep);
  EXPECT_EQ(picture.Get<Sprite>()->row, 1.0f);
}

// Twelve updates at 0.0085 s pass 0.1 s; the rest before the first cycle takes one random number.
TEST_F(AnimatorTest, ASquidPlaysItsFourFramesAfterARandomRest) {
  Carry("SquidAnimator");
  const std::uint32_t before = RandomState();
  const float rest = 0.5f + static_cast<float>(Random()) / 16383.5f;
  SeedRandom(before);
  Update(11);
  EXPECT_EQ(RandomState(), before);
  Update(1);
  EXPECT_NE(RandomState(), before);
  Update(static_cast<int>((rest + 0.1f) / kStep) - 1);
  for (const auto& [updates, offset] : {std::pair{0, 0.0f}, {3, 0.25f}, {12, 0.5f}, {24, 0.0f}}) {
    Update(updates);
    EXPECT_EQ(sprite.startFrame, offset);
  }
  EXPECT_EQ(sprite.row, 0.25f);
}

TEST_F(AnimatorTest, AShadowGrowsUntilBothSidesPassOne) {
  Carry("ShadowGrowth");
  EXPECT_EQ(Scale(), Vec3{});
  EXPECT_EQ(sprite.a, 0.5f);
  Update(30);
  EXPECT_NEAR(Scale().x, 1.06667f, 1e-5f);
  EXPECT_NEAR(sprite.a, 0.5f + 16.0f / 15.0f * 0.5f / 255.0f, 1e-4f);
  GameObject& shadow = LoadWith("ScaleFactor: 0.0666667\n", "ScaleFactor: 0.05\n");
  EXPECT_EQ(shadow.GetTransform().graphicsScale, Vec3{});
  for (int i = 0; i < 10; ++i) shadow.Update(kStep);
  EXPECT_NEAR(shadow.GetTransform().graphicsScale.x, 0.5f, 1e-5f);
}

// The flash stands in three frames and gives back what was there, black too; a second hit does not save the flash.
TEST_F(AnimatorTest, AThingFlashesInThePlayersColour) {
  Carry("color-changer");
  sprite.r = sprite.g = sprite.b = 0.0f;
  Hit(holder, player, 1.5f);
  EXPECT_EQ(sprite.r, 0.0f);
  BodyOf(player).velocity.x = 5.0f;
  holder.OnContact(ContactOf(player, holder));  // the player must be the other body
  EXPECT_EQ(sprite.r, 0.0f);
  Hit(holder, player, 5.0f);
  Hit(holder, player, 5.0f);
  for (int i = 0; i < 2; ++i) {
    Update(1);
    EXPECT_EQ((Vec3{sprite.r, sprite.g, sprite.b}), (Vec3{1.0f, 1.0f, 0.0f}));
    Time().elapsedTime += kStep;
  }
  Update(1);
  EXPECT_EQ(sprite.r, 0.0f);
  EXPECT_EQ(sprite.a, 1.0f);
}
