#include "graphics/font.h"

#include FT_MODULE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "core/data_place.h"
#include "core/print.h"

namespace {

constexpr char kFolder[] = "Texture/Fonts/";
constexpr char kNotLoaded[] = "Error trying to load a new font.\n";
// A compressed font names the size that it will have: a kilobyte of file could ask for gigabytes.
constexpr long kMaxBlock = 64L * 1024 * 1024;
constexpr FT_ULong kFirstCode = 32;
constexpr FT_ULong kLastCode = 127;
// A damaged font can ask for a bitmap of any size; a sound glyph is about as large as the font.
constexpr FT_Pos kMaxGlyphSide = FT_Pos{8} * Font::kPixels;
constexpr int kFixedPoint = 6;  // FreeType's 26.6 numbers
// The rim of paper that the text shader lays round the ink is made here, once for each glyph: looking for ink around
// every pixel of every frame cost more than all else that is drawn.
constexpr float kRim = 4.5f;  // pixels
// Empty pixels around every bitmap: filtering reaches half a pixel beyond the rim, where the neighbour would show.
constexpr int kMargin = 5;

void* Allocate(FT_Memory /*memory*/, long size) {
  return size <= kMaxBlock ? std::malloc(static_cast<std::size_t>(size)) : nullptr;
}

void Free(FT_Memory /*memory*/, void* block) { std::free(block); }

void* Resize(FT_Memory /*memory*/, long /*size*/, long newSize, void* block) {
  return newSize <= kMaxBlock ? std::realloc(block, static_cast<std::size_t>(newSize)) : nullptr;
}

bool IsInProportion(const FT_GlyphSlotRec& slot) {
  const auto isSmall = [](FT_Pos fixed) { return std::abs(fixed >> kFixedPoint) <= kMaxGlyphSide; };
  return isSmall(slot.metrics.width) && isSmall(slot.metrics.height) && isSmall(slot.advance.x) &&
         isSmall(slot.advance.y);
}

// Rasterises one glyph into the face's slot; null when the font has none or it is out of all proportion.
const FT_GlyphSlotRec* Rasterise(FT_Face face, FT_ULong code) {
  if (face == nullptr || FT_Load_Char(face, code, FT_LOAD_DEFAULT) != 0) return nullptr;
  FT_GlyphSlot slot = face->glyph;
  if (!IsInProportion(*slot) || FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0) return nullptr;
  const bool gray = slot->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && slot->bitmap.pitch >= 0;
  return gray || slot->bitmap.rows == 0 ? slot : nullptr;
}

// Sides of a bitmap in the atlas, with its margin; 0 for a glyph without ink.
int WidthOf(const FT_Bitmap& bitmap) { return bitmap.width == 0 ? 0 : static_cast<int>(bitmap.width) + 2 * kMargin; }
int RowsOf(const FT_Bitmap& bitmap) { return bitmap.rows == 0 ? 0 : static_cast<int>(bitmap.rows) + 2 * kMargin; }

void MeasureAtlas(Font& font) {
  for (FT_ULong code = kFirstCode; code <= kLastCode; ++code) {
    if (const FT_GlyphSlotRec* slot = Rasterise(font.face, code)) {
      font.atlasWidth += WidthOf(slot->bitmap);
      font.atlasHeight = std::max(font.atlasHeight, RowsOf(slot->bitmap));
    } else {
      Print("Error loading %c\n", static_cast<char>(code));
    }
  }
}

bool AtlasFits(const Font& font, const std::string& name) {
  const int limit = gl::HasContext() ? gl::MaxTextureSize() : std::max(font.atlasWidth, font.atlasHeight);
  if (font.atlasWidth <= limit && font.atlasHeight <= limit) return true;
  Print("%s: its glyphs take %d x %d pixels, the graphics driver allows %d\n", name.c_str(), font.atlasWidth,
        font.atlasHeight, limit);
  return false;
}

using Pixels = std::vector<unsigned char>;

void TakeGreater(unsigned char* to, const unsigned char* from, int count) {
  std::transform(from, from + count, to, to, [](unsigned char a, unsigned char b) { return std::max(a, b); });
}

// Of each pixel of a row the greatest ink within 0, 1, ... pixels beside it, with the margin.
using Widened = std::array<Pixels, static_cast<std::size_t>(kRim) + 1>;
void Widen(const unsigned char* ink, int columns, Widened& widened) {
  const std::size_t width = widened[0].size();
  std::fill(widened[0].begin(), widened[0].end(), static_cast<unsigned char>(0));
  std::copy(ink, ink + columns, widened[0].begin() + kMargin);
  for (std::size_t side = 1; side < widened.size(); ++side) {
    const int inner = static_cast<int>(width) - 2;
    const unsigned char* narrower = widened[side - 1].data();
    widened[side] = widened[side - 1];
    TakeGreater(widened[side].data() + 1, narrower, inner);
    TakeGreater(widened[side].data() + 1, narrower + 2, inner);
  }
}

// With the margin, row by row: half the ink's coverage, and half of the greatest one within the rim of each pixel.
// Where there is ink the rim is whole, so the shader can tell one from the other.
Pixels WithRim(const FT_Bitmap& bitmap) {
  const int width = WidthOf(bitmap);
  Pixels pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(RowsOf(bitmap)));
  const auto inkOf = [&](int row) { return bitmap.buffer + std::ptrdiff_t{row} * bitmap.pitch; };
  const auto rowAt = [&](int row) { return pixels.data() + std::ptrdiff_t{row + kMargin} * width; };
  const int rows = static_cast<int>(bitmap.rows);
  const int columns = static_cast<int>(bitmap.width);
  const int reach = static_cast<int>(kRim);
  Widened widened;
  widened.fill(Pixels(static_cast<std::size_t>(width)));
  for (int row = 0; row < rows; ++row) {
    Widen(inkOf(row), columns, widened);
    for (int dy = -reach; dy <= reach; ++dy) {
      const auto side = static_cast<std::size_t>(std::sqrt(kRim * kRim - static_cast<float>(dy * dy)));
      TakeGreater(rowAt(row + dy), widened[side].data(), width);
    }
  }
  for (unsigned char& pixel : pixels) pixel = static_cast<unsigned char>((pixel + 1) / 2);
  for (int row = 0; row < rows; ++row)
    for (int x = 0; x < columns; ++x)
      rowAt(row)[kMargin + x] = static_cast<unsigned char>(rowAt(row)[kMargin + x] + inkOf(row)[x] / 2);
  return pixels;
}

