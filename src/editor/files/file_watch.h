// Which of the level and archetype files that this run has read have been changed on the disk since.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

class FileWatch {
 public:
  static constexpr int kPeriod = 60;  ///< frames between two looks

  /// Once a frame in which somebody could be told; looks at the disk every so often.
  void Update();
  /// The files that are not any more what was read, by name.
  const std::vector<std::string>& GetChanged() const { return changed_; }
  /// The file is as it should be now: it was read anew, or written by the editor itself.
  void Accept(const std::string& name);
  void Reset() { *this = {}; }

 private:
  using Time = std::filesystem::file_time_type;

  void Look();

  std::map<std::string, Time> known_;
  std::vector<std::string> changed_;
  int waited_ = 0;
};
