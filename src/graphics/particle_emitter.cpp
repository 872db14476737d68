#include "graphics/particle_emitter.h"

#include <algorithm>
#include <cstdint>

#include "core/field_bar.h"
#include "core/print.h"
#include "core/scene_state.h"
#include "core/serializer.h"
#include "graphics/meshes.h"

namespace {

constexpr int kQuadStride = 5 * sizeof(float);  // x, y, z, u, v

struct Emitters {
  std::vector<ParticleEmitter*> list;
  int pooled = 0;  // particles in all pools
};

// Never destroyed: emitters of objects that live to the end of the process leave it late.
Emitters& Get() {
  static auto& emitters = *new SceneState<Emitters>;
  return *emitters;
}

void AddInstanceAttribute(GLuint location, GLuint buffer, int components) {
  gl::ArrayData(buffer, 0, nullptr, GL_STREAM_DRAW);
  gl::FloatAttribute(location, components, 0, 0);
  gl::PerInstance(location);
}

template <class T>
void Upload(GLuint buffer, const std::vector<T>& values) {
  gl::ArrayData(buffer, values.size() * sizeof(T), values.data(), GL_STREAM_DRAW);
}

}  // namespace

const std::vector<ParticleEmitter*>& ParticleEmitters() { return Get().list; }

ParticleEmitter::ParticleEmitter() {
  BuildBuffers();
  Get().list.push_back(this);
}

ParticleEmitter::~ParticleEmitter() {
  auto& list = Get().list;
  list.erase(std::find(list.begin(), list.end(), this));
  Get().pooled -= static_cast<int>(particles_.size());
  gl::DeleteVertexArray(vertexArray_);
  for (const GLuint buffer : {quadBuffer_, positionBuffer_, scaleBuffer_, colourBuffer_, indexBuffer_})
    gl::DeleteBuffer(buffer);
}

void ParticleEmitter::BuildBuffers() {
  constexpr std::array<float, 20> quad = {-0.5f, 0.5f,  0, 0, 1, -0.5f, -0.5f, 0, 0, 0,
                                          0.5f,  -0.5f, 0, 1, 0, 0.5f,  0.5f,  0, 1, 1};
  constexpr std::array<std::uint16_t, kQuadIndices> indices = {0, 1, 2, 0, 2, 3};
  vertexArray_ = gl::GenVertexArray();
  for (GLuint* buffer : {&quadBuffer_, &positionBuffer_, &scaleBuffer_, &colourBuffer_, &indexBuffer_})
    *buffer = gl::GenBuffer();
  gl::BindVertexArray(vertexArray_);
  gl::StaticData(GL_ARRAY_BUFFER, quadBuffer_, sizeof quad, quad.data());
  gl::FloatAttribute(0, 3, kQuadStride, 0);
  gl::FloatAttribute(1, 2, kQuadStride, 3 * sizeof(float));
  gl::StaticData(GL_ELEMENT_ARRAY_BUFFER, indexBuffer_, sizeof indices, indices.data());
  AddInstanceAttribute(2, positionBuffer_, 3);
  AddInstanceAttribute(3, scaleBuffer_, 3);
  AddInstanceAttribute(4, colourBuffer_, 4);
  gl::BindVertexArray(0);
  gl::BindArrayBuffer(0);
}

void ParticleEmitter::FitPool() {
  const int size = static_cast<int>(particles_.size());
  if (size == maxParticles) return;
  int& pooled = Get().pooled;
  const int limit = std::min(kMaxParticles, kMaxAllParticles - (pooled - size));
  if (maxParticles > limit) Print("%s: %d particles are too many, %d remain\n", GetName(), maxParticles, limit);
  maxParticles = std::clamp(maxParticles, 0, limit);
  particles_.resize(static_cast<std::size_t>(maxParticles));
  pooled += maxParticles - size;
  nextParticle_ = std::min(nextParticle_, maxParticles);
  Resize(maxParticles);
}

void ParticleEmitter::Update(float step) {
  livePositions_.clear();
  liveScales_.clear();
  liveColours_.clear();
  FitPool();
  for (Particle& particle : particles_) {
    if (!(particle.life > 0.0f)) continue;
    particle.life -= step;
    if (!(particle.life > 0.0f)) continue;
    livePositions_.push_back(particle.position);
    liveScales_.push_back(particle.scale);
    liveColours_.push_back(particle.colour);
  }
  Upload(positionBuffer_, livePositions_);
  Upload(scaleBuffer_, liveScales_);
  Upload(colourBuffer_, liveColours_);
  gl::BindArrayBuffer(0);
}

void ParticleEmitter::Serialize(Serializer& writer) const {
  writer.WriteString("textureName", textureName);
  writer.WriteInt("particleCount", maxParticles);
}

void ParticleEmitter::Deserialize(Serializer& reader) {
  textureName = reader.ReadString();
  const int count = reader.ReadInt();
  maxParticles = std::clamp(count, 0, kMaxParticles);
  if (maxParticles != count)
    Print("%s: particleCount %d, must be 0 to %d\n", reader.Where().c_str(), count, kMaxParticles);
}

void ParticleEmitter::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup(GetName());
  AddPoolToBar(bar);
  bar.EndGroup();
}

void ParticleEmitter::AddPoolToBar(FieldBar& bar) {
  bar.Add("TextureName", &textureName);
  bar.AddLimited("MaxParticles", &maxParticles, 0, kMaxParticles);
}
