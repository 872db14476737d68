// What is done to several objects at once, and to the scene as a whole.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "core/file_cache.h"
#include "core/pause.h"
#include "core/transform.h"
#include "editor/editor_scene.h"
#include "editor/files/recovery.h"
#include "folders.h"
#include "graphics/renderer.h"
#include "input/input.h"
#include "lint/key_table.h"
#include "physics/box_collider.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/spring.h"
#include "screens/menus.h"
#include "tools/simulate/digest.h"

namespace {

constexpr int kMiddleX = 640;
constexpr int kMiddleY = 360;
constexpr int kUnit = 33;  // pixels, about

}  // namespace

class EditorManyTest : public EditorTest {
 protected:
  GameObject& AddStill(const char* name, const Vec3& at) {
    return world.AddBox(name, at, {.inverseMass = 0.0f, .halfExtents = {0.5f, 0.5f, 0.0f}});
  }
  void Hold(int key) {
    SetKey(key, true);
    Run();
  }
  void LetGo(int key) {
    SetKey(key, false);
    Run();
  }
};

// Frames that stood in between leave no trace in those that ran.
TEST_F(EditorManyTest, AFreezeLeavesTheRunAsItWas) {
  const auto digestAfter = [&](auto&& between) {
    world.Restart();
    editor.Init();
    GetRenderer().StartRipple({});  // its clock is in the digest, and goes on from run to run
    world.AddBox("box", {}, {.velocity = {1, 2, 0}, .angularVelocity = {0, 0, 1}});
    Run(10);
    between();
    Run(10);
    return StateDigest();
  };
  const auto steps = [&](const char* button, int frames) {
    Press(button);
    Run(frames);
  };
  const std::uint64_t straight = digestAfter([&] { Run(5); });
  EXPECT_EQ(straight, digestAfter([&] {
              steps("Freeze", 7);
              for (int i = 0; i < 3; ++i) steps("Step", 2);
              EXPECT_TRUE(IsPaused());
              EXPECT_FALSE(IsPausedByGame());
              steps("Slow", 8);
              Press("Slow");
            }));
  EXPECT_NE(straight, digestAfter([&] { Run(6); }));
  Press("Freeze");
  Run();
  OpenPauseMenu();
  CloseTopMenu();
  EXPECT_TRUE(IsPaused()) << "the menu's pause is not the editor's";
}

TEST_F(EditorManyTest, AFrameSelectsKeysNudgeAndNoneOfItReachesThePlayer) {
  GameObject& left = AddStill("left", {-2, 0, 0});
  GameObject& right = AddStill("right", {2, 0, 0});
  for (const float x : {-8.0f, 8.0f}) AddStill("far", {x, 0, 0});
  Tap(SDLK_F1);
  Tap(SDLK_F2);
  Mouse(kMiddleX - 4 * kUnit, kMiddleY - 2 * kUnit);
  Button(true);
  Run();
  Mouse(kMiddleX + 4 * kUnit, kMiddleY + 2 * kUnit);
  Button(false);
  EXPECT_EQ(GetSelection(), (std::vector<std::uint32_t>{left.id, right.id}));
  SetKey(SDLK_RIGHT, true);
  Run();
  EXPECT_FALSE(Input::IsKeyDown("arrowkeyright"));
  LetGo(SDLK_RIGHT);
  Hold(SDLK_LSHIFT);
  Tap(SDLK_UP);
  LetGo(SDLK_LSHIFT);
  EXPECT_EQ(PositionOf(left), (Vec3{-1.9f, 1, 0}));
  EXPECT_EQ(PositionOf(right), (Vec3{2.1f, 1, 0}));
  Click(kMiddleX + 2 * kUnit, kMiddleY - kUnit);
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{right.id});
  for (int i = 0; i < 2; ++i) Press("Undo");
  EXPECT_EQ(PositionOf(left), (Vec3{-2, 0, 0}));
  EXPECT_EQ(PositionOf(right), (Vec3{2, 0, 0}));
  Press("Copies across");
  EXPECT_EQ(PositionOf(Last()), (Vec3{-2, 0, 0}));
  EXPECT_EQ(GetSelection(), (std::vector<std::uint32_t>{Last().id, right.id}));
  const std::size_t objects = Objects().GetObjects().size();
  Hold(SDLK_LCTRL);
  SetKey(SDLK_d, true);
  Run();
  Repeat(SDLK_d);
  EXPECT_EQ(Objects().GetObjects().size(), objects + 2) << "once, however long the key is held";
}

