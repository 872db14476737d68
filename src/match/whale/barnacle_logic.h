// A barnacle on the whale: it pays for every hit and drops off after the last. Barnacles are objects of a level, placed
// as on a whale in the middle of the stage; they wait, unseen and out of everybody's way, for a whale to sit on, and go
// when it goes.
#pragma once

#include <cstdint>

#include "core/script.h"
#include "physics/math/vec3.h"

class BarnacleLogic final : public Script {
 public:
  static constexpr int kHits = 2;
  static constexpr int kPoints = 5;  ///< a hit

  void Update(float step) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void GiveBack() override;
  void TakeAgain() override;
  const char* GetName() const override { return "barnaclelogic"; }

  int GetHitsLeft() const { return hits_; }
  bool IsDetached() const { return detached_; }

 private:
  void LookForWhale();
  void Show(bool shown) const;
  bool Sits() const;
  void TakeHit(const GalePhysics::Contact& contact);
  void DropOff();

  bool started_ = false;  // it sits on a whale
  bool waiting_ = false;  // hidden for lack of one
  bool detached_ = false;
  int hits_ = kHits;
  std::uint32_t whaleId_ = 0;
  Vec3 seat_;    // where it is in the world while its own place is given back
  Vec3 offset_;  // from the whale's middle, along the world's axes: it is not turned with the whale
};
