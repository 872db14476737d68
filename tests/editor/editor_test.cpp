#include "editor/editor.h"

#include <filesystem>
#include <tuple>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "editor/editor_scene.h"
#include "editor/test_objects.h"
#include "graphics/sprite.h"
#include "input/input.h"
#include "match/objective_manager.h"
#include "match/segment_manager.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"
#include "scripts/death_timer.h"

namespace {

constexpr int kMiddleX = 640;
constexpr int kMiddleY = 360;

}  // namespace

TEST_F(EditorTest, ClicksPickAndShiftAddsAndTheBarShowsThem) {
  world.AddBox("left", {-3, 0, 0}, {.halfExtents = {1, 1, 0}});
  world.AddBox("right", {3, 0, 0}, {.halfExtents = {1, 1, 0}});
  const int leftX = kMiddleX - 98;  // 32.8 pixels a unit
  const int rightX = kMiddleX + 98;
  Click(leftX, kMiddleY);
  EXPECT_EQ(editor.Get("name"), "left");
  Click(rightX, kMiddleY);
  EXPECT_EQ(editor.Get("name"), "right");
  Key(SDLK_LSHIFT, true);
  Click(leftX, kMiddleY);
  EXPECT_EQ(editor.Get("right/name"), "right");
  EXPECT_EQ(editor.Get("left/name"), "left");
  EXPECT_EQ(GetSelection().size(), 2u);
  Press("Kill Selected Object");
  Frames();
  EXPECT_EQ(Objects().FindObjectByName("left"), nullptr) << "the last one that was picked goes";
  EXPECT_EQ(editor.Get("left/name"), "");
  EXPECT_EQ(editor.Get("name"), "right");
  Press("Kill Selected Object");
  EXPECT_FALSE(Objects().GetObject(GetSelection().front())->alive) << "then the one before it";
  Press("Kill Selected Object");
  EXPECT_EQ(editor.GetStatus(), std::vector<std::string>{"nothing is selected"});
}

TEST_F(EditorTest, ComponentsGoToTheFirstScriptsToTheLastSelected) {
  GameObject& first = Select(world.Add("first"));
  GameObject& last = Select(world.Add("last"));
  Set("Component Type To Add", "ScriptBox");
  Press("Add Component");
  EXPECT_NE(first.Get<ScriptBox>(), nullptr);
  EXPECT_EQ(last.Get<ScriptBox>(), nullptr);
  Set("Script Name", "dizzy");
  Press("Add Script");
  EXPECT_EQ(editor.GetStatus().back(), "last has no ScriptBox, so it takes no script");
  last.AddComponent("ScriptBox");
  Press("Add Script");
  EXPECT_NE(last.Get<ScriptBox>()->GetScript("dizzy"), nullptr);
  Set("Script Name", "nonsense");
  Press("Add Script");
  EXPECT_EQ(editor.GetStatus(), std::vector<std::string>{"Could not add script nonsense."});
  Set("Find", "ZzY");
  Press("Add dizzy");
  EXPECT_EQ(editor.Press("Add nothing"), "the bars have no button \"Add nothing\"");
}

TEST_F(EditorTest, ButtonsMakeWhatTheyName) {
  Press("Make default box");
  EXPECT_FALSE(Last().Get<GalePhysics::BoxCollider>()->ghost);
  EXPECT_EQ(Last().Get<Sprite>()->texturePath, "tstc.png");
  EXPECT_EQ(BodyOf(Last()).damping, 1.0f);
  EXPECT_NE(Last().Get<ScriptBox>(), nullptr);
  Press("Make default sphere");
  EXPECT_EQ(FindDeathTimer(Last())->endTime, 9999.0f);
  EXPECT_EQ(BodyOf(Last()).inverseMass, 0.0f);
  EXPECT_NE(Last().GetComponent(Kind::kGivePoints), nullptr);
  Press("Make default object");
  EXPECT_TRUE(Last().Get<GalePhysics::SphereCollider>()->ghost);
  EXPECT_EQ(Last().Get<GalePhysics::SphereCollider>()->radius, 1.0f);
  EXPECT_EQ(Last().GetComponent(Kind::kRigidBody), nullptr);
  Press("Make segment manager");
  const GameObject* manager = Objects().FindObjectByName("segmentmanager");
  ASSERT_NE(manager, nullptr);
  EXPECT_NE(manager->Get<ScriptBox>()->GetScript("ObjectiveManager"), nullptr);
  Press("Make Assemblage");
  EXPECT_EQ(Last().name, "whale");
  EXPECT_NE(Last().GetComponent(Kind::kPrimitiveAssemblage), nullptr);
}

TEST_F(EditorTest, SavesTheDurationLastAndAutosavesInNumber) {
  world.Add("thing", {1, 2, 0});
  Set("FileName", "mine");
  Press("Save Level");
  Press("Save Level");
  EXPECT_EQ(WithoutIds(world.ReadFile("mine")), WithoutIds(world.ReadFile("autosaves/autosave-0-mine")));
  EXPECT_EQ(WithoutIds(world.ReadFile("mine")), WithoutIds(world.ReadFile("autosaves/autosave-1-mine")));
  EXPECT_EQ(Count(world.ReadFile("mine"), "Name: 5.000000\n"), 1);
  Frames();
  EXPECT_EQ(Objects().FindObjectByName("5.000000"), nullptr);
  Set("FileName", "");
  Press("Save Level");
  EXPECT_FALSE(std::filesystem::exists("autosaves/autosave-2-"));
}

