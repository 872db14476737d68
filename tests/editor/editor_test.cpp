#include "editor/editor.h"

#include <filesystem>

#include "core/object_manager.h"
#include "core/transform.h"
#include "editor/editor_scene.h"
#include "graphics/sprite.h"
#include "input/input.h"
#include "physics/box_collider.h"
#include "physics/sphere_collider.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr int kMiddleX = 640;
constexpr int kMiddleY = 360;
constexpr int kTextX = 60;  // of the first text on the tools bar, the file name
constexpr int kTextY = 42;

}  // namespace

TEST_F(EditorTest, ClicksPickAndShiftAddsAndTheBarShowsThem) {
  world.AddBox("left", {-3, 0, 0}, {.halfExtents = {1, 1, 0}});
  world.AddBox("right", {3, 0, 0}, {.halfExtents = {1, 1, 0}});
  const int leftX = kMiddleX - 98;  // 32.8 pixels a unit
  Click(leftX, kMiddleY);
  EXPECT_EQ(editor.Get("name"), "left");
  Click(kMiddleX + 98, kMiddleY);
  EXPECT_EQ(editor.Get("name"), "right");
  SetKey(SDLK_LSHIFT, true);
  Click(leftX, kMiddleY);
  EXPECT_EQ(editor.Get("right/name"), "right");
  EXPECT_EQ(editor.Get("left/name"), "left");
  Press("Kill Selected Object");
  Run();
  EXPECT_EQ(editor.Get("left/name"), "") << "the last one that was picked goes";
  EXPECT_EQ(editor.Get("name"), "right");
  for (const char* button : {"Kill Selected Object", "Save Archetype", "Add Script"}) {
    Press(button);
    ExpectStatus("nothing is selected");
  }
  EXPECT_NE(Find("right"), nullptr) << "none stands in for the one that is gone";
}

TEST_F(EditorTest, OfTwoUnderTheCursorTheLastPairIsPickedAndShiftPicksEachOnce) {
  std::uint32_t lastTold = 0;
  for (GameObject* object : {&world.AddBox("below", {}), &world.AddSphere("ghost", {}, {.ghost = true})}) {
    AddHook(*object).onCollision = [&lastTold, object](const CollisionPair& pair) {
      if (pair.other == &Objects().GetCursor()) lastTold = object->id;
    };
  }
  Click(kMiddleX, kMiddleY);
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{lastTold});
  SetKey(SDLK_LSHIFT, true);
  for (int clicks = 2; clicks > 0; --clicks) Click(kMiddleX, kMiddleY);
  EXPECT_EQ(GetSelection().size(), 2u);
  Button(true);
  ClearSelection();
  Run(2);
  EXPECT_TRUE(GetSelection().empty()) << "a held button picks nothing";
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
  EXPECT_EQ(editor.GetStatus().back(), "last has no ScriptBox, so it takes no script: add a ScriptBox first");
  last.AddComponent("ScriptBox");
  Press("Add Script");
  EXPECT_NE(last.Get<ScriptBox>()->GetScript("dizzy"), nullptr);
  Set("Script Name", "nonsense");
  Press("Add Script");
  ExpectStatus("Could not add script nonsense.");
  EXPECT_EQ(editor.Press("Add nothing"), "the bars have no button \"Add nothing\"");
}

TEST_F(EditorTest, OfTheTestObjectsABoxMovesASphereStandsAndTheThirdStopsNothing) {
  Press("Make default box");
  EXPECT_NE(BodyOf(Last()).inverseMass, 0.0f);
  EXPECT_EQ(Last().Get<Sprite>()->texturePath, "tstc.png");
  EXPECT_FALSE(Last().Get<GalePhysics::BoxCollider>()->ghost);
  Press("Make default sphere");
  EXPECT_EQ(BodyOf(Last()).inverseMass, 0.0f);
  Press("Make default object");
  EXPECT_TRUE(Last().Get<GalePhysics::SphereCollider>()->ghost);
  EXPECT_EQ(Last().GetComponent(Kind::kRigidBody), nullptr);
}

TEST_F(EditorTest, SavesTheSameAgainUnderTheNextNumberWithTheDurationLast) {
  world.Add("thing", {1, 2, 0});
  for (int presses = 2; presses > 0; --presses) SaveAs("mine");
  const std::string saved = WithoutIds(world.ReadFile("mine"));
  EXPECT_EQ(WithoutIds(world.ReadFile("autosaves/autosave-0-mine")), saved);
  EXPECT_EQ(WithoutIds(world.ReadFile("autosaves/autosave-1-mine")), saved);
  EXPECT_EQ(Count(saved, "Name: 5.000000\n"), 1);
  EXPECT_EQ(saved.rfind("Name: "), saved.find("Name: 5.000000\n"));
  Run();
  EXPECT_EQ(Find("5.000000"), nullptr);
}

