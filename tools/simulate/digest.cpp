#include "tools/simulate/digest.h"

#include <string>
#include <string_view>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/particle_emitter.h"
#include "graphics/renderer.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"
#include "match/episode/game_timer.h"
#include "match/episode/segment_manager.h"
#include "match/match_controller.h"
#include "match/rules/objective_manager.h"
#include "match/score/ranking.h"
#include "match/whale/barnacle_logic.h"
#include "match/whale/boss_health.h"
#include "match/whale/pirate_pathing.h"
#include "physics/rigid_body.h"
#include "screens/menu_system.h"
#include "screens/options.h"
#include "screens/start_up.h"
#include "scripts/hazards/broad_side.h"
#include "tools/simulate/fnv_hash.h"

namespace {

constexpr int kExactDigits = 9;  // of a float's decimal text, enough to tell any two apart

void AddBody(FnvHash& hash, const GalePhysics::RigidBody& body) {
  for (const Vec3& v : {body.velocity, body.acceleration, body.forceTotal, body.angularVelocity, body.torqueTotal})
    hash.AddValue(v);
  for (const float f : {body.inverseMass, body.damping, body.storedDamping}) hash.AddValue(f);
  hash.AddValue(body.rotationLocked);
  hash.AddValue(body.generators.size());
}

// Values as text at full precision. Bodies are left to AddBody: their text holds generator numbers, which count as IDs.
void AddAsText(FnvHash& hash, Component* component) {
  if (component == nullptr) return;
  Serializer text;
  text.OpenInMemory(kExactDigits);
  component->Serialize(text);
  hash.Add(text.TakeText());
}

// Files do not hold texts, so there is no block to take.
void AddText(FnvHash& hash, const SpriteText& text) {
  hash.AddValue(text.visible);
  hash.AddValue(text.shape);
  for (const float f : {text.r, text.g, text.b, text.a, text.fontSize}) hash.AddValue(f);
  hash.AddValue(text.offset);
  hash.Add(text.text);
  hash.Add(text.fontName);
}

void AddParticles(FnvHash& hash, const ParticleEmitter& emitter) {
  for (const Particle& particle : emitter.GetPool()) hash.AddValue(particle);
}

// What runs in the match and is in no file.
void AddMatch(FnvHash& hash) {
  for (const Rank& rank : RankPlayers()) {
    hash.AddValue(rank.player);
    hash.AddValue(rank.points);
  }
  if (const SegmentManager* segments = FindSegmentManager()) {
    hash.AddValue(segments->GetCurrentSegment());
    hash.AddValue(segments->GetElapsed());
  }
  if (const auto* objectives = static_cast<const ObjectiveManager*>(FindObjectives())) {
    const Objective* current = objectives->GetCurrentObjective();
    hash.Add(current == nullptr ? "" : current->typeName);
    hash.AddValue(objectives->GetElapsed());
  }
}

void AddClock(FnvHash& hash, const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  const Script* clock = scripts == nullptr ? nullptr : scripts->GetScript("class GameTimer");
  if (clock != nullptr) hash.AddValue(static_cast<const GameTimer*>(clock)->GetRemainingTime());
}

template <class T>
const T* FindIn(const ScriptBox& scripts, const char* name) {
  return static_cast<const T*>(scripts.GetScript(name));
}

void AddWhaleCourse(FnvHash& hash, const WhaleCourse& course) {
  for (const float f : {course.pause, course.timer, course.stopX, course.cruiseSpeed}) hash.AddValue(f);
  for (const int i : {static_cast<int>(course.sweepState), course.taken}) hash.AddValue(i);
  hash.AddValue(course.patterns);
  hash.AddValue(course.rightward);
  hash.AddValue(course.sweeping);
}

// What hazards and the whale keep to themselves.
void AddHazard(FnvHash& hash, const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  if (scripts == nullptr) return;
  if (FindIn<PiratePathing>(*scripts, "PiratePathing") != nullptr) AddWhaleCourse(hash, PiratePathing::GetCourse());
  if (FindIn<BroadSide>(*scripts, "broadside") != nullptr) hash.AddValue(BroadSide::IsFacingBack());
  if (const auto* boss = FindIn<BossHealth>(*scripts, "bosshealth")) hash.AddValue(boss->health);
  if (const auto* barnacle = FindIn<BarnacleLogic>(*scripts, "barnaclelogic")) {
    hash.AddValue(barnacle->GetHitsLeft());
    hash.AddValue(barnacle->IsDetached());
  }
}

void AddObject(FnvHash& hash, const GameObject& object) {
  hash.Add(object.name);
  hash.AddValue(object.alive);
  hash.AddValue(object.core);
  const Transform& transform = object.GetTransform();
  hash.AddValue(transform.position);
  hash.AddValue(transform.orientation);
  hash.AddValue(transform.graphicsScale);
  if (const auto* body = object.Get<GalePhysics::RigidBody>()) AddBody(hash, *body);
  for (const Kind kind :
       {Kind::kSprite, Kind::kSphereCollider, Kind::kBoxCollider, Kind::kGivePoints, Kind::kScriptBox})
    AddAsText(hash, object.GetComponent(kind));
  if (const auto* text = object.Get<SpriteText>()) AddText(hash, *text);
  AddClock(hash, object);
  AddHazard(hash, object);
}

void AddScreens(FnvHash& hash) {
  hash.AddValue(Menus().CountOpen());
  if (const Menu* menu = Menus().GetCurrentMenu()) hash.AddValue(menu->GetSelectedIndex());
  const Options& options = GetOptions();
  for (const bool option : {options.musicMuted, options.allMuted, options.menuFullscreen}) hash.AddValue(option);
  const StartUp& startUp = GetStartUp();
  hash.AddValue(startUp.skipRequested);
  hash.AddValue(startUp.spinnerAngle);
  hash.AddValue(startUp.titleArmed.to_ulong());
}

}  // namespace

std::uint64_t StateDigest() {
  FnvHash hash;
  for (const auto& object : Objects().GetObjects()) AddObject(hash, *object);
  for (const ParticleEmitter* emitter : ParticleEmitters()) AddParticles(hash, *emitter);
  AddMatch(hash);
  AddScreens(hash);
  const GameTime& time = Time();
  for (const float f : {time.frameStep, time.physicsStep, time.elapsedTime, GetRenderer().GetWaveTime()})
    hash.AddValue(f);
  hash.AddValue(RandomState());
  hash.AddValue(IsPaused());
  return hash.Get();
}
