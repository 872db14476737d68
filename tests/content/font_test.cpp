// The built font as the game rasterises it: 96 pixels high, character by character, with the loader's default flags.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "folders.h"

namespace {

constexpr int kHeight = 96;
constexpr char kFirst = 32;
constexpr char kLast = 126;

struct Raster {
  long advance = 0;  // 1/64 pixels
  int width = 0, rows = 0, left = 0, top = 0;
  std::vector<unsigned char> alpha;  // rows of `width` bytes

  int At(int x, int y) const {
    const int column = x - left;
    const int row = top - y;
    const bool inside = column >= 0 && column < width && row >= 0 && row < rows;
    return inside ? alpha[static_cast<size_t>(row * width + column)] : 0;
  }
  long Ink() const { return std::accumulate(alpha.begin(), alpha.end(), 0L) / 255; }
};

class FontFile : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(FT_Init_FreeType(&library_), 0);
    ASSERT_EQ(FT_New_Face(library_, (BuildFolder() + "/Texture/Fonts/OctoBubble.ttf").c_str(), 0, &face_), 0);
    ASSERT_EQ(FT_Set_Pixel_Sizes(face_, 0, kHeight), 0);
  }
  void TearDown() override {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
  }

  Raster Load(char code, int flags = FT_LOAD_RENDER) const {
    EXPECT_EQ(FT_Load_Char(face_, static_cast<unsigned char>(code), flags), 0) << code;
    const FT_GlyphSlot slot = face_->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    Raster raster = {slot->advance.x,
                     static_cast<int>(bitmap.width),
                     static_cast<int>(bitmap.rows),
                     slot->bitmap_left,
                     slot->bitmap_top,
                     {}};
    for (int row = 0; row < raster.rows; ++row) {
      const unsigned char* bytes = bitmap.buffer + row * bitmap.pitch;
      raster.alpha.insert(raster.alpha.end(), bytes, bytes + raster.width);
    }
    return raster;
  }

  long Width(const std::string& text) const {
    long width = 0;
    for (const char c : text) width += Load(c).advance / 64;
    return width;
  }

  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
};

// Pixels that differ, as a share of the ink of the smaller glyph, both standing at the left edge of their ink.
double Difference(const Raster& a, const Raster& b) {
  long differing = 0;
  for (int y = -30; y < kHeight; ++y)
    for (int x = 0; x < std::max(a.width, b.width); ++x)
      differing += std::abs(a.At(a.left + x, y) - b.At(b.left + x, y));
  return static_cast<double>(differing) / 255.0 / static_cast<double>(std::min(a.Ink(), b.Ink()));
}

// Rasterisers fill by the winding number: contours that overlap or run the wrong way show as holes or blots. One row of
// all bitmaps, as the atlas holds them, fits the smallest texture limit worth running on.
TEST_F(FontFile, DrawsEveryCharacterInsideItsAdvance) {
  EXPECT_EQ(Load(' ').width, 0);
  EXPECT_GT(Load(' ').advance, 0);
  int atlas = Load(char{kLast + 1}).width;
  for (char code = kFirst + 1; code <= kLast; ++code) {
    SCOPED_TRACE(std::string("character ") + code);
    ASSERT_NE(FT_Get_Char_Index(face_, static_cast<unsigned char>(code)), 0u);
    const Raster raster = Load(code);
    EXPECT_EQ(FT_Outline_Get_Orientation(&face_->glyph->outline), FT_ORIENTATION_TRUETYPE);
    EXPECT_EQ(raster.advance % 64, 0);
    EXPECT_GT(raster.Ink(), 100);
    EXPECT_GE(raster.left, 0);
    EXPECT_LE(raster.left + raster.width, raster.advance / 64 + 1);
    EXPECT_LE(raster.top, 80);
    EXPECT_LE(raster.rows - raster.top, 22);
    atlas += raster.width;
  }
  EXPECT_LE(atlas, 4096);
  for (const auto& [letter, y] : {std::pair{'O', 36}, {'o', 26}, {'0', 36}, {'d', 26}})
    EXPECT_EQ(Load(letter).At(20, y), 0) << letter << " has no hole";
}

TEST_F(FontFile, KeepsToTheWidthsThatLabelsAndTitlesHaveRoomFor) {
  std::string all;
  for (char code = kFirst; code <= kLast; ++code) all += code;
  for (const std::string& text : {all, std::string("Yellow Score: 999"), std::string("Lord of the Beach Ball"),
                                  std::string("Steal the Crown!"), std::string("Collect the Rings")})
    EXPECT_LE(Width(text), 36 * static_cast<long>(text.size())) << text;
  constexpr double kTitleScale = 0.03;
  constexpr double kViewWidth = 39.0;
  EXPECT_LT(kTitleScale * static_cast<double>(Width("Knock the barnacles off the whale!")), kViewWidth);
  for (const char digit : std::string("123456789")) EXPECT_EQ(Load(digit).advance, Load('0').advance) << digit;
}

TEST_F(FontFile, TellsLookAlikesApart) {
  for (const std::string group : {"Il1|!i", "O0Q", "S5s", "Z2z", "B8", "6G", "9g", "uv", ".,", ":;"})
    for (size_t i = 0; i < group.size(); ++i)
      for (size_t j = i + 1; j < group.size(); ++j)
        EXPECT_GT(Difference(Load(group[i]), Load(group[j])), 0.15) << group[i] << group[j];
  EXPECT_GE(Load('O').width, Load('0').width + 8);
}

TEST_F(FontFile, LettersShareHeightsAndWeight) {
  for (const char c : std::string("ABCDEFGHIJKLNOPQRSTUVXYZ0123456789bdfhkl")) EXPECT_NEAR(Load(c).top, 72, 1) << c;
  for (const char c : std::string("acegmnopqrsuvwxyz")) EXPECT_NEAR(Load(c).top, 53, 1) << c;
  // Upright strokes, measured where a level line crosses one alone.
  for (const auto& [letter, y] :
       {std::pair{'I', 36}, {'T', 30}, {'l', 40}, {'i', 25}, {'1', 30}, {'f', 25}, {'P', 12}, {'F', 12}, {'p', -8}}) {
    const Raster raster = Load(letter);
    int run = 0;
    for (int x = 0; x < raster.left + raster.width; ++x) run += raster.At(x, y);
    EXPECT_NEAR(run / 255.0, 13.0, 0.6) << letter;
  }
}

// FreeType hints a font by guess unless its tables keep it from it; guessed stems would make the weight uneven.
TEST_F(FontFile, IsShownAsDrawn) {
  for (const char letter : std::string("Hamburg8&@"))
    EXPECT_EQ(Load(letter).alpha, Load(letter, FT_LOAD_RENDER | FT_LOAD_NO_HINTING).alpha) << letter;
}

}  // namespace
