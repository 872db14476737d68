// A fresh folder that is the working folder while the object lives, and goes with it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace bench {

class WorkFolder {
 public:
  /// Ends the program with a message when no folder can be made.
  explicit WorkFolder(const std::string& name) {
    namespace fs = std::filesystem;
    std::string pattern = (fs::temp_directory_path() / (name + ".XXXXXX")).string();
    if (mkdtemp(pattern.data()) == nullptr) {
      std::perror(pattern.c_str());
      std::exit(1);
    }
    path_ = pattern;
    fs::current_path(path_);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::current_path(path_.parent_path(), ignored);
    std::filesystem::remove_all(path_, ignored);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace bench