TEST_F(EditorManyTest, APickOfOneOfSeveralDragsThemAllAndAHandleTurnsBySteps) {
  GameObject& left = AddStill("left", {-2, 0, 0});
  GameObject& right = AddStill("right", {2, 0, 0});
  Tap(SDLK_F1);
  SetSelection({left.id, right.id});
  Set("Snap", "1");
  Mouse(kMiddleX + 2 * kUnit, kMiddleY);
  Button(true);
  Run();
  Mouse(kMiddleX + 2 * kUnit, kMiddleY - 3 * kUnit);
  Button(false);
  EXPECT_EQ(PositionOf(left), (Vec3{-2, 3, 0}));
  EXPECT_EQ(PositionOf(right), (Vec3{2, 3, 0}));
  Press("Undo");
  EXPECT_EQ(PositionOf(left), (Vec3{-2, 0, 0}));
  Select(left);
  SetSelection({left.id});
  Mouse(kMiddleX - 2 * kUnit, kMiddleY - 46);  // 1.4 units over its middle
  Button(true);
  Mouse(kMiddleX - 2 * kUnit - 46, kMiddleY - 26);
  Button(false);
  Run();
  EXPECT_FLOAT_EQ(AngleAboutZ(left.GetTransform().orientation), 60.0f * kPi / 180.0f);
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{left.id});
  Press("Undo");
  EXPECT_EQ(left.GetTransform().orientation, Quaternion{});
}

TEST_F(EditorManyTest, WhatAllHaveIsEditedTogetherAndTheRestStays) {
  GameObject& low = Select(AddStill("low", {1, -3, 0}));
  GameObject& high = Select(AddStill("high", {1, 4, 0}));
  EXPECT_EQ(editor.Get("all selected/position x"), "1");
  EXPECT_EQ(editor.Get("all selected/position y"), "mixed");
  Set("all selected/position x", "7");
  EXPECT_EQ(PositionOf(low), (Vec3{7, -3, 0}));
  EXPECT_EQ(PositionOf(high), (Vec3{7, 4, 0}));
  Press("Undo");
  EXPECT_EQ(PositionOf(low), (Vec3{1, -3, 0}));
  EXPECT_EQ(PositionOf(high), (Vec3{1, 4, 0}));
  Press("Align top");
  EXPECT_EQ(PositionOf(low), (Vec3{1, 4, 0}));
}

// A spring inside the copied set hangs on the copy, another one on what it hung on before.
TEST_F(EditorManyTest, CopiesKeepWhatTheyHangOnAndUndoTakesTheirSpringsToo) {
  GameObject& anchor = AddStill("anchor", {});
  GameObject& ball = world.AddBox("ball", {3, 0, 0});
  auto& spring = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::Spring>(anchor, 2.0f, 1.0f));
  BodyOf(ball).generators.push_back(&spring);
  // Every save enters a spring at its anchor once more.
  const auto saved = [&] {
    BodyOf(anchor).baseOfGenerators.clear();
    return Saved("scene");
  };
  const std::string before = saved();
  const auto baseOfCopy = [&] {
    return static_cast<const GalePhysics::Spring&>(*BodyOf(Last()).generators.at(0)).baseId;
  };
  Select(ball);
  Press("Duplicate");
  EXPECT_EQ(baseOfCopy(), static_cast<std::int32_t>(anchor.id));
  SetSelection({anchor.id, ball.id});
  Press("Copy");
  Press("Paste");
  EXPECT_EQ(baseOfCopy(), static_cast<std::int32_t>(GetSelection().front()));
  EXPECT_EQ(PositionOf(Last()), (Vec3{4, -1, 0}));
  for (int i = 0; i < 2; ++i) Press("Undo");
  EXPECT_EQ(saved(), before);
  for (int i = 0; i < 2; ++i) Press("Redo");
  EXPECT_NE(baseOfCopy(), static_cast<std::int32_t>(anchor.id));
  platform.SetClipboard("{\n\t1: {\n\t\tName: x\n\t\tCore: maybe\n\t}\n}\n");
  const std::size_t objects = Objects().GetObjects().size();
  Press("Paste");
  EXPECT_EQ(editor.GetStatus().back(), "lint finds faults in the clipboard's text, nothing is pasted");
  EXPECT_EQ(Objects().GetObjects().size(), objects);
}

