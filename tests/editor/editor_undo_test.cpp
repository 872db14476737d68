// Whatever was done on the bars, undo brings back what was.
#include <set>

#include "core/object_manager.h"
#include "core/script_registry.h"
#include "editor/bars/object_fields.h"
#include "editor/editor_scene.h"
#include "editor/stage/handles.h"
#include "editor/stage/outlines.h"
#include "editor/test_objects.h"
#include "graphics/sprite_text.h"
#include "match/rules/objective_manager.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"

// The stage has what the reading of a file would bring once more.
TEST_F(EditorTest, AKilledMatchControllerComesBackWithoutAnotherPiece) {
  AddMatchOfOnePiece();
  const std::string before = Saved("before");
  Press("Kill Selected Object");
  Run();
  Press("Undo");
  EXPECT_EQ(Saved("after"), before);
}

// What no file keeps comes back too, and under its own ID, by which others know it.
TEST_F(EditorTest, AKilledWhaleComesBackWithItsBody) {
  Press("Make Assemblage");
  const std::uint32_t id = Select(Last()).id;
  const auto bodyOf = [](GameObject& whale) {
    const auto& assemblage = *whale.Get<GalePhysics::PrimitiveAssemblage>();
    const GalePhysics::BoxCollider& nose = *assemblage.boxes.at(0);
    return std::tuple(nose.halfExtents, nose.partOffset, nose.partRotation, assemblage.broadPhaseSize,
                      assemblage.boxes.size());
  };
  const auto before = bodyOf(Last());
  Press("Kill Selected Object");
  Run();
  Press("Undo");
  ASSERT_NE(Objects().GetObject(id), nullptr);
  EXPECT_EQ(before, bodyOf(*Objects().GetObject(id)));
}

// What runs goes on, and what was added and runs by then ends as a rule ends.
TEST_F(EditorTest, UndoOfAdditionsLeavesTheRunningRuleAlone) {
  Press("Make segment manager");
  ScriptBox& scripts = *Select(*Find("segmentmanager")).Get<ScriptBox>();
  scripts.AddScript("SegmentManager");
  Set("ObjectiveName", "Crown");
  Run(5);
  const auto& rules = static_cast<ObjectiveManager&>(*scripts.GetScript("ObjectiveManager"));
  const Objective* running = rules.GetCurrentObjective();
  ASSERT_NE(running, nullptr);
  const float elapsed = rules.GetElapsed();
  const std::size_t objects = Objects().GetObjects().size();
  const char* const buttons[] = {"Add Objective", "Add Segment", "Insert Segment Before 1"};
  for (const char* button : buttons) Press(button);
  for (const char* way : {"Undo", "Redo", "Undo"}) {
    for (int i = 0; i < 3; ++i) Press(way);
    EXPECT_EQ(editor.Get("Sections"), std::string(way) == "Undo" ? "1" : "2");
    EXPECT_EQ(editor.Get("Segment2/duration"), std::string(way) == "Undo" ? "" : "10");
    EXPECT_EQ(Find("segmentmanager")->Get<ScriptBox>(), &scripts);
    EXPECT_EQ(rules.GetCurrentObjective(), running);
    EXPECT_EQ(rules.GetElapsed(), elapsed);
    EXPECT_EQ(Objects().GetObjects().size(), objects);
  }
  Press("Redo");
  SetKey(SDLK_LSHIFT, true);
  SetKey(SDLK_l, true);
  Run();
  EXPECT_EQ(rules.GetCurrentObjective()->typeName, "Crown");
  Press("Undo");
  EXPECT_EQ(rules.GetCurrentObjective(), nullptr);
  Run();
  for (const auto& object : Objects().GetObjects()) {
    const auto* text = object->Get<SpriteText>();
    EXPECT_TRUE(text == nullptr || text->text != "Steal the Crown!");
  }
}

