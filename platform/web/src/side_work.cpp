// A page of a plain server may not have threads.
#include "core/side_work.h"

#include <utility>

struct SideWork::State {
  Slice slice;
};

SideWork::SideWork() = default;
SideWork::~SideWork() { Finish(); }

void SideWork::Start(Slice slice) {
  Finish();
  state_ = std::make_unique<State>(State{std::move(slice)});
}

void SideWork::Update() {
  if (state_ && state_->slice()) state_.reset();
}

void SideWork::Finish() {
  while (state_) Update();
}
