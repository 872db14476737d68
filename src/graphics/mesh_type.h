// The fixed meshes by number, as a sprite names its own in level files.
#pragma once

namespace MeshType {

inline constexpr int kQuad = 0;    ///< textured, placed by the Transform
inline constexpr int kCircle = 1;  ///< outline of radius 1
// 2 is the outline of the unit square, with which no sprite is drawn.
inline constexpr int kFullScreen = 3;  ///< the picture over the whole view, without tint or Transform

}  // namespace MeshType
