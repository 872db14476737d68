#include "match/score/score_displays.h"

#include "core/object_manager.h"
#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite_text.h"
#include "match/score/score_script.h"
#include "physics/generator_host.h"
#include "physics/wobbly_puller.h"

namespace {

struct Display {
  const char* label;
  float x, y;  // world units
};

// By player index.
constexpr std::array<Display, kPlayers> kDisplays = {{{"Red Score", -16.0f, 5.0f},
                                                      {"White Score", 16.0f, 5.0f},
                                                      {"Blue Score", -16.0f, -5.0f},
                                                      {"Yellow Score", 16.0f, -5.0f}}};
constexpr float kTextScale = 0.01f;      // world units a pixel of the font
constexpr float kForwardPower = 2.0f;    // acceleration per unit of distance
constexpr float kSidewaysPower = 1.25f;  // acceleration
constexpr float kSidewaysPeriod = 0.5f;  // game seconds

using PullerTable = std::array<GalePhysics::WobblyPuller*, kPlayers>;

PullerTable& Pullers() {
  static SceneState<PullerTable> pullers;
  return *pullers;
}

void CreateDisplay(std::size_t player) {
  const Display& display = kDisplays[player];
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = kScoreObjects[player];
  object.core = true;
  object.GetTransform().position = {display.x, display.y, 0.0f};
  object.GetTransform().graphicsScale = {kTextScale, kTextScale, kTextScale};
  object.Insert(std::make_unique<SpriteText>());
  object.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<ScoreScript>(display.label));
  // Every match brings four more: bubbles of the last one may still be listed with theirs, and the host keeps all.
  Pullers()[player] = &GalePhysics::AdoptGenerator(
      std::make_unique<GalePhysics::WobblyPuller>(object.id, kForwardPower, kSidewaysPower, kSidewaysPeriod));
}

}  // namespace

void CreateScoreDisplays() {
  for (std::size_t player = 0; player < kDisplays.size(); ++player) CreateDisplay(player);
}

GalePhysics::WobblyPuller* GetPlayerPuller(int player) {
  return IsPlayerIndex(player) ? Pullers()[static_cast<std::size_t>(player)] : nullptr;
}
