#include "core/side_work.h"

#include <system_error>
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
  const auto work = [slice = std::move(slice)] {
    while (!slice()) {
    }
  };
  try {
    state_->thread = std::jthread(work);
  } catch (const std::system_error&) {
    work();  // without a thread the frames wait for it
  }
}

void SideWork::Update() {}
void SideWork::Finish() { state_.reset(); }