TEST_F(EditorManyTest, AFileThatChangedIsOfferedAskedForAndRefusedWithItsFaults) {
  AddStill("thing", {6, 5, 0});
  SaveAs("mine");
  Load("mine");
  Run();
  const std::string good = world.ReadFile("mine");
  Select(*Find("thing"));
  Set("damping", "0.5");
  world.WriteFile(
      "mine", good.substr(0, good.find("Name: thing")) + "Name: other" + good.substr(good.find("Name: thing") + 11));
  Press("Reload");
  EXPECT_EQ(editor.GetStatus().back(), "there are unsaved changes: press Reload again to lose them");
  EXPECT_NE(Find("thing"), nullptr);
  Press("Reload mine");
  Run();
  ASSERT_NE(Find("other"), nullptr) << "read anew";
  EXPECT_EQ(Find("thing"), nullptr);
  EXPECT_EQ(editor.GetPace(), Freeze::Pace::kFrozen);
  std::string bad = good;
  bad.replace(bad.find("Core: false"), 11, "Core: perhaps");
  world.WriteFile("mine", bad);
  Press("Reload");
  EXPECT_EQ(editor.GetStatus().back(), "mine has faults: what was read before stays");
  ASSERT_NE(Find("other"), nullptr);
  ClearSelection();
  EXPECT_EQ(editor.Press("mine:4: bad-value: Core must be true or false"), "");
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{Find("other")->id});
}

// Beside the game, on a copy: what is on the stage and on the disk stays, and the line of an object selects it.
TEST_F(EditorManyTest, BotsPlayACopyAndTheirLinesSelect) {
  for (const auto& level : std::filesystem::directory_iterator(GameFolder()))
    if (level.is_regular_file()) std::filesystem::create_symlink(level.path(), level.path().filename());
  GameObject& stone = AddStill("stone", {6, 5, 0});
  Set("FileName", "quarry");
  Press("Let bots play");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(100);
  while (editor.GetStatus().back().starts_with("bots play") && std::chrono::steady_clock::now() < end) {
    Run();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(editor.GetStatus().back(), "the bots have played the level, see below");
  EXPECT_FALSE(std::filesystem::exists("quarry"));
  ClearSelection();
  Press("quarry:2: piles-up: 1 things are still there 2.5 game seconds after the piece: give them a DeathTimer");
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{stone.id});
}

TEST_F(EditorManyTest, UnsavedChangesHoldUpTheEndOnceAndArePutAsideMeanwhile) {
  Recovery recovery;
  recovery.Start();
  Recovery::Clock::time_point now;
  const auto wait = [&](std::uint64_t version) {
    for (int i = 0; i < 4; ++i, now += Recovery::kPeriod)
      recovery.Update(
          SceneVersion{version, 5.0f}, [] { return "{\n}\n"; }, now);
  };
  for (std::uint64_t version = 1; version <= Recovery::kKept + 2; ++version) wait(version);
  EXPECT_FALSE(std::filesystem::exists("autosaves/recover-1"));
  for (int i = 2; i < Recovery::kKept + 2; ++i)
    EXPECT_EQ(world.ReadFile(("autosaves/recover-" + std::to_string(i)).c_str()), "{\n}\n");
  Recovery next;
  next.Start();
  EXPECT_EQ(next.GetOffer(), "autosaves/recover-11");
  recovery.End();
  Recovery last;
  last.Start();
  EXPECT_EQ(last.GetOffer(), "");
  editor.StartRecovery();
  Press("Make default box");
  const auto quit = [&] {
    Send(EventOf(SDL_QUIT));
    return !platform.running;
  };
  EXPECT_FALSE(quit());
  EXPECT_TRUE(editor.IsShown());
  EXPECT_TRUE(std::filesystem::exists("autosaves/recover-12")) << "whoever asked may not wait for the answer";
  Press("Undo");
  EXPECT_TRUE(quit()) << "nothing is unsaved now";
  platform.running = true;
  Press("Redo");
  EXPECT_FALSE(quit());
  EXPECT_TRUE(quit()) << "asked once";
}

