// Which of the level and archetype files that this run has read have been changed on the disk since.
#pragma once

#include <string>
#include <vector>

class FileWatch {
 public:
  static constexpr int kPeriod = 60;  ///< frames between two looks

  /// Once a frame in which somebody could be told; looks at the disk every so often.
  void Update();
  /// The files that are not any more what was read, by name.
  const std::vector<std::string>& GetChanged() const { return changed_; }
  /// The file was forgotten: whoever reads it next gets it as it is.
  void Accept(const std::string& name) { std::erase(changed_, name); }
  void Reset() { *this = {}; }

 private:
  void Look();

  std::vector<std::string> changed_;
  int waited_ = 0;
};
