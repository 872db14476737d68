#include "editor/stage/outlines.h"

#include <algorithm>
#include <glm/gtc/type_ptr.hpp>

#include "graphics/camera.h"
#include "graphics/viewport.h"

StageView::StageView(int windowWidth, int windowHeight) {
  const Camera* camera = GetMainCamera();
  if (camera == nullptr || windowWidth <= 0 || windowHeight <= 0) return;
  const glm::mat4 toClip = camera->GetProjection() * camera->GetView();
  std::copy_n(glm::value_ptr(toClip), toClip_.size(), toClip_.begin());
  const Viewport view = FitViewport(windowWidth, windowHeight);
  left_ = static_cast<float>(view.x);
  top_ = static_cast<float>(windowHeight - view.y - view.height);
  width_ = static_cast<float>(view.width);
  height_ = static_cast<float>(view.height);
  usable_ = true;
}

bool StageView::See(const Vec3& point, std::array<float, 2>& pixel) const {
  if (!usable_) return false;
  const glm::vec4 clip = glm::make_mat4(toClip_.data()) * glm::vec4(point.x, point.y, point.z, 1.0f);
  if (!(clip.w > 0.0f)) return false;
  pixel = {left_ + (clip.x / clip.w + 1.0f) / 2.0f * width_, top_ + (1.0f - clip.y / clip.w) / 2.0f * height_};
  return true;
}

std::array<float, 2> StageView::Pixel(const Vec3& point) const {
  std::array<float, 2> pixel = {-1.0f, -1.0f};
  See(point, pixel);
  return pixel;
}

StageLine StageView::Line(const std::vector<Vec3>& points, StageLine::Ink ink, bool closed) const {
  StageLine line{{}, ink, closed};
  for (const Vec3& point : points) {
    std::array<float, 2> pixel;
    if (!See(point, pixel)) return {};
    line.points.push_back(pixel);
  }
  return line;
}

Bounds StageView::GetPicture() const { return {left_, left_ + width_, top_, top_ + height_}; }
