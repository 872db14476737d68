#include "build_world.h"

#include "audio/audio.h"
#include "component_table.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "editor/editor.h"
#include "graphics/camera.h"
#include "graphics/preload_list.h"
#include "input/input.h"
#include "input/mouse_component.h"
#include "match/episode/new_game.h"
#include "physics/generator_host.h"
#include "physics/make_physical.h"
#include "physics/sphere_collider.h"
#include "screens/menus.h"
#include "screens/start_up.h"
#include "script_table.h"

namespace {

constexpr Vec3 kCameraPlace = {0.0f, 0.0f, 19.0f};

// A ghost point: it overlaps what the mouse is over and pushes nothing.
void BuildCursor(GameObject& cursor) {
  GalePhysics::MakePhysical(cursor, {.shape = GalePhysics::PhysicalShape::kSphere});
  auto* sphere = cursor.Get<GalePhysics::SphereCollider>();
  sphere->ghost = true;
  sphere->radius = 0.0f;
  sphere->broadPhaseSize = 0.0f;
  cursor.Insert(std::make_unique<MouseComponent>());
}

void BuildCamera(GameObject& camera) {
  camera.GetTransform().position = kCameraPlace;
  camera.Insert(std::make_unique<Camera>());
  auto& scripts = camera.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript("CameraCenterer");
  scripts.AddScript("InsertName");
}

// Repeats of a held key would start match after match.
void PressDemoKey() {
  if (!Input::IsLetterDown('p') && !IsLogoLoading()) ToggleDemoMode();
}

}  // namespace

void BuildWorld() {
  RegisterAllScripts();
  RegisterAllComponents();
  Objects().SetLevelExtension(&GalePhysics::GetGeneratorLinks());
  Objects().BuildSpecialObjects(BuildCursor, BuildCamera);
  SetNewGameListener(CloseAllMenus);
  SetNewGameGuard([] { return GetEditor().MayLose("new game"); });
}

void BindKeys() { Input::BindKeyDown(SDLK_p, PressDemoKey); }

void StartFirstMatch() {
  while (!LoadNextAsset()) {
  }
  Audio::LoadEffects();
  FinishStartUp();
  NewGame();
}
