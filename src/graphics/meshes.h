// The four fixed meshes.
#pragma once

#include "graphics/gl.h"

struct Mesh {
  GLuint vertexBuffer = 0;
  GLuint vertexArray = 0;
  GLuint indexBuffer = 0;  ///< 0: drawn without indices
};

inline constexpr int kQuadIndices = 6;
inline constexpr int kCirclePoints = 32;

/// A textured quad around the origin, `half` to each side; u and v are 1 at the right and at the top.
Mesh BuildQuad(float half);
/// The circle of radius 1, without a repeated closing point.
Mesh BuildCircle();
/// The outline of the unit square as four separate segments.
Mesh BuildSquareOutline();
/// Frees the mesh and empties it.
void DeleteMesh(Mesh& mesh);
