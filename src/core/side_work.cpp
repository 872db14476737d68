#include "core/side_work.h"

#include <thread>
#include <utility>

struct SideWork::State {
  std::jthread thread;
};

SideWork::SideWork() = default;
SideWork::~SideWork() = default;

void SideWork::Start(Slice slice) {
  Finish();
  state_ = std::make_unique<State>();
  state_->thread = std::jthread([slice = std::move(slice)] {
    while (!slice()) {
    }
  });
}

void SideWork::Update() {}
void SideWork::Finish() { state_.reset(); }
