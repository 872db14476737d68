// For writing bodies: a spring that is written enters itself at the body on which it hangs.
#pragma once

#include <utility>
#include <vector>

#include "core/object_manager.h"
#include "physics/rigid_body.h"

/// While it lives no body lists the springs that hang on it, so that what is written lists each of them once; then they
/// list what they did before, and none that may be gone when the level is saved the next time.
class WithoutBases {
 public:
  WithoutBases() {
    for (const auto& object : Objects().GetObjects())
      if (auto* body = object->Get<GalePhysics::RigidBody>())
        lists_.emplace_back(body, std::exchange(body->baseOfGenerators, {}));
  }
  WithoutBases(const WithoutBases&) = delete;
  WithoutBases& operator=(const WithoutBases&) = delete;
  ~WithoutBases() {
    for (auto& [body, list] : lists_) body->baseOfGenerators = std::move(list);
  }

 private:
  std::vector<std::pair<GalePhysics::RigidBody*, std::vector<GalePhysics::ForceGenerator*>>> lists_;
};
