// Which live object belongs to which object of the running piece's file: those that were read from it, and those that
// something in it has made since.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/game_object.h"
#include "lint/level_file.h"
#include "physics/math/vec3.h"

class PieceCast {
 public:
  static constexpr int kNobody = -1;

  /// The files are read in the present folder.
  PieceCast() : folder_("") {}

  /// A new piece is there, of that name, with objects of these IDs in the file's order.
  void Begin(const std::string& name, const std::vector<std::uint32_t>& ids);
  /// Once a frame: takes in what has come since. Not after the piece is over, when nothing of it comes any more.
  void Follow();

  /// The place in the file of the object that it is or that has made it; kNobody for what belongs to nobody of it.
  int IndexOf(std::uint32_t id) const;
  bool IsOfFile(std::uint32_t id) const { return ofFile_.contains(id); }
  /// Where an object of the file stands in it.
  Vec3 PlaceInFile(int index) const;
  /// Things of the piece that are there now.
  int CountLiving() const;
  /// Which object of the file has made most of what is there now; kNobody when none has made anything.
  int FindMostProductive() const;
  const LintLevel* GetLevel() const { return level_; }

 private:
  struct Maker {
    int index;
    Vec3 place;
  };
  void FindMakers();

  LevelFolder folder_;
  const LintLevel* level_ = nullptr;
  std::unordered_map<std::uint32_t, int> members_;
  std::unordered_set<std::uint32_t> ofFile_;
  std::unordered_set<std::uint32_t> strangers_;  // that have been looked at
  std::multimap<std::string, Maker> makers_;     // by the name of what they make
  std::vector<std::uint32_t> ids_;               // of the file's objects
};
