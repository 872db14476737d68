#include <algorithm>
#include <filesystem>

#include "core/random.h"
#include "core/world_fixture.h"
#include "folders.h"
#include "graphics/renderer.h"

namespace {

const std::string kFont = "OctoBubble.ttf";

// Two letters and a space, every measure a different number.
Font LetterFont() {
  Font font;
  font.glyphs['A'] = {.advanceX = 20, .width = 16, .rows = 30, .left = 2, .top = 28, .atlasU = 0.0f};
  font.glyphs['B'] = {.advanceX = 31, .width = 24, .rows = 40, .left = 3, .top = 35, .atlasU = 0.4f};
  font.glyphs[' '] = {.advanceX = 10};
  font.atlasWidth = 40;
  font.atlasHeight = 40;
  return font;
}

std::vector<TextVertex> LayOut(const Font& font, std::string_view text) {
  std::vector<TextVertex> vertices(3);  // what was there before goes
  LayOutText(font, text, vertices);
  return vertices;
}

class FontTest : public WorldFixture {
 protected:
  FontTest() { GetRenderer().Init(); }
  ~FontTest() override { GetRenderer().Shutdown(); }
  const Font& Load() {
    world.ClearText();
    GetRenderer().LoadFont(kFont);
    return GetRenderer().GetFont(kFont);
  }
};

}  // namespace

TEST(LayOutText, CentresTheLineAndHangsGlyphsFromTheirTops) {
  const auto vertices = LayOut(LetterFont(), "AB");
  ASSERT_EQ(vertices.size(), 12u);
  const auto [left, right] =
      std::minmax_element(vertices.begin(), vertices.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
  EXPECT_FLOAT_EQ(left->x, 2.0f - 25.5f);  // half of 20 + 31, not rounded
  EXPECT_FLOAT_EQ(right->x, 20.0f + 3.0f + 24.0f - 25.5f);
  const TextVertex& first = vertices[6];  // upper left of the B
  EXPECT_FLOAT_EQ(first.y, 35.0f);
  EXPECT_FLOAT_EQ(first.u, 0.4f);
  EXPECT_FLOAT_EQ(first.v, 0.0f);
  const TextVertex& last = vertices[8];  // lower right
  EXPECT_FLOAT_EQ(last.y, -5.0f);
  EXPECT_FLOAT_EQ(last.u, 0.4f + 24.0f / 40.0f);
  EXPECT_FLOAT_EQ(last.v, 1.0f);
}

// Bytes above 127 are negative in a char and no index; control characters have no width; nothing has no end.
TEST(LayOutText, SkipsWhatHasNoGlyph) {
  const Font font = LetterFont();
  EXPECT_TRUE(LayOut(font, "").empty());
  EXPECT_TRUE(LayOut(font, "  ").empty());
  EXPECT_FLOAT_EQ(LayOut(font, "A ")[0].x, 2.0f - 15.0f);
  EXPECT_EQ(LayOut(font, "A\xff\x80\xc3\x01\n").size(), 6u);
  EXPECT_EQ(LayOut(font, std::string(100000, 'A')).size(), 6u * kMaxTextBytes);
  EXPECT_TRUE(LayOut(Font{}, "AB").empty());
}

// A cut or damaged file gives messages and a font with fewer glyphs or none, whatever the place of the cut.
TEST_F(FontTest, ASpoiledFileIsToldAndHarmless) {
  const std::string path = "Texture/Fonts/" + kFont;
  const Font& none = Load();
  EXPECT_TRUE(world.text().starts_with("Error trying to load a new font.\nError loading  \nError loading !\n"));
  EXPECT_EQ(Count(world.text(), "Error loading "), 96);
  EXPECT_TRUE(LayOut(none, "AB").empty());
  const auto tryFile = [&](const std::string& bytes) {
    world.WriteFile(path, bytes);
    const Font& font = Load();
    EXPECT_LE(font.atlasWidth, 96 * 1024);
    LayOut(font, "The quick brown fox");
  };
  std::filesystem::create_directories("Texture/Fonts");
  const std::string whole = world.ReadFile(BuildFolder() + "/" + path);
  ASSERT_FALSE(whole.empty());
  for (std::size_t part = 1; part < 15; ++part) {  // the last tables hold no outlines
    tryFile(whole.substr(0, whole.size() * part / 16));
    EXPECT_TRUE(world.text().starts_with("Error trying to load a new font.\n")) << part;
  }
  for (int damage = 0; damage < 100; ++damage) {
    std::string bytes = whole;
    for (int i = 0; i < 20; ++i) bytes[static_cast<std::size_t>(Random()) % bytes.size()] = static_cast<char>(Random());
    tryFile(bytes);
  }
}
