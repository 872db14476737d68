// The level is tried in a match of its own, to and fro in time, and stands as it stood.
#include "core/random.h"
#include "core/transform.h"
#include "editor/editor_scene.h"
#include "physics/box_collider.h"
#include "physics/generator_host.h"
#include "physics/spring.h"
#include "tools/simulate/digest.h"

class EditorTryTest : public EditorTest {
 protected:
  EditorTryTest() {
    AddBlock("block", {6, 3, 0});
    AddBlock("crate", {-6, 4, 0}).Get<GalePhysics::RigidBody>()->inverseMass = 1.0f;
    Press("Freeze");
    Run(2);
    Set("Rule", "HitObjects");
    Set("Pilots", "true");
  }
  GameObject& AddBlock(const char* name, const Vec3& at) { return world.AddBox(name, at, {.inverseMass = 0.0f}); }
  void Toggle() {
    Press("Play");
    Run();
  }
};

TEST_F(EditorTryTest, TheLevelComesBackAsItWasWithSelectionAndUndo) {
  Select(*Find("block"));
  Set("position", "6 2 0");
  const std::uint64_t before = StateDigest();
  const std::uint32_t random = RandomState();
  const std::vector<std::uint32_t> selected = GetSelection();
  Toggle();
  EXPECT_TRUE(editor.IsTrying());
  EXPECT_NE(Find("Player4"), nullptr);
  Run(200);
  Toggle();
  EXPECT_FALSE(editor.IsTrying());
  EXPECT_EQ(StateDigest(), before);
  EXPECT_EQ(RandomState(), random);
  EXPECT_EQ(GetSelection(), selected);
  EXPECT_EQ(editor.GetPace(), Freeze::Pace::kFrozen);
  Press("Undo");
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{6, 3, 0}));
}

// Wherever the slider is let go of, the same frames make the same scene, edits included.
TEST_F(EditorTryTest, TravelToAnyMomentAndOnGivesTheUnbrokenRun) {
  const auto tryFor = [&](int frames) {
    Press("Play");
    Run(frames);
  };
  tryFor(60);
  Select(*Find("block"));
  Set("position", "5 -3 0");  // which freezes
  Run(3);
  Press("Freeze");
  Run(240);
  const std::uint64_t running = StateDigest();
  const auto goTo = [&](const char* moment, int frames) {
    Set("Moment", moment);
    Run(frames);
  };
  Press("Freeze");
  Run(2);
  const std::uint64_t unbroken = StateDigest();
  for (const char* moment : {"0.5", "4", "0", "3.2"}) {
    goTo(moment, 5);
    EXPECT_NE(StateDigest(), unbroken) << moment;
    goTo("99", 2);
    EXPECT_EQ(StateDigest(), unbroken) << moment;
  }
  goTo("3.2", 2);
  Press("Freeze");
  Run(300 - 192);
  EXPECT_EQ(StateDigest(), running) << "let go of, it goes on";
  Toggle();
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{5, -3, 0})) << "the level has it too";
  Press("Undo");
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{6, 3, 0})) << "by one step";
}

TEST_F(EditorTryTest, NothingIsMadeOrSavedInATry) {
  Toggle();
  const std::size_t objects = Objects().GetObjects().size();
  for (const char* label : {"Make default box", "Duplicate", "Save Level", "New level"}) Press(label);
  EXPECT_EQ(editor.GetStatus().back().substr(0, 25), "a try takes values alone:");
  EXPECT_EQ(Objects().GetObjects().size(), objects);
  EXPECT_FALSE(editor.MayLose("new game")) << "the try begins again instead";
  Run();
  EXPECT_TRUE(editor.IsTrying());
}

TEST_F(EditorTryTest, EditsOfATryAreUnsavedWorkAndPutAsideWithTheLevel) {
  SaveAs("kept");
  editor.StartRecovery();
  Toggle();
  Run(5);
  EXPECT_FALSE(editor.IsUnsaved());
  Select(*Find("block"));
  Set("position", "5 -3 0");
  EXPECT_TRUE(editor.IsUnsaved());
  Send(EventOf(SDL_QUIT));
  EXPECT_TRUE(platform.running) << "asked first";
  const std::string aside = world.ReadFile("autosaves/recover-0");
  EXPECT_NE(aside.find("x_: 5\n"), std::string::npos);
  EXPECT_TRUE(editor.IsTrying());
  Toggle();
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{5, -3, 0}));
  Press("Undo");
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{6, 3, 0}));
}

// The pieces of the match are no part of the level that holds it.
TEST_F(EditorTryTest, ALevelWithAMatchOfItsOwnGetsTheEditsOfItsObjectsAlone) {
  world.WriteFile("piece", "{\n\t7: {\n\t\tName: stranger\n\t\tCore: false\n\t}\n}\n");
  AddWithScript("segmentmanager", "SegmentManager");
  Select(Last());
  Press("Add Segment");
  Set("levelName1", "piece");
  Set("Rule", "0");
  Toggle();
  Run(5);
  ASSERT_NE(Find("stranger"), nullptr);
  Select(*Find("block"));
  Set("position", "5 -3 0");
  SetSelection({Find("stranger")->id});
  Set("position", "1 1 0");
  Toggle();
  EXPECT_EQ(PositionOf(*Find("block")), (Vec3{5, -3, 0}));
  EXPECT_EQ(PositionOf(*Find("crate")), (Vec3{-6, 4, 0}));
  EXPECT_EQ(editor.GetStatus().back(), "1 edits of the try were of objects that are not the level's");
}

// IDs begin anew in a try. What hangs on an object of the level hangs on it again, on another one on nothing.
TEST_F(EditorTryTest, CopiesOfATryHangOnWhatTheLevelHas) {
  GameObject& block = *Find("block");
  auto& own = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::Spring>(block, 2.0f, 1.0f));
  BodyOf(*Find("crate")).AddGenerator(&own);
  const auto baseOf = [&](GameObject& object) -> std::int32_t& {
    return static_cast<GalePhysics::Spring&>(*BodyOf(object).generators.at(0)).baseId;
  };
  const auto idOf = [](const GameObject& object) { return static_cast<std::int32_t>(object.id); };
  const auto copyCrate = [&] {
    SetSelection({Find("crate")->id});
    Press("Copy");
  };
  copyCrate();
  Toggle();
  Run(5);
  Toggle();
  Press("Paste");
  EXPECT_EQ(baseOf(Last()), idOf(block)) << "copied in the level";
  Press("Undo");
  Toggle();
  Run(5);
  ASSERT_EQ(baseOf(*Find("crate")), idOf(*Find("block")));
  EXPECT_NE(idOf(*Find("block")), idOf(block));
  copyCrate();
  Toggle();
  Press("Paste");
  EXPECT_EQ(baseOf(Last()), idOf(block));
  ExpectStatus("pasted crate");
  Press("Undo");
  Toggle();
  Run(5);
  baseOf(*Find("crate")) = idOf(*Find("Player1"));
  copyCrate();
  Toggle();
  Press("Paste");
  EXPECT_FALSE(static_cast<GalePhysics::Spring&>(*BodyOf(Last()).generators.at(0)).HasBase());
  ExpectStatus("pasted crate without 1 link to what is not in this level");
}
