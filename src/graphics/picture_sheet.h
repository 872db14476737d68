// Small pictures together in one texture, so that one sprite after another can be drawn without a change of texture.
// Each keeps its own texture beside it, for programs that look outside the picture. Main thread only.
#pragma once

#include <array>

#include "graphics/texture_upload.h"

class PictureSheet {
 public:
  using Window = std::array<float, 4>;  ///< scale in the first two, offset in the others, in texture space

  /// Lays a copy on the sheet, with a rim of its outermost pixels, so that the linear filter meets no neighbour. Leaves
  /// one that is too large, or for which no room is left, as it is.
  void Add(Texture& texture);
  /// Takes the texture away; what is on it is not drawn any more.
  void Delete();

  /// Whether the picture lies on the sheet and the window shows nothing beside it.
  bool Shows(const Texture& texture, const Window& window) const;
  /// The window into the sheet that shows what `window` shows of the picture.
  static Window Within(const Texture& texture, const Window& window);
  GLuint GetTexture() const { return sheet_; }

 private:
  bool FindRoom(int width, int height, int& x, int& y);

  GLuint sheet_ = 0;
  int side_ = 0;  // pixels
  int shelfTop_ = 0, shelfHeight_ = 0, shelfEnd_ = 0;
};
