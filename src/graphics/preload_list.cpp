#include "graphics/preload_list.h"

#include <string>

#include "graphics/renderer.h"

namespace {

constexpr char kFont[] = "OctoBubble.ttf";

std::size_t assetIndex = 0;  // over the fonts as long as fontPhase is true, then over the pictures
bool fontPhase = true;

// Beyond the renderer's own: for sprites of levels that name it.
void LoadSpritePrograms() {
  GetRenderer().CreateProgram("underquay", "dvert.glsl", "underquay_frag.glsl");
  GetRenderer().CreateProgram("overhead", "dvert.glsl", "overhead_frag.glsl");
}

}  // namespace

bool LoadNextAsset() {
  if (fontPhase) {
    fontPhase = assetIndex == 0;
    assetIndex = fontPhase ? 1 : 0;
    if (fontPhase) GetRenderer().LoadFont(kFont);
    return false;
  }
  if (assetIndex >= kPreloadedImages.size()) return true;
  GetRenderer().LoadTexture(std::string(kPreloadedImages[assetIndex++]));
  if (assetIndex == kPreloadedImages.size()) LoadSpritePrograms();
  return false;
}

void ResetPreload() {
  assetIndex = 0;
  fontPhase = true;
}
