#include "tools/film/camera_crew.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "graphics/renderer.h"

void CameraCrew::BeginFrame(int frame) {
  if (moments_ != nullptr) moments_->BeginFrame(frame);
  GetRenderer().SetDrawing(moments_ != nullptr ? moments_->IsDue() : schedule_.IsFilmed(frame));
  frameStart_ = Clock::now();
}

void CameraCrew::EndFrame(int frame) {
  if (GetRenderer().IsDrawing()) TakePicture(frame);
  if (sound_) {
    // Silence between is rendered too: the mixer's clock goes with the run.
    Audio::Render(stereo_);
    if (frame >= schedule_.from && frame <= schedule_.to) output_->AddSound(stereo_);
  }
  progress_.Show(frame + 1);
  // With video SDL turns the signals that end a program into this request.
  if (SDL_QuitRequested()) interrupted_ = true;
  if (interrupted_ || (output_ != nullptr && !output_->GetError().empty())) GetPlatform().running = false;
}

void CameraCrew::TakePicture(int frame) {
  gl::Finish();
  times_.push_back(std::chrono::duration<double, std::milli>(Clock::now() - frameStart_).count());
  if (output_ == nullptr) return;
  WindowPixels pixels{lens_.width, lens_.height, lens_.scale, {}};
  const int width = lens_.width * lens_.scale;
  const int height = lens_.height * lens_.scale;
  pixels.rgba.resize(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  gl::ReadWindow(width, height, pixels.rgba.data());
  if (moments_ != nullptr) {
    for (const std::string& name : moments_->TakeDue()) output_->AddPicture(name, pixels);
    return;
  }
  char name[16];
  std::snprintf(name, sizeof name, "%06d", frame);
  output_->AddPicture(name, std::move(pixels));
}

double CameraCrew::TimeOf(double share) const {
  if (times_.empty()) return 0.0;
  std::vector<double> sorted = times_;
  std::sort(sorted.begin(), sorted.end());
  return sorted[std::min(sorted.size() - 1, static_cast<std::size_t>(share * static_cast<double>(sorted.size())))];
}