TEST_F(EditorManyTest, WhatIsOfferedOutlastsCopiesAndAQuestionAndBringsTheDurationBack) {
  {
    GameObject& hung = AddStill("hung", {3, 0, 0});
    Set("Level Duration", "20");
    EXPECT_TRUE(editor.IsUnsaved()) << "nothing else would tell of it";
    editor.StartRecovery();
    Send(EventOf(SDL_QUIT));
    hung.alive = false;
  }
  const std::string offered = "autosaves/recover-0";
  ASSERT_TRUE(std::filesystem::exists(offered));
  editor.Init();
  platform.running = true;
  editor.StartRecovery();
  Recovery others;
  others.Start();
  for (std::uint64_t version = 1; version <= Recovery::kKept + 2; ++version)
    others.PutAside({version, 5.0f}, [] { return "{\n}\n"; });
  EXPECT_TRUE(std::filesystem::exists(offered)) << "on offer";
  Press("Make default box");
  Press("Recover");
  EXPECT_EQ(editor.GetStatus().back(), "there are unsaved changes: press Load " + offered + " again to lose them");
  Press("Recover");
  Run();
  EXPECT_NE(Find("hung"), nullptr);
  EXPECT_EQ(editor.Get("Level Duration"), "20");
  EXPECT_TRUE(editor.IsUnsaved());
}

TEST_F(EditorManyTest, ALevelThatIsSavedTwiceListsEachSpringOnce) {
  GameObject& anchor = AddStill("anchor", {});
  auto& spring = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::Spring>());
  spring.SetBase(anchor);
  AddStill("hanging", {3, 0, 0}).Get<GalePhysics::RigidBody>()->AddGenerator(&spring);
  SaveAs("sprung");
  SaveAs("sprung");
  EXPECT_TRUE(anchor.Get<GalePhysics::RigidBody>()->baseOfGenerators.empty())
      << "nothing stays that may be freed by an undo";
  std::string list = world.ReadFile("sprung");
  EXPECT_NE(list.find("a base of: 1\n"), std::string::npos);
  EXPECT_EQ(list.find("a base of: 2\n"), std::string::npos);
}

TEST_F(EditorManyTest, TheListSelectsAndPagesSetWhatTheyWereOpenedFor) {
  GameObject& thing = AddStill("thing", {});
  AddStill("other", {5, 0, 0});
  Press("objects/thing");
  EXPECT_EQ(GetSelection(), std::vector<std::uint32_t>{thing.id});
  Press("Also other");
  EXPECT_EQ(GetSelection().size(), 2u);
  Set("Filter", "THIN");
  EXPECT_NE(editor.Press("objects/other"), "");
  SetSelection({thing.id});
  thing.AddComponent("ScriptBox");
  Press("Script Name");
  EXPECT_EQ(editor.Press("browse/dizzy"), "");
  EXPECT_EQ(editor.Get("Script Name"), "dizzy");
}

TEST_F(EditorManyTest, OnePullOfAllIsOneStepWhateverOneOfThemHeld) {
  GameObject& one = AddStill("one", {});
  GameObject& two = AddStill("two", {5, 0, 0});
  one.Get<GalePhysics::RigidBody>()->damping = 0.25f;
  two.Get<GalePhysics::RigidBody>()->damping = 0.5f;
  SetSelection({one.id, two.id});
  for (const auto& [value, done] : {std::pair("0.5", false), std::pair("0.75", true)})
    EXPECT_EQ(editor.SetAt("all selected/2 selected/RigidBody/damping", value, done), "");
  Press("Undo");
  EXPECT_EQ(one.Get<GalePhysics::RigidBody>()->damping, 0.25f);
  EXPECT_EQ(two.Get<GalePhysics::RigidBody>()->damping, 0.5f);
}

TEST_F(EditorManyTest, AnActInMidDragLeavesTwoSteps) {
  GameObject& thing = AddStill("thing", {});
  Tap(SDLK_F1);
  Press("Freeze");
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  Run();
  Mouse(kMiddleX + 3 * kUnit, kMiddleY);
  const float dragged = PositionOf(thing).x;
  EXPECT_GT(dragged, 2.0f);
  Tap(SDLK_UP);
  Mouse(kMiddleX + 6 * kUnit, kMiddleY);
  Button(false);
  Run();
  Press("Undo");
  EXPECT_EQ(PositionOf(thing), (Vec3{dragged, 0, 0}));
  Press("Undo");
  EXPECT_EQ(PositionOf(thing), Vec3{});
  Mouse(kMiddleX, kMiddleY);
  Button(true);
  Run();
  Mouse(kMiddleX + 3 * kUnit, kMiddleY);
  Set("position", "1 -4 0");
  Mouse(kMiddleX + 6 * kUnit, kMiddleY);
  Button(false);
  EXPECT_EQ(PositionOf(thing), (Vec3{1, -4, 0}));
  for (int i = 0; i < 2; ++i) Press("Undo");
  EXPECT_EQ(PositionOf(thing), Vec3{});
  Tap(SDLK_F1);
  Tap(SDLK_F1);
  EXPECT_EQ(editor.GetPace(), Freeze::Pace::kFrozen) << "the card of keys is looked at in peace";
}

