#include "match/player/create_player.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "graphics/sprite.h"
#include "match/player/character_controller.h"
#include "match/player/force_currency.h"
#include "match/player/player_body.h"
#include "match/players.h"
#include "physics/make_physical.h"

namespace {

constexpr float kRadius = 0.5f;       // world units
constexpr float kRestitution = 3.0f;  // makes every wall a bumper; VelocityCap bounds what it gives
constexpr int kMaxForce = 10;
constexpr float kChargeTime = 0.75f;  // seconds at 60 frames per second
constexpr int kGaugeTeam = 0;         // under charge rules nobody asks for it
constexpr float kMusicVolume = 0.5f;

GameObject& AddCoreObject(const std::string& name, const std::string& image) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = name;
  object.core = true;
  object.Insert(std::make_unique<Sprite>()).texturePath = image;
  return object;
}

}  // namespace

void CreatePlayer(const PlayerDefinition& definition) {
  GameObject& player = AddCoreObject(definition.playerName, definition.image);
  GameObject& gauge = AddCoreObject(definition.gaugeName, "RedBox.png");
  GalePhysics::MakePhysical(player, {.shape = GalePhysics::PhysicalShape::kSphere,
                                     .size = {kRadius, kRadius, 0.0f},
                                     .position = definition.position,
                                     .restitution = kRestitution});
  // The gauge first: the controller speaks to it as soon as it is attached.
  gauge.Insert(std::make_unique<ScriptBox>())
      .AddScript(std::make_unique<ForceCurrency>(kGaugeTeam, definition.playerName, kMaxForce, kChargeTime));
  auto& scripts = player.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(
      std::make_unique<CharacterController>(definition.scoreName, definition.gaugeName, definition.index));
  scripts.AddScript("PrisonScript");
  scripts.AddScript("dizzy");
  scripts.AddScript("VelocityCap");
  scripts.AddScript("ppa");
  scripts.AddScript(std::make_unique<PlayerBody>(definition.index, 2.0f * kRadius));
  // Each player starts it, so that one made alone brings its music too; four starts in a frame are heard as one.
  Audio::Play(Sound::kMatchMusic, Audio::kLongLived);
  Audio::SetMusicVolume(kMusicVolume);
}