// A save sorts the scene by depth; the order under the old depth comes back with it, and values beyond the limits too.
TEST_F(EditorTest, UndoOfAnEditBringsBackTheOrderAndValuesThatABarWouldNotTake) {
  world.Add("first", {0, 0, 1});
  GameObject& box = Select(world.AddBox("second", {0, 0, 1}, {.inverseMass = 0.0f}));
  box.Get<GalePhysics::BoxCollider>()->broadPhaseSize = -2.0f;
  const std::string before = Saved("before");
  Set("broad phase size", "3");
  Set("Transform/position", "0 0 0");
  Set("Rotation", "1");
  SaveAs("between");
  Run();
  EXPECT_EQ(Objects().GetObjects().front()->name, "second");
  for (int steps = 2; steps > 0; --steps) Press("Undo");
  EXPECT_EQ(Saved("after"), before);
}

// Does anything that can be undone, to anything, with time standing still.
class EditorActsTest : public EditorTest {
 protected:
  void Do() {
    ClearSelection();
    for (std::size_t more = 1 + Below(4) / 2 * Below(3); more > 0 && !Objects().GetObjects().empty(); --more)
      AddToSelection(AnyOf(Objects().GetObjects())->id);
    if (Below(60) == 0) return TryIt();
    if (Below(8) == 0) return Below(2) == 0 ? PullHandle() : Nudge();
    if (Below(2) == 0) return SetAnything();
    if (Below(2) == 0) return Arrange();
    editor.Set("Component Type To Add", std::to_string(Below(6)));
    editor.Set("Script Name", AnyScript());
    const std::string_view make = AnyOf(TestObjects()).label;
    editor.Press(AnyOf(std::array<std::string_view, 8>{make, "Kill Selected Object", "Add Component", "Add Script",
                                                       "Add Segment", "Insert Segment Before 1", "Add Objective",
                                                       "Save Level"}));
  }

  // The objects of a level whatever their order: frames sort them by depth, and none runs while acts are done again.
  static std::multiset<std::string> ObjectsOf(std::string level) {
    level.resize(level.rfind("\n}"));
    std::multiset<std::string> objects;
    for (std::size_t at = 0, next = 0; next != std::string::npos; at = next) {
      next = level.find("\n\t\tName: ", at + 1);
      objects.insert(level.substr(at, next - at));
    }
    return objects;
  }

  std::size_t Below(std::size_t limit) { return (random_ = random_ * 1664525u + 1013904223u) / 65536u % limit; }
  template <class Values>
  typename Values::const_reference AnyOf(const Values& values) {
    return values[Below(values.size())];
  }

  // Screens bring the next one when they go. Generators stay with their host to the end of the run.
  std::string AnyScript() {
    const std::string name(AnyOf(RegisteredScriptNames()));
    for (const char* other :
         {"LogoScreenScript", "SplashScreenLogic", "TitleScreenScript", "wsl", "gravity", "spring", "wobblypuller"})
      if (name == other) return "";
    return name;
  }

  void Arrange() {
    editor.Set("Snap", std::to_string(Below(4)));
    editor.Press(AnyOf(std::array<std::string_view, 14>{"Turn left", "Turn right", "Mirror across", "Mirror upright",
                                                        "Align left", "Align middle", "Spread across", "Copy", "Cut",
                                                        "Paste", "Duplicate", "Delete", "Paste", "Copies across"}));
    if (Below(3) == 0) editor.Set("all selected/position x", std::to_string(Below(9)));
  }

  void SetAnything() {
    GameObject* object = Objects().GetObject(GetLastSelected());
    if (object == nullptr) return;
    TweakBar bar("all");
    AddObjectFields(bar, *object);
    const TweakBar::Entry& entry = AnyOf(bar.GetEntries());
    if (entry.kind != TweakBar::Entry::Kind::kVariable || entry.name == "Core Level Object?") return;
    const std::string number = std::to_string(Below(2000)) + ".37";
    const std::string label = "GaleEditor" + entry.path;
    for (const std::string& value : {std::string("true"), number, std::to_string(Below(9)), "word" + number,
                                     "1 -" + number + " " + std::to_string(Below(3))})
      if (editor.Set(label, value).empty()) return;
  }