TEST_F(EditorManyTest, AnActInMidPullIsNoPartOfIt) {
  GameObject& thing = Select(AddStill("thing", {}));
  const auto pull = [&](const char* value) {
    EXPECT_EQ(editor.SetAt("GaleEditor/thing/RigidBody/damping", value, false), "");
  };
  const float damping = BodyOf(thing).damping;
  pull("0.5");
  Press("Mirror across");
  Press("Undo");
  pull("0.25");
  Press("Undo");
  EXPECT_EQ(BodyOf(thing).damping, 0.5f);
  Press("Undo");
  EXPECT_EQ(BodyOf(thing).damping, damping);
}

TEST_F(EditorManyTest, KeysOfTheSceneWaitForTheMenuToClose) {
  GameObject& thing = Select(AddStill("thing", {}));
  Set("position", "1 0 0");
  Tap(SDLK_F1);
  OpenPauseMenu();
  const std::size_t objects = Objects().GetObjects().size();
  Hold(SDLK_LCTRL);
  for (const int key : {SDLK_d, SDLK_z, SDLK_x}) Tap(key);
  LetGo(SDLK_LCTRL);
  EXPECT_EQ(Objects().GetObjects().size(), objects);
  EXPECT_EQ(PositionOf(thing), (Vec3{1, 0, 0}));
  CloseTopMenu();
}

// Its ways, the corners of its ranges and its spin, but not the pull that hangs on others too.
TEST_F(EditorManyTest, AMirrorTurnsTheWaysThatScriptsHold) {
  for (const auto blocks : {ComponentSchemas(), ScriptSchemas()})
    for (const BlockSchema& block : blocks)
      for (const FieldSchema& field : block.fields) {
        const bool vector = field.type == FieldType::kVec3 || field.type == FieldType::kFlatVec3;
        if (!vector || field.label.empty() || field.unit.find("/s") == field.unit.npos) continue;
        EXPECT_NE(field.mirrored, Mirrored::kSame) << field.label;
      }
  AddWithScript("crates", "spawner");
  Last().Get<ScriptBox>()->AddScript("bpe");
  Select(Last());
  Set("spawnvelocity", "2 3 0");
  Set("minVelocity", "1 -1 0");
  Set("maxVelocity", "2 5 0");
  const auto all = [&] {
    return editor.Get("spawnvelocity") + ", " + editor.Get("minVelocity") + " to " + editor.Get("maxVelocity");
  };
  const std::string before = Saved("scene");
  Press("Copies across");
  EXPECT_EQ(all(), "-2 3 0, -2 -1 0 to -1 5 0");
  Press("Undo");
  EXPECT_EQ(Saved("scene"), before);
  Press("Redo");
  SetSelection({Last().id});
  EXPECT_EQ(all(), "-2 3 0, -2 -1 0 to -1 5 0");
}

TEST_F(EditorManyTest, AMirrorTurnsASharedPullOnceAndOnlyWithAllThatItPulls) {
  auto& pull = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::GravityGenerator>(Vec3{0, -2, 0}));
  GameObject& one = world.AddBox("one", {-3, 0, 0}, {.velocity = {1, 2, 0}, .angularVelocity = {0, 0, 3}});
  GameObject& two = world.AddBox("two", {3, 0, 0});
  for (GameObject* object : {&one, &two}) BodyOf(*object).AddGenerator(&pull);
  Press("Freeze");
  SetSelection({one.id});
  Press("Mirror upright");
  EXPECT_EQ(BodyOf(one).velocity, (Vec3{1, -2, 0}));
  EXPECT_EQ(BodyOf(one).angularVelocity, (Vec3{0, 0, -3}));
  EXPECT_EQ(pull.gravity, (Vec3{0, -2, 0}));
  SetSelection({one.id, two.id});
  Press("Mirror upright");
  EXPECT_EQ(pull.gravity, (Vec3{0, 2, 0}));
  for (int i = 0; i < 2; ++i) Press("Undo");
  EXPECT_EQ(pull.gravity, (Vec3{0, -2, 0}));
  EXPECT_EQ(BodyOf(one).velocity, (Vec3{1, 2, 0}));
  EXPECT_EQ(BodyOf(one).angularVelocity, (Vec3{0, 0, 3}));
}
