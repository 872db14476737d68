#include "match/episode/game_timer.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_colour.h"
#include "input/input.h"
#include "match/episode/segment_manager.h"
#include "match/match_controller.h"

namespace {

constexpr float kBlinkTime = 5.0f;           // game seconds at the end of a chunk
constexpr float kBlinkInterval = 0.5f;       // game seconds
constexpr float kFastMusicTime = 15.0f;      // game seconds before the end of the match
constexpr float kFirstAngle = -0.34906587f;  // radians: the picture's wedge points 40 degrees left of 12 o'clock
constexpr float kTurn = 2.0f * kPi;
constexpr float kPieSize = 2.0f;  // world units

constexpr Colour255 kSpent = {100.0f, 100.0f, 100.0f, kFullColour};
constexpr Colour255 kBright = {kFullColour, kFullColour, kFullColour, kFullColour};
constexpr Colour255 kLast = {kFullColour, 0.0f, 0.0f, kFullColour};

// Of the scene, whichever clock it was: two may not start the music over each other.
bool& FastMusicStarted() {
  static SceneState<bool> started;
  return *started;
}

// Exact: a sprite has the spent grey only when it was given it.
bool IsSpent(const Sprite& sprite) {
  constexpr float kGrey = kSpent.r / kFullColour;
  return sprite.r == kGrey && sprite.g == kGrey && sprite.b == kGrey;
}

}  // namespace

GameTimer::GameTimer() { FastMusicStarted() = false; }

void GameTimer::Update(float step) {
  // Dead it is updated once more, and nothing may happen twice.
  if (!owner->alive) return;
  const bool shortcut = Input::IsKeyDown("ralt") && Input::IsKeyDown("rshift") && Input::IsLetterTriggered('e');
  if (shortcut) chunksLeft_ = -1;
  // A stage that has lost its episode, in the editor, is no match: it goes on without end.
  if (!shortcut && FindSegmentManager() == nullptr) return;
  if (chunksLeft_ < 0) {
    ShowWinScreen();
    return;
  }
  if (!built_) Build();
  if (!built_) return;
  chunkTimer_ += step;
  remainingTime_ -= step;
  if (chunkTimer_ >= chunkDuration_ - kBlinkTime) Blink(step);
  if (chunkTimer_ >= chunkDuration_) FinishChunk();
  if (remainingTime_ <= kFastMusicTime && !FastMusicStarted()) SpeedUpMusic();
}

// The episode's length is taken once; without an episode that lasts there is no pie, and the next frame tries again.
void GameTimer::Build() {
  SegmentManager* segments = FindSegmentManager();
  const float matchTime = segments == nullptr ? 0.0f : segments->MeasureEpisode();
  if (!(matchTime > 0.0f)) return;
  built_ = true;
  for (int i = 0; i < kChunks; ++i) {
    std::uint32_t& id = chunkIds_[static_cast<std::size_t>(i)];
    id = Objects().CreateObject();
    GameObject& chunk = *Objects().GetObject(id);
    chunk.core = true;
    chunk.Insert(std::make_unique<Sprite>()).texturePath = "PieChunk.png";
    Transform& transform = chunk.GetTransform();
    transform.orientation = QuaternionFromZ(static_cast<float>(i) / kChunks * kTurn + kFirstAngle);
    transform.position = owner->GetTransform().position;
    transform.graphicsScale = {kPieSize, kPieSize, 0.0f};
  }
  chunksLeft_ = kChunks - 1;
  chunkDuration_ = matchTime / kChunks;
  remainingTime_ = matchTime;
  ColourChunk(0, kLast);
}

void GameTimer::ShowWinScreen() {
  GameObject& screen = *Objects().GetObject(Objects().CreateObject());
  screen.Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
  owner->alive = false;
  if (GameObject* controller = Objects().FindObjectByName(kMatchController)) controller->alive = false;
}

void GameTimer::Blink(float step) {
  blinkTimer_ += step;
  if (blinkTimer_ < kBlinkInterval) return;
  blinkTimer_ -= kBlinkInterval;
  const GameObject* chunk = Objects().GetObject(chunkIds_[static_cast<std::size_t>(chunksLeft_)]);
  const Sprite* sprite = chunk == nullptr ? nullptr : chunk->Get<Sprite>();
  if (sprite != nullptr) ColourChunk(chunksLeft_, IsSpent(*sprite) ? kBright : kSpent);
}

void GameTimer::FinishChunk() {
  ColourChunk(chunksLeft_, kSpent);
  --chunksLeft_;
  blinkTimer_ = 0.0f;
  chunkTimer_ -= chunkDuration_;
}

void GameTimer::SpeedUpMusic() {
  FastMusicStarted() = true;
  Audio::StopMusic();
  Audio::Play(Sound::kFastMatchMusic, Audio::kLongLived);
}

void GameTimer::ColourChunk(int chunk, const Colour255& colour) const {
  const GameObject* object = Objects().GetObject(chunkIds_[static_cast<std::size_t>(chunk)]);
  if (Sprite* sprite = object == nullptr ? nullptr : object->Get<Sprite>()) SetColour255(*sprite, colour);
}
