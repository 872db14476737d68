#include "match/score/score_script.h"

#include <algorithm>

#include "core/event.h"
#include "core/game_object.h"
#include "core/run_log.h"
#include "core/transform.h"
#include "graphics/sprite_text.h"
#include "match/score/sent_points.h"

namespace {
constexpr float kPulsePeak = 1.1f;  // and back by 1 a game second
}

void ScoreScript::HandleEvent(const Event& event) {
  if (event.name != kSentPoints || event.data == nullptr) return;
  const auto& sent = *static_cast<const SentPoints*>(event.data);
  points_ += sent.value;
  ShowText();
  pulse_ = kPulsePeak;
  // What reaches a display that a new match has replaced is nobody's any more.
  if (owner->alive) LogEvent("points Player%d %d", sent.player + 1, sent.value);
}

void ScoreScript::Update(float step) {
  Transform& transform = owner->GetTransform();
  if (!started_) {
    started_ = true;
    ShowText();
    baseScale_ = transform.graphicsScale.x;
    pulse_ = 1.0f;
  }
  if (pulse_ > 1.0f) pulse_ = std::max(pulse_ - step, 1.0f);
  transform.graphicsScale = {baseScale_ * pulse_, baseScale_ * pulse_, 0.0f};
}

void ScoreScript::ShowText() const {
  if (auto* text = owner->Get<SpriteText>()) text->SetText(label_ + ": " + std::to_string(points_));
}