// Glyphs stand side by side in an atlas that starts empty.
void FillAtlas(Font& font) {
  font.atlasTexture = gl::GenTexture();
  gl::BindTexture(font.atlasTexture);
  const std::vector<unsigned char> empty(static_cast<std::size_t>(font.atlasWidth) *
                                         static_cast<std::size_t>(font.atlasHeight));
  gl::TexImageAlpha(font.atlasWidth, font.atlasHeight, empty.data());
  gl::SetSmoothClamped();
  int penX = 0;
  for (FT_ULong code = kFirstCode; code <= kLastCode; ++code) {
    const FT_GlyphSlotRec* slot = Rasterise(font.face, code);
    if (slot == nullptr) continue;
    const FT_Bitmap& bitmap = slot->bitmap;
    Glyph& glyph = font.glyphs[code];
    glyph.advanceX = static_cast<float>(slot->advance.x >> kFixedPoint);
    glyph.advanceY = static_cast<float>(slot->advance.y >> kFixedPoint);
    if (WidthOf(bitmap) == 0 || RowsOf(bitmap) == 0) continue;
    glyph.width = static_cast<float>(WidthOf(bitmap));
    glyph.rows = static_cast<float>(RowsOf(bitmap));
    glyph.left = static_cast<float>(slot->bitmap_left - kMargin);
    glyph.top = static_cast<float>(slot->bitmap_top + kMargin);
    glyph.atlasU = static_cast<float>(penX) / static_cast<float>(font.atlasWidth);
    if (gl::HasContext())
      gl::AlphaSubImage(penX, 0, WidthOf(bitmap), RowsOf(bitmap), WidthOf(bitmap), WithRim(bitmap).data());
    penX += WidthOf(bitmap);
  }
  gl::BindTexture(0);
}

