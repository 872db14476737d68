#include "graphics/meshes.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr int kTexturedStride = 5 * sizeof(float);  // x, y, z, u, v
constexpr int kPlainStride = 3 * sizeof(float);

template <std::size_t N>
Mesh BuildPlain(const std::array<float, N>& vertices) {
  Mesh mesh;
  mesh.vertexArray = gl::GenVertexArray({&mesh.vertexBuffer});
  gl::BindVertexArray(mesh.vertexArray);
  gl::StaticData(GL_ARRAY_BUFFER, mesh.vertexBuffer, sizeof vertices, vertices.data());
  gl::FloatAttribute(0, 3, kPlainStride, 0);
  gl::BindVertexArray(0);
  return mesh;
}

}  // namespace

Mesh BuildQuad(float half) {
  const std::array<float, 20> vertices = {-half, half,  0, 0, 1, -half, -half, 0, 0, 0,
                                          half,  -half, 0, 1, 0, half,  half,  0, 1, 1};
  constexpr std::array<std::uint16_t, kQuadIndices> indices = {0, 1, 2, 0, 2, 3};
  Mesh mesh;
  mesh.vertexArray = gl::GenVertexArray({&mesh.vertexBuffer, &mesh.indexBuffer});
  gl::BindVertexArray(mesh.vertexArray);
  gl::StaticData(GL_ARRAY_BUFFER, mesh.vertexBuffer, sizeof vertices, vertices.data());
  gl::StaticData(GL_ELEMENT_ARRAY_BUFFER, mesh.indexBuffer, sizeof indices, indices.data());
  gl::FloatAttribute(0, 3, kTexturedStride, 0);
  gl::FloatAttribute(1, 2, kTexturedStride, 3 * sizeof(float));
  gl::BindVertexArray(0);
  return mesh;
}

Mesh BuildCircle() {
  std::array<float, std::size_t{3} * kCirclePoints> vertices{};
  const float pi = 4.0f * std::atan(1.0f);
  for (std::size_t i = 0; i < kCirclePoints; ++i) {
    const float angle = static_cast<float>(i) * (1.0f / kCirclePoints) * 2.0f * pi;
    vertices[3 * i] = std::cos(angle);
    vertices[3 * i + 1] = std::sin(angle);
  }
  return BuildPlain(vertices);
}

Mesh BuildSquareOutline() {
  constexpr float h = 0.5f;
  return BuildPlain(
      std::array<float, 24>{-h, h, 0, -h, -h, 0, -h, -h, 0, h, -h, 0, h, -h, 0, h, h, 0, h, h, 0, -h, h, 0});
}

void DeleteMesh(Mesh& mesh) {
  if (mesh.vertexArray != 0) gl::DeleteVertexArray(mesh.vertexArray);
  if (mesh.indexBuffer != 0) gl::DeleteBuffer(mesh.indexBuffer);
  if (mesh.vertexBuffer != 0) gl::DeleteBuffer(mesh.vertexBuffer);
  mesh = {};
}
