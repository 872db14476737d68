#include "graphics/picture_sheet.h"

#include <algorithm>

namespace {

constexpr int kSide = 2048;              // pixels, where the driver can take it
constexpr int kMostPixels = 160 * 1024;  // of a picture
constexpr int kRim = 1;                  // pixels round each
constexpr float kSlack = 1e-4f;          // of a picture: windows are sums of fractions, and the rim is wider

// Of `from` to where it belongs, and its outermost rows and columns once more round it.
void CopyWithRim(const Texture& from, int x, int y) {
  const int right = from.width - 1;
  const int top = from.height - 1;
  for (int row = -kRim; row <= kRim; ++row) {
    const int fromY = row > 0 ? top : 0;
    const int toY = row > 0 ? y + from.height : y + row;
    const int rows = row == 0 ? from.height : kRim;
    gl::CopyIntoTexture(x, toY, 0, fromY, from.width, rows);
    gl::CopyIntoTexture(x - kRim, toY, 0, fromY, kRim, rows);
    gl::CopyIntoTexture(x + from.width, toY, right, fromY, kRim, rows);
  }
}

}  // namespace

// Shelves from the bottom up; pictures come in the order of their heights.
bool PictureSheet::FindRoom(int width, int height, int& x, int& y) {
  if (shelfEnd_ + width > side_ || height > shelfHeight_) {
    const int next = shelfTop_ + shelfHeight_;
    if (width > side_ || next + height > side_) return false;
    shelfTop_ = next;
    shelfHeight_ = height;
    shelfEnd_ = 0;
  }
  x = shelfEnd_;
  y = shelfTop_;
  shelfEnd_ += width;
  return true;
}

void PictureSheet::Add(Texture& texture) {
  if (texture.width <= 0 || texture.height <= 0 || texture.width > kMostPixels / texture.height) return;
  if (sheet_ == 0) {
    side_ = std::min(kSide, gl::MaxTextureSize());
    sheet_ = gl::GenTexture();
    gl::BindTexture(sheet_);
    gl::TexImage(GL_RGBA, side_, side_, GL_RGBA, nullptr);
    gl::SetSmoothClamped();
  }
  int x = 0;
  int y = 0;
  if (!FindRoom(texture.width + 2 * kRim, texture.height + 2 * kRim, x, y)) return;
  const GLuint target = gl::GenFramebuffer();
  gl::BindFramebuffer(target);
  gl::AttachColour(texture.name);
  if (gl::FramebufferStatus() == GL_FRAMEBUFFER_COMPLETE) {
    gl::BindTexture(sheet_);
    CopyWithRim(texture, x + kRim, y + kRim);
    const auto side = static_cast<float>(side_);
    texture.place = {static_cast<float>(texture.width) / side, static_cast<float>(texture.height) / side,
                     static_cast<float>(x + kRim) / side, static_cast<float>(y + kRim) / side};
    texture.onSheet = true;
  }
  gl::BindFramebuffer(0);
  gl::DeleteFramebuffer(target);
}

void PictureSheet::Delete() {
  if (sheet_ != 0) gl::DeleteTexture(sheet_);
  *this = PictureSheet{};
}

bool PictureSheet::Shows(const Texture& texture, const Window& window) const {
  const auto within = [](float from, float to) {
    return std::min(from, to) >= -kSlack && std::max(from, to) <= 1 + kSlack;
  };
  return texture.onSheet && within(window[2], window[2] + window[0]) && within(window[3], window[3] + window[1]);
}

PictureSheet::Window PictureSheet::Within(const Texture& texture, const Window& window) {
  const Window& place = texture.place;
  return {window[0] * place[0], window[1] * place[1], place[2] + window[2] * place[0], place[3] + window[3] * place[1]};
}