TEST_F(EditorTest, SavesTheDurationLastWithAnAutosaveAndTakesItFromANumberAlone) {
  Press("Make default sphere");
  EXPECT_EQ(FindDeathTimer(Last())->endTime, 9999.0f);
  Last().name = "timed";
  Set("Level Duration", "7.5");
  for (const char* autosave : {"autosaves/autosave-0-short", "autosaves/autosave-1-short"}) {
    SaveAs("short");
    EXPECT_EQ(world.ReadFile("short"), world.ReadFile(autosave));
  }
  EXPECT_EQ(Count(world.ReadFile("short"), "Name: 7.500000\n"), 1);
  Run();  // the object that carried the duration goes
  Objects().SaveLevel("byhand");
  Set("Level Duration", "1");
  // Written by hand, without a duration, everything stays as it is written.
  for (const auto& [file, endTime] : {std::pair("short", 7.5f), std::pair("byhand", 9999.0f)}) {
    Load(file);
    Run();
    EXPECT_EQ(editor.Get("Level Duration"), "7.5");
    EXPECT_EQ(FindDeathTimer(*Find("timed"))->endTime, endTime);
    EXPECT_EQ(Objects().GetObjects().size(), 1u);
  }
  world.WriteFile("words", "{\n\t1: {\n\t\tName: Infinity\n\t\tCore: false\n\t}\n}\n");
  Load("words");
  EXPECT_TRUE(Last().alive) << "a name that is no number of seconds";
}

TEST_F(EditorTest, ArchetypesHoldTheLastSelectedAndComeBackInTheMiddle) {
  Select(world.Add("one", {1, 1, 0}));
  Select(world.Add("two", {4, 5, 0}));
  Set("ArchetypeName", "");
  Press("Save Archetype");
  ExpectStatus("no archetype name, nothing is saved");
  Set("ArchetypeName", "pattern");
  Press("Save Archetype");
  EXPECT_EQ(Count(world.ReadFile("pattern"), "Name: "), 1);
  EXPECT_EQ(Count(world.ReadFile("pattern"), "Name: two\n"), 1);
  Press("Load Archetype");
  EXPECT_EQ(Last().name, "two");
  EXPECT_EQ(PositionOf(Last()), Vec3{});
}

TEST_F(EditorTest, WritesOverLevelsOnlyAndTellsWhyNot) {
  world.WriteFile("program", "ELF");
  SaveAs("");
  SaveAs("program");
  EXPECT_EQ(world.ReadFile("program"), "ELF");
  EXPECT_EQ(editor.GetStatus().front(), "program: is no level or archetype, not written over");
  world.WriteFile("level", "{\n}\n");
  std::filesystem::create_directory("level.tmp");  // what stands where the new content would be gathered
  SaveAs("level");
  EXPECT_EQ(world.ReadFile("level"), "{\n}\n");
  EXPECT_EQ(editor.GetStatus().front().substr(0, 6), "level:");
  EXPECT_FALSE(std::filesystem::exists("autosaves/autosave-0-")) << "a level without a name is nowhere saved";
  std::filesystem::create_directory("other");
  world.WriteFile("other/settings.json", "{}");
  const char* outside = "autosaves/../other/settings.json";
  SaveAs(outside);
  ExpectStatus("autosaves/../other/settings.json: is no plain name in the game's folder, not written");
  Set("ArchetypeName", outside);
  Select(world.Add("thing"));
  Press("Save Archetype");
  EXPECT_EQ(world.ReadFile("other/settings.json"), "{}");
}

TEST_F(EditorTest, SegmentsAndObjectivesGrowFromTheBar) {
  Press("Make segment manager");
  Select(*Find("segmentmanager")).Get<ScriptBox>()->AddScript("SegmentManager");
  Press("Add Segment");
  Set("levelName1", "second");
  Press("Insert Segment Before 1");
  Set("Segment1/duration", "3");
  EXPECT_EQ(editor.Get("levelName1"), "InvalidName");
  EXPECT_EQ(editor.Get("levelName2"), "second");
  Set("ObjectiveName", "nonsense");
  Press("Add Objective");
  Set("ObjectiveName", "Crown");
  Press("Add above objective");
  EXPECT_EQ(editor.Get("Sections"), "2");
  EXPECT_NE(editor.Set("Sections", "4"), "");
}

