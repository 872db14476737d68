// An object that carries the script under test, in a scene without a match.
#pragma once

#include "match/episode_scene.h"

class ScriptTest : public EpisodeTest {
 public:
  static constexpr float kStep = 0.0085f;

  ScriptTest() { CopyShipped({"cannonball", "sandpoof"}); }
  template <class T, class... Values>
  T& Carry(Values... values) {
    return Attach<T>(holder, values...);
  }
  /// By its name in files.
  void Carry(const char* name) { holder.Get<ScriptBox>()->AddScript(name); }
  void Update(int updates) {
    for (int i = 0; i < updates; ++i) holder.Update(kStep);
  }

  // It meets no cannonball, as nothing does that fires them.
  GameObject& holder = world.AddSphere("holder", {}, {.inverseMass = 0.0f, .group = 0});

 private:
  ScriptBox& box_ = holder.Insert(std::make_unique<ScriptBox>());
};
