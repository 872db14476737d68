// Counts the points of one player and shows them on its owner's text, which swells for a moment at every gain.
#pragma once

#include <string>

#include "core/script.h"

class ScoreScript final : public Script {
 public:
  ScoreScript() = default;
  /// `name`: what stands in front of the number.
  explicit ScoreScript(std::string name) : label_(std::move(name)) {}

  void Update(float step) override;
  void HandleEvent(const Event& event) override;
  const char* GetName() const override { return "ScoreScript"; }

  int GetPoints() const { return points_; }

 private:
  void ShowText() const;

  int points_ = 0;
  std::string label_;
  bool started_ = false;
  float pulse_ = 1.0f;  // factor of the display's size
  float baseScale_ = 0.0f;
};