void BuildVertexArray(Font& font) {
  font.vertexArray = gl::GenVertexArray({&font.vertexBuffer});
  gl::BindVertexArray(font.vertexArray);
  gl::BindArrayBuffer(font.vertexBuffer);
  gl::FloatAttribute(0, 3, sizeof(TextVertex), offsetof(TextVertex, x));
  gl::FloatAttribute(1, 2, sizeof(TextVertex), offsetof(TextVertex, u));
  gl::BindVertexArray(0);
}

void AddRectangle(float left, float top, const Glyph& glyph, const Font& font, std::vector<TextVertex>& vertices) {
  const float right = left + glyph.width;
  const float bottom = top - glyph.rows;
  const float uRight = glyph.atlasU + glyph.width / static_cast<float>(font.atlasWidth);
  const float vBottom = glyph.rows / static_cast<float>(font.atlasHeight);
  const TextVertex topLeft = {left, top, 0.0f, glyph.atlasU, 0.0f};
  const TextVertex bottomRight = {right, bottom, 0.0f, uRight, vBottom};
  vertices.insert(vertices.end(), {topLeft,
                                   {left, bottom, 0.0f, glyph.atlasU, vBottom},
                                   bottomRight,
                                   topLeft,
                                   bottomRight,
                                   {right, top, 0.0f, uRight, 0.0f}});
}

}  // namespace

FT_Library OpenFontLibrary() {
  static FT_MemoryRec_ memory = {nullptr, Allocate, Free, Resize};
  FT_Library library = nullptr;
  if (FT_New_Library(&memory, &library) != 0) return nullptr;
  FT_Add_Default_Modules(library);
  FT_Set_Default_Properties(library);
  return library;
}

void CloseFontLibrary(FT_Library library) {
  if (library != nullptr) FT_Done_Library(library);
}

Font LoadFontFile(FT_Library library, const std::string& name) {
  FT_Face face = nullptr;
  if (FT_New_Face(library, FindData(kFolder + name).c_str(), 0, &face) != 0) face = nullptr;
  return RasteriseFont(face, name);
}

Font RasteriseFont(FT_Face face, const std::string& name) {
  Font font;
  font.face = face;
  if (face == nullptr) Print(kNotLoaded);
  if (face != nullptr) FT_Set_Pixel_Sizes(face, 0, Font::kPixels);
  MeasureAtlas(font);
  // A file that was cut opens as long as its tables' list is there, and its glyphs are all empty.
  if (face != nullptr && font.atlasWidth == 0) Print(kNotLoaded);
  if (!AtlasFits(font, name)) {
    FreeFont(font);
    return font;
  }
  FillAtlas(font);
  BuildVertexArray(font);
  return font;
}

void FreeFont(Font& font) {
  if (font.vertexArray != 0) gl::DeleteVertexArray(font.vertexArray);
  if (font.vertexBuffer != 0) gl::DeleteBuffer(font.vertexBuffer);
  if (font.atlasTexture != 0) gl::DeleteTexture(font.atlasTexture);
  if (font.face != nullptr) FT_Done_Face(font.face);
  font = {};
}

void LayOutText(const Font& font, std::string_view text, std::vector<TextVertex>& vertices) {
  vertices.clear();
  int penX = 0;
  int penY = 0;
  vertices.reserve(6 * std::min(text.size(), kMaxTextBytes));
  for (const char byte : text.substr(0, kMaxTextBytes)) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= font.glyphs.size()) continue;
    const Glyph& glyph = font.glyphs[code];
    const float left = static_cast<float>(penX) + glyph.left;
    const float top = static_cast<float>(penY) + glyph.top;
    penX += static_cast<int>(glyph.advanceX);
    penY += static_cast<int>(glyph.advanceY);
    if (glyph.width > 0.0f && glyph.rows > 0.0f) AddRectangle(left, top, glyph, font, vertices);
  }
  const float middleX = static_cast<float>(penX) / 2.0f;
  const float middleY = static_cast<float>(penY) / 2.0f;
  for (TextVertex& vertex : vertices) {
    vertex.x -= middleX;
    vertex.y -= middleY;
  }
}
