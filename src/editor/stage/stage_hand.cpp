#include "editor/stage/stage_hand.h"

#include <algorithm>
#include <cmath>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/stage/ties.h"

namespace {

using Ink = StageLine::Ink;

constexpr int kRingFrames = 90;
constexpr float kRingReach = 4.0f;    // world units from the object at first
constexpr float kGridWidth = 20.0f;   // world units each way from the middle that the grid covers
constexpr float kGridHeight = 11.5f;  // what the camera sees and a little more
constexpr float kMarkSize = 7.0f;     // pixels
constexpr float kMarkInset = 12.0f;   // pixels from the picture's edge

void DrawGrid(const StageView& view, float step, std::vector<StageLine>& lines) {
  if (!(step > 0.0f)) return;
  const auto count = [step](float reach) { return static_cast<int>(reach / step); };
  for (int i = -count(kGridWidth); i <= count(kGridWidth); ++i) {
    const float x = static_cast<float>(i) * step;
    lines.push_back(view.Line({{x, -kGridHeight, 0.0f}, {x, kGridHeight, 0.0f}}, Ink::kGrid, false));
  }
  for (int i = -count(kGridHeight); i <= count(kGridHeight); ++i) {
    const float y = static_cast<float>(i) * step;
    lines.push_back(view.Line({{-kGridWidth, y, 0.0f}, {kGridWidth, y, 0.0f}}, Ink::kGrid, false));
  }
}

// A small square at the edge, on the way to what lies outside. The bars mostly cover the edge.
void DrawMark(const StageView& view, const GameObject& object, std::vector<StageLine>& lines) {
  const Bounds picture = view.GetPicture();
  const auto at = view.Pixel(object.GetTransform().position);
  if (!std::isfinite(at[0]) || !std::isfinite(at[1])) return;
  if (at[0] >= picture.left && at[0] <= picture.right && at[1] >= picture.bottom && at[1] <= picture.top) return;
  const float x = std::clamp(at[0], picture.left + kMarkInset, picture.right - kMarkInset);
  const float y = std::clamp(at[1], picture.bottom + kMarkInset, picture.top - kMarkInset);
  StageLine mark{{}, Ink::kPicked, true, true};
  mark.above = true;
  mark.points = {{x - kMarkSize, y}, {x, y - kMarkSize}, {x + kMarkSize, y}, {x, y + kMarkSize}};
  lines.push_back(std::move(mark));
}

}  // namespace

bool StageHand::Release() {
  if (!handles_.IsPulling()) return false;
  handles_.Release();
  return true;
}

void StageHand::Update(History& history) {
  ringFrames_ = std::max(0, ringFrames_ - 1);
  handles_.Update(history, grid);
  drag_.Update(history, grid);
  frame_.Update(handles_.IsPulling() || drag_.IsHolding());
}

void StageHand::Stop(History& history) {
  handles_.Stop(history);
  drag_.Stop(history);
  frame_.Stop();
}

void StageHand::Ring(std::uint32_t objectId) {
  ringed_ = objectId;
  ringFrames_ = kRingFrames;
}

std::vector<StageLine> StageHand::Draw(const StageView& view, const std::vector<std::uint32_t>& marked) const {
  std::vector<StageLine> lines;
  DrawGrid(view, grid.step, lines);
  DrawTies(view, lines);
  for (const GameObject* object : SelectedObjects()) lines.push_back(view.Line(ShapeOf(*object), Ink::kPicked));
  handles_.Draw(view, lines);
  if (const auto frame = frame_.GetFrame()) {
    const std::vector<Vec3> corners = {{frame->left, frame->bottom, 0.0f},
                                       {frame->right, frame->bottom, 0.0f},
                                       {frame->right, frame->top, 0.0f},
                                       {frame->left, frame->top, 0.0f}};
    lines.push_back(view.Line(corners, Ink::kMark));
  }
  for (const std::uint32_t id : marked)
    if (const GameObject* object = Objects().GetObject(id)) DrawMark(view, *object, lines);
  const GameObject* ringed = ringFrames_ > 0 ? Objects().GetObject(ringed_) : nullptr;
  if (ringed == nullptr) return lines;
  const float reach = kRingReach * static_cast<float>(ringFrames_) / static_cast<float>(kRingFrames);
  std::vector<Vec3> ring = CirclePoints(1.0f + reach);
  for (Vec3& point : ring) point += ringed->GetTransform().position;
  lines.push_back(view.Line(ring, Ink::kPicked));
  return lines;
}
