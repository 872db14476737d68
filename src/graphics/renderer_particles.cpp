#include "graphics/meshes.h"
#include "graphics/particle_emitter.h"
#include "graphics/renderer.h"

// Instances stand in the world already: there is no model matrix.
void Renderer::DrawParticles() {
  if (!IsDrawing()) return;
  for (const ParticleEmitter* emitter : ParticleEmitters()) {
    if (emitter->CountLive() == 0 || UseInScene("particles") == nullptr) continue;
    gl::BindTexture(GetTexture(emitter->textureName));
    gl::BindVertexArray(emitter->GetVertexArray());
    gl::DrawIndexedInstances(kQuadIndices, emitter->CountLive());
  }
}
