#include "match/player/create_player.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/script_box.h"
#include "graphics/basic_particle_emitter.h"
#include "graphics/sprite_colour.h"
#include "match/player/character_controller.h"
#include "match/player/force_currency.h"
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

// One bubble an update, just as large as the collider: at rest they lie on one another and make the octopus a clear
// coloured bubble, in flight they draw a comet. All ranges are points, so no random number is drawn.
std::unique_ptr<BasicParticleEmitter> MakeBubbles(int player) {
  constexpr float kLife = 0.1f;  // game seconds
  auto bubbles = std::make_unique<BasicParticleEmitter>();
  bubbles->textureName = "particlebubble.png";
  bubbles->maxParticles = 16;  // more than live at a time
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  bubbles->colour = {colour.r / kFullColour, colour.g / kFullColour, colour.b / kFullColour};
  for (Vec3* point : {&bubbles->startingPositionMin, &bubbles->startingPositionMax, &bubbles->minVelocity,
                      &bubbles->maxVelocity, &bubbles->minAcceleration, &bubbles->maxAcceleration})
    *point = {};
  bubbles->minScale.x = bubbles->maxScale.x = 2.0f * kRadius;
  bubbles->minLifespan = bubbles->maxLifeSpan = kLife;
  bubbles->spawnIntervalMin = bubbles->spawnIntervalMax = 0.0f;
  return bubbles;
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
  scripts.AddScript(MakeBubbles(definition.index));
  // Each player starts it, so that one made alone brings its music too; four starts in a frame are heard as one.
  Audio::Play(Sound::kMatchMusic, Audio::kLongLived);
  Audio::SetMusicVolume(kMusicVolume);
}
