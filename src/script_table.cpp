#include "script_table.h"

#include "core/script_registry.h"
#include "graphics/basic_particle_emitter.h"
#include "graphics/camera_centerer.h"
#include "graphics/screen_shake.h"
#include "match/character_controller.h"
#include "match/force_currency.h"
#include "match/game_timer.h"
#include "match/objective_manager.h"
#include "match/point_bubble.h"
#include "match/respawn_node_manager.h"
#include "match/score_script.h"
#include "match/segment_manager.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/spring.h"
#include "physics/wobbly_puller.h"
#include "screens/win_screen_logic.h"
#include "scripts/collision_check_script.h"
#include "scripts/color_changer.h"
#include "scripts/death_timer.h"
#include "scripts/dizzy.h"
#include "scripts/fish_animator.h"
#include "scripts/follow.h"
#include "scripts/lerp_animators.h"
#include "scripts/patricidal.h"
#include "scripts/play_player_audio.h"
#include "scripts/prison_script.h"
#include "scripts/rainbow_fish.h"
#include "scripts/shadow_growth.h"
#include "scripts/spawner.h"
#include "scripts/spawns_objects.h"
#include "scripts/squid_animator.h"
#include "scripts/stuns_on_hit.h"
#include "scripts/velocity_cap.h"

void RegisterAllScripts() {
  using GalePhysics::CreateHosted;
  RegisterScript("class GameTimer", CreateOwned<GameTimer>);
  RegisterScript("bpe", CreateOwned<BasicParticleEmitter>);
  RegisterScript("CameraCenterer", CreateOwned<CameraCenterer>);
  RegisterScript("CollisionCheckScript", CreateOwned<CollisionCheckScript>);
  RegisterScript("color-changer", CreateOwned<ColorChanger>);
  RegisterScript("DeathTimer", CreateOwned<DeathTimer>);
  RegisterScript("dizzy", CreateOwned<Dizzy>);
  RegisterScript("fishanimator", CreateOwned<FishAnimator>);
  RegisterScript("follow", CreateOwned<Follow>);
  RegisterScript("ForceCurrency", CreateOwned<ForceCurrency>);
  RegisterScript("gravity", CreateHosted<GalePhysics::GravityGenerator>);
  RegisterScript("spring", CreateHosted<GalePhysics::Spring>);
  RegisterScript("class LerpVecAnimator", CreateOwned<LerpVecAnimator>);
  RegisterScript("class LerpSizeAnimator", CreateOwned<LerpSizeAnimator>);
  RegisterScript("class LerpOpacityAnimator", CreateOwned<LerpOpacityAnimator>);
  RegisterScript("ObjectiveManager", CreateOwned<ObjectiveManager>);
  RegisterScript("particleemitter", CreateOwned<ParticleEmitter>);
  RegisterScript("patricidal", CreateOwned<Patricidal>);
  RegisterScript("CharacterController", CreateOwned<CharacterController>);
  RegisterScript("ppa", CreateOwned<PlayPlayerAudioScript>);
  RegisterScript("pointmovment", CreateOwned<PointMovment>);
  RegisterScript("PrisonScript", CreateOwned<PrisonScript>);
  RegisterScript("rainbowfish", CreateOwned<RainbowFish>);
  RegisterScript("spawner", CreateOwned<SpawnsObjects>);
  RegisterScript("stunsonhit", CreateOwned<StunsOnHit>);
  RegisterScript("VelocityCap", CreateOwned<VelocityCap>);
  RegisterScript("RespawnNodeManager", CreateOwned<RespawnNodeManager>);
  RegisterScript("ScoreScript", CreateOwned<ScoreScript>);
  RegisterScript("InsertName", CreateOwned<ScreenShake>);
  RegisterScript("SegmentManager", CreateOwned<SegmentManager>);
  RegisterScript("ShadowGrowth", CreateOwned<ShadowGrowth>);
  RegisterScript("Spawner", CreateOwned<Spawner>);
  RegisterScript("SquidAnimator", CreateOwned<SquidAnimator>);
  RegisterScript("wsl", CreateOwned<WinScreenLogic>);
  RegisterScript("wobblypuller", CreateHosted<GalePhysics::WobblyPuller>);
}
