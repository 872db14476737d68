#include "frame.h"

#include "audio/audio.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/transform.h"
#include "editor/editor.h"
#include "graphics/background.h"
#include "graphics/camera.h"
#include "graphics/renderer.h"
#include "input/input.h"
#include "match/episode/segment_manager.h"
#include "match/score/hud.h"
#include "physics/slow_motion.h"
#include "physics/step.h"
#include "screens/menu_system.h"

// Scenes are exchanged, and frames of a try are run again, where no frame is under way.
void Frame::Run() {
  GetEditor().BetweenFrames();
  while (GetEditor().NextReplayed()) RunOnce();
  RunOnce();
}

void Frame::RunOnce() {
  Platform& platform = GetPlatform();
  platform.StartFrame();
  Audio::Update();
  platform.PumpEvents(router_);
  Menus().Update();
  if (!IsFrozen()) UpdateSlowMotion();
  IsPaused() ? RunPaused() : RunRunning();
  UpdateCursorAndCamera();
  DrawScene();
  GetRenderer().ComposeScreen(!IsFrozen());
  GetEditor().Draw();
  Objects().GetCursor().GetTransform().Rebuild();
  platform.Present();
  // Whoever ends the run is asked once about changes that no save holds.
  if (!platform.running && !GetEditor().MayLose("quit")) platform.running = true;
  platform.EndFrame();
}

void Frame::RunRunning() {
  Audio::SetBusPaused("Music", false);
  Audio::SetBusPaused("SFX", false);
  GameTime& time = Time();
  time.physicsStep = time.frameStep * kPhysicsShare;
  const auto& objects = Objects().GetObjects();
  // Scripts may append objects, which are updated in this pass, and may change the step for those after them.
  for (std::size_t i = 0; i < objects.size(); ++i) objects[i]->Update(time.frameStep);
  Objects().RemoveDeadObjects();
  time.elapsedTime += time.frameStep;
  if (time.frameStep != 0.0f) GalePhysics::RunSubSteps();
}

// The picture stands still; only the cursor still meets what it is over. Effects go on: menus click. So does the music
// under the editor's freeze, which may let single frames through.
void Frame::RunPaused() {
  Audio::SetBusPaused("Music", IsPausedByGame());
  for (const auto& object : Objects().GetObjects()) object->GetTransform().Rebuild();
  // What died by itself goes in a frame that runs, so that frames under the freeze leave no trace.
  if (!IsFrozen()) Objects().RemoveDeadObjects();
  GalePhysics::DetectOverlapsOnly();
  if (IsFrozen()) return;
  if (SegmentManager* segments = FindSegmentManager()) segments->CheckReplugged();
}

void Frame::UpdateCursorAndCamera() {
  Objects().GetCursor().Update(Time().frameStep);
  Objects().GetCamera().Update(Time().frameStep);
  Input::Pointer& pointer = Input::GetPointer();
  const Vec3 world =
      GetMainCamera()->ScreenToWorld(static_cast<float>(pointer.mouseX), static_cast<float>(pointer.mouseY), 0.0f);
  pointer.worldX = world.x;
  pointer.worldY = world.y;
}

void Frame::DrawScene() {
  Renderer& renderer = GetRenderer();
  renderer.BeginScene();
  Objects().SortIfNeeded();
  renderer.DrawSprite(GetBackground());
  renderer.DrawParticles();
  for (const auto& object : Objects().GetObjects()) renderer.DrawSprite(*object);
  ShowHud(!IsPausedByGame());
  if (IsPausedByGame()) return;
  for (const auto& object : Objects().GetObjects()) renderer.DrawText(*object);
}