TEST_F(EditorTest, LoadingTakesTheDurationFromANumberAlone) {
  GameObject& timed = world.Add("timed");
  timed.Insert(std::make_unique<ScriptBox>()).AddScript("DeathTimer");
  Set("FileName", "short");
  Set("Level Duration", "7.5");
  Press("Save Level");
  Set("Level Duration", "1");
  Press("Load Level");
  EXPECT_EQ(editor.Get("Level Duration"), "7.5");
  Frames();
  EXPECT_EQ(FindDeathTimer(*Objects().FindObjectByName("timed"))->endTime, 7.5f);
  EXPECT_EQ(Objects().GetObjects().size(), 1u);
  // Written by hand, without a duration: everything stays as it is written.
  Objects().SaveLevel("byhand");
  Set("FileName", "byhand");
  Press("Load Level");
  Frames();
  EXPECT_EQ(FindDeathTimer(*Objects().FindObjectByName("timed"))->endTime, 7.5f);
  EXPECT_EQ(Objects().GetObjects().size(), 1u);
  EXPECT_EQ(editor.Get("Level Duration"), "7.5");
  world.WriteFile("words", "{\n\t1: {\n\t\tName: Infinity\n\t\tCore: false\n\t}\n}\n");
  Set("FileName", "words");
  Press("Load Level");
  EXPECT_TRUE(Last().alive) << "a name that is no number of seconds";
}

TEST_F(EditorTest, ArchetypesHoldTheLastSelectedAndComeBackInTheMiddle) {
  Select(world.Add("one", {1, 1, 0}));
  Select(world.Add("two", {4, 5, 0}));
  Set("ArchetypeName", "");
  Press("Save Archetype");
  EXPECT_EQ(editor.GetStatus(), std::vector<std::string>{"no archetype name, nothing is saved"});
  Set("ArchetypeName", "pattern");
  Press("Save Archetype");
  EXPECT_EQ(Count(world.ReadFile("pattern"), "Name: "), 1);
  EXPECT_EQ(Count(world.ReadFile("pattern"), "Name: two\n"), 1);
  Press("Load Archetype");
  EXPECT_EQ(Last().name, "two");
  EXPECT_EQ(PositionOf(Last()), Vec3{});
}

TEST_F(EditorTest, WritesOverLevelsOnlyAndTellsWhyNot) {
  world.Add("thing");
  world.WriteFile("program",
                  "\x7f"
                  "ELF");
  Set("FileName", "program");
  Press("Save Level");
  EXPECT_EQ(world.ReadFile("program").substr(1), "ELF");
  EXPECT_EQ(editor.GetStatus().front(), "program: is no level or archetype, not written over");
  world.WriteFile("level", "{\n}\n");
  std::filesystem::create_directory("level.tmp");  // what stands where the new content would be gathered
  Set("FileName", "level");
  Press("Save Level");
  EXPECT_EQ(world.ReadFile("level"), "{\n}\n");
  EXPECT_EQ(editor.GetStatus().front().substr(0, 6), "level:");
}

TEST_F(EditorTest, SegmentsAndObjectivesGrowFromTheBar) {
  GameObject& manager = Select(world.Add("segmentmanager"));
  auto& scripts = manager.Insert(std::make_unique<ScriptBox>());
  auto& segments = *static_cast<SegmentManager*>(scripts.AddScript("SegmentManager"));
  scripts.AddScript("ObjectiveManager");
  Press("Add Segment");
  Set("levelName1", "second");
  Press("Insert Segment Before 1");
  Set("Segment1/duration", "3");
  ASSERT_EQ(segments.GetSegments().size(), 2u);
  EXPECT_EQ(segments.GetSegments()[0].levelName, "InvalidName");
  EXPECT_EQ(segments.GetSegments()[0].duration, 3.0f);
  EXPECT_EQ(segments.GetSegments()[1].levelName, "second");
  Set("ObjectiveName", "nonsense");
  Press("Add Objective");
  EXPECT_EQ(editor.Get("Sections"), "0");
  Set("ObjectiveName", "Crown");
  Press("Add above objective");
  EXPECT_EQ(editor.Get("Sections"), "1");
  EXPECT_NE(editor.Set("Sections", "4"), "");
  for (int steps = 7; steps > 0; --steps) Press("Undo");
  EXPECT_EQ(editor.Get("Sections"), "0");
  EXPECT_EQ(editor.Get("levelName1"), "");
  for (int steps = 7; steps > 0; --steps) Press("Redo");
  EXPECT_EQ(editor.Get("Sections"), "1");
  EXPECT_EQ(editor.Get("Segment1/duration"), "3");
  EXPECT_EQ(editor.Get("levelName2"), "second");
}

