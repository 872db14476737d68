// Makes an archetype's object again and again at its owner's place and sends it off. The owner itself is not seen. In
// files it is "spawner"; "Spawner" is another script.
#pragma once

#include <string>

#include "core/script.h"
#include "physics/math/vec3.h"

class SpawnsObjects final : public Script {
 public:
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  void GiveBack() override { Show(ownVisible_); }
  void TakeAgain() override { Show(false); }
  const char* GetName() const override { return "spawner"; }

  std::string archetypeName;          ///< file name; one that makes nothing is tried again every interval
  Vec3 spawnVelocity;                 ///< units per body second; to the left also mirrors the picture
  float spawnRate = 0.0f;             ///< seconds of real time between two; not above 0: one a frame
  float timeBeforeFirstSpawn = 0.0f;  ///< seconds of real time
  float yRange = 0.0f;                ///< world units above and below the owner

 private:
  void Spawn() const;
  void Show(bool shown) const;

  float countdown_ = 0.0f;
  bool started_ = false;
  bool ownVisible_ = true;  // the sprite's, which is hidden from the first update on
};
