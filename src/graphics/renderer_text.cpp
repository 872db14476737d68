// The renderer's text: fonts by name, and a line drawn glyph by glyph.
#include "core/transform.h"
#include "graphics/renderer.h"
#include "graphics/sprite_text.h"

namespace {

using Matrix = std::array<float, 16>;  // row-major

Matrix Multiply(const Matrix& a, const Matrix& b) {
  Matrix product{};
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column)
      for (std::size_t i = 0; i < 4; ++i) product[4 * row + column] += a[4 * row + i] * b[4 * i + column];
  return product;
}

// The shape turns and scales the text but does not move it.
Matrix TextModel(const GameObject& object, const SpriteText& text) {
  const Matrix model = object.GetTransform().GetModelMatrix();
  Matrix shaped = Multiply(model, text.shape);
  shaped[3] = model[3] + text.offset.x;
  shaped[7] = model[7] + text.offset.y;
  shaped[11] = model[11] + text.offset.z;
  return shaped;
}

}  // namespace

void Renderer::LoadFont(const std::string& name) {
  Font& font = fonts_[name];
  FreeFont(font);
  font = LoadFontFile(fontLibrary_, name);
}

const Font& Renderer::GetFont(const std::string& name) const {
  static const Font none;
  const auto found = fonts_.find(name);
  return found == fonts_.end() ? none : found->second;
}

void Renderer::DrawText(const GameObject& object) {
  const SpriteText* text = object.Get<SpriteText>();
  if (text == nullptr || !text->visible || !IsDrawing()) return;
  const Font& font = GetFont(text->fontName);
  LayOutText(font, text->text, textVertices_);
  if (textVertices_.empty()) return;
  ShaderProgram* program = UseInScene("text");
  if (program == nullptr) return;
  gl::UniformMatrix4(program->model, true, TextModel(object, *text).data());
  program->SendColour({text->r, text->g, text->b, text->a});
  gl::BindTexture(font.atlasTexture);
  gl::BindVertexArray(font.vertexArray);
  gl::ArrayData(font.vertexBuffer, textVertices_.size() * sizeof(TextVertex), textVertices_.data(), GL_DYNAMIC_DRAW);
  gl::DrawArrays(GL_TRIANGLES, static_cast<int>(textVertices_.size()));
}