TEST_F(EditorTest, TestEpisodeBeginsAnew) {
  world.WriteFile("piece", "{\n}\n");
  GameObject& piece = world.Add("fish");
  piece.Insert(std::make_unique<ScriptBox>()).AddScript("DeathTimer");
  Objects().SaveLevel("piece");
  piece.alive = false;
  GameObject& manager = Select(world.Add("segmentmanager"));
  auto& scripts = manager.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript("SegmentManager");
  Press("Add Segment");
  Set("levelName1", "piece");
  Press("Test Episode");
  Frames();
  const std::uint32_t first = Objects().FindObjectByName("fish")->id;
  Press("Test Episode");
  Frames();
  EXPECT_EQ(Objects().GetObject(first), nullptr);
  EXPECT_NE(Objects().FindObjectByName("fish"), nullptr);
}

TEST_F(EditorTest, HiddenBarsTakeNothingAndShownOnesOnlyWhatIsTheirs) {
  int bound = 0;
  for (const int key : {SDLK_p, SDLK_ESCAPE, SDLK_RETURN}) Input::BindKeyDown(key, [&] { ++bound; });
  Tap(SDLK_p);
  EXPECT_EQ(bound, 1);
  EXPECT_FALSE(platform.IsPointerShown());
  Tap(SDLK_F1);
  EXPECT_TRUE(editor.IsShown());
  EXPECT_TRUE(platform.IsPointerShown());
  Tap(SDLK_p);
  EXPECT_EQ(bound, 2) << "no text is being typed";
  Click(60, 42);  // the first text of the tools bar
  Key(SDLK_p, true);
  SDL_Event typed{};
  typed.type = SDL_TEXTINPUT;
  typed.text.text[0] = 'q';
  platform.Push(typed);
  Frames();
  EXPECT_EQ(bound, 2);
  EXPECT_FALSE(Input::IsLetterDown('p'));
  Key(SDLK_ESCAPE, true);
  Frames();
  EXPECT_FALSE(Input::IsKeyDown("esc"));
  Key(SDLK_ESCAPE, false);
  Click(60, 42);
  platform.Push(typed);
  Frames();
  Key(SDLK_p, false);
  Key(SDLK_RETURN, true);
  Frames(2);
  EXPECT_FALSE(Input::IsKeyDown("enter"));
  Key(SDLK_RETURN, false);
  Frames();
  EXPECT_EQ(editor.Get("FileName"), "q");
  Tap(SDLK_p);
  EXPECT_EQ(bound, 3) << "the typing is over";
  Click(60, 42);
  typed.text.text[0] = 'x';
  platform.Push(typed);
  Frames();
  Tap(SDLK_F1);
  EXPECT_FALSE(editor.IsShown());
  Click(60, 42);
  Tap(SDLK_p);
  EXPECT_EQ(bound, 4);
  Tap(SDLK_F1);
  Click(60, 42);
  Tap(SDLK_RETURN);
  Frames(2);
  EXPECT_EQ(editor.Get("FileName"), "q") << "what was being typed when the bars were hidden counts for nothing";
}

// A key that the game has seen go down comes up for the game, whatever has the keyboard by then.
TEST_F(EditorTest, HeldKeysAndButtonsComeUpWhereTheyWentDown) {
  Tap(SDLK_F1);
  Key(SDLK_d, true);
  Frames();
  Click(60, 42);
  Key(SDLK_d, true, true);
  Frames();
  Key(SDLK_d, false);
  Frames();
  EXPECT_FALSE(Input::IsLetterDown('d'));
  Key(SDLK_RETURN, true);
  Frames(2);
  Key(SDLK_RETURN, true, true);  // held beyond the end of the typing
  Frames();
  EXPECT_FALSE(Input::IsKeyDown("enter"));
  Key(SDLK_RETURN, false);
  Frames();
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  EXPECT_TRUE(Input::IsMouseButtonDown(Input::MouseButton::kLeft));
  Mouse(60, 42);
  Button(false);
  EXPECT_FALSE(Input::IsMouseButtonDown(Input::MouseButton::kLeft));
  Button(true);
  EXPECT_FALSE(Input::IsMouseButtonDown(Input::MouseButton::kLeft)) << "over a bar";
}

TEST_F(EditorTest, DragsWhatIsPickedAndUndoesTheWholeWay) {
  GameObject& box = world.AddBox("box", {0, 0, 0}, {.inverseMass = 0.0f, .halfExtents = {1, 1, 0}});
  Tap(SDLK_F1);
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  Frames();
  Key(SDLK_LCTRL, true);
  Mouse(kMiddleX + 66, kMiddleY);  // about two units, by way of a place between
  Button(false);
  Frames();
  EXPECT_EQ(PositionOf(box), (Vec3{2, 0, 0}));
  Tap(SDLK_z);
  EXPECT_EQ(PositionOf(box), Vec3{});
  Tap(SDLK_y);
  EXPECT_EQ(PositionOf(box), (Vec3{2, 0, 0}));
  EXPECT_FALSE(Input::IsLetterDown('z'));
}
