#include "editor/tweak_bar.h"

#include <gtest/gtest.h>

#include "core/transform.h"
#include "editor/field_value.h"
#include "editor/object_fields.h"
#include "graphics/sprite.h"
#include "physics/box_collider.h"
#include "physics/spring.h"
#include "test_world.h"

namespace {

using EntryKind = TweakBar::Entry::Kind;

bool SetText(const Field& field, std::string_view text) {
  FieldValue value;
  return ParseValue(field, text, value) && SetValue(field, value);
}

}  // namespace

TEST(TweakBar, FindsByLabelNameAndGroupsFirstInOrder) {
  TweakBar bar("bar");
  float first = 1.0f;
  float second = 2.0f;
  float third = 3.0f;
  int pressed = 0;
  bar.BeginGroup("a/b");
  bar.Add("x ", &first);
  bar.BeginGroup("inner");
  bar.Add("x ", &second);
  bar.EndGroup();
  bar.EndGroup();
  bar.BeginGroup("inner");
  bar.Add("x ", &third);
  bar.AddButton("Add Objective", "Add above objective", [&] { ++pressed; });
  bar.EndGroup();
  const auto valueOf = [&](const char* label) { return std::get<float>(GetValue(bar.Find(label)->field)); };
  EXPECT_EQ(valueOf("x"), 1.0f);
  EXPECT_EQ(valueOf(" x "), 1.0f);
  EXPECT_EQ(valueOf("inner/x"), 2.0f);
  EXPECT_EQ(valueOf("a/b/x"), 1.0f);
  EXPECT_EQ(valueOf("a/b/inner/x"), 2.0f);
  EXPECT_EQ(valueOf("bar/x"), 1.0f);
  EXPECT_EQ(bar.Find("other/x"), nullptr);
  EXPECT_EQ(bar.Find("inner"), nullptr) << "a group is neither variable nor button";
  bar.Find("Add Objective")->press();
  bar.Find("inner/Add above objective")->press();
  EXPECT_EQ(pressed, 2);
  bar.RemoveAll();
  EXPECT_TRUE(bar.GetEntries().empty());
  EXPECT_EQ(bar.Find("x"), nullptr);
}

TEST(TweakBar, GivesEveryEntryAPathOfItsOwn) {
  TweakBar bar("bar");
  bool value = false;
  for (int i = 0; i < 3; ++i) {
    bar.BeginGroup("twin");
    bar.Add("name", &value);
    bar.EndGroup();
  }
  std::vector<std::string> paths;
  for (const auto& entry : bar.GetEntries())
    if (entry.kind == EntryKind::kVariable) paths.push_back(entry.path);
  EXPECT_EQ(paths, (std::vector<std::string>{"/twin/name", "/twin/name#2", "/twin/name#3"}));
}

TEST(FieldValue, ReadsTextOfEveryTypeAndRefusesTheRest) {
  bool flag = false;
  int whole = 0;
  std::uint32_t number = 7;
  float real = 0.0f;
  Vec3 vector;
  FieldColour colour{};
  std::string text = "old";
  EXPECT_TRUE(SetText({"", &flag}, "true"));
  EXPECT_FALSE(SetText({"", &flag}, "yes"));
  EXPECT_TRUE(SetText({"", &whole}, "-3"));
  EXPECT_FALSE(SetText({"", &whole}, "3.5"));
  EXPECT_FALSE(SetText({"", &number}, "-1"));
  EXPECT_TRUE(SetText({"", &real}, " 0.25 "));
  for (const char* bad : {"", "nan", "inf", "1e99", "1 2", "one"}) EXPECT_FALSE(SetText({"", &real}, bad)) << bad;
  EXPECT_TRUE(SetText({"", &vector}, "1, -2.5 3"));
  EXPECT_FALSE(SetText({"", &vector}, "1 2"));
  EXPECT_FALSE(SetText({"", &vector}, "1 2 3 4"));
  EXPECT_TRUE(SetText({"", &colour}, "1 0 0.5"));
  EXPECT_TRUE(SetText({"", &text}, "a = b"));
  EXPECT_TRUE(flag);
  EXPECT_EQ(whole, -3);
  EXPECT_EQ(number, 7u);
  EXPECT_EQ(real, 0.25f);
  EXPECT_EQ(vector, (Vec3{1.0f, -2.5f, 3.0f}));
  EXPECT_EQ(colour[2], 0.5f);
  EXPECT_EQ(text, "a = b");
  EXPECT_EQ(TextOf({"", &vector}), "1 -2.5 3");
}

TEST(FieldValue, KeepsLimitsChoicesAndReadOnlyFields) {
  std::uint32_t group = 1;
  Field limited{"group", &group};
  limited.highest = 14;
  EXPECT_TRUE(SetText(limited, "4000000000"));
  EXPECT_EQ(group, 14u);
  std::string text;
  Field shortText{"text", &text};
  shortText.maxLength = 3;
  EXPECT_TRUE(SetText(shortText, "abcdef"));
  EXPECT_EQ(text, "abc");
  int choice = 0;
  Field choices{"choice", &choice};
  choices.choices = {{1, "RigidBody"}, {0, "Sprite"}};
  EXPECT_TRUE(SetText(choices, "RigidBody"));
  EXPECT_EQ(choice, 1);
  EXPECT_EQ(TextOf(choices), "RigidBody");
  EXPECT_TRUE(SetText(choices, "0"));
  EXPECT_FALSE(SetText(choices, "9"));
  Field readOnly{"choice", &choice, true};
  EXPECT_FALSE(SetText(readOnly, "1"));
  EXPECT_FALSE(SetValue(choices, FieldValue{1.0f})) << "another type";
  EXPECT_EQ(choice, 0);
}

// The rotation is a copy: what is set there turns nothing. The generators that push a body are in its group.
TEST(ObjectFields, FollowTheKindOrderAndShowTheGeneratorsOfABody) {
  TestWorld world;
  GameObject& box = world.AddBox("box", {1, 2, 0}, {.angle = 0.5f});
  AddHook(box);
  box.AddComponent("Sprite");
  GalePhysics::Spring spring;
  BodyOf(box).AddGenerator(&spring);
  TweakBar bar("bar");
  AddObjectFields(bar, box);
  std::vector<std::string> groups;
  for (const auto& entry : bar.GetEntries())
    if (entry.kind == EntryKind::kGroup) groups.push_back(entry.name);
  EXPECT_EQ(groups, (std::vector<std::string>{"Transform", "ScriptBox", "RigidBody", "Spring Generator", "Sprite",
                                              "BoxCollider"}));
  const Field& rotation = bar.Find("RigidBody/Rotation")->field;
  EXPECT_NEAR(std::get<float>(GetValue(rotation)), 0.5f, 1e-6f);
  EXPECT_TRUE(SetText(rotation, "1"));
  EXPECT_EQ(box.GetTransform().orientation, QuaternionFromZ(0.5f));
  EXPECT_TRUE(bar.Find("forceTotal")->field.readOnly);
  EXPECT_TRUE(SetText(bar.Find("base id ")->field, "12"));
  EXPECT_EQ(spring.baseId, 12);
  EXPECT_TRUE(SetText(bar.Find("collision group")->field, "15"));
  EXPECT_EQ(box.Get<GalePhysics::BoxCollider>()->collisionGroup, GalePhysics::kMaxCollisionGroup);
  BodyOf(box).generators.clear();
}
