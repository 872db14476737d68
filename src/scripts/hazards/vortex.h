// A whirlpool that grows. What overlaps it is pulled towards its middle or, when it is the way in, pushed out of it. A
// player who comes near the middle of an exit shrinks away and stays away; a way in lets him grow again. With a point
// distance of 0 an exit swallows nobody: it only pulls.
#pragma once

#include <array>

#include "core/script.h"

class GameObject;

class Vortex final : public Script {
 public:
  /// Grows the picture and the SphereCollider by the same number, which is a diameter for one and a radius for the
  /// other: the collider gets ahead of the picture. The size is the whirlpool's own and is saved as it is by then.
  void Update(float step) override;
  /// Acts on the other object; called 15 times a frame while it overlaps.
  void OnCollision(const CollisionPair& pair) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "vortex"; }

  float pullingConstant = 0.001f;  ///< force of one overlap; not scaled by time, so it acts 15 times a frame
  float pointDistance = 1.0f;      ///< world units from the middle from which an exit swallows
  int pointsGiven = 10;            ///< kept and saved; scoring is GivePoints' business
  bool isExit = true;              ///< else the way in

 private:
  void Swallow(GameObject& player);
  void LetIn(GameObject& player, int index);
  void Finish(int index);

  std::array<bool, 4> finished_{};  // by player index
};
