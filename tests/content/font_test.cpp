// The built font as the game rasterises it: 96 pixels high, character by character, with the loader's default flags.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr int kHeight = 96;
constexpr unsigned char kFirst = 32;
constexpr unsigned char kLast = 126;

struct Raster {
  long advance = 0;  // pixels
  long advanceFraction = 0;
  int width = 0, rows = 0, left = 0, top = 0;
  std::vector<unsigned char> alpha;  // rows of `width` bytes

  int At(int x, int y) const {
    const int column = x - left;
    const int row = top - y;
    return column < 0 || column >= width || row < 0 || row >= rows ? 0
                                                                   : alpha[static_cast<size_t>(row * width + column)];
  }
  long Ink() const {
    long sum = 0;
    for (const unsigned char value : alpha) sum += value;
    return sum / 255;
  }
};

class FontFile : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(FT_Init_FreeType(&library_), 0);
    ASSERT_EQ(FT_New_Face(library_, BRINEWHIRL_BUILD_DIR "/Texture/Fonts/OctoBubble.ttf", 0, &face_), 0);
    ASSERT_EQ(FT_Set_Pixel_Sizes(face_, 0, kHeight), 0);
  }
  void TearDown() override {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
  }

  Raster Load(unsigned char code, int flags = FT_LOAD_RENDER) const {
    Raster raster;
    EXPECT_EQ(FT_Load_Char(face_, code, flags), 0) << code;
    const FT_GlyphSlot slot = face_->glyph;
    raster.advance = slot->advance.x >> 6;
    raster.advanceFraction = slot->advance.x & 63;
    raster.width = static_cast<int>(slot->bitmap.width);
    raster.rows = static_cast<int>(slot->bitmap.rows);
    raster.left = slot->bitmap_left;
    raster.top = slot->bitmap_top;
    for (int row = 0; row < raster.rows; ++row) {
      const unsigned char* bytes = slot->bitmap.buffer + row * slot->bitmap.pitch;
      raster.alpha.insert(raster.alpha.end(), bytes, bytes + raster.width);
    }
    return raster;
  }

  long Width(const std::string& text) const {
    long width = 0;
    for (const char c : text) width += Load(static_cast<unsigned char>(c)).advance;
    return width;
  }

  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
};

// Pixels that differ, as a share of the ink of the smaller glyph, both standing at the left edge of their ink.
double Difference(const Raster& a, const Raster& b) {
  long differing = 0;
  for (int y = -30; y < kHeight; ++y) {
    for (int x = 0; x < std::max(a.width, b.width); ++x) {
      differing += std::abs(a.At(a.left + x, y) - b.At(b.left + x, y));
    }
  }
  return static_cast<double>(differing) / 255.0 / static_cast<double>(std::min(a.Ink(), b.Ink()));
}

TEST_F(FontFile, DrawsEveryCharacterInsideItsAdvance) {
  for (unsigned char code = kFirst; code <= kLast; ++code) {
    SCOPED_TRACE(std::string("character ") + static_cast<char>(code));
    ASSERT_NE(FT_Get_Char_Index(face_, code), 0u);
    const Raster raster = Load(code);
    EXPECT_GT(raster.advance, 0);
    EXPECT_EQ(raster.advanceFraction, 0);
    if (code == ' ') {
      EXPECT_EQ(raster.width, 0);
      continue;
    }
    EXPECT_GT(raster.Ink(), 100);
    EXPECT_GE(raster.left, 0);
    EXPECT_LE(raster.left + raster.width, raster.advance + 1);
    EXPECT_LE(raster.top, 80);
    EXPECT_LE(raster.rows - raster.top, 22);
  }
}

