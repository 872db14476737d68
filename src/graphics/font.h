// A TrueType font, rasterised once into one row of glyphs, and how a text of it is laid out. Fonts belong to the
// renderer. Without a GL context a font has its measures and no atlas.
#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "graphics/gl.h"

/// In pixels at the size of rasterising; one that is not in the font is all zeros. The bitmap's measures hold its empty
/// margin too: the rectangle that is drawn must show it, or filtering would cut the ink hard at its edge.
struct Glyph {
  float advanceX = 0.0f;
  float advanceY = 0.0f;
  float width = 0.0f;  ///< of the bitmap
  float rows = 0.0f;
  float left = 0.0f;    ///< from the pen to the bitmap
  float top = 0.0f;     ///< from the baseline up to the bitmap's first row
  float atlasU = 0.0f;  ///< left edge in the atlas, as a fraction of its width
};

struct Font {
  static constexpr int kPixels = 96;  ///< height at which glyphs are rasterised

  FT_Face face = nullptr;
  std::array<Glyph, 128> glyphs{};  ///< by character code
  GLuint atlasTexture = 0;          ///< alpha only, first row at v = 0; up to a half of it is the rim round the ink
  GLuint vertexBuffer = 0;          ///< filled anew by every text drawn
  GLuint vertexArray = 0;
  int atlasHeight = 0;  ///< pixels
  int atlasWidth = 0;
};

/// Position in pixels of the text, and place in the atlas.
struct TextVertex {
  float x, y, z, u, v;
};

/// FreeType with a limit on what a file's numbers can make it allocate; null when it cannot be had.
FT_Library OpenFontLibrary();
/// After all its fonts are freed. Null is nothing to do.
void CloseFontLibrary(FT_Library library);

/// Rasterises the codes 32 to 127 of a font in Texture/Fonts/. What fails is printed; a file that is missing, or has no
/// ink for any of them, gives a font that shows nothing, and so does an atlas larger than the context takes.
Font LoadFontFile(FT_Library library, const std::string& name);
/// The same from an open face, which the font owns from then on; null for none. `name` is for messages.
Font RasteriseFont(FT_Face face, const std::string& name);
/// Frees what the font holds and empties it.
void FreeFont(Font& font);

/// The rectangles of a line of text as triangles, in the units of the glyphs: the baseline at y 0, the line centred on
/// x 0. Bytes without a glyph are skipped; at most kMaxTextBytes are laid out. Replaces what `vertices` holds.
void LayOutText(const Font& font, std::string_view text, std::vector<TextVertex>& vertices);
inline constexpr std::size_t kMaxTextBytes = 4096;
