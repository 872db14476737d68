// Whatever was done on the bars, undo brings back what was.
#include "core/object_manager.h"
#include "core/script_registry.h"
#include "editor/bars/object_fields.h"
#include "editor/editor_scene.h"
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

namespace {

// Does anything that can be undone, to anything, and says it can.
class RandomEdits {
 public:
  explicit RandomEdits(Editor& editor) : editor_(editor) {}

  void Do() {
    ClearSelection();
    for (std::size_t more = 1 + Below(4) / 2 * Below(3); more > 0 && !Objects().GetObjects().empty(); --more)
      AddToSelection(AnyOf(Objects().GetObjects())->id);
    if (Below(2) == 0) return SetAnything();
    if (Below(2) == 0) return Arrange();
    editor_.Set("Component Type To Add", std::to_string(Below(6)));
    editor_.Set("Script Name", AnyScript());
    const std::string_view make = AnyOf(TestObjects()).label;
    editor_.Press(AnyOf(std::array<std::string_view, 8>{make, "Kill Selected Object", "Add Component", "Add Script",
                                                        "Add Segment", "Insert Segment Before 1", "Add Objective",
                                                        "Save Level"}));
  }

 private:
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
    editor_.Set("Snap", std::to_string(Below(4)));
    editor_.Press(AnyOf(std::array<std::string_view, 13>{"Turn left", "Turn right", "Mirror across", "Mirror upright",
                                                         "Align left", "Align middle", "Spread across", "Copy", "Cut",
                                                         "Paste", "Duplicate", "Delete", "Paste"}));
    if (Below(3) == 0) editor_.Set("all selected/position x", std::to_string(Below(9)));
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
      if (editor_.Set(label, value).empty()) return;
  }

  Editor& editor_;
  std::uint32_t random_ = 12345;
};

}  // namespace

// Undone one after another they leave the first bytes.
TEST_F(EditorTest, UndoOfManyRandomEditsGivesTheFirstBytesBack) {
  // Ten thousand, say, when somebody asks for them.
  const char* asked = std::getenv("RANDOM_ACTS");
  const int kSteps = asked == nullptr ? 1200 : std::atoi(asked);
  Set("FileName", "on the way");
  for (int i = 0; i < 12; ++i) {
    GameObject& object = world.AddBox("thing", {static_cast<float>(i), 0.1f, 0.3f}, {.inverseMass = 0.0f});
    object.AddComponent("ScriptBox");
    object.AddComponent("Sprite");
  }
  Run();
  const std::string before = Saved("before");
  RandomEdits edits(editor);
  for (int i = 0; i < kSteps; ++i) {
    edits.Do();
    if (i % 4 == 0) Objects().RemoveDeadObjects();
    if (i % 6 == 0) Objects().SortIfNeeded();
  }
  Objects().RemoveDeadObjects();
  const std::string between = Saved("between");
  EXPECT_NE(between, before);
  for (int i = 0; i < kSteps; ++i) Press("Undo");
  ExpectStatus("nothing to undo");
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Saved("after"), before);
  for (int i = 0; i < kSteps; ++i) Press("Redo");
  EXPECT_EQ(Saved("redone"), between);
  for (int i = 0; i < kSteps; ++i) Press("Undo");
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Saved("again"), before);
}
