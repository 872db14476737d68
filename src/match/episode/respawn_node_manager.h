// Puts objects back onto the stage, each at one of four places that nothing stands on at the moment.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/script.h"
#include "physics/math/vec3.h"

class RespawnNodeManager final : public Script {
 public:
  ~RespawnNodeManager() override;
  void Update(float step) override;
  /// Makes the four nodes at the fallback position; they go with the manager.
  void Initialize() override;
  const char* GetName() const override { return "RespawnNodeManager"; }

  /// Places the object at the next update; one that is gone by then is passed over.
  void Queue(std::uint32_t objectId) { queue_.push_back(objectId); }
  /// The node's object, by index 0 to 3, to be put where it belongs; null when it is gone.
  GameObject* GetNode(std::size_t index) const;

  Vec3 fallbackPosition;  ///< for whom no node is free

 private:
  static constexpr std::size_t kNodes = 4;

  std::array<std::uint32_t, kNodes> nodeIds_{};
  std::vector<std::uint32_t> queue_;
};
