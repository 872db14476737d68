// Particles: small tinted pictures in the world, drawn with one instanced call an emitter, over the background and
// behind every sprite. The base ages a fixed pool; what is born, and how it moves, is for derived classes. The random
// stream is shared with the match, so emitters run without a GL context too. Main thread only.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/script.h"
#include "graphics/gl.h"
#include "physics/math/vec3.h"

struct Particle {
  Vec3 position;  ///< world units
  Vec3 scale = {1.0f, 1.0f, 1.0f};
  std::array<float, 4> colour = {1.0f, 1.0f, 1.0f, 1.0f};
  float life = 0.0f;  ///< game seconds left; a slot is free at 0 and below
};

class ParticleEmitter : public Script {
 public:
  static constexpr int kMaxParticles = 65536;           ///< of an emitter
  static constexpr int kMaxAllParticles = 1024 * 1024;  ///< of all together; bounds the memory that files can claim

  /// Makes the GL objects and enters the list of emitters.
  ParticleEmitter();
  /// Leaves the list and frees the GL objects.
  ~ParticleEmitter() override;

  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  /// A particle count outside 0 to kMaxParticles is moved to the nearest of them, with a message.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "particleemitter"; }

  const std::vector<Particle>& GetPool() const { return particles_; }
  /// How many were alive after the last update; as many are drawn.
  int CountLive() const { return static_cast<int>(livePositions_.size()); }
  GLuint GetVertexArray() const { return vertexArray_; }

  std::string textureName;  ///< file name in Texture/; not loaded by the emitter
  int maxParticles = 100;   ///< size of the pool from the next update on

 protected:
  /// The fields that all emitters have, into the group that is open.
  void AddPoolToBar(FieldBar& bar);
  /// Called when the pool has a new size.
  virtual void Resize(int /*size*/) {}
  /// Gives the pool the size of `maxParticles`, which is lowered when that is too much.
  void FitPool();

  int nextParticle_ = 0;  // where the search for a free slot starts
  std::vector<Particle> particles_;

 private:
  void BuildBuffers();

  GLuint quadBuffer_ = 0;
  GLuint positionBuffer_ = 0;
  GLuint scaleBuffer_ = 0;
  GLuint colourBuffer_ = 0;
  GLuint indexBuffer_ = 0;
  GLuint vertexArray_ = 0;
  std::vector<Vec3> livePositions_;
  std::vector<Vec3> liveScales_;
  std::vector<std::array<float, 4>> liveColours_;
};

/// Every emitter there is, in the order of construction.
const std::vector<ParticleEmitter*>& ParticleEmitters();
