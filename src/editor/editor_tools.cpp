// The tools bar: its variables, its buttons, and what they do.
#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

#include "core/file_cache.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/script_box.h"
#include "core/script_registry.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/acts/object_shape.h"
#include "editor/editor.h"
#include "editor/files/level_files.h"
#include "editor/hints.h"
#include "editor/test_objects.h"
#include "graphics/renderer.h"
#include "lint/lint.h"
#include "match/episode/new_game.h"

namespace {

constexpr std::size_t kTextBytes = 499;  // of a name on the bar
constexpr std::size_t kMaxFound = 8;     // lines of the palette

struct ComponentChoice {
  int value;
  std::string_view textName;
};
constexpr std::array<ComponentChoice, 6> kComponentTypes = {
    {{1, "RigidBody"}, {0, "Sprite"}, {2, "BoxCollider"}, {3, "SphereCollider"}, {4, "ScriptBox"}, {5, "GivePoints"}}};

constexpr float kFramesASecond = 60.0f;

// A game second is what the scene's clocks count by, not a second of the clock on the wall.
std::string DurationText(float duration) {
  char text[96];
  std::snprintf(text, sizeof text, "Level Duration %g is %.1f seconds of the clock", static_cast<double>(duration),
                static_cast<double>(duration / (Time().baseFrameStep * kFramesASecond)));
  return text;
}

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lowered;
}

GameObject* FindAlive(std::uint32_t id) {
  GameObject* object = Objects().GetObject(id);
  return object != nullptr && object->alive ? object : nullptr;
}

}  // namespace

void Editor::FillTools() {
  tools_.RemoveAll();
  const auto addText = [this](const char* label, std::string* text) {
    Field field{label, text};
    field.maxLength = kTextBytes;
    tools_.Add(field);
  };
  addText("FileName", &fileName_);
  tools_.GetLast().hint = "The level that is saved and loaded: a name without folder, in " + SaveFolder();
  addText("ArchetypeName", &archetypeName_);
  tools_.GetLast().hint = "The archetype that is saved and loaded: a name without folder, in " + SaveFolder();
  addText("TextureName", &textureName_);
  tools_.Add("Level Duration", &levelDuration_);
  tools_.GetLast().hint = DurationText(levelDuration_) + "; every DeathTimer of the level gets it when it is loaded";
  tools_.Add("Script Name", &scriptName_);
  FillTestButtons();
  FillFileButtons();
  FillObjectButtons();
  Field types{"Component Type To Add", &componentToAdd_};
  for (const ComponentChoice& choice : kComponentTypes) types.choices.emplace_back(choice.value, choice.textName);
  tools_.Add(types);
  tools_.AddButton("Undo", "Undo (Ctrl+Z)", [this] { Print("%s\n", history_.Undo().c_str()); });
  tools_.AddButton("Redo", "Redo (Ctrl+Y)", [this] { Print("%s\n", history_.Redo().c_str()); });
  FillPalette();
  FillMessages();
  AddHints(tools_);
  OfferPages(tools_, tools_.GetName(), browser_);
}

// A line of lint selects its object.
void Editor::FillMessages() {
  tools_.AddText(DurationText(levelDuration_));
  for (const std::string& line : status_) tools_.AddText(line);
  for (const FaultLine& line : faults_) {
    if (line.objectId == 0) {
      tools_.AddText(line.text);
      continue;
    }
    tools_.AddButton(line.text, [id = line.objectId] { SetSelection({id}); });
    tools_.GetLast().row = true;
    tools_.GetLast().hint = line.text;
  }
}

void Editor::FillTestButtons() {
  for (const TestObject& test : TestObjects()) tools_.AddButton(test.label, [this, &test] { MakeTestObject(test); });
  tools_.AddButton("Make Core Level Stuff", [this] {
    SetupMatch();
    history_.Clear();
    Print("made the scenery, the displays, the players and the clock of a match\n");
  });
}

void Editor::FillFileButtons() {
  tools_.AddButton("Save Level", [this] { SaveLevel(); });
  tools_.AddButton("Load Level", [this] { LoadLevel(); });
  tools_.AddButton("Save Archetype", [this] {
    GameObject* object = LastSelected();
    if (object != nullptr && SaveArchetype(archetypeName_, *object)) watch_.Accept(archetypeName_);
  });
  tools_.AddButton("Load Archetype", [this] {
    ForgetCachedFile(archetypeName_);
    LoadArchetype(archetypeName_, {});
  });
  tools_.AddButton("Load Texture", [this] {
    if (textureName_.empty()) {
      Print("no picture name, nothing is loaded\n");
      return;
    }
    GetRenderer().LoadTexture(textureName_);
    if (const std::string fault = pictureFaults_.FaultOf(textureName_); !fault.empty())
      Print("%s\n", fault.c_str());
    else
      Print("loaded the picture %s\n", textureName_.c_str());
  });
}