TEST_F(FontFile, KeepsToTheWidthsThatLabelsAndTitlesHaveRoomFor) {
  const std::string label = "Yellow Score: 999";
  EXPECT_LE(Width(label), 36 * static_cast<long>(label.size()));
  for (const std::string title : {"Lord of the Beach Ball", "Steal the Crown!", "Collect the Rings"}) {
    EXPECT_LE(Width(title), 36 * static_cast<long>(title.size())) << title;
  }
  std::string all;
  for (unsigned char code = kFirst; code <= kLast; ++code) all += static_cast<char>(code);
  EXPECT_LE(Width(all), 36 * static_cast<long>(all.size()));
  const long digit = Load('0').advance;
  for (unsigned char code = '1'; code <= '9'; ++code) EXPECT_EQ(Load(code).advance, digit) << code;
}

// One row of all bitmaps, as the atlas holds them, fits the smallest texture limit worth running on.
TEST_F(FontFile, FitsAnAtlasOfOneRow) {
  int width = 0;
  for (unsigned char code = kFirst; code <= kLast + 1; ++code) width += Load(code).width;
  EXPECT_LE(width, 4096);
}

TEST_F(FontFile, TellsLookAlikesApart) {
  for (const std::string group : {"Il1|!i", "O0Q", "S5s", "Z2z", "B8", "6G", "9g", "uv", ".,", ":;"}) {
    for (size_t i = 0; i < group.size(); ++i) {
      for (size_t j = i + 1; j < group.size(); ++j) {
        const double difference =
            Difference(Load(static_cast<unsigned char>(group[i])), Load(static_cast<unsigned char>(group[j])));
        EXPECT_GT(difference, 0.15) << group[i] << group[j];
      }
    }
  }
  EXPECT_GE(Load('O').width, Load('0').width + 8);
}

TEST_F(FontFile, LettersShareHeightsAndWeight) {
  const auto expectTop = [this](const std::string& letters, int top) {
    for (const char c : letters) EXPECT_NEAR(Load(static_cast<unsigned char>(c)).top, top, 1) << c;
  };
  expectTop("ABCDEFGHIJKLNOPQRSTUVXYZ0123456789bdfhkl", 72);
  expectTop("acegmnopqrsuvwxyz", 53);

  // Upright strokes, measured where a level line crosses one alone.
  const std::map<char, int> uprights = {{'I', 36}, {'T', 30}, {'l', 40}, {'i', 25}, {'1', 30},
                                        {'f', 25}, {'P', 12}, {'F', 12}, {'p', -8}};
  for (const auto& [letter, y] : uprights) {
    const Raster raster = Load(static_cast<unsigned char>(letter));
    long run = 0;
    for (int x = 0; x < raster.advance; ++x) run += raster.At(x, y);
    EXPECT_NEAR(static_cast<double>(run) / 255.0, 13.0, 0.6) << letter;
  }
}

// FreeType hints a font by guess unless its tables keep it from it; guessed stems would make the weight uneven.
TEST_F(FontFile, IsShownAsDrawn) {
  for (const char letter : std::string("Hamburg8&@")) {
    const auto code = static_cast<unsigned char>(letter);
    EXPECT_EQ(Load(code).alpha, Load(code, FT_LOAD_RENDER | FT_LOAD_NO_HINTING).alpha) << code;
  }
}

// Rasterisers fill by the winding number: contours that overlap or run the wrong way show as holes or blots.
TEST_F(FontFile, OutlinesRunTheRightWay) {
  for (unsigned char code = kFirst + 1; code <= kLast; ++code) {
    ASSERT_EQ(FT_Load_Char(face_, code, FT_LOAD_NO_HINTING), 0);
    EXPECT_EQ(FT_Outline_Get_Orientation(&face_->glyph->outline), FT_ORIENTATION_TRUETYPE) << code;
  }
  const std::map<char, std::vector<int>> holes = {{'O', {20, 36}}, {'o', {20, 26}}, {'0', {20, 36}}, {'d', {20, 26}}};
  for (const auto& [letter, point] : holes) {
    EXPECT_EQ(Load(static_cast<unsigned char>(letter)).At(point[0], point[1]), 0) << letter;
  }
}

}  // namespace
