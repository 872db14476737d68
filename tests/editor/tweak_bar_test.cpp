#include "editor/bars/tweak_bar.h"

#include <gtest/gtest.h>

#include "core/transform.h"
#include "editor/bars/field_value.h"
#include "editor/bars/object_fields.h"
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

// What a variable holds once it was set to the text.
template <class T>
std::string ValueFrom(std::string_view text) {
  T value{};
  const Field field{"", &value};
  return SetText(field, text) ? TextOf(field) : "refused";
}

}  // namespace

TEST(TweakBar, FindsByLabelNameAndGroupsFirstInOrderAndGivesEveryEntryAPathOfItsOwn) {
  TweakBar bar("bar");
  float values[] = {1.0f, 2.0f, 3.0f, 4.0f};
  int pressed = 0;
  bar.BeginGroup("a/b");
  bar.Add("x ", &values[0]);
  bar.BeginGroup("inner");
  bar.Add("x ", &values[1]);
  bar.EndGroup();
  bar.EndGroup();
  for (const int i : {2, 3}) {
    bar.BeginGroup("inner");
    bar.Add("x ", &values[i]);
    EXPECT_EQ(bar.GetEntries().back().path, i == 2 ? "/inner/x " : "/inner/x #2");
    bar.EndGroup();
  }
  bar.BeginGroup("inner");
  bar.AddButton("Add Objective", "Add above objective", [&] { ++pressed; });
  bar.EndGroup();
  const auto valueOf = [&](const char* label) { return std::get<float>(GetValue(bar.Find(label)->field)); };
  for (const char* label : {"x", " x ", "a/b/x", "bar/x"}) EXPECT_EQ(valueOf(label), 1.0f) << label;
  for (const char* label : {"inner/x", "a/b/inner/x"}) EXPECT_EQ(valueOf(label), 2.0f) << label;
  for (const char* label : {"other/x", "inner"}) EXPECT_EQ(bar.Find(label), nullptr) << label;
  for (const char* label : {"Add Objective", "inner/Add above objective"}) bar.Find(label)->press();
  EXPECT_EQ(pressed, 2);
  bar.RemoveAll();
  EXPECT_EQ(bar.Find("x"), nullptr);
}

TEST(FieldValue, ReadsTextOfEveryTypeAndRefusesTheRest) {
  EXPECT_EQ(ValueFrom<bool>("true"), "true");
  EXPECT_EQ(ValueFrom<bool>("yes"), "refused");
  EXPECT_EQ(ValueFrom<int>("-3"), "-3");
  EXPECT_EQ(ValueFrom<int>("3.5"), "refused");
  EXPECT_EQ(ValueFrom<std::uint32_t>("7"), "7");
  EXPECT_EQ(ValueFrom<std::uint32_t>("-1"), "refused");
  EXPECT_EQ(ValueFrom<float>(" 0.25 "), "0.25");
  for (const char* bad : {"", "nan", "inf", "1e99", "1 2", "one"}) EXPECT_EQ(ValueFrom<float>(bad), "refused") << bad;
  EXPECT_EQ(ValueFrom<Vec3>("1, -2.5 3"), "1 -2.5 3");
  for (const char* bad : {"1 2", "1 2 3 4"}) EXPECT_EQ(ValueFrom<Vec3>(bad), "refused") << bad;
  EXPECT_EQ(ValueFrom<FieldColour>("1 0 0.5"), "1 0 0.5");
  EXPECT_EQ(ValueFrom<std::string>("a = b"), "a = b");
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