void Editor::FillObjectButtons() {
  tools_.AddButton("Add Component", [this] {
    for (const ComponentChoice& choice : kComponentTypes)
      if (choice.value == componentToAdd_) AddComponent(choice.textName);
  });
  tools_.AddButton("Add Script", [this] { AddScript(scriptName_); });
  tools_.AddButton("Kill Selected Object", [this] { Kill(); });
}

// Components and scripts by part of their name, whatever the case.
void Editor::FillPalette() {
  Field find{"Find", &find_};
  find.whileTyping = true;
  tools_.Add(find);
  if (find_.empty()) return;
  const std::string wanted = Lowered(find_);
  std::size_t found = 0;
  const auto offer = [&](std::string_view name, std::function<void()> add) {
    if (Lowered(name).find(wanted) == std::string::npos || ++found > kMaxFound) return;
    tools_.AddButton("Add " + std::string(name), std::move(add));
  };
  for (const ComponentChoice& choice : kComponentTypes)
    offer(choice.textName, [this, &choice] { AddComponent(choice.textName); });
  for (const std::string_view name : RegisteredScriptNames())
    offer(name, [this, script = std::string(name)] { AddScript(script); });
  if (found > kMaxFound) tools_.AddText("and " + std::to_string(found - kMaxFound) + " more");
}

GameObject* Editor::FirstSelected() const {
  GameObject* picked = GetSelection().empty() ? nullptr : FindAlive(GetSelection().front());
  if (picked == nullptr) Print("nothing is selected\n");
  return picked;
}

GameObject* Editor::LastSelected() const {
  GameObject* picked = FindAlive(GetLastSelected());
  if (picked == nullptr) Print("nothing is selected\n");
  return picked;
}

void Editor::MakeTestObject(const TestObject& test) {
  const GameObject* object = test.make();
  history_.RecordCreation(*object, test.make);
  Print("made %s in the middle of the stage\n", ShownNameOf(*object).c_str());
}

void Editor::SaveLevel() {
  if (fileName_.empty()) {
    Print("no file name, nothing is saved\n");
    return;
  }
  const bool saved = SaveLevelWithAutosave(fileName_, levelDuration_, autosaveCount_);
  faults_.clear();
  if (!saved) return;
  MarkSaved();
  watch_.Accept(fileName_);
  const std::vector<std::string> lines = LintLines(fileName_);
  if (lines.empty()) Print("lint finds nothing wrong with %s\n", fileName_.c_str());
  ShowFaults(fileName_, lines, {});
}

void Editor::LoadLevel() {
  if (MayLoseBy("Load Level")) TakeLevel(fileName_);
}

void Editor::TakeLevel(const std::string& name) {
  loadedIds_ = LoadLevelFile(name, levelDuration_);
  loadedName_ = name;
  faults_.clear();
  watch_.Accept(name);
  history_.Clear();
  MarkSaved();
  freeze_.Set(Freeze::Pace::kFrozen);
}

void Editor::LoadArchetype(const std::string& name, const Vec3& place) {
  const auto load = [name, place]() -> GameObject* {
    const auto created = Objects().LoadLevel(name);
    if (created.empty()) return nullptr;
    created.back()->GetTransform().position = place;
    created.back()->GetTransform().Rebuild();
    return created.back();
  };
  const std::size_t before = Objects().GetObjects().size();
  const GameObject* object = load();
  watch_.Accept(name);
  if (object == nullptr) {
    Print("%s: nothing loaded\n", name.c_str());
    return;
  }
  if (Objects().GetObjects().size() == before + 1)
    history_.RecordCreation(*object, load);
  else
    history_.Clear();
  Print("loaded %s %s\n", ShownNameOf(*object).c_str(), place == Vec3{} ? "into the middle of the stage" : "there");
}

void Editor::AddComponent(std::string_view textName) {
  GameObject* object = FirstSelected();
  if (object == nullptr) return;
  history_.RecordGrowth(*object);
  object->AddComponent(textName);
  Print("%s has a new %s\n", ShownNameOf(*object).c_str(), std::string(textName).c_str());
}

void Editor::AddScript(const std::string& name) {
  GameObject* object = LastSelected();
  if (object == nullptr) return;
  auto* scripts = object->Get<ScriptBox>();
  if (scripts == nullptr) {
    Print("%s has no ScriptBox, so it takes no script: add a ScriptBox first\n", ShownNameOf(*object).c_str());
    return;
  }
  if (!IsScriptRegistered(name)) {
    scripts->AddScript(name);  // says so
    return;
  }
  history_.RecordGrowth(*object);
  scripts->AddScript(name);
  Print("%s has a new %s\n", ShownNameOf(*object).c_str(), name.c_str());
}

void Editor::Kill() {
  GameObject* object = LastSelected();
  if (object == nullptr) return;
  history_.RecordKill(*object);
  object->alive = false;
  Print("killed %s\n", ShownNameOf(*object).c_str());
}