TEST_F(EditorTest, TestEpisodeBeginsAnew) {
  AddMatchOfOnePiece();
  Find("fish")->alive = false;
  Press("Test Episode");
  Run();
  const std::uint32_t first = Find("fish")->id;
  Press("Test Episode");
  Run();
  EXPECT_EQ(Objects().GetObject(first), nullptr);
  EXPECT_NE(Find("fish"), nullptr);
}

TEST_F(EditorTest, HiddenBarsTakeNothingAndShownOnesOnlyWhatIsTheirs) {
  int heard = 0;
  for (const int key : {SDLK_p, SDLK_ESCAPE, SDLK_RETURN}) Input::BindKeyDown(key, [&] { ++heard; });
  const auto isHeard = [&](int key) {
    const int before = heard;
    SetKey(key, true);
    Run();
    EXPECT_EQ(Input::IsLetterDown('p') || Input::IsKeyDown("esc") || Input::IsKeyDown("enter"), heard > before);
    SetKey(key, false);
    Run();
    return heard > before;
  };
  const auto typeIntoText = [&](char letter) {
    Click(kTextX, kTextY);
    Type(letter);
  };
  EXPECT_TRUE(isHeard(SDLK_p));
  EXPECT_FALSE(platform.IsPointerShown());
  Tap(SDLK_F1);
  EXPECT_TRUE(platform.IsPointerShown());
  for (const int end : {SDLK_ESCAPE, SDLK_RETURN}) {
    EXPECT_FALSE(isHeard(SDLK_p)) << "keys fly player 1 and start matches";
    EXPECT_EQ(isHeard(end), end == SDLK_ESCAPE) << "no text is being typed, and the menu opens";
    typeIntoText('q');
    EXPECT_FALSE(isHeard(SDLK_p));
    EXPECT_FALSE(isHeard(end));
    EXPECT_EQ(editor.Get("FileName") == "q", end == SDLK_RETURN);
  }
  typeIntoText('x');
  Tap(SDLK_F1);
  Click(kTextX, kTextY);
  EXPECT_TRUE(isHeard(SDLK_p)) << "hidden";
  Tap(SDLK_F1);
  Click(kTextX, kTextY);
  EXPECT_FALSE(isHeard(SDLK_RETURN));
  EXPECT_EQ(editor.Get("FileName"), "q") << "what was being typed when the bars were hidden counts for nothing";
}

// A key that the game has seen go down comes up for the game, whatever has the keyboard by then.
TEST_F(EditorTest, HeldKeysAndButtonsComeUpWhereTheyWentDown) {
  Tap(SDLK_F1);
  SetKey(SDLK_d, true);
  Click(kTextX, kTextY);
  Repeat(SDLK_d);
  SetKey(SDLK_d, false);
  Run();
  EXPECT_FALSE(Input::IsLetterDown('d'));
  SetKey(SDLK_RETURN, true);
  Run(2);
  Repeat(SDLK_RETURN);  // held beyond the end of the typing
  EXPECT_FALSE(Input::IsKeyDown("enter"));
  SetKey(SDLK_RETURN, false);
  const auto isLeftDown = [] { return Input::IsMouseButtonDown(Input::MouseButton::kLeft); };
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  EXPECT_TRUE(isLeftDown());
  Mouse(kTextX, kTextY);
  Button(false);
  EXPECT_FALSE(isLeftDown());
  Button(true);
  EXPECT_FALSE(isLeftDown()) << "over a bar";
}

TEST_F(EditorTest, DragsWhatIsPickedAndUndoesTheWholeWay) {
  GameObject& box = world.AddBox("box", {0, 0, 0}, {.inverseMass = 0.0f, .halfExtents = {1, 1, 0}});
  Tap(SDLK_F1);
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  Run();
  SetKey(SDLK_LCTRL, true);
  Mouse(kMiddleX + 66, kMiddleY);  // about two units, by way of a place between
  Button(false);
  Run();
  EXPECT_EQ(PositionOf(box), (Vec3{2, 0, 0}));
  Tap(SDLK_z);
  EXPECT_EQ(PositionOf(box), Vec3{});
  Tap(SDLK_y);
  EXPECT_EQ(PositionOf(box), (Vec3{2, 0, 0}));
  EXPECT_FALSE(Input::IsLetterDown('z'));
}
