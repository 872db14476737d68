#include "screens/options.h"

#include <memory>

#include "audio/audio.h"
#include "core/object_manager.h"
#include "core/platform.h"
#include "core/script_box.h"
#include "screens/toggle_button_script.h"

namespace {

void Refresh(const void* objectId) {
  if (GameObject* object = Objects().GetObject(*static_cast<const std::uint32_t*>(objectId))) object->Update(0.0f);
}

}  // namespace

Options& GetOptions() {
  static Options options;
  return options;
}

void AttachToggle(std::uint32_t objectId, const OptionToggle& toggle) {
  GameObject& object = *Objects().GetObject(objectId);
  auto script = std::make_unique<ToggleButtonScript>();
  script->offImage = toggle.offImage;
  script->onImage = toggle.onImage;
  script->flag = toggle.flag;
  object.Insert(std::make_unique<ScriptBox>()).AddScript(std::move(script));
  Refresh(&objectId);
}

void ApplyMutes() {
  const Options& options = GetOptions();
  Audio::SetBusMuted("SFX", options.allMuted);
  Audio::SetBusMuted("Music", options.allMuted || options.musicMuted);
}

void ToggleMusicMute(const void* argument) {
  Options& options = GetOptions();
  options.musicMuted = !options.musicMuted;
  ApplyMutes();
  Refresh(argument);
}

void ToggleAllMute(const void* argument) {
  Options& options = GetOptions();
  options.allMuted = !options.allMuted;
  Refresh(argument);
  ApplyMutes();
}

void ToggleFullscreen(const void* argument) {
  Options& options = GetOptions();
  options.menuFullscreen = !options.menuFullscreen;
  GetPlatform().SetFullscreen(options.menuFullscreen);
  Refresh(argument);
}
