// The renderer's sprites.
#include "core/transform.h"
#include "graphics/renderer.h"
#include "graphics/sprite.h"

// State stands from one sprite to the next; the screen pass switches blending off.
void Renderer::DrawSprite(const GameObject& object) {
  static const std::string kFullScreenShader = "screen";
  const Sprite* sprite = object.Get<Sprite>();
  if (sprite == nullptr || !sprite->visible || !IsDrawing()) return;
  const int type = sprite->meshType;
  if (type != MeshType::kQuad && type != MeshType::kCircle && type != MeshType::kFullScreen) return;
  ShaderProgram* program = UseInScene(type == MeshType::kFullScreen ? kFullScreenShader : sprite->shaderName);
  if (program == nullptr) return;
  const Texture& texture = FindTexture(sprite->texturePath);
  // Blending an opaque picture gives the picture and costs a reading of what is behind it, the whole view for the
  // background.
  if (texture.opaque && sprite->a == 1.0f) gl::SetEnabled(GL_BLEND, false);
  if (type == MeshType::kQuad)
    ShowPicture(*program, *sprite, texture);
  else
    gl::BindTexture(texture.name);
  gl::BindVertexArray(meshes_[static_cast<std::size_t>(type)].vertexArray);
  if (type != MeshType::kFullScreen) {
    gl::UniformMatrix4(program->model, true, object.GetTransform().GetModelMatrix().data());
    program->SendColour({sprite->r, sprite->g, sprite->b, sprite->a});
  }
  if (type == MeshType::kCircle)
    gl::DrawArrays(GL_LINE_LOOP, kCirclePoints);
  else
    gl::DrawIndexedTriangles(kQuadIndices);
}

void Renderer::ShowPicture(ShaderProgram& program, const Sprite& sprite, const Texture& texture) {
  const PictureSheet::Window window = {sprite.row, sprite.columns, sprite.startFrame, sprite.endFrame};
  const bool onSheet = program.looksInside && sheet_.Shows(texture, window);
  gl::BindTexture(onSheet ? sheet_.GetTexture() : texture.name);
  program.SendTextureWindow(onSheet ? PictureSheet::Within(texture, window) : window);
}
