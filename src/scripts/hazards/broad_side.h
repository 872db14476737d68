// A ship's side: volleys of cannonballs, one gun after the other. All ships share the side that fires, which changes
// with every volley that one of them has finished.
#pragma once

#include "core/script.h"

class BroadSide final : public Script {
 public:
  static constexpr int kShotsPerVolley = 3;
  static constexpr float kShotGapSpread = 1.0f;  ///< seconds of game time between two shots, at most

  /// The first volley comes `fireInterval` after a moment 3 game seconds ago.
  BroadSide();

  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "broadside"; }

  float fireInterval = 3.0f;  ///< seconds of game time from the end of a volley to the next

  /// Whether guns point along the owner's own -x axis, as they do first, or along +x.
  static bool IsFacingBack();
  /// Back to that first side, for a new game: the last one may have ended in the middle of a volley.
  static void ResetSide();

 private:
  void EndVolley();
  void Fire() const;

  float lastVolley_;        // game time
  float shotTimer_ = 0.0f;  // seconds of game time after the volley's begin
  int slot_ = 0;            // which gun: 0, 1, -1, 2, -2 and so on
  int shotsFired_ = 0;
};