  void Nudge() {
    const int modifier = AnyOf(std::array<int, 4>{SDLK_LSHIFT, SDLK_LALT, SDLK_LCTRL, SDLK_F4});
    if (modifier != SDLK_F4) SetKey(modifier, true);
    Tap(AnyOf(std::array<int, 4>{SDLK_LEFT, SDLK_RIGHT, SDLK_UP, SDLK_DOWN}));
    if (modifier != SDLK_F4) SetKey(modifier, false);
    Run();
  }

  // Where the bars leave the picture free.
  void PullHandle() {
    const GameObject* object = Objects().GetObject(GetLastSelected());
    if (object == nullptr) return;
    SetSelection({object->id});
    std::vector<StageLine> lines;
    Handles().Draw(StageView(kWidth, kHeight), lines);
    std::erase_if(lines, [](const StageLine& line) { return !line.filled; });
    if (lines.empty()) return;  // it is dead
    const auto pixel = AnyOf(lines).points.front();
    if (!(pixel[0] > 350.0f && pixel[0] < 930.0f && pixel[1] > 210.0f && pixel[1] < 710.0f)) return;
    Mouse(static_cast<int>(pixel[0]), static_cast<int>(pixel[1]));
    Button(true);
    Mouse(place.first + static_cast<int>(Below(90)) - 45, place.second + static_cast<int>(Below(90)) - 45);
    Button(false);
  }

  // What is set there comes to the level; the time of the try is travelled before and after it.
  void TryIt() {
    Press("Play");
    Run(static_cast<int>(2 + Below(20)));
    if (!editor.IsTrying()) return;
    ++tries_;
    for (int i = 0; i < 3; ++i) {
      editor.Set("Moment", "0." + std::to_string(Below(40)));
      Run(2);
      SetSelection({AnyOf(Objects().GetObjects())->id});
      SetAnything();
      Run(2);
    }
    Press("Play");
    Run();
    Objects().RemoveDeadObjects();
  }

  static constexpr int kWidth = 1280, kHeight = 720;
  std::uint32_t random_ = 12345;
  int tries_ = 0;
};

// Undone one after another they leave the first bytes.
TEST_F(EditorActsTest, UndoOfManyRandomEditsGivesTheFirstBytesBack) {
  // Ten thousand, say, when somebody asks for them.
  const char* asked = std::getenv("RANDOM_ACTS");
  const int kSteps = asked == nullptr ? 1200 : std::atoi(asked);
  Set("FileName", "on the way");
  for (int i = 0; i < 12; ++i) {
    GameObject& object = world.AddBox("thing", {static_cast<float>(i), 0.1f, 0.3f}, {.inverseMass = 0.0f});
    object.AddComponent("ScriptBox");
    object.AddComponent("Sprite");
  }
  Tap(SDLK_F1);
  Press("Freeze");
  Run();
  const std::string before = Saved("before");
  for (int i = 0; i < kSteps; ++i) {
    Do();
    Objects().RemoveDeadObjects();  // as every frame does
    if (i % 6 == 0) Objects().SortIfNeeded();
  }
  Objects().RemoveDeadObjects();
  const std::string between = Saved("between");
  EXPECT_NE(between, before);
  const auto undoAll = [&] {
    int undone = 0;
    do Press("Undo");
    while (editor.GetStatus().back() != "nothing to undo" && ++undone < 5 * kSteps);
    return undone;
  };
  EXPECT_GT(tries_, 0);
  const int steps = undoAll();
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Saved("after"), before);
  for (int i = 0; i < steps; ++i) Press("Redo");
  EXPECT_EQ(ObjectsOf(Saved("redone")), ObjectsOf(between));
  undoAll();
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Saved("again"), before);
}
