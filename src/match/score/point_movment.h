// Points on their way: a bubble in the player's colour pops out of where they were earned, rests, is drawn to the
// player's display, and credits its value when it ends, by arriving or by its time.
#pragma once

#include <cstdint>

#include "core/script.h"
#include "physics/math/vec3.h"

/// Flies its owner, a bubble, and credits it at the end.
class PointMovment final : public Script {
 public:
  static constexpr float kNoAngle = -1337.0f;

  /// A bubble of player 1 worth a point, credited to nobody; its clock starts now.
  PointMovment();
  /// `points` of the player with that index, popping along `angle` (radians); credited to the object `creditTargetId`.
  PointMovment(int points, int playerIndex, float angle, std::uint32_t creditTargetId);
  /// Credits the points, whichever way the bubble ends; dropped when the display is gone.
  ~PointMovment() override;

  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "pointmovment"; }

  int GetValue() const { return value_; }
  /// ID of the object that it will be credited to; 0: none.
  std::uint32_t GetCreditTarget() const { return creditTargetId_; }

 private:
  enum class State { kPopping, kResting, kHandedOver, kPulled };  // handed over: to the puller

  void Fly(const Vec3& way);
  void AdvanceState();

  std::uint32_t targetId_ = 0;  // the display it flies to; 0: none
  int value_ = 1;
  int player_ = 0;
  float stateStart_;  // game time, seconds
  float stateDuration_ = 0.2f;
  float launchAngle_ = kNoAngle;
  State state_ = State::kPopping;
  bool started_ = false;
  std::uint32_t creditTargetId_ = 0;  // by ID: after a new game the name finds the next match's display
};
