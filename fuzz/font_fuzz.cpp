// libFuzzer target: any bytes as a font file. It is rasterised as the renderer does, without a GL context, and a text
// is laid out. Whatever the bytes hold, the program must neither crash nor hang nor ask for memory out of proportion.
//
//   font_fuzz -max_len=16384 -timeout=10 -rss_limit_mb=512 -malloc_limit_mb=128 CORPUS_FOLDER...
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "core/print.h"
#include "graphics/font.h"

namespace {

FT_Library Library() {
  static const FT_Library library = OpenFontLibrary();
  return library;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  SetPrintTarget(std::fopen("/dev/null", "w"));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FT_Face face = nullptr;
  if (FT_New_Memory_Face(Library(), data, static_cast<FT_Long>(size), 0, &face) != 0) return 0;
  Font font = RasteriseFont(face, "font");
  std::vector<TextVertex> vertices;
  LayOutText(font, "The quick brown fox, 0123456789!", vertices);
  FreeFont(font);
  return 0;
}
