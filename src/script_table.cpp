#include "script_table.h"

#include "core/script_registry.h"
#include "graphics/camera_centerer.h"
#include "graphics/screen_shake.h"
#include "match/character_controller.h"
#include "match/force_currency.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/spring.h"
#include "physics/wobbly_puller.h"
#include "scripts/patricidal.h"
#include "scripts/play_player_audio.h"
#include "scripts/prison_script.h"
#include "scripts/velocity_cap.h"

void RegisterAllScripts() {
  using GalePhysics::CreateHosted;
  RegisterScript("CameraCenterer", CreateOwned<CameraCenterer>);
  RegisterScript("ForceCurrency", CreateOwned<ForceCurrency>);
  RegisterScript("gravity", CreateHosted<GalePhysics::GravityGenerator>);
  RegisterScript("spring", CreateHosted<GalePhysics::Spring>);
  RegisterScript("patricidal", CreateOwned<Patricidal>);
  RegisterScript("CharacterController", CreateOwned<CharacterController>);
  RegisterScript("ppa", CreateOwned<PlayPlayerAudioScript>);
  RegisterScript("PrisonScript", CreateOwned<PrisonScript>);
  RegisterScript("VelocityCap", CreateOwned<VelocityCap>);
  RegisterScript("InsertName", CreateOwned<ScreenShake>);
  RegisterScript("wobblypuller", CreateHosted<GalePhysics::WobblyPuller>);
}
