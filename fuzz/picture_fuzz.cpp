// libFuzzer target: any bytes as a picture file. Whatever they hold, the program must neither crash nor hang nor ask
// for memory out of proportion, and whoever only checks a picture must say the same as whoever shows it.
//
//   picture_fuzz -max_len=16384 -timeout=10 -rss_limit_mb=512 -malloc_limit_mb=128 CORPUS_FOLDER...
#include <cstddef>
#include <cstdint>

#include "graphics/picture.h"

namespace {

bool IsOpaque(const Picture& picture) {
  const std::size_t pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  for (std::size_t i = 0; i < pixels; ++i)
    if (picture.pixels[4 * i + 3] != 0xff) return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Picture shown;
  Picture checked;
  const bool ok = DecodePicture({data, size}, PictureUse::kPixels, shown);
  if (DecodePicture({data, size}, PictureUse::kCheck, checked) != ok) __builtin_trap();
  if (!ok) return 0;
  if (shown.width != checked.width || shown.height != checked.height) __builtin_trap();
  if (shown.opaque != IsOpaque(shown)) __builtin_trap();
  return 0;
}
