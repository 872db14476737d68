// Why pictures that fields name are not seen. The disk is asked once a second at most, and a file is read again only
// when it has changed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "editor/bars/tweak_bar.h"

class PictureFaults {
 public:
  /// Once a frame.
  void Update() { ++frame_; }
  /// Gives the bar's variables that name a picture which is not loaded a line that says why.
  void Tell(TweakBar& bar);
  /// What is wrong with the picture of that name, or what there is to do for it to be seen; empty when it is loaded.
  std::string FaultOf(const std::string& name);

 private:
  static constexpr std::uint64_t kPeriod = 60;  // frames

  struct Known {
    std::uint64_t looked = 0;  // frame
    std::filesystem::file_time_type time{};
    std::string fault;
  };

  std::map<std::string, Known> known_;
  std::uint64_t frame_ = 0;
};
